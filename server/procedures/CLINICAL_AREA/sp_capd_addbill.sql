-- Bills one of the unit's own fees to a visit. @RefNum: the slip; @Amount: hospital money of the
-- whole line; @RevenueID: the unit's code. Refuses what is no amount above 0 (50182) and a closed
-- account (50181). No rows.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_capd_addbill
GO

CREATE PROCEDURE sp_capd_addbill
    @RefNum varchar(8000),
    @IdNum varchar(8000),
    @ItemCode varchar(8000),
    @Amount varchar(8000),
    @UserID varchar(8000),
    @HospNum varchar(8000),
    @RevenueID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Fee money;
    SET @Amount = NULLIF(@Amount, '');
    SET @Fee = TRY_CONVERT(money, @Amount);
    IF @Fee IS NULL OR @Fee <= 0
    BEGIN
        THROW 50182, 'A charge needs an amount above 0.', 1;
    END
    EXEC PATIENT_DATA..sp_Account_Check @IdNum;

    INSERT INTO BILLING..tbBill (
        RefNum, IdNum, HospNum, RevenueID, ItemCode, Amount, UserID, TransDate)
    VALUES (
        @RefNum, LTRIM(RTRIM(@IdNum)), LTRIM(RTRIM(@HospNum)), @RevenueID, @ItemCode, @Fee,
        @UserID, GETDATE());
END
GO
