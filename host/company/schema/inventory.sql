-- Inventory: what kits and assemblies are made of, the movements of stock and the documents that
-- only stock has, and the views that say what is reserved and what is still to come.
--
-- A movement's type, in `Type` and in every `TrxType`: 0 consumption, 1 purchase, 2 adjustment, 4
-- transfer, 6 assembly, 7 sale. Quantities are in stock units: what is sold counts `Item.FacSales`
-- of them for each sale unit (1 where that is 0 or missing).

-- Places where stock lies. `ExSegmentId` is the segment that its movements belong to.
CREATE TABLE Warehouse (
  InWarehouseId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  WarehouseId VARCHAR(20),
  Descr VARCHAR(60),
  ExSegmentId INT
);

-- What a kit (`Item.IsKit`) or an assembled item (`Item.IsAssembly`), here `ExItemKitId`, is made
-- of: `Qty` of each component for one of it. A kit is sold as one and has no movements of its own,
-- its components have them; of a kit `Qty` is in the component's sale units. An assembled item is
-- made by assemblies and kept in stock itself; of it `Qty` is in stock units.
CREATE TABLE ItemKitDet (
  InItemKitDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExItemKitId INT NOT NULL,
  ExItemId INT NOT NULL,
  Qty DECIMAL(18,4) NOT NULL DEFAULT 0
);

-- Items that may be sold in place of another: `ExItemId` replaces `ExId`.
CREATE TABLE ItemReplacement (
  InItemReplacementId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExId INT NOT NULL,
  ExItemId INT NOT NULL
);

