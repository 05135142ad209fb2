-- The tables and views that the statements beside this file read. The front end makes no difference
-- between reading a table and reading a view, so views stand here as tables.

CREATE TABLE Cust (
  InCustId INT NOT NULL PRIMARY KEY, CustId VARCHAR(20), CustInactive BIT, Name VARCHAR(60),
  Contact VARCHAR(60), ContactTitle VARCHAR(60), Tel1 VARCHAR(20), TelExt1 VARCHAR(20),
  Tel2 VARCHAR(20), TelExt2 VARCHAR(20), Fax VARCHAR(20), Email VARCHAR(60), Web VARCHAR(60),
  ExTermId INT, CreditLim MONEY, SalesPerson VARCHAR(60), CustFee BIT, SendStmnt BIT,
  ExGLAcctId INT, ExPriceLevelId INT, Discount FLOAT, MarginType SMALLINT, MarginDayLimit INT,
  CredOfficeRefNo VARCHAR(20), CredOfficeRating VARCHAR(20), CredOfficeDate DATETIME,
  NSFChqNb INT, CredNoticeNb INT, EDIExport BIT, EDIBusinessNo VARCHAR(20), NameLang SMALLINT,
  InvoiSendMeth SMALLINT, StmntSendMeth SMALLINT, Addr1 VARCHAR(60), Addr2 VARCHAR(60),
  City VARCHAR(60), Area VARCHAR(60), Zip VARCHAR(12), ExWarehouseId INT, ExTaxGroupId INT,
  ExCountryId INT, ShipVia VARCHAR(20), UseDirectDeposite BIT, Transit VARCHAR(10),
  Institution VARCHAR(10), Account VARCHAR(20), ExPmtMethId INT, ExCurrencyId INT
);
CREATE TABLE Supp (
  InSuppId INT NOT NULL PRIMARY KEY, SuppId VARCHAR(20), SuppInactive BIT, Name VARCHAR(60),
  Contact VARCHAR(60), ContactTitle VARCHAR(60), Tel1 VARCHAR(20), TelExt1 VARCHAR(20),
  Tel2 VARCHAR(20), TelExt2 VARCHAR(20), Fax VARCHAR(20), Email VARCHAR(60), Web VARCHAR(60),
  ExTermId INT, Addr1 VARCHAR(60), Addr2 VARCHAR(60), City VARCHAR(60), Area VARCHAR(60),
  ExCountryId INT, Zip VARCHAR(12), ExTaxGroupId INT, CreditLim MONEY, ExGLAcctId INT,
  Buyer VARCHAR(60), NameLang SMALLINT, SendPo BIT, IncludeInT5018 BIT,
  BusinessNumber VARCHAR(20), UseDirectDeposite BIT, Transit VARCHAR(10),
  Institution VARCHAR(10), Account VARCHAR(20), ExPmtMethId INT, ExCurrencyId INT
);
CREATE TABLE WorldCurrency (
  InCurrencyId INT NOT NULL PRIMARY KEY, CurrencyCode VARCHAR(3), Descr VARCHAR(60),
  UseCustomRate BIT, ExGLAcctId INT, ExCustAcctId INT, ExSuppAcctId INT
);
CREATE TABLE CustAgingDet (
  DetDate DATETIME, DocOrderDate DATETIME, DocOrderID INT, ExSrcId INT, DocNo VARCHAR(20),
  DetType INT, ExCustId INT, DetAmnt MONEY, TaxAmnt MONEY, TotAmnt MONEY, Balance MONEY,
  RecAmnt MONEY, ExchangeRate FLOAT, ExCurrencyId INT, DocType INT, ExSegmentId INT,
  PaymentCreditApplication INT
);
CREATE TABLE SuppAgingDet (
  DetDate DATETIME, DocOrderDate DATETIME, DocOrderId INT, ExSrcId INT, DocNo VARCHAR(20),
  DetType INT, PurcCredit BIT, ExSuppId INT, DetAmnt MONEY, TaxAmnt MONEY, TotAmnt MONEY,
  Balance MONEY, PaidAmnt MONEY, ExchangeRate FLOAT, ExCurrencyId INT, DocCredit BIT,
  ExSegmentId INT, PaymentCreditApplication INT
);
CREATE TABLE PmtHdr (
  InPmtId INT NOT NULL PRIMARY KEY, PmtDate DATETIME, ChqNo VARCHAR(20), ExCustId INT,
  PmtTotAmnt MONEY, ExchangeRate FLOAT, ExCurrencyId INT, ExSegmentId INT, ExGLAcctId INT
);
CREATE TABLE PmtDet (
  ExPmtId INT REFERENCES PmtHdr (InPmtId), ExPmtRefId INT, ExInvoiId INT, PmtAmnt MONEY,
  PmtDisc MONEY
);
CREATE TABLE SuppPmtHdr (
  InPmtId INT NOT NULL PRIMARY KEY, ChqDate DATETIME, ChqNo VARCHAR(20), ExSuppId INT,
  PmtTotAmnt MONEY, ExchangeRate FLOAT, ExCurrencyId INT, ExSegmentId INT
);
CREATE TABLE SuppPmtDet (
  ExPmtId INT, ExPmtRefId INT, ExPurcId INT, PmtAmnt MONEY, PmtDisc MONEY
);
CREATE TABLE InvoiHdr (
  InInvoiId INT NOT NULL PRIMARY KEY, InvoiType INT, InvoiDate DATETIME, Balance MONEY,
  ExCustId INT, DetAmnt MONEY, ShipAmnt MONEY, ExchangeRate FLOAT, ExCurrencyId INT
);
CREATE TABLE PurcHdr (
  InPurcId INT NOT NULL PRIMARY KEY, ExSuppId INT, PurcDate DATETIME, PurcType INT,
  DocNo VARCHAR(20), Balance MONEY, POrderStatus INT
);
CREATE TABLE InvoiPaidAmntAll_View (InInvoiId INT, TotalPaid MONEY);
CREATE TABLE PurcPaidAmntAll_View (InPurcId INT, TotalPaid MONEY);
CREATE TABLE CustHistoryList_View (
  InvoiDate DATETIME, InInvoiId INT, InvoiId VARCHAR(20), InvoiType INT, TotalToPay MONEY,
  TotAmnt MONEY, RecAmnt MONEY, ExCurrencyId INT, ExCustId INT
);
CREATE TABLE SuppHistoryList_View (
  PurcDate DATETIME, InPurcId INT, DocNo VARCHAR(20), PurcType INT, PurcCredit BIT,
  PaidAmnt MONEY, TotAmnt MONEY, TotalToPay MONEY, ExCurrencyId INT, ExSuppId INT
);
CREATE TABLE CustBalance_View (
  ExCustId INT, BalanceDate DATETIME, ExSegmentId INT, CustBalance MONEY, CustBalanceHome MONEY
);
CREATE TABLE SuppBalance_View (
  ExSuppId INT, BalanceDate DATETIME, ExSegmentId INT, SuppBalance MONEY, SuppBalanceHome MONEY
);
CREATE TABLE CustOpenCredits_View (ExCustId INT, CreditBalance MONEY);
CREATE TABLE SuppOpenCredits_View (ExSuppId INT, CreditBalance MONEY);
CREATE TABLE CustPmtUnappl_View (InPmtId INT, Unapplied MONEY);
CREATE TABLE SuppPmtUnappl_View (InPmtId INT, Unapplied MONEY);
CREATE TABLE CustLastPmt_View (ExCustId INT, LastPmt DATETIME, PmtCode INT, PmtTotAmnt MONEY);
CREATE TABLE CustLastSale_View (ExCustId INT, LastSale DATETIME, InInvoiId INT, TotAmnt MONEY);
CREATE TABLE SuppLastPmt_View (ExSuppId INT, LastPmt DATETIME, Code INT, PmtTotAmnt MONEY);
CREATE TABLE SuppLastPurc_View (ExSuppId INT, LastPurc DATETIME, InPurcId INT, TotAmnt MONEY);
CREATE TABLE SuppOpenRec_View (ExSuppId INT, InPurcId INT, PurcDate DATETIME);
CREATE TABLE SuppOpenPurcOrd_View (ExSuppId INT, InPurcId INT, PurcDate DATETIME);
CREATE TABLE PurcOpenExpectedRec_View (ExSuppId INT, InPurcId INT, PurcType INT);

