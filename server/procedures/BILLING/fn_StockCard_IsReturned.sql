-- 1 when the supplies of an issue came back, else 0. @StockCardID: the issue. A slip may hold the
-- same item twice: the n-th return takes back the n-th issue of an item on it.
USE BILLING
GO

DROP FUNCTION IF EXISTS fn_StockCard_IsReturned
GO

CREATE FUNCTION fn_StockCard_IsReturned (@StockCardID int)
RETURNS int
AS
BEGIN
    DECLARE @RefNum varchar(20);
    DECLARE @ItemCode varchar(10);
    DECLARE @LocationID varchar(5);
    DECLARE @Issues int;
    DECLARE @Returns int;

    SELECT @RefNum = RefNum, @ItemCode = ItemCode, @LocationID = LocationID
    FROM BILLING..tbStockCard
    WHERE StockCardID = @StockCardID;
    SELECT @Returns = COUNT(*)
    FROM BILLING..tbStockCard
    WHERE RefNum = @RefNum
        AND ItemCode = @ItemCode
        AND LocationID = @LocationID
        AND Quantity < 0;
    IF @Returns = 0
        RETURN 0;
    SELECT @Issues = COUNT(*)
    FROM BILLING..tbStockCard
    WHERE RefNum = @RefNum
        AND ItemCode = @ItemCode
        AND LocationID = @LocationID
        AND Quantity >= 0
        AND StockCardID <= @StockCardID;
    RETURN CASE WHEN @Returns >= @Issues THEN 1 ELSE 0 END;
END
GO
