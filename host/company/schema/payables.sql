-- Payables: suppliers, what was ordered, received and bought from them, their payments, and the
-- views that say what is owed to them. The mirror of the receivables: where a comment is missing
-- here, the one over there holds.

-- Suppliers. Like `Cust`, it has no column named like one of the aging detail.
CREATE TABLE Supp (
  InSuppId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  SuppId VARCHAR(20),
  SuppInactive BIT DEFAULT 0,
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
  Addr1 VARCHAR(60),
  Addr2 VARCHAR(60),
  City VARCHAR(40),
  Area VARCHAR(40),
  ExCountryId INT,
  Zip VARCHAR(12),
  ExTaxGroupId INT,
  CreditLim MONEY,
  ExGLAcctId INT,
  Buyer VARCHAR(40),
  NameLang SMALLINT,
  SendPo BIT,
  IncludeInT5018 BIT,
  BusinessNumber VARCHAR(20),
  UseDirectDeposite BIT,
  Transit VARCHAR(10),
  Institution VARCHAR(10),
  Account VARCHAR(20),
  ExPmtMethId INT,
  ExCurrencyId INT
);

-- Suppliers' documents. `PurcType`: 1 purchase of goods, 2 expense, 3 services for a project, 4
-- adjustment, 51 order, 52 reception. Orders and receptions are no payables, and payments are never
-- applied to them; all others are payables, credit notes (`PurcCredit` set) with negative amounts.
-- `PaidAmnt` was paid with the document itself, from `PaidExGLAcctId`; `Balance` = `TotAmnt` -
-- `PaidAmnt`. `POrderStatus`: 1 goods are expected, 2 all came, 3 cancelled. `ReqDate` is when they
-- are expected, `OriginalRefNo` the supplier's own number of the document, `ExTermId` the term that
-- `DueDate` follows from.
CREATE TABLE PurcHdr (
  InPurcId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  DocNo VARCHAR(20),
  PurcType INT NOT NULL,
  PurcCredit BIT NOT NULL DEFAULT 0,
  ExSuppId INT NOT NULL REFERENCES Supp (InSuppId),
  PurcDate DATETIME NOT NULL,
  DueDate DATETIME,
  ReqDate DATETIME,
  POrderStatus INT,
  OriginalRefNo VARCHAR(20),
  DetAmnt MONEY NOT NULL DEFAULT 0,
  ShipAmnt MONEY,
  TaxAmnt MONEY NOT NULL DEFAULT 0,
  TotAmnt MONEY NOT NULL DEFAULT 0,
  PaidAmnt MONEY NOT NULL DEFAULT 0,
  PaidExGLAcctId INT,
  Balance MONEY NOT NULL DEFAULT 0,
  BalanceHome MONEY,
  ExchangeRate FLOAT,
  ExCurrencyId INT,
  ExDocSegmentId INT,
  ExTermId INT
);

-- Lines of suppliers' documents. `ExPODetId` is the line of the order that a reception's line
-- fulfils; `ExRecId` and `ExRecDetId` are the reception and its line that a purchase's line
-- invoices, or that another reception's line adjusts. `ExWarehouseId` is where the goods go.
CREATE TABLE PurcDet (
  InPurcDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExPurcId INT NOT NULL REFERENCES PurcHdr (InPurcId),
  ExItemId INT,
  Qty DECIMAL(18,4),
  UnitPrice MONEY,
  LineAmnt MONEY,
  ExPurcAcctId INT,
  ExProjId INT,
  ExSegmentId INT,
  ExPODetId INT,
  ExRecId INT,
  ExRecDetId INT,
  ExWarehouseId INT
);