CREATE TABLE GLDet (
  SeqNo INT NOT NULL PRIMARY KEY, DetDate DATETIME, ExSrcKeyVal INT, DetRef VARCHAR(20),
  Source VARCHAR(3), DetDesc VARCHAR(60), ExCurrencyID INT, DetAmnt MONEY, ForeignAmnt MONEY,
  ExAcctId INT, ExProjId INT, ExSegmentId INT, Conciliated BIT, Unconciliated BIT
);
CREATE INDEX GLDetByAcct ON GLDet (ExAcctId, DetDate DESC) INCLUDE (DetAmnt, ForeignAmnt);
CREATE TABLE GLAcct (
  InGLAcctId INT NOT NULL IDENTITY(1,1) PRIMARY KEY, GLAcctId VARCHAR(20), Descr VARCHAR(50),
  AcctType INT, ChqAcct BIT, GroupType INT, ExCurrencyId INT, CreatedByUser BIT
);
CREATE TABLE AccountType (
  ID INT NOT NULL PRIMARY KEY, AcctPrefix VARCHAR(6), ExAcctTypeDefId INT, ReverseBalance BIT
);
CREATE TABLE FiscalYearDet (
  ID INT NOT NULL PRIMARY KEY, ExID INT, BegDate DATETIME, EndDate DATETIME
);

