-- The company itself: its parameters and settings, fiscal calendar, currencies, segments, projects
-- and items.
--
-- Conventions of the whole schema: `In...` is a table's own key and `Ex...` the key of a row
-- elsewhere; an amount is in the currency of its document unless its name ends in `Home`. Many
-- statements of the application name columns without their table, so a name that two tables share
-- is a name that no statement may use bare when it joins them. Where a table avoids an obvious
-- column name, that is why.

-- Numbers that accounting is set up with, mostly keys of ledger accounts (`GLAcct.InGLAcctId`).
CREATE TABLE QuorAcctParams (
  ParamName VARCHAR(50) NOT NULL PRIMARY KEY,
  ParamValue INT
);

-- Application parameters.
CREATE TABLE QuorCastriaParams (
  ParamName VARCHAR(50) NOT NULL PRIMARY KEY,
  ParamValue VARCHAR(255)
);

-- Company parameters that the application reads and writes while it runs.
CREATE TABLE CieParam (
  ParamName VARCHAR(50) NOT NULL PRIMARY KEY,
  ParamValue VARCHAR(255)
);

-- Texts of company settings; `{0}`, `{1}` and so on stand for values.
CREATE TABLE CieSetting (
  SettingName VARCHAR(50) NOT NULL PRIMARY KEY,
  SettingText VARCHAR(255)
);

-- Application settings by number; 133 allows helpers to keep recordsets in memory.
CREATE TABLE AppSetting (
  SettingNo INT NOT NULL PRIMARY KEY,
  SettingValue INT
);

-- Fiscal years, first and last day included.
CREATE TABLE FiscalYearHdr (
  ID INT NOT NULL PRIMARY KEY,
  Descr VARCHAR(50),
  BegDate DATETIME NOT NULL,
  EndDate DATETIME NOT NULL
);

-- Periods of the fiscal years (`ExID`), first and last day included.
CREATE TABLE FiscalYearDet (
  ID INT NOT NULL PRIMARY KEY,
  ExID INT NOT NULL REFERENCES FiscalYearHdr (ID),
  BegDate DATETIME NOT NULL,
  EndDate DATETIME NOT NULL
);

-- The company, one row. `AccountTypeChart` is 1 for the fixed chart of accounts, 2 for the French
-- one, anything else for one of the user's own; `SessionDate` the date the user works at;
-- `ExGLAcctCurrencyId` the account that takes exchange differences.
CREATE TABLE CieInfo (
  InCieId INT NOT NULL PRIMARY KEY,
  Name VARCHAR(60),
  HomeCurrencyId INT,
  ForeignCurrencyUsed BIT,
  AccountTypeChart INT,
  SessionDate DATETIME,
  ExGLAcctCurrencyId INT
);

-- Currencies. `UseCustomRate`: rates are typed in by hand. The accounts are the bank account kept
-- in the currency and its control accounts of receivables and payables.
CREATE TABLE WorldCurrency (
  InCurrencyId INT NOT NULL PRIMARY KEY,
  CurrencyCode VARCHAR(3) NOT NULL,
  Descr VARCHAR(50),
  UseCustomRate BIT DEFAULT 0,
  ExGLAcctId INT,
  ExCustAcctId INT,
  ExSuppAcctId INT
);

-- Segments: the places of business that results are told apart by.
CREATE TABLE Segment (
  InSegmentId INT NOT NULL PRIMARY KEY,
  SegmentId VARCHAR(20),
  Descr VARCHAR(60)
);

-- Projects.
CREATE TABLE Proj (
  InProjId INT NOT NULL PRIMARY KEY,
  ProjId VARCHAR(20),
  Descr VARCHAR(60),
  BegDate DATETIME,
  EndDate DATETIME,
  ProjInactive BIT DEFAULT 0
);

-- What is bought and sold. `Servc`: a service, never in stock. `IsKit`: sold as one and kept as its
-- components; `IsAssembly`: made of its components and kept itself (both in `ItemKitDet`).
-- `FacSales`: stock units in a sale unit, 1 where it is 0 or missing. `Price1` is for a sale unit.
-- `Hours`: hours of work in one unit, for items that count as hours of a project.
CREATE TABLE Item (
  InItemId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ItemId VARCHAR(20),
  Descr1 VARCHAR(100),
  Servc BIT DEFAULT 0,
  StockUnit VARCHAR(10),
  SaleUnit VARCHAR(10),
  FacSales DECIMAL(18,4),
  Price1 MONEY,
  Hours DECIMAL(18,4),
  ChkQtyWithBarCode BIT DEFAULT 0,
  IsKit BIT DEFAULT 0,
  IsAssembly BIT DEFAULT 0,
  ExSaleAcctId INT,
  ExPurcAcctId INT,
  ExDiscSalesAcctId INT,
  ExInvAcctId INT
);
