-- The patient listing's pick list, at most 500 rows.
-- @Code: 205 admissions, 204 out-patient and emergency visits; @Text: the beginning of a visit's
-- number or of a last name; an empty text lists the open ones, newest first.
-- Returns IDNumber, HospitalNumber, LastName, FirstName, MiddleName, AdmDate, DcrDate, roomid.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Listing_Search
GO

CREATE PROCEDURE sp_Listing_Search
    @Code varchar(8000),
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF @Code = '205'
        EXEC PATIENT_DATA..sp_Listing_SearchInpatients @Text;
    ELSE IF @Code = '204'
        EXEC PATIENT_DATA..sp_Listing_SearchOutpatients @Text;
    ELSE
    BEGIN
        THROW 50121, 'Unknown listing.', 1;
    END
END
GO
