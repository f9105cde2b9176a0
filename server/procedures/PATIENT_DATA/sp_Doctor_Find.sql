-- One doctor by the exact code; no row when it is unknown.
-- Returns DoctorID, LastName, FirstName, MiddleName, Specialty.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Doctor_Find
GO

CREATE PROCEDURE sp_Doctor_Find
    @DoctorID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT DoctorID, LastName, FirstName, MiddleName, Specialty
    FROM PATIENT_DATA..tbDoctor
    WHERE DoctorID = LTRIM(RTRIM(@DoctorID));
END
GO
