-- Money in banks beside the trade: deposits, transfers, journal entries, remittances of sales taxes,
-- and the cheques that were issued. Each is posted to the ledger under its own source: DEP
-- (DepHdr), TRF (BankTransfer), GJ (GJTrxHdr), TAX (TaxTrxHdr).

-- Ways of paying, and the account that the money comes from or goes to.
CREATE TABLE PmtMeth (
  InPmtMethId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  Descr VARCHAR(50),
  ExGLAcctId INT
);

-- Sales taxes. `TaxRate` is in percent. What is paid on purchases and claimed back goes to
-- `ExAcctId`, what is charged on sales and owed to `ExAcctIdPassif`; a tax that is never claimed
-- back has its one account in both.
CREATE TABLE TaxCode (
  InTaxCodeId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  TaxCodeId VARCHAR(10) NOT NULL,
  Descr VARCHAR(50),
  TaxRate FLOAT NOT NULL,
  ExAcctId INT,
  ExAcctIdPassif INT
);

-- Sales taxes of a period remitted to an authority, last day included. `ChqAmnt` is negative where
-- the authority pays back.
CREATE TABLE TaxTrxHdr (
  InTaxTrxId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  TrxDate DATETIME NOT NULL,
  DateFrom DATETIME,
  DateTo DATETIME,
  PayTo VARCHAR(60),
  ChqNo VARCHAR(20),
  ChqAmnt MONEY NOT NULL DEFAULT 0,
  ExGLAcctId INT
);

-- Deposits to a bank account (`ExGLAcctId`). `SalesAmnt` is the part of `TotAmnt` that is a sale
-- without an invoice. Amounts are in the deposit's currency.
CREATE TABLE DepHdr (
  InDepId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  DepNo VARCHAR(20),
  DepDate DATETIME NOT NULL,
  Descr VARCHAR(60),
  TotAmnt MONEY NOT NULL DEFAULT 0,
  SalesAmnt MONEY,
  ExchangeRate FLOAT,
  ExCurrencyId INT,
  ExGLAcctId INT
);

-- What a deposit consists of: the accounts that it came from. The lines add up to its `TotAmnt`.
CREATE TABLE DepDet (
  InDepDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExDepId INT NOT NULL REFERENCES DepHdr (InDepId),
  Descr VARCHAR(60),
  Amount MONEY NOT NULL DEFAULT 0,
  ExGLAcctId INT
);

-- Transfers from one bank account to another, each amount in its account's currency.
CREATE TABLE BankTransfer (
  InBankTransferId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  TransferNo VARCHAR(20),
  TransferDate DATETIME NOT NULL,
  ExGLAcctIdFrom INT NOT NULL,
  ExGLAcctIdTo INT NOT NULL,
  AmntFrom MONEY NOT NULL DEFAULT 0,
  AmntTo MONEY NOT NULL DEFAULT 0
);

-- Journal entries. `SalesAmnt` is what an entry adds to the sales of its period.
CREATE TABLE GJTrxHdr (
  InGJTrxId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  TrxNo VARCHAR(20),
  TrxDate DATETIME NOT NULL,
  Descr VARCHAR(60),
  SalesAmnt MONEY,
  ExchangeRate FLOAT,
  ExCurrencyId INT
);

-- Their lines, debits positive and credits negative; those of an entry add up to zero.
CREATE TABLE GJTrxDet (
  InGJTrxDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExGJTrxId INT NOT NULL REFERENCES GJTrxHdr (InGJTrxId),
  ExGLAcctId INT NOT NULL,
  Amount MONEY NOT NULL DEFAULT 0
);

-- Every cheque and transfer that money went out by, under its number and the bank account it is
-- drawn on. `TrxType`: 1 a payment to a supplier, 2 a refund to a customer, 3 a pay, 4 a remittance
-- of payroll deductions, 5 a remittance of sales taxes. `ChqId` is the document's own key;
-- cancelled pays keep their number and stay.
CREATE VIEW AllIssuedChecks_View AS
SELECT SuppPmtHdr.InPmtId AS ChqId, SuppPmtHdr.ExGLAcctId, SuppPmtHdr.ChqDate, SuppPmtHdr.ChqNo,
       SuppPmtHdr.PmtTotAmnt AS ChqAmnt, Supp.Name AS PayTo, 1 AS TrxType
FROM SuppPmtHdr INNER JOIN Supp ON Supp.InSuppId = SuppPmtHdr.ExSuppId
WHERE SuppPmtHdr.PmtTotAmnt > 0
UNION ALL
SELECT PmtHdr.InPmtId, PmtHdr.ExGLAcctId, PmtHdr.PmtDate, PmtHdr.ChqNo, -PmtHdr.PmtTotAmnt,
       Cust.Name, 2
FROM PmtHdr INNER JOIN Cust ON Cust.InCustId = PmtHdr.ExCustId
WHERE PmtHdr.PmtType = 'REFUND' AND PmtHdr.PmtTotAmnt < 0
UNION ALL
SELECT TrxPay.InTrxPayId, TrxPay.ExGLAcctId, TrxPay.ChqDate, TrxPay.ChqNb, TrxPay.NetAmnt,
       Empl.FirstName + ' ' + Empl.LastName, 3
FROM TrxPay INNER JOIN Empl ON Empl.InEmplId = TrxPay.ExEmplId
UNION ALL
SELECT RPDPmtHdr.InRPDPmtId, RPDPmtHdr.ExGLAcctId, RPDPmtHdr.ChqDate, RPDPmtHdr.ChqNo,
       RPDPmtHdr.ChqAmnt, RPDPmtHdr.PayTo, 4
FROM RPDPmtHdr
UNION ALL
SELECT TaxTrxHdr.InTaxTrxId, TaxTrxHdr.ExGLAcctId, TaxTrxHdr.TrxDate, TaxTrxHdr.ChqNo,
       TaxTrxHdr.ChqAmnt, TaxTrxHdr.PayTo, 5
FROM TaxTrxHdr
WHERE TaxTrxHdr.ChqAmnt > 0;

-- Cheques by their number.
CREATE INDEX SuppPmtHdrByChq ON SuppPmtHdr (ChqNo);
CREATE INDEX PmtHdrByChq ON PmtHdr (ChqNo);
CREATE INDEX TrxPayByChq ON TrxPay (ChqNb);
-- Sales of a period.
CREATE INDEX DepHdrByDate ON DepHdr (DepDate);
CREATE INDEX GJTrxHdrByDate ON GJTrxHdr (TrxDate);
CREATE INDEX DepDetByDep ON DepDet (ExDepId);
CREATE INDEX GJTrxDetByTrx ON GJTrxDet (ExGJTrxId);
