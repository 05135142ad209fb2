-- Receivables: customers, their documents and payments, and the views that say what they owe.

-- Customers. Its columns stand beside those of the aging detail in one result, so it has none of
-- their names (`ExCustId`, `Balance`, `ExchangeRate`, `DocType` and the like).
CREATE TABLE Cust (
  InCustId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  CustId VARCHAR(20),
  CustInactive BIT DEFAULT 0,
  Name VARCHAR(60),
  Contact VARCHAR(60),
  ContactTitle VARCHAR(40),
  Tel1 VARCHAR(20),
  TelExt1 VARCHAR(10),
  Tel2 VARCHAR(20),
  TelExt2 VARCHAR(10),
  Fax VARCHAR(20),
  Email VARCHAR(100),
  Web VARCHAR(100),
  ExTermId INT,
  CreditLim MONEY,
  SalesPerson VARCHAR(40),
  CustFee BIT,
  SendStmnt BIT,
  ExGLAcctId INT,
  ExPriceLevelId INT,
  Discount DECIMAL(18,4),
  MarginType SMALLINT,
  MarginDayLimit SMALLINT,
  CredOfficeRefNo VARCHAR(20),
  CredOfficeRating VARCHAR(10),
  CredOfficeDate DATETIME,
  NSFChqNb SMALLINT,
  CredNoticeNb SMALLINT,
  EDIExport BIT,
  EDIBusinessNo VARCHAR(20),
  NameLang SMALLINT,
  InvoiSendMeth SMALLINT,
  StmntSendMeth SMALLINT,
  Addr1 VARCHAR(60),
  Addr2 VARCHAR(60),
  City VARCHAR(40),
  Area VARCHAR(40),
  Zip VARCHAR(12),
  ExWarehouseId INT,
  ExTaxGroupId INT,
  ExCountryId INT,
  ShipVia VARCHAR(40),
  UseDirectDeposite BIT,
  Transit VARCHAR(10),
  Institution VARCHAR(10),
  Account VARCHAR(20),
  ExPmtMethId INT,
  ExCurrencyId INT
);

-- Customers' documents. `InvoiType`: 1 invoice of goods, 2 counter sale, 3 invoice of services, most
-- of them on a project, 4 adjustment (a credit note, negative, or a debit note, positive), 51 order.
-- All but the order are receivables.
-- `TotAmnt` = `DetAmnt` + `ShipAmnt` + `TaxAmnt`. `RecAmnt` was received with the document itself,
-- into `RecExGLAcctId`. `Balance` is what the document leaves to be paid, `TotAmnt` - `RecAmnt`,
-- and stays so: payments never reduce it. `BalanceHome` is the same in home currency; where it is
-- missing, the views convert at `ExchangeRate`, and a missing or zero rate counts as 1.
-- `ExDocSegmentId` is the document's segment; it is not called `ExSegmentId`, nor is there an
-- `ExProjId`, because statements that join this table with the ledger name those columns bare.
-- `ExOrderId` is the order that the document delivers, `ExTermId` the term that `DueDate` follows
-- from: the customer's own at the time, or another one that was agreed on.
-- Documents and payments of customers share one numbering, so that a key tells which one it is.
CREATE TABLE InvoiHdr (
  InInvoiId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  InvoiId VARCHAR(20),
  InvoiType INT NOT NULL,
  ExCustId INT NOT NULL REFERENCES Cust (InCustId),
  InvoiDate DATETIME NOT NULL,
  DueDate DATETIME,
  DetAmnt MONEY NOT NULL DEFAULT 0,
  ShipAmnt MONEY,
  TaxAmnt MONEY NOT NULL DEFAULT 0,
  TotAmnt MONEY NOT NULL DEFAULT 0,
  RecAmnt MONEY NOT NULL DEFAULT 0,
  RecExGLAcctId INT,
  Balance MONEY NOT NULL DEFAULT 0,
  BalanceHome MONEY,
  ExchangeRate FLOAT,
  ExCurrencyId INT,
  ExDocSegmentId INT,
  ExOrderId INT REFERENCES InvoiHdr (InInvoiId),
  ExTermId INT
);

-- Lines of customers' documents, in sale units. `ExOrderDetId` is the order's line that an invoice's
-- line delivers, `ExWarehouseId` where the goods come from.
CREATE TABLE InvoiDet (
  InInvoiDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExInvoiId INT NOT NULL REFERENCES InvoiHdr (InInvoiId),
  ExItemId INT,
  Qty DECIMAL(18,4),
  UnitPrice MONEY,
  LineAmnt MONEY,
  ExSaleAcctId INT,
  ExProjId INT,
  ExSegmentId INT,
  ExWarehouseId INT,
  ExOrderDetId INT
);