-- Payments to suppliers: `PmtTotAmnt` is the money that went out, negative for one that came back.
-- `ExchDiffHome` is the exchange loss (gain negative) realised: the side on which it adds to what
-- is owed, as in the receivables.
CREATE TABLE SuppPmtHdr (
  InPmtId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExSuppId INT NOT NULL REFERENCES Supp (InSuppId),
  ChqDate DATETIME NOT NULL,
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

-- What a payment was used for, line by line as in `PmtDet`. What it leaves open is its
-- `PmtTotAmnt`, less its own lines, plus the lines of other payments that refer to it.
CREATE TABLE SuppPmtDet (
  InPmtDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExPmtId INT NOT NULL REFERENCES SuppPmtHdr (InPmtId),
  ExPurcId INT REFERENCES PurcHdr (InPurcId),
  ExPmtRefId INT REFERENCES SuppPmtHdr (InPmtId),
  PmtAmnt MONEY NOT NULL DEFAULT 0,
  PmtDisc MONEY NOT NULL DEFAULT 0,
  PmtDiscHome MONEY
);

-- The detail that the aging of suppliers is made of. `PurcCredit` tells whether the row itself is a
-- credit note, `DocCredit` whether the document that it stands under is one.
CREATE VIEW SuppAgingDet AS
SELECT PurcHdr.PurcDate AS DetDate, PurcHdr.PurcDate AS DocOrderDate,
       PurcHdr.InPurcId AS DocOrderId, PurcHdr.InPurcId AS ExSrcId, PurcHdr.DocNo,
       PurcHdr.PurcType AS DetType, CAST(PurcHdr.PurcCredit AS INT) AS PurcCredit,
       PurcHdr.ExSuppId, PurcHdr.DetAmnt, PurcHdr.TaxAmnt, PurcHdr.TotAmnt, PurcHdr.Balance,
       PurcHdr.PaidAmnt, PurcHdr.ExchangeRate, PurcHdr.ExCurrencyId,
       CAST(PurcHdr.PurcCredit AS INT) AS DocCredit, PurcHdr.ExDocSegmentId AS ExSegmentId,
       0 AS PaymentCreditApplication
FROM PurcHdr
WHERE PurcHdr.PurcType NOT IN (51, 52)
UNION ALL
SELECT SuppPmtHdr.ChqDate, PurcHdr.PurcDate, PurcHdr.InPurcId, SuppPmtHdr.InPmtId,
       SuppPmtHdr.ChqNo, 99, 0, PurcHdr.ExSuppId, -SuppPmtDet.PmtAmnt, 0, -SuppPmtDet.PmtAmnt,
       -SuppPmtDet.PmtAmnt, 0, PurcHdr.ExchangeRate, PurcHdr.ExCurrencyId,
       CAST(PurcHdr.PurcCredit AS INT), PurcHdr.ExDocSegmentId,
       CASE WHEN EXISTS (SELECT Used.InPmtDetId FROM SuppPmtDet AS Used
                         WHERE Used.ExPmtId = SuppPmtHdr.InPmtId AND NOT Used.ExPmtRefId IS NULL)
            THEN 1 ELSE 0 END
FROM PurcHdr INNER JOIN SuppPmtDet ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
     INNER JOIN SuppPmtHdr ON SuppPmtHdr.InPmtId = SuppPmtDet.ExPmtId
WHERE PurcHdr.PurcType NOT IN (51, 52) AND SuppPmtDet.PmtAmnt <> 0
UNION ALL
SELECT SuppPmtHdr.ChqDate, PurcHdr.PurcDate, PurcHdr.InPurcId, SuppPmtHdr.InPmtId,
       SuppPmtHdr.ChqNo, 100, 0, PurcHdr.ExSuppId, -SuppPmtDet.PmtDisc, 0, -SuppPmtDet.PmtDisc,
       -SuppPmtDet.PmtDisc, 0, PurcHdr.ExchangeRate, PurcHdr.ExCurrencyId,
       CAST(PurcHdr.PurcCredit AS INT), PurcHdr.ExDocSegmentId, 0
FROM PurcHdr INNER JOIN SuppPmtDet ON SuppPmtDet.ExPurcId = PurcHdr.InPurcId
     INNER JOIN SuppPmtHdr ON SuppPmtHdr.InPmtId = SuppPmtDet.ExPmtId
WHERE PurcHdr.PurcType NOT IN (51, 52) AND SuppPmtDet.PmtDisc <> 0;

-- What has been paid on each document until today, discounts included, one row a document.
CREATE VIEW PurcPaidAmntAll_View AS
SELECT PurcHdr.InPurcId,
       COALESCE((SELECT SUM(SuppPmtDet.PmtAmnt + SuppPmtDet.PmtDisc) FROM SuppPmtDet
                 WHERE SuppPmtDet.ExPurcId = PurcHdr.InPurcId), 0) AS TotalPaid,
       COALESCE((SELECT SUM(SuppPmtDet.PmtDisc) FROM SuppPmtDet
                 WHERE SuppPmtDet.ExPurcId = PurcHdr.InPurcId), 0) AS TotalDisc
FROM PurcHdr;

-- A supplier's account: payables, payments (99) and discounts (100) by date. `TotalToPay` =
-- `TotAmnt` - `PaidAmnt` in every row, and adds up to the supplier's balance.
CREATE VIEW SuppHistoryList_View AS
SELECT PurcHdr.PurcDate, PurcHdr.InPurcId, PurcHdr.DocNo, PurcHdr.PurcType,
       CAST(PurcHdr.PurcCredit AS INT) AS PurcCredit, PurcHdr.PaidAmnt, PurcHdr.TotAmnt,
       PurcHdr.Balance AS TotalToPay, PurcHdr.ExCurrencyId, PurcHdr.ExSuppId
FROM PurcHdr
WHERE PurcHdr.PurcType NOT IN (51, 52)
UNION ALL
SELECT SuppPmtHdr.ChqDate, SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo, 99, 0, SuppPmtHdr.PmtTotAmnt, 0,
       -SuppPmtHdr.PmtTotAmnt, SuppPmtHdr.ExCurrencyId, SuppPmtHdr.ExSuppId
FROM SuppPmtHdr
UNION ALL
SELECT SuppPmtHdr.ChqDate, SuppPmtHdr.InPmtId, SuppPmtHdr.ChqNo, 100, 0, 0, -SuppPmtDet.PmtDisc,
       -SuppPmtDet.PmtDisc, SuppPmtHdr.ExCurrencyId, SuppPmtHdr.ExSuppId
FROM SuppPmtHdr INNER JOIN SuppPmtDet ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
     INNER JOIN PurcHdr ON PurcHdr.InPurcId = SuppPmtDet.ExPurcId
WHERE SuppPmtDet.PmtDisc <> 0 AND PurcHdr.PurcType NOT IN (51, 52);

-- Receptions of which something is not invoiced yet.
CREATE VIEW SuppOpenRec_View AS
SELECT PurcHdr.InPurcId, PurcHdr.ExSuppId, PurcHdr.DocNo, PurcHdr.PurcDate, PurcHdr.PurcType,
       PurcHdr.OriginalRefNo, PurcHdr.TotAmnt, PurcHdr.ExchangeRate, PurcHdr.ExCurrencyId
FROM PurcHdr
WHERE PurcHdr.PurcType = 52 AND COALESCE(PurcHdr.POrderStatus, 0) NOT IN (1, 3)
  AND EXISTS (SELECT Line.InPurcDetId FROM PurcDet AS Line
              WHERE Line.ExPurcId = PurcHdr.InPurcId
                AND Line.Qty > COALESCE((SELECT SUM(Invoiced.Qty) FROM PurcDet AS Invoiced
                                         WHERE Invoiced.ExRecDetId = Line.InPurcDetId), 0));

-- Orders of which something has not come yet.
CREATE VIEW SuppOpenPurcOrd_View AS
SELECT PurcHdr.InPurcId, PurcHdr.ExSuppId, PurcHdr.DocNo, PurcHdr.PurcDate, PurcHdr.PurcType,
       PurcHdr.ReqDate, PurcHdr.OriginalRefNo, PurcHdr.TotAmnt, PurcHdr.ExchangeRate,
       PurcHdr.ExCurrencyId
FROM PurcHdr
WHERE PurcHdr.PurcType = 51 AND COALESCE(PurcHdr.POrderStatus, 0) <> 3
  AND EXISTS (SELECT Line.InPurcDetId FROM PurcDet AS Line
              WHERE Line.ExPurcId = PurcHdr.InPurcId
                AND Line.Qty > COALESCE((SELECT SUM(Received.Qty) FROM PurcDet AS Received
                                         WHERE Received.ExPODetId = Line.InPurcDetId), 0));

-- Documents whose goods are expected (`POrderStatus` 1): orders, and receptions that were announced
-- but have not arrived. `QtyExpected` is how many units are still to come.
CREATE VIEW PurcOpenExpectedRec_View AS
SELECT PurcHdr.InPurcId, PurcHdr.ExSuppId, PurcHdr.DocNo, PurcHdr.PurcDate, PurcHdr.PurcType,
       PurcHdr.ReqDate, PurcHdr.OriginalRefNo, PurcHdr.TotAmnt, PurcHdr.ExchangeRate,
       PurcHdr.ExCurrencyId,
       COALESCE((SELECT SUM(Line.Qty) FROM PurcDet AS Line
                 WHERE Line.ExPurcId = PurcHdr.InPurcId), 0) -
       COALESCE((SELECT SUM(Received.Qty)
                 FROM PurcDet AS Line INNER JOIN PurcDet AS Received
                      ON Received.ExPODetId = Line.InPurcDetId
                 WHERE Line.ExPurcId = PurcHdr.InPurcId), 0) AS QtyExpected
FROM PurcHdr
WHERE PurcHdr.POrderStatus = 1;

-- What changes the balance owed to a supplier, and when; the home amounts agree with the control
-- accounts of the ledger (there with the opposite sign).
CREATE VIEW SuppBalance_View AS
SELECT PurcHdr.ExSuppId, PurcHdr.PurcDate AS BalanceDate, PurcHdr.ExDocSegmentId AS ExSegmentId,
       PurcHdr.ExCurrencyId, PurcHdr.Balance AS SuppBalance,
       COALESCE(PurcHdr.BalanceHome,
                CAST(ROUND(PurcHdr.Balance * COALESCE(NULLIF(PurcHdr.ExchangeRate, 0), 1), 2)
                     AS MONEY)) AS SuppBalanceHome
FROM PurcHdr
WHERE PurcHdr.PurcType NOT IN (51, 52)
UNION ALL
SELECT SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqDate, SuppPmtHdr.ExSegmentId, SuppPmtHdr.ExCurrencyId,
       -SuppPmtHdr.PmtTotAmnt,
       COALESCE(SuppPmtHdr.ExchDiffHome, 0) -
       COALESCE(SuppPmtHdr.PmtTotAmntHome,
                CAST(ROUND(SuppPmtHdr.PmtTotAmnt *
                           COALESCE(NULLIF(SuppPmtHdr.ExchangeRate, 0), 1), 2) AS MONEY))
FROM SuppPmtHdr
UNION ALL
SELECT SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqDate, SuppPmtHdr.ExSegmentId, SuppPmtHdr.ExCurrencyId,
       -SuppPmtDet.PmtDisc,
       -COALESCE(SuppPmtDet.PmtDiscHome,
                 CAST(ROUND(SuppPmtDet.PmtDisc *
                            COALESCE(NULLIF(SuppPmtHdr.ExchangeRate, 0), 1), 2) AS MONEY))
FROM SuppPmtHdr INNER JOIN SuppPmtDet ON SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId
     INNER JOIN PurcHdr ON PurcHdr.InPurcId = SuppPmtDet.ExPurcId
WHERE SuppPmtDet.PmtDisc <> 0 AND PurcHdr.PurcType NOT IN (51, 52);

-- What each payment has left open (`UnapplAmnt`), zero for most.
CREATE VIEW SuppPmtUnappl_View AS
SELECT SuppPmtHdr.InPmtId, SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqDate, SuppPmtHdr.ChqNo,
       SuppPmtHdr.PmtTotAmnt,
       SuppPmtHdr.PmtTotAmnt -
       COALESCE((SELECT SUM(SuppPmtDet.PmtAmnt) FROM SuppPmtDet
                 WHERE SuppPmtDet.ExPmtId = SuppPmtHdr.InPmtId), 0) +
       COALESCE((SELECT SUM(SuppPmtDet.PmtAmnt) FROM SuppPmtDet
                 WHERE SuppPmtDet.ExPmtRefId = SuppPmtHdr.InPmtId), 0) AS UnapplAmnt,
       SuppPmtHdr.ExchangeRate, SuppPmtHdr.ExCurrencyId, SuppPmtHdr.ExSegmentId
FROM SuppPmtHdr;

-- The payments that have something left open.
CREATE VIEW SuppOpenCredits_View AS
SELECT Pmt.InPmtId, Pmt.ExSuppId, Pmt.ChqDate, Pmt.ChqNo, Pmt.PmtTotAmnt,
       Pmt.UnapplAmnt AS CreditAmnt, Pmt.ExchangeRate, Pmt.ExCurrencyId, Pmt.ExSegmentId
FROM SuppPmtUnappl_View AS Pmt
WHERE Pmt.UnapplAmnt <> 0;

-- Purchases, one row a document; credit notes, orders and receptions are none.
CREATE VIEW SuppLastPurc_View AS
SELECT PurcHdr.ExSuppId, PurcHdr.PurcDate AS LastPurc, PurcHdr.InPurcId, PurcHdr.PurcType,
       PurcHdr.TotAmnt, PurcHdr.DocNo, PurcHdr.ExCurrencyId
FROM PurcHdr
WHERE PurcHdr.PurcType NOT IN (51, 52) AND PurcHdr.PurcCredit = 0;

-- Money paid out, one row a payment; money that came back and the use of a credit are none.
CREATE VIEW SuppLastPmt_View AS
SELECT SuppPmtHdr.ExSuppId, SuppPmtHdr.ChqDate AS LastPmt, SuppPmtHdr.InPmtId AS Code,
       SuppPmtHdr.PmtTotAmnt, SuppPmtHdr.PmtType AS Type, SuppPmtHdr.ChqNo,
       SuppPmtHdr.ExCurrencyId
FROM SuppPmtHdr
WHERE SuppPmtHdr.PmtTotAmnt > 0;

-- Documents of a supplier by date: balances and history without touching the table.
CREATE INDEX PurcHdrBySupp ON PurcHdr (ExSuppId, PurcDate)
  INCLUDE (PurcType, Balance, BalanceHome, ExchangeRate, ExCurrencyId, ExDocSegmentId);
CREATE INDEX PurcHdrByDate ON PurcHdr (PurcDate);
-- All documents in the order in which payments are totalled by them: what is open of each.
CREATE INDEX PurcHdrById ON PurcHdr (InPurcId) INCLUDE (Balance);
-- Orders, receptions and what is expected of a supplier.
CREATE INDEX PurcHdrByType ON PurcHdr (ExSuppId, PurcType) INCLUDE (POrderStatus);
-- The few orders of a supplier that goods are expected on, among all that he ever had.
CREATE INDEX PurcHdrByStatus ON PurcHdr (ExSuppId, POrderStatus);
CREATE INDEX PurcDetByPurc ON PurcDet (ExPurcId) INCLUDE (Qty);
CREATE INDEX PurcDetByItem ON PurcDet (ExItemId);
-- What came of an order's line, and what was invoiced of a reception's.
CREATE INDEX PurcDetByOrder ON PurcDet (ExPODetId) INCLUDE (Qty);
CREATE INDEX PurcDetByRec ON PurcDet (ExRecDetId) INCLUDE (Qty);
CREATE INDEX SuppPmtHdrBySupp ON SuppPmtHdr (ExSuppId, ChqDate)
  INCLUDE (PmtTotAmnt, PmtTotAmntHome, ExchDiffHome, ExchangeRate, ExCurrencyId, ExSegmentId);
CREATE INDEX SuppPmtDetByPurc ON SuppPmtDet (ExPurcId) INCLUDE (PmtAmnt, PmtDisc, ExPmtId);
CREATE INDEX SuppPmtDetByPmt ON SuppPmtDet (ExPmtId)
  INCLUDE (PmtAmnt, PmtDisc, PmtDiscHome, ExPurcId, ExPmtRefId);
CREATE INDEX SuppPmtDetByRef ON SuppPmtDet (ExPmtRefId) INCLUDE (PmtAmnt, ExPmtId);
