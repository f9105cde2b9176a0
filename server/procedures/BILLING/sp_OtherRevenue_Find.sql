-- One fee of a revenue code by its exact item code; no row when it is unknown.
-- Returns RevenueID, ItemCode, OtherRevenue, RateA (hospital money for one; 0 is an open price).
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_OtherRevenue_Find
GO

CREATE PROCEDURE sp_OtherRevenue_Find
    @RevenueID varchar(8000),
    @ItemCode varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT RevenueID, ItemCode, OtherRevenue, RateA
    FROM BILLING..tbOtherRevenue
    WHERE RevenueID = LTRIM(RTRIM(@RevenueID)) AND ItemCode = LTRIM(RTRIM(@ItemCode));
END
GO
