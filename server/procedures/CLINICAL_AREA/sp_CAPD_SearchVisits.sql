-- All out-patient or emergency visits of the patient search, newest first.
-- @PatientType: O or E; the other fields are prefixes, an empty one does not narrow. Result columns:
-- those of sp_CAPD_Patientsearch.
-- The narrowest filled field leads the search through its index; the others only filter its rows.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SearchVisits
GO

CREATE PROCEDURE sp_CAPD_SearchVisits
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
    DECLARE @LastNamePrefix varchar(8000);
    SET @HospNumPrefix = PATIENT_DATA.dbo.fn_LikePrefix(@HospNum);
    SET @IdNumPrefix = PATIENT_DATA.dbo.fn_LikePrefix(@IdNum);
    SET @LastNamePrefix = PATIENT_DATA.dbo.fn_LikePrefix(@LastName);

    IF @IdNum <> ''
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.IdNum LIKE @IdNumPrefix ESCAPE '!'
            AND CASE WHEN @HospNum = '' OR LEFT(v.HospNum, LEN(@HospNum)) = @HospNum
                THEN 1 ELSE 0 END = 1
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
            AND v.PatientType = @PatientType
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE IF @HospNum <> ''
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.HospNum LIKE @HospNumPrefix ESCAPE '!'
            AND CASE WHEN @LastName = '' OR LEFT(m.LastName, LEN(@LastName)) = @LastName
                THEN 1 ELSE 0 END = 1
            AND v.PatientType = @PatientType
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE IF @LastName <> ''
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbMaster m
        INNER JOIN PATIENT_DATA..tbOutPatient v ON v.HospNum = m.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE m.LastName LIKE @LastNamePrefix ESCAPE '!'
            AND v.PatientType = @PatientType
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
    ELSE
        SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum,
            v.RoomID AS roomid, m.Address
        FROM PATIENT_DATA..tbOutPatient v
        INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum + ''
        LEFT JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum
        WHERE v.PatientType = @PatientType
        ORDER BY v.AdmDate DESC, v.IdNum DESC;
END
GO
