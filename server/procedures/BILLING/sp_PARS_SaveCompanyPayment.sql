-- Pays a share of a charge line from a fund account and takes it off the account's balance.
-- @Amount: hospital money; what is 0 as money writes nothing. @RefNum: the slip. @RevenueID: CY or
-- MD. @SeqNum: the account's sequence number, taken from the account when empty. @ItemID: the
-- line's item. Refuses an amount that is none or below 0 (50151), an account that does not pay this
-- patient's charges of this kind (50152), a visit without a company (50153), more than the account
-- has left (50154), a closed account of the visit (50181). No rows.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PARS_SaveCompanyPayment
GO

CREATE PROCEDURE sp_PARS_SaveCompanyPayment
    @IdNum varchar(8000),
    @HospNum varchar(8000),
    @AccountNum varchar(8000),
    @Amount varchar(8000),
    @RefNum varchar(8000),
    @DrCr varchar(8000),
    @RevenueID varchar(8000),
    @SeqNum varchar(8000),
    @UserID varchar(8000),
    @ItemID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Share money;
    DECLARE @Balance money;
    DECLARE @CompanyID varchar(10);
    DECLARE @AccountSeqNum int;
    SET @Amount = NULLIF(@Amount, '');
    SET @Share = TRY_CONVERT(money, @Amount);
    IF @Share IS NULL OR @Share < 0
    BEGIN
        THROW 50151, 'A payment needs an amount above 0.', 1;
    END
    IF @Share = 0
        RETURN;
    EXEC PATIENT_DATA..sp_Account_Check @IdNum;

    BEGIN TRANSACTION;
    SELECT @Balance = f.FundBalance, @CompanyID = f.CompanyID, @AccountSeqNum = f.SeqNum
    FROM BILLING..tbFundAccount f WITH (UPDLOCK, HOLDLOCK)
    WHERE f.AccountNum = @AccountNum
        AND f.HospNum = @HospNum
        AND EXISTS (
            SELECT 1 FROM BILLING..tbFundCostCenter c
            WHERE c.AccountNum = f.AccountNum AND c.RevenueID = @RevenueID);
    IF @Balance IS NULL
    BEGIN
        THROW 50152, 'The fund account does not pay this patient''s charges of this kind.', 1;
    END
    IF NOT EXISTS (SELECT 1 FROM BILLING..tbVisitAccount WHERE IdNum = @IdNum AND HospNum = @HospNum)
    BEGIN
        THROW 50153, 'The visit is not charged to a company.', 1;
    END
    IF @Share > @Balance
    BEGIN
        THROW 50154, 'The fund account has less left than this payment.', 1;
    END

    UPDATE BILLING..tbFundAccount SET FundBalance = FundBalance - @Share WHERE AccountNum = @AccountNum;
    INSERT INTO BILLING..tbCompanyPayment (
        IdNum, HospNum, AccountNum, CompanyID, Amount, RefNum, DrCr, RevenueID, SeqNum, ItemID,
        UserID, PaidAt)
    VALUES (
        LTRIM(RTRIM(@IdNum)), @HospNum, @AccountNum, @CompanyID, @Share, @RefNum, @DrCr,
        @RevenueID, ISNULL(TRY_CONVERT(int, NULLIF(@SeqNum, '')), @AccountSeqNum), @ItemID,
        @UserID, GETDATE());
    COMMIT TRANSACTION;
END
GO
