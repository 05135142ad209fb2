-- both: history of an account
SELECT DetDate, SeqNo, ExSrcKeyVal, DetRef, Source, DetDesc, DetAmnt as DetAmount FROM GLDet WHERE
  ExAcctId = 4 AND DetDate BETWEEN ? AND ? ORDER BY DetDate, SeqNo

-- both: balance brought forward
SELECT SUM(ForeignAmnt) As ForwardBalance FROM GLDet WHERE ExAcctId = 4 AND DetDate >= ? AND
  DetDate < ?

-- both: credits of an account
SELECT SUM(DetAmnt) As CurrentValue FROM GLDet WHERE ExAcctId = 4 AND DetDate BETWEEN ? AND ?  AND
  DetAmnt< 0

-- both: history of a project
SELECT GLDet.DetDate, GLDet.SeqNo, GLDet.ExSrcKeyVal, GLDet.DetRef, GLDet.Source, GLDet.DetDesc,
  GLDet.ExCurrencyID, SUM(DetAmnt) AS DetAmount FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId
  = GLDet.ExAcctId WHERE DetAmnt <> 0 AND ExProjId = 3 AND DetDate BETWEEN ? AND ? AND
  GLAcct.AcctType IN (SELECT ID FROM AccountType WHERE ExAcctTypeDefId = 2 AND (ReverseBalance IS
  NULL OR ReverseBalance = 0)) GROUP BY GLDet.DetDate, GLDet.SeqNo, GLDet.ExSrcKeyVal,
  GLDet.DetRef, GLDet.Source, GLDet.DetDesc, GLDet.ExCurrencyID ORDER BY DetDate, SeqNo,
  SUM(DetAmnt)

-- both: credits of a project
SELECT SUM(ProjBalance) as CurrentValue FROM (SELECT SUM(DetAmnt) As ProjBalance FROM GLAcct INNER
  JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId WHERE ExProjId = 3 AND DetDate BETWEEN ? AND ?
  AND GLAcct.AcctType IN (5,6,7)) AS TrxQuery WHERE ProjBalance < 0

-- desktop: balances of accounts
SELECT GLDet.ExAcctId As InGLAcctId, IIf(IsNull(SUM(DetAmnt)),0,SUM(DetAmnt)) AS AcctBalance,
  IIf(IsNull(SUM(ForeignAmnt)),0,SUM(ForeignAmnt)) AS AcctForeignBalance  FROM GLDet WHERE
  GLDet.DetDate >=? AND GLDet.DetDate <=?  AND GLDet.ExAcctId = 4 AND GLDet.ExProjId IN (1,2) AND
  ExSegmentId IS NULL GROUP BY GLDet.ExAcctId

-- desktop: balances over remittance periods
SELECT GLDet.ExAcctId As InGLAcctId, IIf(IsNull(SUM(DetAmnt)),0,SUM(DetAmnt)) AS AcctBalance,
  IIf(IsNull(SUM(ForeignAmnt)),0,SUM(ForeignAmnt)) AS AcctForeignBalance  FROM GLDet INNER JOIN
  RPDPmtHdr ON GLDet.DetRef = RPDPmtHdr.ChqNo WHERE RPDPmtHdr.DateFrom >=? AND RPDPmtHdr.DateTo
  <=?  GROUP BY GLDet.ExAcctId

-- desktop: balances of accounts in a currency
SELECT GLAcct.InGLAcctId As InGLAcctId, IIf(IsNull(SUM(DetAmnt)),0,SUM(DetAmnt)) AS AcctBalance,
  IIf(IsNull(SUM(ForeignAmnt)),0,SUM(ForeignAmnt)) AS AcctForeignBalance  FROM GLAcct LEFT JOIN
  GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId  WHERE GLDet.DetDate >= ? AND GLDet.DetDate <= ? AND
  GLAcct.ExCurrencyId = 2 GROUP BY GLAcct.InGLAcctId

