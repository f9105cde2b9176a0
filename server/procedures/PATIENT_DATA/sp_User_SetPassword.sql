-- Gives a user who cannot log in yet the first password. @PasswordHash: an Argon2id text.
-- Refuses an unknown user and one who already has a password (50113).
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_User_SetPassword
GO

CREATE PROCEDURE sp_User_SetPassword
    @UserName varchar(8000),
    @PasswordHash varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    UPDATE tbUser
    SET PasswordHash = @PasswordHash, Failures = 0, LockedUntil = NULL
    WHERE UserName = LTRIM(RTRIM(@UserName)) AND PasswordHash = '';
    IF @@ROWCOUNT = 0
    BEGIN
        THROW 50113, 'The user is unknown or already has a password.', 1;
    END
END
GO
