-- Adds a line to the slip that this connection is printing. @Quantity: an empty one counts as 1;
-- @Price: of one unit; @Amount, @Discount, @NetAmount: of the whole line. No rows.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_PrintChargeSlip
GO

CREATE PROCEDURE sp_CAPD_PrintChargeSlip
    @ItemCode varchar(8000),
    @Description varchar(8000),
    @Quantity varchar(8000),
    @Price varchar(8000),
    @Amount varchar(8000),
    @RevenueID varchar(8000),
    @UserID varchar(8000),
    @Discount varchar(8000),
    @NetAmount varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    INSERT INTO CLINICAL_AREA..tbCAPDChargeSlip (
        SPID, ItemCode, Description, Quantity, Price, Amount, RevenueID, UserID, Discount,
        NetAmount)
    VALUES (
        @@SPID, @ItemCode, @Description,
        CONVERT(decimal(12,2), ISNULL(NULLIF(@Quantity, ''), '1')),
        CONVERT(money, ISNULL(NULLIF(@Price, ''), '0')),
        CONVERT(money, ISNULL(NULLIF(@Amount, ''), '0')), @RevenueID, @UserID,
        CONVERT(money, ISNULL(NULLIF(@Discount, ''), '0')),
        CONVERT(money, ISNULL(NULLIF(@NetAmount, ''), '0')));
END
GO
