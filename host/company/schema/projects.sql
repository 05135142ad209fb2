-- Projects: their budgets, and what the ledger has of them. `Proj` is with the company's own lists.

-- What a project (`ExID`) is to sell, spend and work in a fiscal period. Amounts are positive, in
-- home currency; hours are hours. Segment 0 is the project as a whole, which its other segments
-- need not add up to.
CREATE TABLE ProjBudgets (
  InProjBudgetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExID INT NOT NULL REFERENCES Proj (InProjId),
  ExSegmentId INT NOT NULL DEFAULT 0,
  ExFiscalYearDetId INT NOT NULL REFERENCES FiscalYearDet (ID),
  BudgetSales MONEY NOT NULL DEFAULT 0,
  BudgetPurch MONEY NOT NULL DEFAULT 0,
  BudgetHours DECIMAL(18,4) NOT NULL DEFAULT 0
);

-- What each project has sold until today: the ledger's lines on revenue accounts, positive.
CREATE VIEW ProjSales_View AS
SELECT GLDet.ExProjId, -SUM(GLDet.DetAmnt) AS ProjSales
FROM GLDet INNER JOIN GLAcct ON GLAcct.InGLAcctId = GLDet.ExAcctId
     INNER JOIN AccountType ON AccountType.ID = GLAcct.AcctType
WHERE GLDet.ExProjId IS NOT NULL AND AccountType.ExAcctTypeDefId = 2
  AND AccountType.ReverseBalance <> 0
GROUP BY GLDet.ExProjId;

-- What each project has spent until today: the lines on expense accounts, wages among them.
CREATE VIEW ProjPurchases_View AS
SELECT GLDet.ExProjId, SUM(GLDet.DetAmnt) AS ProjPurchases
FROM GLDet INNER JOIN GLAcct ON GLAcct.InGLAcctId = GLDet.ExAcctId
     INNER JOIN AccountType ON AccountType.ID = GLAcct.AcctType
WHERE GLDet.ExProjId IS NOT NULL AND AccountType.ExAcctTypeDefId = 2
  AND COALESCE(AccountType.ReverseBalance, 0) = 0
GROUP BY GLDet.ExProjId;

-- Budgets of a project by segment and period.
CREATE INDEX ProjBudgetsByProj ON ProjBudgets (ExID, ExSegmentId, ExFiscalYearDetId)
  INCLUDE (BudgetSales, BudgetPurch, BudgetHours);
-- What was bought for a project.
CREATE INDEX PurcDetByProj ON PurcDet (ExProjId) INCLUDE (ExPurcId, ExItemId, Qty, ExSegmentId);
