-- The patient lists of the unit: a row a visit, newest first; CAPD modes show a patient's latest.
-- @Mode: 1 out-patients, current; 2 out-patients, all; 3 and 4 the CAPD register, current and all;
-- 5 emergency; 6 in-patients. Filled fields are matched by prefix, all of them; "A" alone as @IdNum
-- lists all. Returns IdNum, HospNum, AdmDate, LastName, FirstName, MiddleName, CAPDNum, roomid,
-- Address.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_Patientsearch
GO

CREATE PROCEDURE sp_CAPD_Patientsearch
    @Mode varchar(8000),
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @LastName varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @HospNum = LTRIM(RTRIM(@HospNum));
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @LastName = LTRIM(RTRIM(@LastName));
    IF @IdNum = 'A' AND @HospNum = '' AND @LastName = ''
        SET @IdNum = '';

    IF @Mode = '1'
        EXEC CLINICAL_AREA..sp_CAPD_SearchCurrent 'O', @HospNum, @IdNum, @LastName;
    ELSE IF @Mode = '2'
        EXEC CLINICAL_AREA..sp_CAPD_SearchVisits 'O', @HospNum, @IdNum, @LastName;
    ELSE IF @Mode = '3'
        EXEC CLINICAL_AREA..sp_CAPD_SearchRegister 1, @HospNum, @IdNum, @LastName;
    ELSE IF @Mode = '4'
        EXEC CLINICAL_AREA..sp_CAPD_SearchRegister 0, @HospNum, @IdNum, @LastName;
    ELSE IF @Mode = '5'
        EXEC CLINICAL_AREA..sp_CAPD_SearchVisits 'E', @HospNum, @IdNum, @LastName;
    ELSE IF @Mode = '6'
        EXEC CLINICAL_AREA..sp_CAPD_SearchAdmissions @HospNum, @IdNum, @LastName;
    ELSE
    BEGIN
        THROW 50101, 'Unknown search mode.', 1;
    END
END
GO