-- Customers' payments. `PmtTotAmnt` is the money that came in: negative for a refund or a returned
-- cheque, zero where a payment only puts an earlier credit to use. `PmtType`: CHQ, EFT, CARD, CASH,
-- CREDIT (use of a credit), REFUND, NSF (a returned cheque). `ExchDiffHome` is the exchange gain
-- (loss negative) that the payment's applications realised, in home currency.
CREATE TABLE PmtHdr (
  InPmtId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExCustId INT NOT NULL REFERENCES Cust (InCustId),
  PmtDate DATETIME NOT NULL,
  ChqNo VARCHAR(20),
  PmtType VARCHAR(10),
  PmtTotAmnt MONEY NOT NULL DEFAULT 0,
  PmtTotAmntHome MONEY,
  ExchDiffHome MONEY,
  ExchangeRate FLOAT,
  ExCurrencyId INT,
  ExSegmentId INT,
  ExGLAcctId INT
);

-- What a payment was used for. A line either applies `PmtAmnt`, and a discount of `PmtDisc`
-- besides, to the document `ExInvoiId` of the same customer (negative to take an application back,
-- or on a credit note), or names in `ExPmtRefId` the earlier payment whose open credit it draws on
-- or refunds, `PmtAmnt` then being negative. A discount is only given on receivables.
-- What a payment leaves open is its `PmtTotAmnt`, less its own lines, plus the lines of other
-- payments that refer to it, plus its lines on orders: a deposit on an order stays a credit until
-- it is put to use on the invoice.
CREATE TABLE PmtDet (
  InPmtDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExPmtId INT NOT NULL REFERENCES PmtHdr (InPmtId),
  ExInvoiId INT REFERENCES InvoiHdr (InInvoiId),
  ExPmtRefId INT REFERENCES PmtHdr (InPmtId),
  PmtAmnt MONEY NOT NULL DEFAULT 0,
  PmtDisc MONEY NOT NULL DEFAULT 0,
  PmtDiscHome MONEY
);

-- The detail that the aging of customers is made of: each receivable (`DetType` its type) and under
-- the same `DocOrderID` each payment (99) and each discount (100) that was applied to it, as a
-- negative row dated when it was applied. So the `Balance` of the rows dated on or before a day
-- adds up to what was owed on documents that day; open credits come on top of it and are not here.
-- `DocOrderDate` and `DocType` are those of the document that the row stands under, `ExSrcId` and
-- `DocNo` those of the row's own source. `PaymentCreditApplication` is 1 where the application used
-- an earlier credit.
CREATE VIEW CustAgingDet AS
SELECT InvoiHdr.InvoiDate AS DetDate, InvoiHdr.InvoiDate AS DocOrderDate,
       InvoiHdr.InInvoiId AS DocOrderID, InvoiHdr.InInvoiId AS ExSrcId, InvoiHdr.InvoiId AS DocNo,
       InvoiHdr.InvoiType AS DetType, InvoiHdr.ExCustId, InvoiHdr.DetAmnt, InvoiHdr.TaxAmnt,
       InvoiHdr.TotAmnt, InvoiHdr.Balance, InvoiHdr.RecAmnt, InvoiHdr.ExchangeRate,
       InvoiHdr.ExCurrencyId, InvoiHdr.InvoiType AS DocType,
       InvoiHdr.ExDocSegmentId AS ExSegmentId, 0 AS PaymentCreditApplication
FROM InvoiHdr
WHERE InvoiHdr.InvoiType <> 51
UNION ALL
SELECT PmtHdr.PmtDate, InvoiHdr.InvoiDate, InvoiHdr.InInvoiId, PmtHdr.InPmtId, PmtHdr.ChqNo,
       99, InvoiHdr.ExCustId, -PmtDet.PmtAmnt, 0, -PmtDet.PmtAmnt, -PmtDet.PmtAmnt, 0,
       InvoiHdr.ExchangeRate, InvoiHdr.ExCurrencyId, InvoiHdr.InvoiType, InvoiHdr.ExDocSegmentId,
       CASE WHEN EXISTS (SELECT Used.InPmtDetId FROM PmtDet AS Used
                         WHERE Used.ExPmtId = PmtHdr.InPmtId AND NOT Used.ExPmtRefId IS NULL)
            THEN 1 ELSE 0 END
FROM InvoiHdr INNER JOIN PmtDet ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
     INNER JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId
WHERE InvoiHdr.InvoiType <> 51 AND PmtDet.PmtAmnt <> 0
UNION ALL
SELECT PmtHdr.PmtDate, InvoiHdr.InvoiDate, InvoiHdr.InInvoiId, PmtHdr.InPmtId, PmtHdr.ChqNo,
       100, InvoiHdr.ExCustId, -PmtDet.PmtDisc, 0, -PmtDet.PmtDisc, -PmtDet.PmtDisc, 0,
       InvoiHdr.ExchangeRate, InvoiHdr.ExCurrencyId, InvoiHdr.InvoiType, InvoiHdr.ExDocSegmentId,
       0
