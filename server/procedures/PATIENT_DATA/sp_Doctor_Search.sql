-- Doctors whose code begins with @Text or, where none does, whose last name does; an empty text
-- lists by name. At most 500 rows. Returns DoctorID, LastName, FirstName, MiddleName, Specialty.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Doctor_Search
GO

CREATE PROCEDURE sp_Doctor_Search
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    SET @Text = LTRIM(RTRIM(@Text));
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);

    IF EXISTS (
        SELECT 1 FROM PATIENT_DATA..tbDoctor d
        WHERE d.DoctorID LIKE @Prefix ESCAPE '!' AND @Text <> '')
        SELECT TOP (500) d.DoctorID, d.LastName, d.FirstName, d.MiddleName, d.Specialty
        FROM PATIENT_DATA..tbDoctor d
        WHERE d.DoctorID LIKE @Prefix ESCAPE '!'
        ORDER BY d.DoctorID;
    ELSE
        SELECT TOP (500) d.DoctorID, d.LastName, d.FirstName, d.MiddleName, d.Specialty
        FROM PATIENT_DATA..tbDoctor d
        WHERE d.LastName LIKE @Prefix ESCAPE '!'
        ORDER BY d.LastName, d.DoctorID;
END
GO
