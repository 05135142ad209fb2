-- both: movements of an item
SELECT TrxDate, InTrxId, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, Name FROM
  ItemAvgCost_View WHERE ExItemID = ? AND TrxDate BETWEEN ? AND ? AND ExWarehouseID = ? ORDER BY
  TrxDate, TrxType, SeqNo, InTrxId

-- both: reserved quantities of an item
SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, UnitPrice, Name,
  ExCurrencyId, Item.Servc FROM ItemReservedInvoi_View LEFT JOIN Item ON
  ItemReservedInvoi_View.ExItemId = Item.InItemId WHERE TrxDate BETWEEN ? AND ?  AND ExItemID = 5
  AND ExWarehouseID = 2
UNION SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, UnitPrice, Name,
  ExCurrencyId, Item.Servc FROM ItemReservedAssembly_View LEFT JOIN Item ON
  ItemReservedAssembly_View.ExItemId = Item.InItemId WHERE TrxDate BETWEEN ? AND ?  AND ExItemID =
  5  AND ExWarehouseID = 2
ORDER BY TrxDate, ID

-- both: reserved quantity of an item in total
SELECT SUM(Qty) AS Qty, Item.Servc FROM ItemReservedInvoi_View LEFT JOIN Item ON
  ItemReservedInvoi_View.ExItemId = Item.InItemId WHERE TrxDate BETWEEN ? AND ?  AND ExItemID = 5
  GROUP BY Item.Servc
UNION SELECT SUM(Qty) AS Qty, Item.Servc FROM ItemReservedAssembly_View LEFT JOIN Item ON
  ItemReservedAssembly_View.ExItemId = Item.InItemId WHERE TrxDate BETWEEN ? AND ?  AND ExItemID =
  5 GROUP BY Item.Servc

-- both: reserved quantities of all items
SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, UnitPrice, Name,
  ExCurrencyId, Item.Servc FROM ItemReservedAll_View LEFT JOIN Item ON
  ItemReservedAll_View.ExItemId = Item.InItemId WHERE TrxDate BETWEEN ? AND ? ORDER BY TrxDate, ID

-- both: quantities to receive of an item
SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
  UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit FROM ItemToRecPurch_view WHERE
  TrxDate BETWEEN ? AND ?  AND ExItemID = ?  AND ExWarehouseID = ?  AND InSuppId = ?
 UNION SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId,
   Name, UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit FROM
   ItemToRecAssembly_View WHERE TrxDate BETWEEN ? AND ?  AND ExItemID = ?  AND ExWarehouseID = ?
   AND InSuppId = ?
 ORDER BY TrxDate, ID, TrxId

-- both: expected quantities of an item
SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
  UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit , OriginalRefNo, QtyExpected
  FROM ItemToRecExpPurch_View WHERE TrxDate BETWEEN ? AND ?  AND ExItemID = ?  AND (QtyExpected >
  0)
 UNION SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId,
   Name, UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit , OriginalRefNo,
   QtyExpected FROM ItemToRecExpAssembly_View WHERE TrxDate BETWEEN ? AND ?  AND ExItemID = ?  AND
   (QtyExpected > 0)
 ORDER BY TrxDate, ID, TrxId

-- both: quantities to receive of all items
SELECT TrxDate, ID, ExITemID, ExWarehouseID, Qty, TrxType, ExSrcKeyVal, ExPOID, TrxId, Name,
  UnitPrice, ReqDate, ExCurrencyId, InSuppId, PurcType, PurcCredit , OriginalRefNo, QtyExpected
  FROM ItemToRecExpected_View WHERE TrxDate BETWEEN ? AND ?  ORDER BY TrxDate, ID, TrxId

-- both: stock by project
SELECT ExItemId, SUM(InvenDet.Qty) AS QtyStock, InvenDet.ExProjId AS InProjId, Item.Servc FROM
  Item INNER JOIN InvenDet ON Item.InItemId = InvenDet.ExItemId WHERE InvenDet.DetDate BETWEEN ?
  AND ?  AND ExProjId IN (1,2)  AND ExItemId = ?  GROUP BY InvenDet.ExItemId, InvenDet.ExProjId,
  Item.Servc

-- server: stock of a kit
SELECT MIN(CAST(COALESCE(QtyStockView.QtyStock, 0) / (Qty * Case When Item.FacSales > 0 OR
  Item.FacSales < 0  then item.FacSales Else 1 End)  AS int)) AS QtyStock, ExItemKitId,
  QtyStockView.ExSegmentId, QtyStockView.ExProjId, Item.Servc
FROM (ItemKitDet LEFT JOIN (SELECT InvenDet.ExItemId AS InItemId, Sum(InvenDet.Qty) AS QtyStock,
  ExProjId, ExSegmentId
 FROM InvenDet  WHERE DetDate BETWEEN ? AND ?  AND ExWarehouseId = 2 GROUP BY InvenDet.ExItemId,
   InvenDet.ExProjId, InvenDet.ExSegmentId) As QtyStockView ON ItemKitDet.ExItemId =
   QtyStockView.InItemId)
INNER JOIN Item ON ItemKitDet.ExItemId = Item.InItemId WHERE (Servc=0 OR Servc IS NULL) AND Qty <>
  0  AND ExItemKitId = 9 GROUP BY ExItemKitId, QtyStockView.ExSegmentId, QtyStockView.ExProjId,
  Item.Servc

