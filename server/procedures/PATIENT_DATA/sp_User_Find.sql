-- One user by name, for the log-in; no row for an unknown name.
-- @UserName: as typed. Returns UserName, EmployeeCode, EmployeeName, PasswordHash (empty: no log-in
-- yet), DeptCode, Failures, LockedUntil, IsLocked (bit, by the server's clock).
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_User_Find
GO

CREATE PROCEDURE sp_User_Find
    @UserName varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT UserName, EmployeeCode, EmployeeName, PasswordHash, DeptCode, Failures, LockedUntil,
        CAST(CASE WHEN LockedUntil > GETDATE() THEN 1 ELSE 0 END AS bit) AS IsLocked
    FROM PATIENT_DATA..tbUser
    WHERE UserName = LTRIM(RTRIM(@UserName));
END
GO
