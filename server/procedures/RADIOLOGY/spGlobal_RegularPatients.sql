-- The hospital's registered patients, at most 500, by last name. @SearchBy 0: the beginning of a last
-- name; 1: a hospital number, which is then the only answer, else the beginning of an admission or
-- visit number. @Current 1: only who has an out-patient visit of today or not discharged; 0: all;
-- empty, the direct look-up: a complete last name is taken too. Returns HospNum, LastName, FirstName,
-- MiddleName, BirthDate, CivilStatus, Sex, Age, HouseStreet, Barangay, Town, Province. Refuses
-- another @SearchBy (50101). Patients of a number are those of its first 5000 visits.
USE RADIOLOGY
GO

DROP PROCEDURE IF EXISTS spGlobal_RegularPatients
GO

CREATE PROCEDURE spGlobal_RegularPatients
    @Current varchar(8000),
    @SearchBy varchar(8000),
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    DECLARE @Today datetime;
    DECLARE @Year int;
    DECLARE @Day int;
    DECLARE @IsHospNum bit;
    DECLARE @IsLastName bit;
    SET @Text = ISNULL(LTRIM(RTRIM(@Text)), '');
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);
    SET @Today = PATIENT_DATA.dbo.fn_GetToday();
    SET @Year = YEAR(@Today);
    SET @Day = MONTH(@Today) * 100 + DAY(@Today);
    SET @IsHospNum = 0;
    SET @IsLastName = 0;
    IF @SearchBy <> '0' AND @SearchBy <> '1'
    BEGIN
        THROW 50101, 'Unknown search mode.', 1;
    END
    IF @SearchBy = '1' AND EXISTS (SELECT 1 FROM PATIENT_DATA..tbMaster m WHERE m.HospNum = @Text)
        SET @IsHospNum = 1;
    ELSE IF @Current = '' AND EXISTS (
        SELECT 1 FROM PATIENT_DATA..tbMaster m WHERE m.LastName = @Text)
        SET @IsLastName = 1;

    IF @IsHospNum = 1
        SELECT m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate, m.CivilStatus, m.Sex,
            @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.HouseStreet, m.Barangay, m.Town, m.Province
        FROM PATIENT_DATA..tbMaster m
        WHERE m.HospNum = @Text;
    ELSE IF @IsLastName = 1
        SELECT TOP (500) m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate,
            m.CivilStatus, m.Sex, @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.HouseStreet, m.Barangay, m.Town, m.Province
        FROM PATIENT_DATA..tbMaster m
        WHERE m.LastName = @Text
        ORDER BY m.LastName, m.FirstName;
    ELSE IF @Current = '1'
        -- Such visits are few: they lead, whatever was typed.
        SELECT TOP (500) m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate,
            m.CivilStatus, m.Sex, @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.HouseStreet, m.Barangay, m.Town, m.Province
        FROM PATIENT_DATA..tbMaster m
        WHERE m.HospNum IN (
                SELECT v.HospNum FROM PATIENT_DATA..tbOutPatient v
                WHERE v.DcrDate IS NULL
                    AND CASE WHEN @SearchBy = '0' OR LEFT(v.IdNum, LEN(@Text)) = @Text
                        THEN 1 ELSE 0 END = 1
                UNION ALL
                SELECT v.HospNum FROM PATIENT_DATA..tbOutPatient v
                WHERE v.AdmDate >= @Today
                    AND CASE WHEN @SearchBy = '0' OR LEFT(v.IdNum, LEN(@Text)) = @Text
                        THEN 1 ELSE 0 END = 1)
            AND CASE WHEN @SearchBy = '1' OR LEFT(m.LastName, LEN(@Text)) = @Text
                THEN 1 ELSE 0 END = 1
        ORDER BY m.LastName, m.FirstName;
    ELSE IF @SearchBy = '0'
        SELECT TOP (500) m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate,
            m.CivilStatus, m.Sex, @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.HouseStreet, m.Barangay, m.Town, m.Province
        FROM PATIENT_DATA..tbMaster m
        WHERE m.LastName LIKE @Prefix ESCAPE '!'
        ORDER BY m.LastName, m.FirstName;
    ELSE IF LEFT(@Text, 1) BETWEEN '0' AND '9'
        SELECT TOP (500) m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate,
            m.CivilStatus, m.Sex, @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.HouseStreet, m.Barangay, m.Town, m.Province
        FROM PATIENT_DATA..tbMaster m
        WHERE m.HospNum IN (
            SELECT TOP (5000) a.HospNum FROM PATIENT_DATA..tbPatient a
            WHERE a.IdNum LIKE @Prefix ESCAPE '!'
            ORDER BY a.IdNum)
        ORDER BY m.LastName, m.FirstName;
    ELSE
        SELECT TOP (500) m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate,
            m.CivilStatus, m.Sex, @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.HouseStreet, m.Barangay, m.Town, m.Province
        FROM PATIENT_DATA..tbMaster m
        WHERE m.HospNum IN (
            SELECT TOP (5000) v.HospNum FROM PATIENT_DATA..tbOutPatient v
            WHERE v.IdNum LIKE @Prefix ESCAPE '!'
            ORDER BY v.IdNum)
        ORDER BY m.LastName, m.FirstName;
END
GO
