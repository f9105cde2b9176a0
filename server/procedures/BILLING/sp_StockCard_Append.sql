-- Records a movement on the stock card and changes the stock on hand with it, both or neither.
-- The 31 positions are those of tbStockCard; an empty or omitted one is null. @p3 item code, @p4
-- moment (MM/dd/yyyy hh:mm, else now), @p6 quantity (positive leaves, negative comes in), @p8 net amount,
-- @p12 location, @p31 discount, which a return takes back whatever its sign. Stock below zero is
-- allowed; refuses an item that the location does not keep (50131) and a quantity that is no number
-- (50132). Returns StockAfter.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_StockCard_Append
GO

CREATE PROCEDURE sp_StockCard_Append
    @p1 varchar(8000) = NULL,
    @p2 varchar(8000) = NULL,
    @p3 varchar(8000) = NULL,
    @p4 varchar(8000) = NULL,
    @p5 varchar(8000) = NULL,
    @p6 varchar(8000) = NULL,
    @p7 varchar(8000) = NULL,
    @p8 varchar(8000) = NULL,
    @p9 varchar(8000) = NULL,
    @p10 varchar(8000) = NULL,
    @p11 varchar(8000) = NULL,
    @p12 varchar(8000) = NULL,
    @p13 varchar(8000) = NULL,
    @p14 varchar(8000) = NULL,
    @p15 varchar(8000) = NULL,
    @p16 varchar(8000) = NULL,
    @p17 varchar(8000) = NULL,
    @p18 varchar(8000) = NULL,
    @p19 varchar(8000) = NULL,
    @p20 varchar(8000) = NULL,
    @p21 varchar(8000) = NULL,
    @p22 varchar(8000) = NULL,
    @p23 varchar(8000) = NULL,
    @p24 varchar(8000) = NULL,
    @p25 varchar(8000) = NULL,
    @p26 varchar(8000) = NULL,
    @p27 varchar(8000) = NULL,
    @p28 varchar(8000) = NULL,
    @p29 varchar(8000) = NULL,
    @p30 varchar(8000) = NULL,
    @p31 varchar(8000) = NULL
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @ItemCode varchar(8000);
    DECLARE @LocationID varchar(8000);
    DECLARE @Moment datetime;
    DECLARE @Quantity decimal(12,2);
    DECLARE @Discount money;
    DECLARE @StockAfter decimal(12,2);
    SET @ItemCode = LTRIM(RTRIM(@p3));
    SET @LocationID = LTRIM(RTRIM(@p12));
    SET @Moment = ISNULL(CONVERT(datetime, NULLIF(@p4, '')), GETDATE());
    SET @Quantity = TRY_CONVERT(decimal(12,2), NULLIF(@p6, ''));
    IF @Quantity IS NULL
    BEGIN
        THROW 50132, 'A stock card entry needs a quantity.', 1;
    END
    SET @Discount = CONVERT(money, ISNULL(NULLIF(@p31, ''), '0'));
    IF @Quantity < 0
        SET @Discount = -ABS(@Discount);

    BEGIN TRANSACTION;
    UPDATE BILLING..tbDrugStock
    SET @StockAfter = OnHand = OnHand - @Quantity
    WHERE DrugCode = @ItemCode AND LocationID = @LocationID
    IF @@ROWCOUNT = 0
    BEGIN
        THROW 50131, 'The item is not kept at this stock location.', 1;
    END

    INSERT INTO BILLING..tbStockCard (
        HospNum, IdNum, ItemCode, TransDate, RefNum, Quantity, Balance, NetAmount, UserID,
        Frequency, Reference, LocationID, Remarks, Department, Cancelled, InventoryCode,
        RevenueID, Mark, Position19, Position20, Position21, PatientType, Position23, Flag,
        Position25, Position26, Position27, Position28, Position29, Position30, Discount,
        StockAfter)
    VALUES (
        NULLIF(@p1, ''), NULLIF(@p2, ''), @ItemCode, @Moment, NULLIF(@p5, ''), @Quantity,
        TRY_CONVERT(decimal(12,2), NULLIF(@p7, '')),
        CONVERT(money, ISNULL(NULLIF(@p8, ''), '0')), NULLIF(@p9, ''), NULLIF(@p10, ''),
        NULLIF(@p11, ''), @LocationID, NULLIF(@p13, ''), NULLIF(@p14, ''),
        CONVERT(int, ISNULL(NULLIF(@p15, ''), '0')), NULLIF(@p16, ''), NULLIF(@p17, ''),
        NULLIF(@p18, ''), NULLIF(@p19, ''), NULLIF(@p20, ''), NULLIF(@p21, ''), NULLIF(@p22, ''),
        NULLIF(@p23, ''), CONVERT(int, NULLIF(@p24, '')), NULLIF(@p25, ''), NULLIF(@p26, ''),
        NULLIF(@p27, ''), NULLIF(@p28, ''), NULLIF(@p29, ''), NULLIF(@p30, ''),
        @Discount, @StockAfter);
    COMMIT TRANSACTION;

    SELECT @StockAfter AS StockAfter;
END
GO
