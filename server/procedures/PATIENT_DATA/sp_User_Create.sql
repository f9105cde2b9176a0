-- Adds a user. @UserName, @EmployeeCode, @EmployeeName, @DeptCode as kept; @PasswordHash: an
-- Argon2id text, or empty for a user who cannot log in yet. Refuses an empty name or code (50111)
-- and a name or employee code that is taken (50112).
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_User_Create
GO

CREATE PROCEDURE sp_User_Create
    @UserName varchar(8000),
    @EmployeeCode varchar(8000),
    @EmployeeName varchar(8000),
    @PasswordHash varchar(8000),
    @DeptCode varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @UserName = LTRIM(RTRIM(@UserName));
    SET @EmployeeCode = LTRIM(RTRIM(@EmployeeCode));
    IF @UserName = '' OR @EmployeeCode = ''
    BEGIN
        THROW 50111, 'A user needs a name and an employee code.', 1;
    END

    BEGIN TRANSACTION;
    IF EXISTS (
        SELECT 1 FROM PATIENT_DATA..tbUser WITH (UPDLOCK, HOLDLOCK)
        WHERE UserName = @UserName OR EmployeeCode = @EmployeeCode)
    BEGIN
        THROW 50112, 'This user name or employee code is already taken.', 1;
    END
    INSERT INTO PATIENT_DATA..tbUser (UserName, EmployeeCode, EmployeeName, PasswordHash, DeptCode)
    VALUES (@UserName, @EmployeeCode, @EmployeeName, @PasswordHash, @DeptCode);
    COMMIT TRANSACTION;
END
GO
