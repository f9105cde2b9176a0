-- X-ray, ultrasound and CT-scan results, and the fund part of the slip being printed.
USE RADIOLOGY
GO

CREATE ROLE capd_user
GO

-- Modality X = x-ray, U = ultrasound, C = CT scan; ResultDate is null until it is read.
CREATE TABLE tbRadResult (
    TransNum varchar(20) NOT NULL PRIMARY KEY,
    Modality varchar(1) NOT NULL CHECK (Modality IN ('X', 'U', 'C')),
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    ExamName varchar(100) NOT NULL,
    TransDate datetime NOT NULL,
    ResultDate datetime,
    DoctorID varchar(10),
    Films int,
    Interpretation varchar(max)
)
GO

CREATE INDEX ixRadResultIdNum ON tbRadResult (IdNum, Modality, TransDate)
GO

-- The shares that fund accounts pay of the slip being printed; every row carries its connection.
CREATE TABLE tbChargeSlipFund (
    LineNum int IDENTITY(1,1) PRIMARY KEY,
    SPID int NOT NULL,
    RefNum varchar(20) NOT NULL,
    AccountNum varchar(20) NOT NULL,
    Company varchar(100) NOT NULL,
    RevenueID varchar(5) NOT NULL,
    ItemID varchar(10) NOT NULL,
    Amount money NOT NULL,
    UserID varchar(20)
)
GO

CREATE INDEX ixChargeSlipFundSPID ON tbChargeSlipFund (SPID, LineNum)
GO
