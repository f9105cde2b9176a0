-- What one unit of an item costs a patient. The price stands in the catalogue of the revenue code:
-- the stock's for codes with a stock location, the fees' for others. @DiscountType and
-- @MSSClassification choose the rate, which of the social service's discount (QF) goes by class; no
-- rate is no discount. @WithMarkUp has no effect, no price here carries a mark-up. Returns NetAmount,
-- Discount, Price (hospital money, the discount to two decimals); no row for an item without a price.
USE RADIOLOGY
GO

DROP PROCEDURE IF EXISTS spRadio_GetDiscount
GO

CREATE PROCEDURE spRadio_GetDiscount
    @RevenueID varchar(8000),
    @ItemCode varchar(8000),
    @DiscountType varchar(8000),
    @MSSClassification varchar(8000),
    @WithMarkUp varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Price money;
    DECLARE @Rate decimal(5,4);
    DECLARE @Discount money;
    SET @RevenueID = LTRIM(RTRIM(@RevenueID));
    SET @ItemCode = LTRIM(RTRIM(@ItemCode));

    IF EXISTS (
        SELECT 1 FROM BILLING..tbRevenueCode
        WHERE RevenueID = @RevenueID AND LocationID > '')
        SELECT @Price = SellingPriceOut FROM BILLING..tbDrug WHERE DrugCode = @ItemCode;
    ELSE
        SELECT @Price = RateA FROM BILLING..tbOtherRevenue
        WHERE RevenueID = @RevenueID AND ItemCode = @ItemCode;

    SELECT @Rate = Rate FROM BILLING..tbDiscountRate
    WHERE DiscType = LTRIM(RTRIM(@DiscountType))
        AND MSSClassification = CASE LTRIM(RTRIM(@DiscountType)) WHEN 'QF'
            THEN LTRIM(RTRIM(@MSSClassification)) ELSE '' END
        AND RevenueID = @RevenueID;

    SET @Discount = ROUND(@Price * ISNULL(@Rate, 0), 2);
    SELECT @Price - @Discount AS NetAmount, @Discount AS Discount, @Price AS Price
    WHERE @Price IS NOT NULL;
END
GO
