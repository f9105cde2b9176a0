-- Patients, their admissions and visits, doctors, laboratory results and the users of the system.
USE PATIENT_DATA
GO

CREATE ROLE capd_user
GO

CREATE TABLE tbHospitalInfo (
    HospitalID int NOT NULL PRIMARY KEY,
    Company varchar(100) NOT NULL,
    address1 varchar(100) NOT NULL,
    MtsServerName varchar(100) NOT NULL DEFAULT ''
)
GO

CREATE TABLE tbCivilStatus (
    CivilStatusID varchar(1) NOT NULL PRIMARY KEY,
    CivilStatus varchar(30) NOT NULL
)
GO

CREATE TABLE tbNationality (
    NationalityID varchar(5) NOT NULL PRIMARY KEY,
    Nationality varchar(40) NOT NULL
)
GO

CREATE TABLE tbReligion (
    ReligionID varchar(5) NOT NULL PRIMARY KEY,
    Religion varchar(60) NOT NULL
)
GO

-- One row a patient, for life. Address holds the parts as one line, for lists. Names are found in
-- any case and without their accents.
CREATE TABLE tbMaster (
    HospNum varchar(20) NOT NULL PRIMARY KEY,
    OldHospNum varchar(20),
    LastName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL,
    FirstName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL,
    MiddleName varchar(60) COLLATE Latin1_General_CI_AI,
    Sex varchar(1) NOT NULL CHECK (Sex IN ('M', 'F')),
    BirthDate datetime,
    BirthPlace varchar(100),
    CivilStatus varchar(1),
    NationalityID varchar(5),
    ReligionID varchar(5),
    Occupation varchar(60),
    HouseStreet varchar(100),
    Barangay varchar(60),
    Town varchar(60),
    Province varchar(60),
    Address varchar(300),
    TelNum varchar(40),
    NextKin varchar(120),
    SpouseName varchar(120),
    FatherName varchar(120),
    MotherName varchar(120),
    MSSNum varchar(20),
    MSSClassification varchar(5)
)
GO

CREATE INDEX ixMasterName ON tbMaster (LastName, FirstName)
GO

-- Admissions: IdNum is all digits. An admission without DcrDate is in the house.
CREATE TABLE tbPatient (
    IdNum varchar(20) NOT NULL PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    AdmDate datetime NOT NULL,
    DcrDate datetime,
    RoomID varchar(10) NOT NULL,
    RoomClassID varchar(5),
    AccountNum varchar(20),
    Company varchar(100),
    DiscType varchar(2),
    BillingDate datetime,
    AttendingDoctorID varchar(10),
    AdmittingDoctorID varchar(10),
    AdmittingDiagnosis varchar(500),
    ChiefComplaint varchar(500),
    FinalDiagnosis varchar(500)
)
GO

CREATE INDEX ixPatientHospNum ON tbPatient (HospNum, AdmDate, IdNum)
GO

CREATE INDEX ixPatientAdmDate ON tbPatient (AdmDate, IdNum)
GO

CREATE INDEX ixPatientOpen ON tbPatient (DcrDate, AdmDate)
GO

-- Out-patient (O) and emergency (E) visits: IdNum begins with A and ends with B. An account with
-- a BillingDate is closed.
CREATE TABLE tbOutPatient (
    IdNum varchar(20) NOT NULL PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    AdmDate datetime NOT NULL,
    DcrDate datetime,
    PatientType varchar(1) NOT NULL CHECK (PatientType IN ('O', 'E')),
    RoomID varchar(10) NOT NULL,
    AccountNum varchar(20),
    Company varchar(100),
    DiscType varchar(2),
    BillingDate datetime,
    DoctorID varchar(10),
    ChiefComplaint varchar(500),
    Diagnosis varchar(500)
)
GO

CREATE INDEX ixOutPatientHospNum ON tbOutPatient (HospNum, AdmDate, IdNum)
GO

CREATE INDEX ixOutPatientAdmDate ON tbOutPatient (AdmDate, IdNum)
GO

-- Open visits are few and asked for all day long: they stand together in this index.
CREATE INDEX ixOutPatientOpen ON tbOutPatient (DcrDate, AdmDate)
GO

-- DoctorID 0 is kept free: it marks a doctor who is not on file.
CREATE TABLE tbDoctor (
    DoctorID varchar(10) NOT NULL PRIMARY KEY CHECK (DoctorID <> '0'),
    LastName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL,
    FirstName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL,
    MiddleName varchar(60) COLLATE Latin1_General_CI_AI,
    Specialty varchar(60)
)
GO

CREATE INDEX ixDoctorName ON tbDoctor (LastName, FirstName)
GO

CREATE TABLE tbLabSection (
    SectionID varchar(5) NOT NULL PRIMARY KEY,
    SectionName varchar(60) NOT NULL
)
GO

CREATE TABLE tbLabExam (
    LabExamID varchar(10) NOT NULL PRIMARY KEY,
    LabExam varchar(100) NOT NULL,
    SectionID varchar(5) NOT NULL
)
GO

-- One examination of a laboratory request; ResultDate is null until it is released.
CREATE TABLE tbLabResult (
    RequestNum varchar(20) NOT NULL,
    LabExamID varchar(10) NOT NULL,
    HospNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    RefNum varchar(20),
    RequestDate datetime NOT NULL,
    ResultDate datetime,
    DoctorID varchar(10),
    Remarks varchar(500),
    PRIMARY KEY (RequestNum, LabExamID)
)
GO

CREATE INDEX ixLabResultIdNum ON tbLabResult (IdNum, RequestDate)
GO

CREATE INDEX ixLabResultHospNum ON tbLabResult (HospNum, RequestDate)
GO

-- The values of an examination, in printed order; normal bounds are in the value's unit.
CREATE TABLE tbLabResultValue (
    RequestNum varchar(20) NOT NULL,
    LabExamID varchar(10) NOT NULL,
    LineNum int NOT NULL,
    TestName varchar(60) NOT NULL,
    ResultValue varchar(60) NOT NULL,
    Unit varchar(20),
    NormalRange varchar(60),
    NormalLow float,
    NormalHigh float,
    Flag varchar(1) CHECK (Flag IN ('H', 'L')),
    PRIMARY KEY (RequestNum, LabExamID, LineNum)
)
GO

-- PasswordHash is an Argon2id text; empty means that the user cannot log in yet.
CREATE TABLE tbUser (
    UserName varchar(60) NOT NULL PRIMARY KEY,
    EmployeeCode varchar(20) NOT NULL UNIQUE,
    EmployeeName varchar(100) NOT NULL,
    PasswordHash varchar(200) NOT NULL DEFAULT '',
    DeptCode varchar(10) NOT NULL,
    Failures int NOT NULL DEFAULT 0,
    LockedUntil datetime
)
GO

-- Every log-in and every refusal; UserName is what was typed, known or not.
CREATE TABLE tbLoginLog (
    LogID int IDENTITY(1,1) PRIMARY KEY,
    UserName varchar(60) NOT NULL,
    Outcome varchar(20) NOT NULL,
    Station varchar(100),
    LoggedAt datetime NOT NULL
)
GO

CREATE INDEX ixLoginLogUser ON tbLoginLog (UserName, LoggedAt)
GO
