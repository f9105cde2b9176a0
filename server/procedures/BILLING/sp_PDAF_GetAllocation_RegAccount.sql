-- What is left in the account that a visit is registered under: FundBalance. A row only where that
-- account is the first that pays charges of this kind; else the visit has no registered account to
-- begin with. @DeptID: CY or MD.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PDAF_GetAllocation_RegAccount
GO

CREATE PROCEDURE sp_PDAF_GetAllocation_RegAccount
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @DeptID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT f.FundBalance AS FundBalance
    FROM BILLING..tbVisitAccount v
    INNER JOIN BILLING..tbFundAccount f ON f.AccountNum = v.FundAccountNum AND f.HospNum = v.HospNum
    INNER JOIN BILLING..tbFundCostCenter c ON c.AccountNum = f.AccountNum AND c.RevenueID = @DeptID
    WHERE v.IdNum = LTRIM(RTRIM(@IdNum))
        AND v.HospNum = LTRIM(RTRIM(@HospNum))
        AND NOT EXISTS (
            SELECT 1
            FROM BILLING..tbFundAccount e
            INNER JOIN BILLING..tbFundCostCenter d ON d.AccountNum = e.AccountNum AND d.RevenueID = @DeptID
            WHERE e.HospNum = v.HospNum AND e.SeqNum < f.SeqNum);
END
GO