-- desktop: current earnings
SELECT IIF(IsNull(-SUM(DetAmnt)), 0, -SUM(DetAmnt)) AS CurrentEarn FROM (GLAcct INNER JOIN GLDet
  ON GLAcct.InGLAcctId = GLDet.ExAcctId) LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType
  WHERE AccountType.ExAcctTypeDefId = 2 AND GLDet.DetDate BETWEEN ? AND ?

-- desktop: invoiced earnings
SELECT Sum((DetAmnt +  IIF(IsNull(ShipAmnt),0,ShipAmnt)) * IIf(ExchangeRate <> 0 And  Not
  IsNull(ExchangeRate), ExchangeRate, 1)) As TotalInvoi FROM InvoiHdr  WHERE InvoiType In(1,2,3,4)
  AND  InvoiDate BETWEEN ? AND ? AND ExCurrencyId = 1

-- desktop: deposited earnings
SELECT Sum(SalesAmnt * IIf(ExchangeRate <> 0 And  Not IsNull(ExchangeRate), ExchangeRate, 1)) As
  TotalDeposits FROM DepHdr WHERE DepDate BETWEEN ? AND ?

-- desktop: earnings of journal entries
SELECT Sum(SalesAmnt * IIf(ExchangeRate <> 0 And  Not IsNull(ExchangeRate), ExchangeRate, 1)) As
  TotalGJ FROM GJTrxHdr WHERE TrxDate BETWEEN ? AND ?

-- server: balances of accounts
SELECT GLDet.ExAcctId As InGLAcctId, COALESCE(SUM(DetAmnt), 0) AS AcctBalance,
  COALESCE(SUM(ForeignAmnt), 0) AS AcctForeignBalance  FROM GLDet WHERE GLDet.DetDate >=? AND
  GLDet.DetDate <=?  AND GLDet.ExAcctId = 4 AND GLDet.ExProjId IN (1,2) AND  ExSegmentId IS NULL
  GROUP BY GLDet.ExAcctId

-- server: balances over remittance periods
SELECT GLDet.ExAcctId As InGLAcctId, COALESCE(SUM(DetAmnt), 0) AS AcctBalance,
  COALESCE(SUM(ForeignAmnt), 0) AS AcctForeignBalance  FROM GLDet INNER JOIN RPDPmtHdr ON
  GLDet.DetRef = RPDPmtHdr.ChqNo WHERE RPDPmtHdr.DateFrom >=? AND RPDPmtHdr.DateTo <=?  GROUP BY
  GLDet.ExAcctId

-- server: balances of accounts in a currency
SELECT GLAcct.InGLAcctId As InGLAcctId, COALESCE(SUM(DetAmnt), 0) AS AcctBalance,
  COALESCE(SUM(ForeignAmnt), 0) AS AcctForeignBalance  FROM GLAcct LEFT JOIN GLDet ON
  GLAcct.InGLAcctId = GLDet.ExAcctId  WHERE GLDet.DetDate >= ? AND GLDet.DetDate <= ? AND
  GLAcct.ExCurrencyId = 2 GROUP BY GLAcct.InGLAcctId

-- server: current earnings
SELECT -SUM(CASE WHEN DetAmnt IS NULL THEN 0 ELSE DetAmnt END) AS CurrentEarn FROM (GLAcct INNER
  JOIN GLDet ON GLAcct.InGLAcctId = GLDet.ExAcctId) LEFT JOIN AccountType ON AccountType.ID =
  GLAcct.AcctType WHERE AccountType.ExAcctTypeDefId = 2 AND GLDet.DetDate BETWEEN ? AND ?

-- server: invoiced earnings
SELECT Sum((DetAmnt +  (CASE WHEN ShipAmnt IS NULL THEN 0 ELSE ShipAmnt END)) * (CASE WHEN
  ExchangeRate <> 0 And  Not ExchangeRate IS NULL THEN ExchangeRate ELSE 1 END)) As TotalInvoi
  FROM InvoiHdr  WHERE InvoiType In(1,2,3,4) AND  InvoiDate BETWEEN ? AND ? AND ExCurrencyId = 1

-- server: deposited earnings
SELECT Sum(SalesAmnt * (CASE WHEN ExchangeRate <> 0 And  Not ExchangeRate IS NULL THEN
  ExchangeRate ELSE 1 END)) As TotalDeposits FROM DepHdr WHERE DepDate BETWEEN ? AND ?

