-- both: a term
SELECT * FROM Term WHERE InTermId=?

-- both: its dates
SELECT * FROM TermDet WHERE ExTermId = ?

-- both: a schedule
SELECT * FROM TrxRec WHERE TrxType=? AND ExTrxId=?

-- both: new run dates
UPDATE TrxRec SET LastRun=?,NextRun=? WHERE ExTrxId=? AND TrxType=?

-- both: the end of a schedule
UPDATE TrxRec SET LastRun=?,NextRun=NULL WHERE ExTrxId=? AND TrxType=?
