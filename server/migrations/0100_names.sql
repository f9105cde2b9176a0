-- The names of patients and doctors are found without their accents. A column whose collation
-- changes must stand in no index meanwhile.
USE PATIENT_DATA
GO

DROP INDEX IF EXISTS ixMasterName ON tbMaster
GO

DROP INDEX IF EXISTS ixDoctorName ON tbDoctor
GO

ALTER TABLE tbMaster ALTER COLUMN LastName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL
GO

ALTER TABLE tbMaster ALTER COLUMN FirstName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL
GO

ALTER TABLE tbMaster ALTER COLUMN MiddleName varchar(60) COLLATE Latin1_General_CI_AI NULL
GO

ALTER TABLE tbDoctor ALTER COLUMN LastName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL
GO

ALTER TABLE tbDoctor ALTER COLUMN FirstName varchar(60) COLLATE Latin1_General_CI_AI NOT NULL
GO

ALTER TABLE tbDoctor ALTER COLUMN MiddleName varchar(60) COLLATE Latin1_General_CI_AI NULL
GO

CREATE INDEX ixMasterName ON tbMaster (LastName, FirstName)
GO

CREATE INDEX ixDoctorName ON tbDoctor (LastName, FirstName)
GO

USE BILLING
GO

DROP INDEX IF EXISTS ixCashAssessmentName ON tbCashAssessment
GO

ALTER TABLE tbCashAssessment ALTER COLUMN PatientName varchar(190) COLLATE Latin1_General_CI_AI NOT NULL
GO

CREATE INDEX ixCashAssessmentName ON tbCashAssessment (PatientName)
GO
