-- The patients of the CAPD register with their latest out-patient or emergency visit, newest first.
-- @Current 1: that visit is today's or not discharged, 0: all; the other fields are prefixes, an
-- empty one does not narrow. Result columns: those of sp_CAPD_Patientsearch. A patient without a
-- visit is not listed. The register is short: but for most of a name or number it is read whole.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SearchRegister
GO

CREATE PROCEDURE sp_CAPD_SearchRegister
    @Current int,
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @LastName varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    -- Joins add an empty text to the key of the table that leads: it is read first, by its index.
    DECLARE @HospNumPrefix varchar(8000);
    DECLARE @LastNamePrefix varchar(8000);
    SET @HospNumPrefix = PATIENT_DATA.dbo.fn_LikePrefix(@HospNum);
    SET @LastNamePrefix = PATIENT_DATA.dbo.fn_LikePrefix(@LastName);
    DECLARE @Today datetime;
    SET @Today = PATIENT_DATA.dbo.fn_GetToday();

    IF @HospNum <> ''
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM CLINICAL_AREA..tbCAPDPatient c
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = c.HospNum + ''
        INNER JOIN PATIENT_DATA..tbOutPatient v ON v.IdNum = (
            SELECT TOP (1) x.IdNum FROM PATIENT_DATA..tbOutPatient x
            WHERE x.HospNum = c.HospNum
            ORDER BY x.AdmDate DESC, x.IdNum DESC)
        WHERE c.HospNum LIKE @HospNumPrefix ESCAPE '!'
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
            AND CASE WHEN @IdNum = '' OR LEFT(v.IdNum, LEN(@IdNum)) = @IdNum THEN 1 ELSE 0 END = 1
            AND CASE WHEN @Current = 0 OR v.DcrDate IS NULL OR v.AdmDate >= @Today
                THEN 1 ELSE 0 END = 1
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE IF LEN(@LastName) > 3
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbMaster m
        INNER JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = m.HospNum + ''
        INNER JOIN PATIENT_DATA..tbOutPatient v ON v.IdNum = (
            SELECT TOP (1) x.IdNum FROM PATIENT_DATA..tbOutPatient x
            WHERE x.HospNum = c.HospNum
            ORDER BY x.AdmDate DESC, x.IdNum DESC)
        WHERE m.LastName LIKE @LastNamePrefix ESCAPE '!'
            AND CASE WHEN @IdNum = '' OR LEFT(v.IdNum, LEN(@IdNum)) = @IdNum THEN 1 ELSE 0 END = 1
            AND CASE WHEN @Current = 0 OR v.DcrDate IS NULL OR v.AdmDate >= @Today
                THEN 1 ELSE 0 END = 1
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM CLINICAL_AREA..tbCAPDPatient c
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = c.HospNum + ''
        INNER JOIN PATIENT_DATA..tbOutPatient v ON v.IdNum = (
            SELECT TOP (1) x.IdNum FROM PATIENT_DATA..tbOutPatient x
            WHERE x.HospNum = c.HospNum
            ORDER BY x.AdmDate DESC, x.IdNum DESC)
        WHERE CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
            AND CASE WHEN @IdNum = '' OR LEFT(v.IdNum, LEN(@IdNum)) = @IdNum THEN 1 ELSE 0 END = 1
            AND CASE WHEN @Current = 0 OR v.DcrDate IS NULL OR v.AdmDate >= @Today
                THEN 1 ELSE 0 END = 1
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
END
GO
