-- What a patient's funds hold for one cost centre, all accounts together: FundBalance, UtilizedFund,
-- AllocatedFund. @DeptID: CY or MD. No row where no account pays for it.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PDAF_GetBalance
GO

CREATE PROCEDURE sp_PDAF_GetBalance
    @HospNum varchar(8000),
    @DeptID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT SUM(f.FundBalance) AS FundBalance,
        SUM(f.AllocatedFund - f.FundBalance) AS UtilizedFund,
        SUM(f.AllocatedFund) AS AllocatedFund
    FROM BILLING..tbFundAccount f
    INNER JOIN BILLING..tbFundCostCenter c ON c.AccountNum = f.AccountNum AND c.RevenueID = @DeptID
    WHERE f.HospNum = LTRIM(RTRIM(@HospNum))
    GROUP BY f.HospNum;
END
GO
