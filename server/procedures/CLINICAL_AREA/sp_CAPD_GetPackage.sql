-- The supplies issued on a slip that have not come back, in the order of issue: Quantity, Amount (net
-- of discount), LocationID, roomid (the department they were issued to), Discount, ItemCode,
-- InventoryCode. The rows are held until the caller's transaction ends, so that only one station
-- takes them back.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_GetPackage
GO

CREATE PROCEDURE sp_CAPD_GetPackage
    @RefNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @RefNum = LTRIM(RTRIM(@RefNum));
    SELECT s.Quantity AS Quantity, s.NetAmount AS Amount, s.LocationID AS LocationID,
        s.Department AS roomid, s.Discount AS Discount, s.ItemCode AS ItemCode,
        s.InventoryCode AS InventoryCode
    FROM BILLING..tbStockCard s WITH (UPDLOCK, HOLDLOCK)
    WHERE s.RefNum = @RefNum
        AND s.Quantity > 0
        AND BILLING.dbo.fn_StockCard_IsReturned(s.StockCardID) = 0
    ORDER BY s.StockCardID;
END
GO
