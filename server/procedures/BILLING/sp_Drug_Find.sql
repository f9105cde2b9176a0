-- One medicine or supply by its exact code; no row when it is unknown, or not kept at the location.
-- @LocationID: a stock location, or empty for all of them together. Returns DrugCode, DrugName,
-- Status (bit, 1 = inactive), SellingPriceIn, SellingPriceOut (for one), Unit, Kind, OnHand.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_Drug_Find
GO

CREATE PROCEDURE sp_Drug_Find
    @DrugCode varchar(8000),
    @LocationID varchar(8000) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @DrugCode = LTRIM(RTRIM(@DrugCode));
    SET @LocationID = ISNULL(LTRIM(RTRIM(@LocationID)), '');

    IF @LocationID = ''
        SELECT d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn,
            d.SellingPriceOut, d.Unit, d.Kind,
            (SELECT ISNULL(SUM(s.OnHand), 0) FROM BILLING..tbDrugStock s
                WHERE s.DrugCode = d.DrugCode) AS OnHand
        FROM BILLING..tbDrug d
        WHERE d.DrugCode = @DrugCode;
    ELSE
        SELECT d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn,
            d.SellingPriceOut, d.Unit, d.Kind, s.OnHand
        FROM BILLING..tbDrug d
        INNER JOIN BILLING..tbDrugStock s ON s.DrugCode = d.DrugCode
        WHERE d.DrugCode = @DrugCode
            AND s.LocationID = @LocationID;
END
GO
