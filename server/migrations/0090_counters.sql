-- The counters stand from the start: who sets a hospital up needs no rights on them. A register
-- that nobody is on yet begins with 1001.
USE CLINICAL_AREA
GO

INSERT INTO tbCAPDSlip (ChargeSlip) SELECT 1 WHERE NOT EXISTS (SELECT 1 FROM tbCAPDSlip)
GO

DELETE FROM tbCAPDNumber WHERE NOT EXISTS (SELECT 1 FROM tbCAPDPatient)
GO

INSERT INTO tbCAPDNumber (NextNumber) SELECT 1001 WHERE NOT EXISTS (SELECT 1 FROM tbCAPDNumber)
GO
