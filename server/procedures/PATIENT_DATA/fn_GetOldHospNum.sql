-- The hospital number that a patient had before numbers were given anew; null where there was none.
-- @HospNum: the present number.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_GetOldHospNum
GO

CREATE FUNCTION fn_GetOldHospNum (@HospNum varchar(8000))
RETURNS varchar(20)
AS
BEGIN
    DECLARE @OldHospNum varchar(20);

    SELECT @OldHospNum = OldHospNum FROM PATIENT_DATA..tbMaster WHERE HospNum = @HospNum;
    RETURN @OldHospNum;
END
GO
