-- A doctor's complete name, first name first; null for a code that is not on file.
-- @DoctorID: the doctor's code.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_GetDoctorName
GO

CREATE FUNCTION fn_GetDoctorName (@DoctorID varchar(8000))
RETURNS varchar(200)
AS
BEGIN
    DECLARE @Name varchar(200);

    SELECT @Name = CONCAT(FirstName, ' ',
        CASE WHEN ISNULL(MiddleName, '') = '' THEN '' ELSE MiddleName + ' ' END, LastName)
    FROM PATIENT_DATA..tbDoctor
    WHERE DoctorID = @DoctorID;
    RETURN @Name;
END
GO
