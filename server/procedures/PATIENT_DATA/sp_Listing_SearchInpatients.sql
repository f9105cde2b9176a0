-- The pick list of admissions, at most 500 rows; numbers are all digits, so the first character of
-- @Text tells a number from a last name. Result columns: those of sp_Listing_Search.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Listing_SearchInpatients
GO

CREATE PROCEDURE sp_Listing_SearchInpatients
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    SET @Text = LTRIM(RTRIM(@Text));
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);

    IF @Text = ''
        SELECT TOP (500) v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName,
            m.MiddleName, v.AdmDate, v.DcrDate, v.RoomID AS roomid
        FROM PATIENT_DATA..tbPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
        WHERE v.DcrDate IS NULL
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE IF LEFT(@Text, 1) BETWEEN '0' AND '9'
        SELECT TOP (500) v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName,
            m.MiddleName, v.AdmDate, v.DcrDate, v.RoomID AS roomid
        FROM PATIENT_DATA..tbPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
        WHERE v.IdNum LIKE @Prefix ESCAPE '!'
        ORDER BY v.IdNum;
    ELSE
        SELECT TOP (500) v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName,
            m.MiddleName, v.AdmDate, v.DcrDate, v.RoomID AS roomid
        FROM PATIENT_DATA..tbMaster m
        INNER JOIN PATIENT_DATA..tbPatient v ON v.HospNum = m.HospNum + ''
        WHERE m.LastName LIKE @Prefix ESCAPE '!'
        ORDER BY m.LastName, m.FirstName, v.AdmDate DESC;
END
GO