-- Stock movements: `Qty` is positive for what comes in and negative for what goes out, so that the
-- sum up to a day is the stock of that day. An item's movements are in the order of `DetDate`,
-- `Type`, `SeqNo`, `InTrxId`; those of one document share their `SeqNo`, and documents of one day
-- and type follow each other by it.
-- `ExSrcKeyVal` and `ExDetId` are the document and its line: InvoiHdr and InvoiDet for sales (a
-- kit's components all name its line), PurcHdr and PurcDet for purchases, AdjItemHdr and AdjItemDet
-- for adjustments and consumptions, AssemblyHdr and AssemblyDet for assemblies (no line for the
-- assembled item), WarehouseTransHdr and WarehouseTransDet for transfers.
-- `Cost` is the movement's cost of a stock unit in home currency, `Invoiced` set for a purchase
-- whose invoice has come. What was received first and is invoiced later has three movements: the
-- reception, not invoiced; with the invoice the same quantity taken back at the reception's cost
-- (a reception adjustment: its line in PurcDet names the reception's line); and the invoiced
-- quantity at the invoice's cost.
-- `RunningAvgCost` and `RunningLastCost` are the item's average and last cost after the movement,
-- over all warehouses. `RunningValuesDirty` is 0 where they hold and 2 where something before them
-- has changed since, so that they must be computed again (`quoracc stock recost`).
-- `ExProjId` is set for stock that is kept for a project.
CREATE TABLE InvenDet (
  InTrxId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExItemId INT NOT NULL,
  DetDate DATETIME NOT NULL,
  Type INT NOT NULL,
  SeqNo INT NOT NULL,
  ExSrcKeyVal INT NOT NULL DEFAULT 0,
  ExDetId INT NOT NULL DEFAULT 0,
  Qty DECIMAL(18,4) NOT NULL DEFAULT 0,
  Cost MONEY NOT NULL DEFAULT 0,
  Invoiced BIT NOT NULL DEFAULT 0,
  ExWarehouseId INT,
  ExProjId INT,
  ExSegmentId INT,
  RunningLastCost MONEY NOT NULL DEFAULT 0,
  RunningAvgCost MONEY NOT NULL DEFAULT 0,
  RunningValuesDirty SMALLINT NOT NULL DEFAULT 2
);

-- Stock documents of the company's own. `AdjType` is the type of their movements: 2 for an
-- adjustment after a count, 0 for goods that were used up, mostly on a project.
CREATE TABLE AdjItemHdr (
  InAdjItemId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  AdjItemId VARCHAR(20),
  AdjType INT NOT NULL DEFAULT 2,
  AdjDate DATETIME NOT NULL,
  Descr VARCHAR(60),
  ExWarehouseId INT
);

-- Their lines: what was found more (less: negative), and the cost of a unit. A line of no quantity
-- sets the last cost alone.
CREATE TABLE AdjItemDet (
  InAdjItemDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExAdjItemId INT NOT NULL REFERENCES AdjItemHdr (InAdjItemId),
  ExItemId INT NOT NULL,
  Qty DECIMAL(18,4) NOT NULL DEFAULT 0,
  UnitCost MONEY,
  ExProjId INT
);

-- Assemblies: `Qty` of the item `ExItemId`, made on `AssemblyDate` or planned for it.
-- `AssemblyStatus`: 1 planned, 2 made, 3 cancelled. Only what was made has movements.
CREATE TABLE AssemblyHdr (
  InAssemblyId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  AssemblyId VARCHAR(20),
  AssemblyDate DATETIME NOT NULL,
  AssemblyStatus INT NOT NULL DEFAULT 1,
  ExItemId INT NOT NULL,
  Qty DECIMAL(18,4) NOT NULL DEFAULT 0,
  ExWarehouseId INT
);

-- What they take, for the whole quantity.
CREATE TABLE AssemblyDet (
  InAssemblyDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExAssemblyId INT NOT NULL REFERENCES AssemblyHdr (InAssemblyId),
  ExItemId INT NOT NULL,
  Qty DECIMAL(18,4) NOT NULL DEFAULT 0
);

-- Transfers between warehouses: each line is a movement out of one and one into the other.
CREATE TABLE WarehouseTransHdr (
  InWarehouseTransId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  WarehouseTransId VARCHAR(20),
  TransDate DATETIME NOT NULL,
  Descr VARCHAR(60),
  ExFromWarehouseId INT NOT NULL,
  ExToWarehouseId INT NOT NULL
);

CREATE TABLE WarehouseTransDet (
  InWarehouseTransDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExWarehouseTransId INT NOT NULL REFERENCES WarehouseTransHdr (InWarehouseTransId),
  ExItemId INT NOT NULL,
  Qty DECIMAL(18,4) NOT NULL DEFAULT 0
);

-- The movements, with number (`ID`) and party or description (`Name`) of the document that each
-- comes from. `Qty` as in `InvenDet`: positive comes in, negative goes out.
CREATE VIEW ItemAvgCost_View AS
SELECT InvenDet.DetDate AS TrxDate, InvenDet.InTrxId,
       CASE InvenDet.Type
         WHEN 7 THEN (SELECT InvoiHdr.InvoiId FROM InvoiHdr
                      WHERE InvoiHdr.InInvoiId = InvenDet.ExSrcKeyVal)
         WHEN 1 THEN (SELECT PurcHdr.DocNo FROM PurcHdr
                      WHERE PurcHdr.InPurcId = InvenDet.ExSrcKeyVal)
         WHEN 4 THEN (SELECT WarehouseTransHdr.WarehouseTransId FROM WarehouseTransHdr
                      WHERE WarehouseTransHdr.InWarehouseTransId = InvenDet.ExSrcKeyVal)
         WHEN 6 THEN (SELECT AssemblyHdr.AssemblyId FROM AssemblyHdr
                      WHERE AssemblyHdr.InAssemblyId = InvenDet.ExSrcKeyVal)
         ELSE (SELECT AdjItemHdr.AdjItemId FROM AdjItemHdr
               WHERE AdjItemHdr.InAdjItemId = InvenDet.ExSrcKeyVal)
       END AS ID,
       InvenDet.ExItemId, InvenDet.ExWarehouseId, InvenDet.Qty, InvenDet.Type AS TrxType,
       InvenDet.ExSrcKeyVal,
       CASE InvenDet.Type
         WHEN 7 THEN (SELECT Cust.Name FROM InvoiHdr INNER JOIN Cust
                           ON Cust.InCustId = InvoiHdr.ExCustId
                      WHERE InvoiHdr.InInvoiId = InvenDet.ExSrcKeyVal)
         WHEN 1 THEN (SELECT Supp.Name FROM PurcHdr INNER JOIN Supp
                           ON Supp.InSuppId = PurcHdr.ExSuppId
                      WHERE PurcHdr.InPurcId = InvenDet.ExSrcKeyVal)
         WHEN 4 THEN (SELECT WarehouseTransHdr.Descr FROM WarehouseTransHdr
                      WHERE WarehouseTransHdr.InWarehouseTransId = InvenDet.ExSrcKeyVal)
         WHEN 6 THEN (SELECT Item.Descr1 FROM AssemblyHdr INNER JOIN Item
                           ON Item.InItemId = AssemblyHdr.ExItemId
                      WHERE AssemblyHdr.InAssemblyId = InvenDet.ExSrcKeyVal)
         ELSE (SELECT AdjItemHdr.Descr FROM AdjItemHdr
               WHERE AdjItemHdr.InAdjItemId = InvenDet.ExSrcKeyVal)
       END AS Name,
       InvenDet.SeqNo
FROM InvenDet;

-- What customers' orders reserve: of each line what is not delivered yet, in stock units and
-- positive. A kit's line reserves the kit and, in rows of their own without a price, what it takes
-- of its components.
CREATE VIEW ItemReservedInvoi_View AS
SELECT InvoiHdr.InvoiDate AS TrxDate, InvoiHdr.InvoiId AS ID, InvoiDet.ExItemId,
       InvoiDet.ExWarehouseId,
       (InvoiDet.Qty - COALESCE((SELECT SUM(Delivered.Qty) FROM InvoiDet AS Delivered
                                 WHERE Delivered.ExOrderDetId = InvoiDet.InInvoiDetId), 0)) *
       COALESCE(NULLIF(Item.FacSales, 0), 1) AS Qty,
       7 AS TrxType, InvoiHdr.InInvoiId AS ExSrcKeyVal, InvoiDet.UnitPrice, Cust.Name,
       InvoiHdr.ExCurrencyId
FROM InvoiHdr INNER JOIN InvoiDet ON InvoiDet.ExInvoiId = InvoiHdr.InInvoiId
     INNER JOIN Item ON Item.InItemId = InvoiDet.ExItemId
     INNER JOIN Cust ON Cust.InCustId = InvoiHdr.ExCustId
WHERE InvoiHdr.InvoiType = 51
  AND InvoiDet.Qty > COALESCE((SELECT SUM(Delivered.Qty) FROM InvoiDet AS Delivered
                               WHERE Delivered.ExOrderDetId = InvoiDet.InInvoiDetId), 0)
UNION ALL
SELECT InvoiHdr.InvoiDate, InvoiHdr.InvoiId, ItemKitDet.ExItemId, InvoiDet.ExWarehouseId,
       (InvoiDet.Qty - COALESCE((SELECT SUM(Delivered.Qty) FROM InvoiDet AS Delivered
                                 WHERE Delivered.ExOrderDetId = InvoiDet.InInvoiDetId), 0)) *
       ItemKitDet.Qty * COALESCE(NULLIF(Item.FacSales, 0), 1),
       7, InvoiHdr.InInvoiId, CAST(NULL AS MONEY), Cust.Name, InvoiHdr.ExCurrencyId
FROM InvoiHdr INNER JOIN InvoiDet ON InvoiDet.ExInvoiId = InvoiHdr.InInvoiId
     INNER JOIN Item AS Kit ON Kit.InItemId = InvoiDet.ExItemId
     INNER JOIN ItemKitDet ON ItemKitDet.ExItemKitId = Kit.InItemId
     INNER JOIN Item ON Item.InItemId = ItemKitDet.ExItemId
     INNER JOIN Cust ON Cust.InCustId = InvoiHdr.ExCustId
WHERE InvoiHdr.InvoiType = 51 AND Kit.IsKit <> 0
  AND InvoiDet.Qty > COALESCE((SELECT SUM(Delivered.Qty) FROM InvoiDet AS Delivered
                               WHERE Delivered.ExOrderDetId = InvoiDet.InInvoiDetId), 0);

-- What planned assemblies reserve of their components, positive.
CREATE VIEW ItemReservedAssembly_View AS
SELECT AssemblyHdr.AssemblyDate AS TrxDate, AssemblyHdr.AssemblyId AS ID, AssemblyDet.ExItemId,
       AssemblyHdr.ExWarehouseId, AssemblyDet.Qty, 6 AS TrxType,
       AssemblyHdr.InAssemblyId AS ExSrcKeyVal, CAST(NULL AS MONEY) AS UnitPrice,
       Item.Descr1 AS Name, CAST(NULL AS INT) AS ExCurrencyId
FROM AssemblyHdr INNER JOIN AssemblyDet ON AssemblyDet.ExAssemblyId = AssemblyHdr.InAssemblyId
     INNER JOIN Item ON Item.InItemId = AssemblyHdr.ExItemId
WHERE AssemblyHdr.AssemblyStatus = 1;

-- Both.
CREATE VIEW ItemReservedAll_View AS
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, UnitPrice, Name,
       ExCurrencyId
FROM ItemReservedInvoi_View
UNION ALL
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, UnitPrice, Name,
       ExCurrencyId
FROM ItemReservedAssembly_View;

-- What is still to come from suppliers, positive: of each line of an order what was not received
-- or announced yet, and receptions that were announced and have not arrived. `ExPOID` is the order
-- or reception, `TrxId` its line, `ReqDate` when the goods are wanted. `QtyExpected` is the part
-- that the supplier has confirmed (`POrderStatus` 1), `OriginalRefNo` his number of the document.
CREATE VIEW ItemToRecExpPurch_View AS
SELECT PurcHdr.PurcDate AS TrxDate, PurcHdr.DocNo AS ID, PurcDet.ExItemId, PurcDet.ExWarehouseId,
       PurcDet.Qty - COALESCE((SELECT SUM(Received.Qty) FROM PurcDet AS Received
                               WHERE Received.ExPODetId = PurcDet.InPurcDetId), 0) AS Qty,
       1 AS TrxType, PurcHdr.InPurcId AS ExSrcKeyVal, PurcHdr.InPurcId AS ExPOID,
       PurcDet.InPurcDetId AS TrxId, Supp.Name, PurcDet.UnitPrice, PurcHdr.ReqDate,
       PurcHdr.ExCurrencyId, Supp.InSuppId, PurcHdr.PurcType,
       CAST(PurcHdr.PurcCredit AS INT) AS PurcCredit, PurcHdr.OriginalRefNo,
       CASE WHEN PurcHdr.POrderStatus = 1
            THEN PurcDet.Qty - COALESCE((SELECT SUM(Received.Qty) FROM PurcDet AS Received
                                         WHERE Received.ExPODetId = PurcDet.InPurcDetId), 0)
            ELSE 0 END AS QtyExpected
FROM PurcHdr INNER JOIN PurcDet ON PurcDet.ExPurcId = PurcHdr.InPurcId
     INNER JOIN Supp ON Supp.InSuppId = PurcHdr.ExSuppId
WHERE ((PurcHdr.PurcType = 51 AND COALESCE(PurcHdr.POrderStatus, 0) <> 3) OR
       (PurcHdr.PurcType = 52 AND PurcHdr.POrderStatus = 1))
  AND NOT PurcDet.ExItemId IS NULL
  AND PurcDet.Qty > COALESCE((SELECT SUM(Received.Qty) FROM PurcDet AS Received
                              WHERE Received.ExPODetId = PurcDet.InPurcDetId), 0);

-- The same without what is expected.
CREATE VIEW ItemToRecPurch_view AS
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
       UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit
FROM ItemToRecExpPurch_View;

-- What planned assemblies will make, positive; all of it is expected. They have no supplier and no
-- order.
CREATE VIEW ItemToRecExpAssembly_View AS
SELECT AssemblyHdr.AssemblyDate AS TrxDate, AssemblyHdr.AssemblyId AS ID, AssemblyHdr.ExItemId,
       AssemblyHdr.ExWarehouseId, AssemblyHdr.Qty, 6 AS TrxType,
       AssemblyHdr.InAssemblyId AS ExSrcKeyVal, CAST(NULL AS INT) AS ExPOID,
       AssemblyHdr.InAssemblyId AS TrxId, Item.Descr1 AS Name, CAST(NULL AS MONEY) AS UnitPrice,
       AssemblyHdr.AssemblyDate AS ReqDate, CAST(NULL AS INT) AS ExCurrencyId,
       CAST(NULL AS INT) AS InSuppId, CAST(NULL AS INT) AS PurcType,
       CAST(NULL AS INT) AS PurcCredit, CAST(NULL AS VARCHAR(20)) AS OriginalRefNo,
       AssemblyHdr.Qty AS QtyExpected
FROM AssemblyHdr INNER JOIN Item ON Item.InItemId = AssemblyHdr.ExItemId
WHERE AssemblyHdr.AssemblyStatus = 1;

-- The same without what is expected.
CREATE VIEW ItemToRecAssembly_View AS
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
       UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit
FROM ItemToRecExpAssembly_View;

-- Everything that is still to come, with and without what is expected.
CREATE VIEW ItemToRecExpected_View AS
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
       UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit, OriginalRefNo, QtyExpected
FROM ItemToRecExpPurch_View
UNION ALL
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
       UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit, OriginalRefNo, QtyExpected
FROM ItemToRecExpAssembly_View;

CREATE VIEW ItemToRec_View AS
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
       UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit
FROM ItemToRecPurch_view
UNION ALL
SELECT TrxDate, ID, ExItemId, ExWarehouseId, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
       UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit
FROM ItemToRecAssembly_View;

-- Totals of stock, one row for the movements of one item, day, warehouse, project and segment; kept
-- with every change of `InvenDet`.
CREATE VIEW InvenDetTotals WITH SCHEMABINDING AS
SELECT InvenDet.ExItemId, InvenDet.DetDate, InvenDet.ExWarehouseId, InvenDet.ExProjId,
       InvenDet.ExSegmentId, SUM(InvenDet.Qty) AS Qty, COUNT(*) AS MovementCount
FROM dbo.InvenDet
GROUP BY InvenDet.ExItemId, InvenDet.DetDate, InvenDet.ExWarehouseId, InvenDet.ExProjId,
         InvenDet.ExSegmentId;

-- An item's movements in ledger order, and its stock without touching the table.
CREATE INDEX InvenDetByItem ON InvenDet (ExItemId, DetDate, Type, SeqNo, InTrxId)
  INCLUDE (Qty, ExProjId, ExSegmentId, ExWarehouseId);
CREATE INDEX ItemKitDetByKit ON ItemKitDet (ExItemKitId);
CREATE INDEX ItemKitDetByItem ON ItemKitDet (ExItemId);
CREATE INDEX ItemReplacementByItem ON ItemReplacement (ExId);
-- What was delivered of an order's line.
CREATE INDEX InvoiDetByOrder ON InvoiDet (ExOrderDetId) INCLUDE (Qty);
CREATE INDEX AdjItemDetByHdr ON AdjItemDet (ExAdjItemId);
CREATE INDEX AdjItemDetByItem ON AdjItemDet (ExItemId);
CREATE INDEX AssemblyHdrByItem ON AssemblyHdr (ExItemId);
CREATE INDEX AssemblyHdrByStatus ON AssemblyHdr (AssemblyStatus);
CREATE INDEX AssemblyDetByHdr ON AssemblyDet (ExAssemblyId);
CREATE INDEX AssemblyDetByItem ON AssemblyDet (ExItemId);
CREATE INDEX WarehouseTransDetByHdr ON WarehouseTransDet (ExWarehouseTransId);
CREATE INDEX WarehouseTransDetByItem ON WarehouseTransDet (ExItemId);
