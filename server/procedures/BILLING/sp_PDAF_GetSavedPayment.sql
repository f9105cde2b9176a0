-- The payments of one charge line that stand, oldest first: RequestNum, CompanyID, AccountNum,
-- Amount. @RefNum: the slip. @RevenueID: CY or MD. @ItemID: the line's item. The rows are held
-- until the caller's transaction ends, so that only one station cancels them.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PDAF_GetSavedPayment
GO

CREATE PROCEDURE sp_PDAF_GetSavedPayment
    @IdNum varchar(8000),
    @RefNum varchar(8000),
    @RevenueID varchar(8000),
    @ItemID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT RequestNum, CompanyID, AccountNum, Amount
    FROM BILLING..tbCompanyPayment WITH (UPDLOCK, HOLDLOCK)
    WHERE RefNum = @RefNum
        AND ItemID = @ItemID
        AND RevenueID = @RevenueID
        AND IdNum = LTRIM(RTRIM(@IdNum))
        AND CancelledAt IS NULL
    ORDER BY RequestNum;
END
GO
