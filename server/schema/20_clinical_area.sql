-- The CAPD unit's own tables: register, log book, requests, slip numbers and the print staging.
USE CLINICAL_AREA
GO

-- The CAPD register: the information sheet of a patient; the hospital number is the key.
CREATE TABLE tbCAPDPatient (
    HospNum varchar(20) NOT NULL PRIMARY KEY,
    CAPDNum varchar(20) NOT NULL UNIQUE,
    TypeOfPD varchar(20),
    ChronicPD varchar(20),
    Catheter varchar(20),
    NextKin varchar(120),
    Status varchar(60),
    Diagnosis varchar(500),
    AcutePDStartDate datetime,
    ChronicPDStartDate datetime,
    Weight varchar(20),
    Diet varchar(200),
    BP varchar(20),
    FluidRestriction varchar(100),
    DialysisShiftDate datetime,
    BloodType varchar(20),
    HBsAg varchar(60),
    Dialysis varchar(100),
    ShiftReason varchar(500),
    ShiftBackDate datetime,
    TransplantDate datetime,
    RejectionDate datetime,
    Remarks varchar(2000),
    Purpose varchar(20),
    WithPeritonitis varchar(1) NOT NULL DEFAULT 'N' CHECK (WithPeritonitis IN ('Y', 'N')),
    RegisteredAt datetime NOT NULL,
    RegisteredBy varchar(20) NOT NULL,
    UpdatedAt datetime,
    UpdatedBy varchar(20)
)
GO

-- The next CAPD number; one row.
CREATE TABLE tbCAPDNumber (
    NextNumber int NOT NULL PRIMARY KEY,
    OneRow int NOT NULL DEFAULT 1 UNIQUE CHECK (OneRow = 1)
)
GO

INSERT INTO tbCAPDNumber (NextNumber) VALUES (1001)
GO

-- The visits of CAPD patients. VisitDay is the midnight of TransDate: a patient has one a day.
CREATE TABLE tbCAPDLogBook (
    LogID int IDENTITY(1,1) PRIMARY KEY,
    IdNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    CAPDNum varchar(20) NOT NULL,
    TransDate datetime NOT NULL,
    VisitDay datetime NOT NULL,
    Diagnosis varchar(500),
    Weight varchar(20),
    BP varchar(20),
    ChronicPD varchar(20),
    Catheter varchar(20),
    Diet varchar(200),
    FluidRestriction varchar(100),
    AcutePDStartDate datetime,
    ChronicPDStartDate datetime,
    DialysisShiftDate datetime,
    BloodType varchar(20),
    HBsAg varchar(60),
    Dialysis varchar(100),
    ShiftReason varchar(500),
    ShiftBackDate datetime,
    TransplantDate datetime,
    RejectionDate datetime,
    Remarks varchar(2000),
    Purpose varchar(20),
    UserID varchar(20) NOT NULL
)
GO

CREATE UNIQUE INDEX ixLogBookPatientDay ON tbCAPDLogBook (HospNum, VisitDay)
GO

CREATE INDEX ixLogBookTransDate ON tbCAPDLogBook (TransDate)
GO

CREATE INDEX ixLogBookIdNum ON tbCAPDLogBook (IdNum, TransDate)
GO

-- The lines of charge slips as they were requested. Description and Price are those of that day;
-- net amount and discount of supplies stand on their row of the stock card.
CREATE TABLE tbCAPDRequest (
    RequestID int IDENTITY(1,1) PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    CAPDNum varchar(20),
    ItemCode varchar(10) NOT NULL,
    Quantity decimal(12,2) NOT NULL,
    Amount money NOT NULL,
    Department varchar(10) NOT NULL,
    RefNum varchar(20) NOT NULL,
    RevenueID varchar(5) NOT NULL,
    UserID varchar(20) NOT NULL,
    DoctorID varchar(10),
    DoctorName varchar(150),
    RequestDate datetime NOT NULL,
    Description varchar(200),
    Price money,
    StockCardID int
)
GO

CREATE INDEX ixRequestIdNum ON tbCAPDRequest (IdNum, RequestDate)
GO

CREATE INDEX ixRequestRefNum ON tbCAPDRequest (RefNum, ItemCode)
GO

-- The number that the next charge slip takes; one row.
CREATE TABLE tbCAPDSlip (
    ChargeSlip int NOT NULL PRIMARY KEY,
    OneRow int NOT NULL DEFAULT 1 UNIQUE CHECK (OneRow = 1)
)
GO

INSERT INTO tbCAPDSlip (ChargeSlip) VALUES (1)
GO

-- The slip being printed; every line carries its connection, LineNum keeps the typed order.
CREATE TABLE tbCAPDChargeSlip (
    LineNum int IDENTITY(1,1) PRIMARY KEY,
    SPID int NOT NULL,
    ItemCode varchar(10) NOT NULL,
    Description varchar(200),
    Quantity decimal(12,2) NOT NULL,
    Price money NOT NULL,
    Amount money NOT NULL,
    RevenueID varchar(5),
    UserID varchar(20),
    Discount money NOT NULL,
    NetAmount money NOT NULL
)
GO

CREATE INDEX ixChargeSlipSPID ON tbCAPDChargeSlip (SPID, LineNum)
GO
