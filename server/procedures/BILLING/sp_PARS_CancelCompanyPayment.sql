-- Cancels what the funds paid of one charge line: all its shares go back to their accounts, and the
-- visit's registration follows. @RequestNum: one of the line's payments; @RefNum, @RevenueID,
-- @ItemID: the line. @CompanyID, @Amount (negative), @DrCr come with the call and decide nothing.
-- Changes nothing where that payment does not stand: a second time, or of another line. No rows.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PARS_CancelCompanyPayment
GO

CREATE PROCEDURE sp_PARS_CancelCompanyPayment
    @IdNum varchar(8000),
    @HospNum varchar(8000),
    @CompanyID varchar(8000),
    @Amount varchar(8000),
    @RefNum varchar(8000),
    @DrCr varchar(8000),
    @RevenueID varchar(8000),
    @RequestNum varchar(8000),
    @UserID varchar(8000),
    @ItemID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Payment int;
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @Payment = TRY_CONVERT(int, NULLIF(@RequestNum, ''));

    BEGIN TRANSACTION;
    IF EXISTS (
        SELECT 1
        FROM BILLING..tbCompanyPayment WITH (UPDLOCK, HOLDLOCK)
        WHERE RequestNum = @Payment
            AND IdNum = @IdNum
            AND HospNum = @HospNum
            AND RefNum = @RefNum
            AND RevenueID = @RevenueID
            AND ItemID = @ItemID
            AND CancelledAt IS NULL)
    BEGIN
        UPDATE BILLING..tbFundAccount
        SET FundBalance = FundBalance + (
            SELECT SUM(p.Amount)
            FROM BILLING..tbCompanyPayment p
            WHERE p.RefNum = @RefNum
                AND p.ItemID = @ItemID
                AND p.RevenueID = @RevenueID
                AND p.IdNum = @IdNum
                AND p.AccountNum = tbFundAccount.AccountNum
                AND p.CancelledAt IS NULL)
        WHERE AccountNum IN (
            SELECT s.AccountNum
            FROM BILLING..tbCompanyPayment s
            WHERE s.RefNum = @RefNum
                AND s.ItemID = @ItemID
                AND s.RevenueID = @RevenueID
                AND s.IdNum = @IdNum
                AND s.CancelledAt IS NULL);
        UPDATE BILLING..tbCompanyPayment
        SET CancelledAt = GETDATE(), CancelledBy = @UserID
        WHERE RefNum = @RefNum
            AND ItemID = @ItemID
            AND RevenueID = @RevenueID
            AND IdNum = @IdNum
            AND CancelledAt IS NULL;
        EXEC BILLING..SP_PDAF_UpdateOPDRegistration @HospNum, @IdNum;
    END
    COMMIT TRANSACTION;
END
GO
