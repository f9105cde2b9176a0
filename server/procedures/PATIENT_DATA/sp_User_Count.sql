-- How many users there are. Returns Users and CanLogIn, the users who have a password: a new
-- hospital without one asks for its first.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_User_Count
GO

CREATE PROCEDURE sp_User_Count
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT COUNT(*) AS Users,
        ISNULL(SUM(CASE WHEN PasswordHash <> '' THEN 1 ELSE 0 END), 0) AS CanLogIn
    FROM PATIENT_DATA..tbUser;
END
GO