-- desktop: stock of a kit
SELECT MIN(Int(IIf(IsNull(QtyStockView.QtyStock), 0, QtyStockView.QtyStock) / (Qty *
  IIf(Item.FacSales > 0 OR Item.FacSales < 0, Item.FacSales, 1)))) AS QtyStock, ExItemKitId,
  QtyStockView.ExSegmentId,  QtyStockView.ExProjId, Item.Servc
FROM (ItemKitDet LEFT JOIN (SELECT InvenDet.ExItemId AS InItemId, Sum(InvenDet.Qty) AS QtyStock,
  ExProjId, ExSegmentId
 FROM InvenDet  WHERE DetDate BETWEEN ? AND ?  AND ExWarehouseId = 2 GROUP BY InvenDet.ExItemId,
   InvenDet.ExProjId, InvenDet.ExSegmentId) As QtyStockView ON ItemKitDet.ExItemId =
   QtyStockView.InItemId)
INNER JOIN Item ON ItemKitDet.ExItemId = Item.InItemId WHERE (Servc=0 OR Servc IS NULL) AND Qty <>
  0  AND ExItemKitId = 9 GROUP BY ExItemKitId, QtyStockView.ExSegmentId, QtyStockView.ExProjId,
  Item.Servc

-- both: stock of an item
SELECT ExItemId, SUM(InvenDet.Qty) AS QtyStock, ExProjId, ExSegmentId, Item.Servc FROM Item INNER
  JOIN InvenDet ON Item.InItemId = InvenDet.ExItemId WHERE InvenDet.DetDate BETWEEN ? AND ?  AND
  ExItemId = 5 AND ExWarehouseId = 2 GROUP BY InvenDet.ExItemId, InvenDet.ExProjId,
  InvenDet.ExSegmentId, Item.Servc

-- both: quantity on hand before a movement
SELECT SUM(InvenDet.Qty) As QtyOnHand, LC.LastCost as LastCost, LC.AvgCost as AvgCost,
  InvenDet.ExProjId, InvenDet.ExSegmentId FROM InvenDet RIGHT JOIN     (     SELECT TOP 1 ExItemID
  as ExItemID, RunningLastCost as LastCost, RunningAvgCost as AvgCost     FROM InvenDet     WHERE
  ExItemId = 5 AND           ((DetDate < ? AND InvenDet.SeqNo <>3) OR (DetDate = ? AND
          ((Type < 1) OR (Type=1 AND SeqNo < 3) OR           (Type=1 AND SeqNo = 3 AND InTrxId <
            8))))
    ORDER BY DetDate DESC, Type DESC, SeqNo DESC, InTrxID DESC     ) AS LC ON LC.ExItemID =
      InvenDet.ExItemID
WHERE ((DetDate < ? AND InvenDet.SeqNo <>3) OR (DetDate = ? AND       ((Type < 1) OR (Type=1 AND
  SeqNo < 3) OR       (Type=1 AND SeqNo = 3 AND InTrxId < 8))))
GROUP BY ExProjId, ExSegmentId, LC.LastCost, LC.AvgCost ORDER BY ExProjId, ExSegmentId

-- both: kits
SELECT InItemId, IsKit FROM Item WHERE IsKit <> 0

-- both: whether a line adjusts a reception
SELECT COUNT(*) FROM PurcDet WHERE ExPurcId = 3 AND InPurcDetId = 4 AND ExRecDetId > 0

-- both: stored costs to be computed again
UPDATE InvenDet SET RunningValuesDirty = 2 WHERE (DetDate > ?)  OR (DetDate = ? AND Type > 1) OR
  (DetDate = ? AND Type = 1 AND SeqNo > 3) AND RunningValuesDirty = 0

-- both: one column of an item
SELECT SaleUnit FROM Item WHERE InItemId=?

-- both: everything about an item
SELECT * FROM Item WHERE InItemId=?

-- both: use of an item in transactions
SELECT SUM(RecordCount) As TrxCount  FROM (    SELECT COUNT(ExItemId) As RecordCount    FROM
  InvenDet    WHERE ExItemId = 5
 UNION ALL    SELECT COUNT(ExItemId) As RecordCount    FROM Invoidet    WHERE ExItemId = 5
 UNION ALL    SELECT COUNT(ExItemId) As RecordCount    FROM PurcDet    WHERE ExItemId = 5
 UNION ALL    SELECT COUNT(ExItemId) As RecordCount    FROM AdjItemDet    WHERE ExItemId = 5
 UNION ALL    SELECT COUNT(ExItemId) As RecordCount    FROM AssemblyHdr    WHERE ExItemId = 5
 UNION ALL    SELECT COUNT(ExItemId) As RecordCount    FROM AssemblyDet    WHERE ExItemId = 5
 UNION ALL    SELECT COUNT(ExItemId) As RecordCount    FROM WarehouseTransDet    WHERE ExItemId =
   5
) AS ItemTrx

-- both: the reception of a line
SELECT ExRecId, ExRecDetId FROM PurcDet WHERE ExPurcId = ? AND InPurcDetId = ?

-- both: inventory accounts
SELECT ExInvAcctId FROM Item WHERE NOT ExInvAcctId IS NULL AND ExInvAcctId <> 30 GROUP BY
  ExInvAcctId
