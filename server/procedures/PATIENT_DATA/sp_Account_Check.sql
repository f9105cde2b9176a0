-- Refuses a charge on a visit or an admission whose account is closed (50181): it has been billed.
-- @IdNum: visit or admission; one that is not on file passes, as a walk-in's number is. No rows.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Account_Check
GO

CREATE PROCEDURE sp_Account_Check
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));
    IF EXISTS (SELECT 1 FROM PATIENT_DATA..tbOutPatient WHERE IdNum = @IdNum AND BillingDate IS NOT NULL)
        OR EXISTS (SELECT 1 FROM PATIENT_DATA..tbPatient WHERE IdNum = @IdNum AND BillingDate IS NOT NULL)
    BEGIN
        THROW 50181, 'Cannot post charges because the patient''s account has already been closed. Please contact BILLING DEPARTMENT for further instructions.', 1;
    END
END
GO