FROM InvoiHdr INNER JOIN PmtDet ON PmtDet.ExInvoiId = InvoiHdr.InInvoiId
     INNER JOIN PmtHdr ON PmtHdr.InPmtId = PmtDet.ExPmtId
WHERE InvoiHdr.InvoiType <> 51 AND PmtDet.PmtDisc <> 0;

-- What has been paid on each document until today, one row a document: `TotalPaid` is money and
-- discounts together.
CREATE VIEW InvoiPaidAmntAll_View AS
SELECT InvoiHdr.InInvoiId,
       COALESCE((SELECT SUM(PmtDet.PmtAmnt + PmtDet.PmtDisc) FROM PmtDet
                 WHERE PmtDet.ExInvoiId = InvoiHdr.InInvoiId), 0) AS TotalPaid,
       COALESCE((SELECT SUM(PmtDet.PmtDisc) FROM PmtDet
                 WHERE PmtDet.ExInvoiId = InvoiHdr.InInvoiId), 0) AS TotalDisc
FROM InvoiHdr;

-- A customer's account as a statement of account lists it: receivables, payments (99) and discounts
-- (100) by date. `TotalToPay` = `TotAmnt` - `RecAmnt` in every row, and adds up to the customer's
-- balance.
CREATE VIEW CustHistoryList_View AS
SELECT InvoiHdr.InvoiDate, InvoiHdr.InInvoiId, InvoiHdr.InvoiId, InvoiHdr.InvoiType,
       InvoiHdr.Balance AS TotalToPay, InvoiHdr.TotAmnt, InvoiHdr.RecAmnt, InvoiHdr.ExCurrencyId,
       InvoiHdr.ExCustId
FROM InvoiHdr
WHERE InvoiHdr.InvoiType <> 51
UNION ALL
SELECT PmtHdr.PmtDate, PmtHdr.InPmtId, PmtHdr.ChqNo, 99, -PmtHdr.PmtTotAmnt, 0, PmtHdr.PmtTotAmnt,
       PmtHdr.ExCurrencyId, PmtHdr.ExCustId
FROM PmtHdr
UNION ALL
SELECT PmtHdr.PmtDate, PmtHdr.InPmtId, PmtHdr.ChqNo, 100, -PmtDet.PmtDisc, -PmtDet.PmtDisc, 0,
       PmtHdr.ExCurrencyId, PmtHdr.ExCustId
FROM PmtHdr INNER JOIN PmtDet ON PmtDet.ExPmtId = PmtHdr.InPmtId
     INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId
WHERE PmtDet.PmtDisc <> 0 AND InvoiHdr.InvoiType <> 51;

-- What changes a customer's balance, and when: the sum up to a date is what he owes that day less
-- his open credits, in his currency and in home currency. Exchange differences realised by payments
-- are part of the home amounts, which therefore agree with the control accounts of the ledger.
CREATE VIEW CustBalance_View AS
SELECT InvoiHdr.ExCustId, InvoiHdr.InvoiDate AS BalanceDate,
       InvoiHdr.ExDocSegmentId AS ExSegmentID, InvoiHdr.ExCurrencyId,
       InvoiHdr.Balance AS CustBalance,
       COALESCE(InvoiHdr.BalanceHome,
                CAST(ROUND(InvoiHdr.Balance * COALESCE(NULLIF(InvoiHdr.ExchangeRate, 0), 1), 2)
                     AS MONEY)) AS CustBalanceHome
FROM InvoiHdr
WHERE InvoiHdr.InvoiType <> 51
UNION ALL
SELECT PmtHdr.ExCustId, PmtHdr.PmtDate, PmtHdr.ExSegmentId, PmtHdr.ExCurrencyId,
       -PmtHdr.PmtTotAmnt,
       COALESCE(PmtHdr.ExchDiffHome, 0) -
       COALESCE(PmtHdr.PmtTotAmntHome,
                CAST(ROUND(PmtHdr.PmtTotAmnt * COALESCE(NULLIF(PmtHdr.ExchangeRate, 0), 1), 2)
                     AS MONEY))
FROM PmtHdr
UNION ALL
SELECT PmtHdr.ExCustId, PmtHdr.PmtDate, PmtHdr.ExSegmentId, PmtHdr.ExCurrencyId, -PmtDet.PmtDisc,
       -COALESCE(PmtDet.PmtDiscHome,
                 CAST(ROUND(PmtDet.PmtDisc * COALESCE(NULLIF(PmtHdr.ExchangeRate, 0), 1), 2)
                      AS MONEY))
