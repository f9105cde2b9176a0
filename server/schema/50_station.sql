-- The wards' side: the nurses' log book, medicines given, heart station and rehabilitation results.
USE STATION
GO

CREATE ROLE capd_user
GO

-- Dosage codes; Frequency is how many a day.
CREATE TABLE tbDosage (
    DosageID varchar(8) NOT NULL PRIMARY KEY,
    Dosage varchar(60) NOT NULL,
    Frequency int NOT NULL CHECK (Frequency > 0)
)
GO

CREATE INDEX ixDosageName ON tbDosage (Dosage)
GO

-- Requests of a ward to the pharmacy (PH) and the central supply room (CS). RecordStatus blank =
-- pending, X = processed. Option1 to Option7 are carried for other stations.
CREATE TABLE tbNurseLogBook (
    LogID int IDENTITY(1,1) PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    PatientType varchar(1) NOT NULL CHECK (PatientType IN ('I', 'O')),
    ItemCode varchar(10) NOT NULL,
    ItemName varchar(100),
    Amount money NOT NULL,
    Quantity decimal(12,2) NOT NULL,
    Dosage varchar(20),
    RequestDate datetime NOT NULL,
    DeptID varchar(5) NOT NULL,
    RecordStatus varchar(1) NOT NULL DEFAULT ' ' CHECK (RecordStatus IN (' ', 'X')),
    RequestedBy varchar(20) NOT NULL,
    Remarks varchar(100),
    Station varchar(20) NOT NULL,
    UnitPrice money,
    ProcessDate datetime,
    ProcessedBy varchar(20),
    ResultDate datetime,
    ResultBy varchar(20),
    Option1 varchar(20),
    Option2 varchar(20),
    Option3 varchar(20),
    Option4 varchar(20),
    Option5 varchar(20),
    Option6 varchar(20),
    Option7 varchar(20)
)
GO

CREATE INDEX ixNurseLogBookIdNum ON tbNurseLogBook (IdNum, RequestDate)
GO

CREATE INDEX ixNurseLogBookItem ON tbNurseLogBook (IdNum, ItemCode, DeptID)
GO

CREATE TABLE tbMedicineGiven (
    GivenID int IDENTITY(1,1) PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    TransDate datetime,
    DrugCode varchar(10) NOT NULL,
    DrugName varchar(100) NOT NULL,
    Dosage varchar(60),
    Quantity decimal(12,2) NOT NULL
)
GO

CREATE INDEX ixMedicineGivenIdNum ON tbMedicineGiven (IdNum, TransDate)
GO

CREATE TABLE tbHeartResult (
    RequestNum varchar(20) NOT NULL PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    ExamName varchar(100) NOT NULL,
    TransDate datetime NOT NULL,
    ResultDate datetime,
    Form varchar(20),
    AttendingDoctorID varchar(10),
    CardiologistID varchar(10),
    Diagnosis varchar(500),
    Remarks varchar(500),
    Resting varchar(2000),
    Exercise varchar(2000),
    Comments varchar(2000),
    Interpretation varchar(max)
)
GO

CREATE INDEX ixHeartResultIdNum ON tbHeartResult (IdNum, TransDate)
GO

CREATE TABLE tbPTResult (
    RequestNum varchar(20) NOT NULL PRIMARY KEY,
    RefNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    ExamCode varchar(10) NOT NULL,
    ExamName varchar(100) NOT NULL,
    TransDate datetime NOT NULL,
    ResultDate datetime,
    Diagnosis varchar(500),
    Result varchar(max),
    Remarks varchar(500),
    Interpretation varchar(max)
)
GO

CREATE INDEX ixPTResultIdNum ON tbPTResult (IdNum, TransDate)
GO
