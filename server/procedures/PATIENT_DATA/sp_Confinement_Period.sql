-- A patient's stays, admissions and visits, newest first. @HospNum: exact.
-- Returns "Admision No.", "Admision Date/Time", "Discharged Date/Time" (null while open), "Room".
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Confinement_Period
GO

CREATE PROCEDURE sp_Confinement_Period
    @HospNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @HospNum = LTRIM(RTRIM(@HospNum));

    SELECT v.IdNum AS [Admision No.], v.AdmDate AS [Admision Date/Time],
        v.DcrDate AS [Discharged Date/Time], v.RoomID AS [Room]
    FROM PATIENT_DATA..tbPatient v
    WHERE v.HospNum = @HospNum
    UNION ALL
    SELECT v.IdNum AS [Admision No.], v.AdmDate AS [Admision Date/Time],
        v.DcrDate AS [Discharged Date/Time], v.RoomID AS [Room]
    FROM PATIENT_DATA..tbOutPatient v
    WHERE v.HospNum = @HospNum
    ORDER BY [Admision Date/Time] DESC, [Admision No.] DESC;
END
GO