FROM PmtHdr INNER JOIN PmtDet ON PmtDet.ExPmtId = PmtHdr.InPmtId
     INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId
WHERE PmtDet.PmtDisc <> 0 AND InvoiHdr.InvoiType <> 51;

-- What each payment has left open (`UnapplAmnt`), zero for most.
CREATE VIEW CustPmtUnappl_View AS
SELECT PmtHdr.InPmtId, PmtHdr.ExCustId, PmtHdr.PmtDate, PmtHdr.ChqNo, PmtHdr.PmtTotAmnt,
       PmtHdr.PmtTotAmnt -
       COALESCE((SELECT SUM(PmtDet.PmtAmnt) FROM PmtDet
                 WHERE PmtDet.ExPmtId = PmtHdr.InPmtId), 0) +
       COALESCE((SELECT SUM(PmtDet.PmtAmnt) FROM PmtDet
                 WHERE PmtDet.ExPmtRefId = PmtHdr.InPmtId), 0) +
       COALESCE((SELECT SUM(PmtDet.PmtAmnt)
                 FROM PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId
                 WHERE PmtDet.ExPmtId = PmtHdr.InPmtId AND InvoiHdr.InvoiType = 51), 0)
       AS UnapplAmnt,
       PmtHdr.ExchangeRate, PmtHdr.ExCurrencyId, PmtHdr.ExSegmentId
FROM PmtHdr;

-- The payments that have something left open.
CREATE VIEW CustOpenCredits_View AS
SELECT Pmt.InPmtId, Pmt.ExCustId, Pmt.PmtDate, Pmt.ChqNo, Pmt.PmtTotAmnt,
       Pmt.UnapplAmnt AS CreditAmnt, Pmt.ExchangeRate, Pmt.ExCurrencyId, Pmt.ExSegmentId
FROM CustPmtUnappl_View AS Pmt
WHERE Pmt.UnapplAmnt <> 0;

-- Money received, one row a payment; refunds, returned cheques and the use of a credit are none.
CREATE VIEW CustLastPmt_View AS
SELECT PmtHdr.ExCustId, PmtHdr.PmtDate AS LastPmt, PmtHdr.InPmtId AS PmtCode, PmtHdr.PmtTotAmnt,
       PmtHdr.PmtType AS Type, PmtHdr.ChqNo, PmtHdr.ExCurrencyId
FROM PmtHdr
WHERE PmtHdr.PmtTotAmnt > 0;

-- Sales, one row a document; credit notes and orders are none.
CREATE VIEW CustLastSale_View AS
SELECT InvoiHdr.ExCustId, InvoiHdr.InvoiDate AS LastSale, InvoiHdr.InInvoiId, InvoiHdr.InvoiType,
       InvoiHdr.TotAmnt, InvoiHdr.InvoiId, InvoiHdr.ExCurrencyId
FROM InvoiHdr
WHERE InvoiHdr.InvoiType <> 51 AND InvoiHdr.TotAmnt >= 0;

-- Documents of a customer by date: balances and history without touching the table.
CREATE INDEX InvoiHdrByCust ON InvoiHdr (ExCustId, InvoiDate)
  INCLUDE (InvoiType, Balance, BalanceHome, ExchangeRate, ExCurrencyId, ExDocSegmentId);
CREATE INDEX InvoiHdrByDate ON InvoiHdr (InvoiDate);
-- All documents in the order in which payments are totalled by them: what is open of each.
CREATE INDEX InvoiHdrById ON InvoiHdr (InInvoiId) INCLUDE (Balance);
-- The few orders among all documents: what deposits on orders come to.
CREATE INDEX InvoiHdrByType ON InvoiHdr (InvoiType);
CREATE INDEX InvoiDetByInvoi ON InvoiDet (ExInvoiId);
CREATE INDEX InvoiDetByItem ON InvoiDet (ExItemId);
CREATE INDEX PmtHdrByCust ON PmtHdr (ExCustId, PmtDate)
  INCLUDE (PmtTotAmnt, PmtTotAmntHome, ExchDiffHome, ExchangeRate, ExCurrencyId, ExSegmentId);
-- What was paid on a document.
CREATE INDEX PmtDetByInvoi ON PmtDet (ExInvoiId) INCLUDE (PmtAmnt, PmtDisc, ExPmtId);
-- What a payment was used for, and which later payments drew on it.
CREATE INDEX PmtDetByPmt ON PmtDet (ExPmtId)
  INCLUDE (PmtAmnt, PmtDisc, PmtDiscHome, ExInvoiId, ExPmtRefId);
CREATE INDEX PmtDetByRef ON PmtDet (ExPmtRefId) INCLUDE (PmtAmnt, ExPmtId);