-- server: earnings of journal entries
SELECT Sum(SalesAmnt * (CASE WHEN ExchangeRate <> 0 And  Not ExchangeRate IS NULL THEN
  ExchangeRate ELSE 1 END)) As TotalGJ FROM GJTrxHdr WHERE TrxDate BETWEEN ? AND ?

-- server: group of the account before a new one
SELECT GroupType FROM GLAcct WHERE GLAcctId = (SELECT MAX(CAST(GLAcct.GLAcctId AS integer)) FROM
  GLAcct INNER JOIN (SELECT * FROM GLAcct WHERE ISNUMERIC(GLAcctId) <> 0) AS X ON
  GLAcct.InGLAcctId = X.InGLAcctId WHERE CAST(GLAcct.GLAcctId AS integer) < ?)

-- both: group of the account before a new one, as texts
SELECT GroupType FROM GLAcct WHERE GLAcctId = (SELECT MAX(GLAcct.GLAcctId) FROM GLAcct WHERE
  GLAcct.GLAcctId < ?)

-- both: an issued cheque
SELECT ChqId, ExGLAcctId, ChqDate, ChqNo, ChqAmnt, PayTo, TrxType FROM AllIssuedChecks_View WHERE
  ExGLAcctId = 4 AND ChqNo = ?

-- both: retained earnings
SELECT Sum(DetAmnt) AS RetainEarn FROM (GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId =
  GLDet.ExAcctId) LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType WHERE
  AccountType.ExAcctTypeDefId = 2 AND GLDet.DetDate >= ? AND GLDet.DetDate < ?

-- both: currency of an account
SELECT ExCurrencyId FROM GLAcct WHERE InGLAcctId=?

-- both: budget of an account
SELECT SUM(GLAcctBudget.Amount) as Budget FROM ((FiscalYearHdr INNER JOIN FiscalYearDet ON
  FiscalYearDet.ExID = FiscalYearHdr.ID) INNER JOIN GLAcctBudget ON GLAcctBudget.ExFiscalYearDetId
  = FiscalYearDet.ID) WHERE GLAcctBudget.ExGLAcctId = 4 AND ((FiscalYearDet.BegDate BETWEEN ? AND
  ?) OR (FiscalYearDet.EndDate BETWEEN ? AND ?) OR (FiscalYearDet.BegDate < ? AND
  FiscalYearDet.EndDate > ?))

-- both: sequence numbers of a document
SELECT DISTINCT SeqNo FROM GLDet WHERE Source=? AND ExSrcKeyVal=?

-- both: parameters that name an account
SELECT * FROM QuorAcctParams WHERE ParamValue =4

-- both: currencies that name an account
SELECT * FROM WorldCurrency WHERE (ExGLAcctId = 4 OR ExCustAcctId = 4 OR ExSuppAcctId = 4) AND
  InCurrencyID <> 2

-- both: accounts of a prefix
SELECT * FROM GLAcct WHERE (GLAcctId LIKE '4%') OR (GLAcctId LIKE '5%') ORDER BY GLAcctId

-- both: one account
SELECT * FROM GLAcct WHERE InGLAcctId = 4

-- both: types of accounts
SELECT ID FROM AccountType  WHERE ExAcctTypeDefId = 2 AND (ReverseBalance IS NOT NULL AND
  ReverseBalance<>0) ORDER BY ID

-- both: number of accounts
SELECT COUNT(*) AS RecordCount FROM GLAcct WHERE (CreatedByUser IS NOT NULL AND CreatedByUser <>
  0) AND AcctType=4

-- both: whether a cheque is conciliated
SELECT Conciliated FROM GLDet INNER JOIN GLAcct ON GLDet.ExAcctId = GLAcct.InGLAcctId WHERE
  ChqAcct <> 0 AND DetAmnt < 0  AND GLDet.Source=? AND GLAcct.InGLAcctID = 4 AND DetRef = ? AND
  ExSrcKeyVal = 8
