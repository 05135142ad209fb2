-- Payment terms, and the schedules of recurring transactions.

-- Payment terms, by which documents fall due. `TermMode`: 4 `Due` days after the document; 1 on day
-- `Due` of its month (the last day of a shorter one), or of the next month where no more than
-- `DueNxtMonth` days are left until then and that is above 0; 3 `FirstPmtDay` days after the
-- document, when the first of several payments is due; 2 on the date in `TermDet`. Who pays in full
-- within `DiscDay` days may deduct `DiscPercent` per cent of the goods.
CREATE TABLE Term (
  InTermId INT NOT NULL PRIMARY KEY,
  TermId VARCHAR(20),
  Descr VARCHAR(60),
  TermMode INT,
  Due INT,
  DueNxtMonth INT,
  FirstPmtDay INT,
  DiscPercent DECIMAL(18,4),
  DiscDay INT
);

-- Dates of terms of mode 2. Of several, the first one entered counts.
CREATE TABLE TermDet (
  InTermDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExTermId INT NOT NULL REFERENCES Term (InTermId),
  DueDate DATETIME
);

-- Schedules: one row for each transaction that is to be made again and again after a model.
-- `TrxType`: 1 a customer's document (`InvoiHdr`), 2 a supplier's (`PurcHdr`), 3 a journal entry
-- (`GJTrxHdr`); `ExTrxId` is the model's key there. `Frqncy`: 0 not repeated, 1 every day, 2 every
-- week, 3 every month, 4 every two weeks, 5 every year, 6 every quarter, 7 twice a year. `NextRun`
-- is null once a schedule has ended; one that is before today is late.
CREATE TABLE TrxRec (
  TrxType INT NOT NULL,
  ExTrxId INT NOT NULL,
  Frqncy SMALLINT NOT NULL,
  LastRun DATETIME,
  NextRun DATETIME,
  PRIMARY KEY (TrxType, ExTrxId)
);

CREATE INDEX TermDetByTerm ON TermDet (ExTermId);
