-- both: hours of a project
SELECT 1 AS TrxType, TrxPay.InTrxPayID AS InTrxId, TrxPay.ChqDate AS TrxDate, Empl.EmplId AS
  ResId,(Empl.FirstName + ' ' + Empl.LastName) AS ResName, TrxPay.ChqNb AS RefNum, PayCode.Descr
  AS Detail, TrxPayDetails.Units AS NbHours
FROM ((Empl INNER JOIN TrxPay ON Empl.InEmplId = TrxPay.ExEmplId) INNER JOIN TrxPayDetails ON
  TrxPay.InTrxPayId = TrxPayDetails.ExTrxPayId) INNER JOIN PayCode ON TrxPayDetails.ExPayCodeId =
  PayCode.InPayCodeId
WHERE TrxPayDetails.ExProjId = ? AND (TrxPay.Canceled Is Null OR TrxPay.Canceled = 0) AND
  PayCode.PayCodeType = 4 AND  TrxPay.ChqDate BETWEEN ? AND ? UNION
SELECT 2 AS TrxType, PurcHdr.InPurcId AS InTrxId, PurcHdr.PurcDate AS TrxDate, Supp.SuppId AS
  ResId, Supp.Name AS ResName, PurcHdr.DocNo AS RefNum, Item.Descr1 AS Detail, PurcDet.Qty AS
  NbHours
FROM ((Supp INNER JOIN PurcHdr ON Supp.InSuppId = PurcHdr.ExSuppId) INNER JOIN PurcDet ON
  PurcHdr.InPurcId = PurcDet.ExPurcId) INNER JOIN Item ON PurcDet.ExItemId = Item.InItemId
WHERE PurcDet.ExProjId=? AND PurcHdr.PurcType=3 AND PurcHdr.PurcDate BETWEEN ? AND ? AND (NOT
  Item.Hours IS NULL AND Item.Hours<>0) ORDER BY TrxType, ResId, TrxDate, RefNum

-- server: hours of a project
SELECT 1 AS TrxType, TrxPay.InTrxPayID AS InTrxId, TrxPay.ChqDate AS TrxDate, Empl.EmplId AS
  ResId,(Empl.FirstName + ' ' + Empl.LastName) AS ResName, TrxPay.ChqNb AS RefNum, PayCode.Descr
  AS Detail, TrxPayDetails.Units AS NbHours
FROM ((Empl INNER JOIN TrxPay ON Empl.InEmplId = TrxPay.ExEmplId) INNER JOIN TrxPayDetails ON
  TrxPay.InTrxPayId = TrxPayDetails.ExTrxPayId) INNER JOIN PayCode ON TrxPayDetails.ExPayCodeId =
  PayCode.InPayCodeId
WHERE TrxPayDetails.ExProjId = ? AND (TrxPay.Canceled Is Null OR TrxPay.Canceled = 0) AND
  PayCode.PayCodeType = 4 AND  TrxPay.ChqDate BETWEEN ? AND ? UNION
SELECT 2 AS TrxType, PurcHdr.InPurcId AS InTrxId, PurcHdr.PurcDate AS TrxDate, Supp.SuppId AS
  ResId, Supp.Name AS ResName, PurcHdr.DocNo AS RefNum, CAST(Item.Descr1 AS VARCHAR(8000)) AS
  Detail, PurcDet.Qty AS NbHours
FROM ((Supp INNER JOIN PurcHdr ON Supp.InSuppId = PurcHdr.ExSuppId) INNER JOIN PurcDet ON
  PurcHdr.InPurcId = PurcDet.ExPurcId) INNER JOIN Item ON PurcDet.ExItemId = Item.InItemId
WHERE PurcDet.ExProjId=? AND PurcHdr.PurcType=3 AND PurcHdr.PurcDate BETWEEN ? AND ? AND (NOT
  Item.Hours IS NULL AND Item.Hours<>0) ORDER BY TrxType, ResId, TrxDate, RefNum

-- both: sales of a project
SELECT * FROM ProjSales_View WHERE ExProjId=?

-- both: hours of a project in total
SELECT SUM(ProjHours) AS ProjHours FROM (SELECT SUM(TrxPayDetails.Units) AS ProjHours FROM (TrxPay
  INNER JOIN TrxPayDetails ON TrxPay.InTrxPayId = TrxPayDetails.ExTrxPayId) INNER JOIN PayCode ON
  TrxPayDetails.ExPayCodeId = PayCode.InPayCodeId WHERE TrxPayDetails.ExProjId = ? And
  (TrxPay.Canceled = 0 Or TrxPay.Canceled Is Null) And PayCode.PayCodeType=4 AND TrxPay.ChqDate
  BETWEEN ? AND ?  AND TrxPayDetails.ExSegmentId=2
UNION SELECT SUM(PurcDet.Qty) AS ProjHours FROM ((PurcHdr INNER JOIN PurcDet ON PurcHdr.InPurcId =
  PurcDet.ExPurcId) INNER JOIN Item ON Item.InItemId = PurcDet.ExItemId) WHERE PurcDet.ExProjId=?
  AND PurcHdr.PurcType=3 AND PurcHdr.PurcDate BETWEEN ? AND ? AND (NOT Item.Hours IS NULL AND
  Item.Hours<>0) AND PurcDet.ExSegmentId=2) AS ProjHoursSource

-- both: sales over a period
SELECT -Sum(GLDet.DetAmnt) AS ProjSales FROM (GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId =
  GLDet.ExAcctId) LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType WHERE
  AccountType.ExAcctTypeDefId=2 AND (AccountType.ReverseBalance IS NOT NULL AND
  AccountType.ReverseBalance <> 0) AND GLDet.ExProjId=3 AND GLDet.DetDate BETWEEN ? AND ? AND
  GLDet.ExSegmentId=2

-- both: purchases over a period, fixed chart
SELECT Sum(GLDet.DetAmnt) AS ProjPurchases FROM GLAcct INNER JOIN GLDet ON GLAcct.InGLAcctId =
  GLDet.ExAcctId WHERE GLAcct.AcctType IN (5,6,7)  AND GLDet.ExProjId=3 AND GLDET.DetDate BETWEEN
  ? AND ?

-- both: budgets
SELECT SUM(ProjBudgets.BudgetSales) AS Sales, SUM(ProjBudgets.BudgetPurch) AS Purch,
  SUM(ProjBudgets.BudgetHours) AS Hours FROM FiscalYearDet INNER JOIN ProjBudgets on
  FiscalYearDet.ID = ProjBudgets.ExFiscalYearDetId WHERE ProjBudgets.ExID=? AND
  ProjBudgets.ExSegmentId=? AND ((FiscalYearDet.BegDate BETWEEN ? AND ?) OR (FiscalYearDet.EndDate
  BETWEEN ? AND ?) OR (FiscalYearDet.BegDate < ? AND FiscalYearDet.EndDate > ?))
