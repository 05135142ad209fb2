-- The general ledger.

-- Types of accounts. `ExAcctTypeDefId` is 1 for the balance sheet and 2 for the income statement;
-- `ReverseBalance` marks types whose balance is normally a credit; `AcctPrefix` is what numbers of
-- the type begin with.
CREATE TABLE AccountType (
  ID INT NOT NULL PRIMARY KEY,
  AcctPrefix VARCHAR(6),
  Description VARCHAR(50),
  ExAcctTypeDefId INT NOT NULL,
  ReverseBalance BIT
);

-- The chart of accounts. `GLAcctId` is the number that people know, `ChqAcct` marks bank accounts,
-- `ExCurrencyId` the currency that the account is kept in (none: home currency). No column is named
-- like one of `GLDet`: statements join the two and name their columns bare.
CREATE TABLE GLAcct (
  InGLAcctId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  GLAcctId VARCHAR(20) NOT NULL,
  Descr VARCHAR(50),
  AcctType INT,
  ChqAcct BIT DEFAULT 0,
  GroupType INT,
  ExCurrencyId INT,
  CreatedByUser BIT DEFAULT 0
);

-- Posted ledger lines, debits positive and credits negative. The lines of one `SeqNo` are one
-- transaction, and their `DetAmnt` (home currency) add up to zero. `ForeignAmnt` is the amount in
-- the line's own currency `ExCurrencyID`, the same as `DetAmnt` where that is the home currency and
-- zero for an exchange difference.
-- `Source` tells where a transaction comes from and `ExSrcKeyVal` which document it is: INV
-- (InvoiHdr), PMT (PmtHdr), PUR and EXP (PurcHdr: purchases and expenses), CHQ (SuppPmtHdr), GJ
-- (GJTrxHdr), DEP (DepHdr), TRF (BankTransfer), TAX (TaxTrxHdr), PAY (TrxPay), RPD (RPDPmtHdr).
-- `DetRef` is the document's or the cheque's number. `ExProjId` and `ExSegmentId` stand here and
-- not in the document headers, which statements join with this table.
-- On a bank account, `Conciliated` marks what was found on the bank's statements, `Unconciliated`
-- what should have been on the last one and was not; a line that came later has neither.
CREATE TABLE GLDet (
  InGLDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  SeqNo INT NOT NULL,
  DetDate DATETIME NOT NULL,
  Source VARCHAR(3) NOT NULL,
  ExSrcKeyVal INT,
  DetRef VARCHAR(20),
  DetDesc VARCHAR(60),
  ExAcctId INT NOT NULL,
  DetAmnt MONEY NOT NULL DEFAULT 0,
  ForeignAmnt MONEY NOT NULL DEFAULT 0,
  ExCurrencyID INT,
  ExProjId INT,
  ExSegmentId INT,
  Conciliated BIT DEFAULT 0,
  Unconciliated BIT DEFAULT 0
);

-- Totals of the ledger, one row for the lines of one account, day, project and segment. They are
-- kept with every change of `GLDet`, so that a balance takes as long as there are days, however many
-- lines are posted on them.
CREATE VIEW GLDetTotals WITH SCHEMABINDING AS
SELECT GLDet.ExAcctId, GLDet.DetDate, GLDet.ExProjId, GLDet.ExSegmentId,
       SUM(GLDet.DetAmnt) AS DetAmnt, SUM(GLDet.ForeignAmnt) AS ForeignAmnt, COUNT(*) AS LineCount
FROM dbo.GLDet
GROUP BY GLDet.ExAcctId, GLDet.DetDate, GLDet.ExProjId, GLDet.ExSegmentId;

-- Nobody gets a number twice, also when several make accounts at a time.
CREATE UNIQUE INDEX GLAcctByNumber ON GLAcct (GLAcctId);
-- Histories and balances of an account over dates.
CREATE INDEX GLDetByAcct ON GLDet (ExAcctId, DetDate, SeqNo)
  INCLUDE (DetAmnt, ForeignAmnt, ExProjId, ExSegmentId);
-- Histories and balances of a project over dates.
CREATE INDEX GLDetByProj ON GLDet (ExProjId, DetDate) INCLUDE (ExAcctId, DetAmnt);
-- From a document to its postings.
CREATE INDEX GLDetBySource ON GLDet (ExSrcKeyVal) INCLUDE (Source, SeqNo);
-- From a cheque's or a deposit's number to its postings.
CREATE INDEX GLDetByRef ON GLDet (DetRef);
