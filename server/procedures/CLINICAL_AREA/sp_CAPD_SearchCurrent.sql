-- The out-patient or emergency visits that are today's or not discharged, newest first.
-- @PatientType: O or E; the other fields are prefixes, an empty one does not narrow. Result columns:
-- those of sp_CAPD_Patientsearch. Such visits are few: unless most of a number is given, they lead
-- the search, whatever name was typed.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SearchCurrent
GO

CREATE PROCEDURE sp_CAPD_SearchCurrent
    @PatientType varchar(1),
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @LastName varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    -- Joins add an empty text to the key of the table that leads: it is read first, by its index.
    DECLARE @HospNumPrefix varchar(8000);
    DECLARE @IdNumPrefix varchar(8000);
    SET @HospNumPrefix = PATIENT_DATA.dbo.fn_LikePrefix(@HospNum);
    SET @IdNumPrefix = PATIENT_DATA.dbo.fn_LikePrefix(@IdNum);
    DECLARE @Today datetime;
    SET @Today = PATIENT_DATA.dbo.fn_GetToday();

    IF LEN(@IdNum) > 5
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.IdNum LIKE @IdNumPrefix ESCAPE '!'
            AND v.PatientType = @PatientType
            AND CASE WHEN v.DcrDate IS NULL OR v.AdmDate >= @Today THEN 1 ELSE 0 END = 1
            AND CASE WHEN @HospNum = '' OR LEFT(v.HospNum, LEN(@HospNum)) = @HospNum
                THEN 1 ELSE 0 END = 1
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE IF LEN(@HospNum) > 4
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.HospNum LIKE @HospNumPrefix ESCAPE '!'
            AND v.PatientType = @PatientType
            AND CASE WHEN v.DcrDate IS NULL OR v.AdmDate >= @Today THEN 1 ELSE 0 END = 1
            AND CASE WHEN @IdNum = '' OR LEFT(v.IdNum, LEN(@IdNum)) = @IdNum THEN 1 ELSE 0 END = 1
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.DcrDate IS NULL
            AND v.PatientType = @PatientType
            AND CASE WHEN @IdNum = '' OR LEFT(v.IdNum, LEN(@IdNum)) = @IdNum THEN 1 ELSE 0 END = 1
            AND CASE WHEN @HospNum = '' OR LEFT(v.HospNum, LEN(@HospNum)) = @HospNum
                THEN 1 ELSE 0 END = 1
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
        UNION ALL
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.AdmDate >= @Today
            AND v.DcrDate IS NOT NULL
            AND v.PatientType = @PatientType
            AND CASE WHEN @IdNum = '' OR LEFT(v.IdNum, LEN(@IdNum)) = @IdNum THEN 1 ELSE 0 END = 1
            AND CASE WHEN @HospNum = '' OR LEFT(v.HospNum, LEN(@HospNum)) = @HospNum
                THEN 1 ELSE 0 END = 1
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
        ORDER BY AdmDate DESC, IdNum DESC;
END
GO
