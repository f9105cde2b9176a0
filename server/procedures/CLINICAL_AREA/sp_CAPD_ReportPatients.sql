-- The CAPD register, by name, for the printed list of CAPD patients.
-- Returns CAPDNum, HospNum, LastName, FirstName, MiddleName, Age (years today), Sex, TypeOfPD,
-- Status, Diagnosis, RegisteredAt, LatestVisit (null before the first logged visit), Visits.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_ReportPatients
GO

CREATE PROCEDURE sp_CAPD_ReportPatients
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT c.CAPDNum, c.HospNum, m.LastName, m.FirstName, m.MiddleName,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, GETDATE()) AS Age, m.Sex, c.TypeOfPD, c.Status,
        c.Diagnosis, c.RegisteredAt,
        (SELECT MAX(l.TransDate) FROM CLINICAL_AREA..tbCAPDLogBook l WHERE l.HospNum = c.HospNum) AS LatestVisit,
        (SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDLogBook n WHERE n.HospNum = c.HospNum) AS Visits
    FROM CLINICAL_AREA..tbCAPDPatient c
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = c.HospNum
    ORDER BY m.LastName, m.FirstName, c.CAPDNum;
END
GO
