-- Payroll: employees, what they are paid, and what is withheld and remitted. Pays are posted under
-- the source PAY, remittances under RPD.

-- Employees.
CREATE TABLE Empl (
  InEmplId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  EmplId VARCHAR(20),
  FirstName VARCHAR(40),
  LastName VARCHAR(40),
  NameLang SMALLINT,
  HireDate DATETIME,
  EndDate DATETIME,
  HourlyRate MONEY
);

-- What the lines of a pay are. `PayCodeType`: 1 a deduction from the employee's pay, 2 the
-- employer's contribution beside it, 3 an amount paid, 4 hours worked. Hours and amounts are
-- charged to `ExExpAcct`, deductions owed on `ExLiaAcct`, contributions both.
CREATE TABLE PayCode (
  InPayCodeId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  PayCodeId VARCHAR(10),
  Descr VARCHAR(60),
  PayCodeType INT NOT NULL,
  ExLiaAcct INT,
  ExExpAcct INT
);

-- Pays, one for each employee and pay period. `ChqNb` is the number of the cheque or transfer on the
-- bank account `ExGLAcctId`. `NetAmnt` = `GrossAmnt` - deductions. A cancelled pay is posted and
-- posted back. No column is called `ExProjId` or `ExSegmentId`: those are the lines'.
CREATE TABLE TrxPay (
  InTrxPayId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExEmplId INT NOT NULL REFERENCES Empl (InEmplId),
  ChqDate DATETIME NOT NULL,
  ChqNb VARCHAR(20),
  PeriodBeg DATETIME,
  PeriodEnd DATETIME,
  GrossAmnt MONEY NOT NULL DEFAULT 0,
  NetAmnt MONEY NOT NULL DEFAULT 0,
  Canceled BIT DEFAULT 0,
  ExGLAcctId INT
);

-- Their lines: `Units` hours at `Rate` (null where the line is no hours), or an amount. Deductions
-- and contributions are positive.
CREATE TABLE TrxPayDetails (
  InTrxPayDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExTrxPayId INT NOT NULL REFERENCES TrxPay (InTrxPayId),
  ExPayCodeId INT NOT NULL REFERENCES PayCode (InPayCodeId),
  Units DECIMAL(18,4),
  Rate MONEY,
  Amount MONEY NOT NULL DEFAULT 0,
  ExProjId INT,
  ExSegmentId INT
);

-- Deductions and contributions of the pays from `DateFrom` to `DateTo`, remitted to an authority by
-- cheque or transfer `ChqNo`, which is the reference of the ledger lines. Statements join this table
-- with the ledger and name their columns bare, so it has no `DetAmnt`, `ForeignAmnt`, `ExProjId` or
-- `ExSegmentId`.
CREATE TABLE RPDPmtHdr (
  InRPDPmtId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ChqNo VARCHAR(20),
  ChqDate DATETIME NOT NULL,
  DateFrom DATETIME NOT NULL,
  DateTo DATETIME NOT NULL,
  PayTo VARCHAR(60),
  ChqAmnt MONEY NOT NULL DEFAULT 0,
  ExGLAcctId INT
);

-- What a remittance consists of, by pay code and liability account.
CREATE TABLE RPDPmtDet (
  InRPDPmtDetId INT NOT NULL IDENTITY(1,1) PRIMARY KEY,
  ExRPDPmtId INT NOT NULL REFERENCES RPDPmtHdr (InRPDPmtId),
  ExPayCodeId INT,
  Amount MONEY NOT NULL DEFAULT 0,
  ExGLAcctId INT
);

CREATE INDEX TrxPayByEmpl ON TrxPay (ExEmplId, ChqDate);
CREATE INDEX TrxPayDetailsByPay ON TrxPayDetails (ExTrxPayId);
-- Hours of a project.
CREATE INDEX TrxPayDetailsByProj ON TrxPayDetails (ExProjId)
  INCLUDE (ExTrxPayId, ExPayCodeId, Units, ExSegmentId);
CREATE INDEX RPDPmtDetByPmt ON RPDPmtDet (ExRPDPmtId);
