-- What sponsors' funds paid on one day of the charges of one revenue code; 0 where nothing.
-- @Day: a midnight; @RevenueID: the code of the charge (payments for supplies are booked under the
-- unit's own code, so it is the item that tells them from the unit's fees).
USE CLINICAL_AREA
GO

DROP FUNCTION IF EXISTS fn_CAPD_FundPaid
GO

CREATE FUNCTION fn_CAPD_FundPaid (@Day datetime, @RevenueID varchar(8000))
RETURNS money
AS
BEGIN
    DECLARE @Paid money;

    IF EXISTS (
        SELECT 1 FROM BILLING..tbRevenueCode r
        WHERE r.RevenueID = @RevenueID AND r.SearchInventory = 1)
        SELECT @Paid = SUM(p.Amount)
        FROM BILLING..tbCompanyPayment p
        WHERE p.PaidAt >= @Day
            AND p.PaidAt < DATEADD(day, 1, @Day)
            AND p.CancelledAt IS NULL
            AND EXISTS (
                SELECT 1 FROM BILLING..tbStockCard s
                WHERE s.RefNum = p.RefNum AND s.ItemCode = p.ItemID AND s.RevenueID = @RevenueID);
    ELSE
        SELECT @Paid = SUM(p.Amount)
        FROM BILLING..tbCompanyPayment p
        WHERE p.PaidAt >= @Day
            AND p.PaidAt < DATEADD(day, 1, @Day)
            AND p.CancelledAt IS NULL
            AND p.RevenueID = @RevenueID
            AND NOT EXISTS (SELECT 1 FROM BILLING..tbDrug d WHERE d.DrugCode = p.ItemID);
    RETURN ISNULL(@Paid, 0);
END
GO
