-- Budgets of ledger accounts.

-- The budget of an account for a fiscal period, signed as in the ledger: revenue is negative.
CREATE TABLE GLAcctBudget (
  InGLAcctBudgetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExGLAcctId INT NOT NULL,
  ExFiscalYearDetId INT NOT NULL REFERENCES FiscalYearDet (ID),
  Amount MONEY NOT NULL DEFAULT 0
);

-- The same by segment; `ExID` is the account.
CREATE TABLE GLAcctSegmentBudget (
  InGLAcctSegmentBudgetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExID INT NOT NULL,
  ExSegmentId INT NOT NULL,
  ExFiscalYearDetId INT NOT NULL REFERENCES FiscalYearDet (ID),
  Amount MONEY NOT NULL DEFAULT 0
);

CREATE INDEX GLAcctBudgetByAcct ON GLAcctBudget (ExGLAcctId, ExFiscalYearDetId) INCLUDE (Amount);
CREATE INDEX GLAcctSegmentBudgetByAcct
  ON GLAcctSegmentBudget (ExID, ExSegmentId, ExFiscalYearDetId) INCLUDE (Amount);
