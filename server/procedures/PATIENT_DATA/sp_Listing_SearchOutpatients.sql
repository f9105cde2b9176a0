-- The pick list of out-patient and emergency visits, at most 500 rows; a number is the letter A and
-- digits, so the second character of @Text tells a number from a last name.
-- Result columns: those of sp_Listing_Search.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Listing_SearchOutpatients
GO

CREATE PROCEDURE sp_Listing_SearchOutpatients
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
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
        WHERE v.DcrDate IS NULL
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE IF LEFT(@Text, 1) = 'A' AND SUBSTRING(@Text, 2, 1) BETWEEN '0' AND '9'
        SELECT TOP (500) v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName,
            m.MiddleName, v.AdmDate, v.DcrDate, v.RoomID AS roomid
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
        WHERE v.IdNum LIKE @Prefix ESCAPE '!'
        ORDER BY v.IdNum;
    ELSE
        SELECT TOP (500) v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName,
            m.MiddleName, v.AdmDate, v.DcrDate, v.RoomID AS roomid
        FROM PATIENT_DATA..tbMaster m
        INNER JOIN PATIENT_DATA..tbOutPatient v ON v.HospNum = m.HospNum + ''
        WHERE m.LastName LIKE @Prefix ESCAPE '!'
        ORDER BY m.LastName, m.FirstName, v.AdmDate DESC;
END
GO
