-- Opens a new hospital: its name and address, and its first user.
-- @Company, @Address1: as printed; the other parameters: those of sp_User_Create.
-- Refuses an empty name (50114), a hospital that is set up already (50115), and what sp_User_Create
-- refuses; nothing is written then.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Hospital_SetUp
GO

CREATE PROCEDURE sp_Hospital_SetUp
    @Company varchar(8000),
    @Address1 varchar(8000),
    @UserName varchar(8000),
    @EmployeeCode varchar(8000),
    @EmployeeName varchar(8000),
    @PasswordHash varchar(8000),
    @DeptCode varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @Company = LTRIM(RTRIM(@Company));
    IF @Company = ''
    BEGIN
        THROW 50114, 'A hospital needs a name.', 1;
    END

    BEGIN TRANSACTION;
    IF EXISTS (SELECT 1 FROM PATIENT_DATA..tbHospitalInfo WITH (UPDLOCK, HOLDLOCK))
    BEGIN
        THROW 50115, 'This hospital is already set up.', 1;
    END
    INSERT INTO PATIENT_DATA..tbHospitalInfo (HospitalID, Company, address1)
    VALUES (1, @Company, LTRIM(RTRIM(@Address1)));
    EXEC PATIENT_DATA..sp_User_Create @UserName, @EmployeeCode, @EmployeeName, @PasswordHash, @DeptCode;
    COMMIT TRANSACTION;
END
GO
