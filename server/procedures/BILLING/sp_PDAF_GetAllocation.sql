-- The fund accounts that pay a patient's charges of one revenue code, in the order in which they
-- pay; empty ones too, so that the first is always the one a visit is registered under.
-- @RevenueID: CY for fees and supplies, MD for doctors' fees. Returns AccountNum, FundBalance,
-- CompanyID, SeqNum.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PDAF_GetAllocation
GO

CREATE PROCEDURE sp_PDAF_GetAllocation
    @HospNum varchar(8000),
    @RevenueID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT f.AccountNum AS AccountNum, f.FundBalance AS FundBalance, f.CompanyID AS CompanyID,
        f.SeqNum AS SeqNum
    FROM BILLING..tbFundAccount f
    INNER JOIN BILLING..tbFundCostCenter c ON c.AccountNum = f.AccountNum AND c.RevenueID = @RevenueID
    WHERE f.HospNum = LTRIM(RTRIM(@HospNum))
    ORDER BY f.SeqNum;
END
GO
