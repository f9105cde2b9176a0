-- The cashier's receipt for an assessment: all its lines become paid at once. @RefNum: the slip's
-- number, @ORNum: the official receipt's. A second time with the same receipt changes nothing.
-- Refuses a payment without a receipt, an unknown assessment, one that is revoked and one that
-- another receipt has paid (50171 to 50174).
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_Cashier_Pay
GO

CREATE PROCEDURE sp_Cashier_Pay
    @RefNum varchar(8000),
    @ORNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Lines int;
    DECLARE @Revoked int;
    DECLARE @Paid int;
    SET @ORNum = LTRIM(RTRIM(@ORNum));
    IF ISNULL(@ORNum, '') = ''
    BEGIN
        THROW 50171, 'A payment needs its receipt.', 1;
    END
    BEGIN TRANSACTION;
    SELECT @Lines = COUNT(*), @Revoked = COUNT(CASE WHEN RecordStatus = 'R' THEN 1 END),
        @Paid = COUNT(CASE WHEN ORNum <> @ORNum THEN 1 END)
    FROM BILLING..tbCashAssessment WITH (UPDLOCK, HOLDLOCK)
    WHERE RefNum = @RefNum;
    IF @Lines = 0
    BEGIN
        THROW 50172, 'There is no such assessment.', 1;
    END
    IF @Revoked > 0
    BEGIN
        THROW 50173, 'The assessment is revoked.', 1;
    END
    IF @Paid > 0
    BEGIN
        THROW 50174, 'The assessment is paid with another receipt.', 1;
    END
    UPDATE BILLING..tbCashAssessment SET ORNum = @ORNum WHERE RefNum = @RefNum AND ORNum IS NULL;
    COMMIT TRANSACTION;
END
GO