CREATE TABLE InvenDet (
  ExItemId INT, Qty DECIMAL(18,4), DetDate DATETIME, Type INT, SeqNo INT, InTrxId INT,
  ExProjId INT, ExSegmentId INT, ExWarehouseId INT, RunningLastCost MONEY, RunningAvgCost MONEY,
  RunningValuesDirty SMALLINT
);
CREATE TABLE Item (
  InItemId INT NOT NULL PRIMARY KEY, ItemId VARCHAR(20), Descr1 VARCHAR(100), Servc BIT,
  FacSales DECIMAL(18,4), IsKit BIT, SaleUnit VARCHAR(10), Hours DECIMAL(18,4), ExInvAcctId INT
);
CREATE TABLE ItemKitDet (ExItemKitId INT, ExItemId INT, Qty DECIMAL(18,4));
CREATE TABLE PurcDet (
  InPurcDetId INT NOT NULL PRIMARY KEY, ExPurcId INT, ExItemId INT, Qty DECIMAL(18,4),
  ExProjId INT, ExSegmentId INT, ExRecId INT, ExRecDetId INT
);
CREATE TABLE InvoiDet (ExItemId INT);
CREATE TABLE AdjItemDet (ExItemId INT);
CREATE TABLE AssemblyHdr (ExItemId INT);
CREATE TABLE AssemblyDet (ExItemId INT);
CREATE TABLE WarehouseTransDet (ExItemId INT);
CREATE TABLE ItemAvgCost_View (
  TrxDate DATETIME, InTrxId INT, ID VARCHAR(20), ExItemId INT, ExWarehouseId INT,
  Qty DECIMAL(18,4), TrxType INT, ExSrcKeyVal INT, Name VARCHAR(60), SeqNo INT
);
CREATE TABLE ItemReservedInvoi_View (
  TrxDate DATETIME, ID VARCHAR(20), ExItemId INT, ExWarehouseId INT, Qty DECIMAL(18,4),
  TrxType INT, ExSrcKeyVal INT, UnitPrice MONEY, Name VARCHAR(60), ExCurrencyId INT
);
CREATE VIEW ItemReservedAssembly_View AS SELECT * FROM ItemReservedInvoi_View;
CREATE VIEW ItemReservedAll_View AS
  SELECT * FROM ItemReservedInvoi_View UNION ALL SELECT * FROM ItemReservedAssembly_View;
CREATE TABLE ItemToRecExpPurch_View (
  TrxDate DATETIME, ID VARCHAR(20), ExItemId INT, ExWarehouseId INT, Qty DECIMAL(18,4),
  TrxType INT, ExSrcKeyVal INT, ExPOID VARCHAR(20), TrxId INT, Name VARCHAR(60),
  UnitPrice MONEY, ReqDate DATETIME, ExCurrencyId INT, InSuppId INT, PurcType INT,
  PurcCredit INT, OriginalRefNo VARCHAR(20), QtyExpected DECIMAL(18,4)
);
CREATE VIEW ItemToRecPurch_view AS SELECT * FROM ItemToRecExpPurch_View;
CREATE VIEW ItemToRecAssembly_View AS SELECT * FROM ItemToRecExpPurch_View;
CREATE VIEW ItemToRecExpAssembly_View AS SELECT * FROM ItemToRecExpPurch_View;
CREATE VIEW ItemToRecExpected_View AS SELECT * FROM ItemToRecExpPurch_View;

CREATE TABLE Empl (
  InEmplId INT NOT NULL PRIMARY KEY, EmplId VARCHAR(20), FirstName VARCHAR(30),
  LastName VARCHAR(30)
);
CREATE TABLE TrxPay (
  InTrxPayId INT NOT NULL PRIMARY KEY, ExEmplId INT, ChqDate DATETIME, ChqNb VARCHAR(20),
  Canceled BIT
);
CREATE TABLE TrxPayDetails (
  ExTrxPayId INT, ExPayCodeId INT, ExProjId INT, ExSegmentId INT, Units DECIMAL(18,4)
);
CREATE TABLE PayCode (InPayCodeId INT NOT NULL PRIMARY KEY, PayCodeType INT, Descr VARCHAR(60));
CREATE TABLE ProjSales_View (ExProjId INT, ProjSales MONEY);
CREATE TABLE ProjBudgets (
  ExID INT, ExSegmentId INT, ExFiscalYearDetId INT, BudgetSales MONEY, BudgetPurch MONEY,
  BudgetHours MONEY
);

CREATE TABLE Term (
  InTermId INT NOT NULL PRIMARY KEY, TermMode INT, Due INT, DueNxtMonth INT, FirstPmtDay INT
);
CREATE TABLE TermDet (ExTermId INT, DueDate DATETIME);
CREATE TABLE TrxRec (
  TrxType INT, ExTrxId INT, Frqncy SMALLINT, LastRun DATETIME, NextRun DATETIME,
  PRIMARY KEY (TrxType, ExTrxId)
);
