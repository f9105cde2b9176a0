-- Records a log-in or a refusal and keeps the count of refusals.
-- @UserName: as typed, known or not; @Outcome: OK clears the count, any other (REFUSED) counts; the
-- fifth in a row locks the user for five minutes, in which refusals only go to the log.
-- @Station: the workstation. Returns IsLocked (bit), no row for an unknown user.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_User_RecordLogin
GO

CREATE PROCEDURE sp_User_RecordLogin
    @UserName varchar(8000),
    @Outcome varchar(8000),
    @Station varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Now datetime;
    DECLARE @Failures int;
    DECLARE @LockedUntil datetime;
    SET @UserName = LTRIM(RTRIM(@UserName));
    SET @Now = GETDATE();

    BEGIN TRANSACTION;
    INSERT INTO PATIENT_DATA..tbLoginLog (UserName, Outcome, Station, LoggedAt)
    VALUES (LEFT(@UserName, 60), LEFT(@Outcome, 20), LEFT(@Station, 100), @Now);

    SELECT @Failures = Failures, @LockedUntil = LockedUntil
    FROM PATIENT_DATA..tbUser WITH (UPDLOCK, HOLDLOCK)
    WHERE UserName = @UserName;

    IF @Failures IS NOT NULL AND @Outcome = 'OK'
        UPDATE PATIENT_DATA..tbUser SET Failures = 0, LockedUntil = NULL WHERE UserName = @UserName;
    ELSE IF @Failures IS NOT NULL AND (@LockedUntil IS NULL OR @LockedUntil <= @Now)
    BEGIN
        SET @Failures = @Failures + 1;
        IF @Failures >= 5
            UPDATE PATIENT_DATA..tbUser
            SET Failures = 0, LockedUntil = DATEADD(minute, 5, @Now)
            WHERE UserName = @UserName;
        ELSE
            UPDATE PATIENT_DATA..tbUser SET Failures = @Failures WHERE UserName = @UserName;
    END
    COMMIT TRANSACTION;

    SELECT CAST(CASE WHEN LockedUntil > @Now THEN 1 ELSE 0 END AS bit) AS IsLocked
    FROM PATIENT_DATA..tbUser
    WHERE UserName = @UserName;
END
GO
