-- Keeps the price that a slip prints for a line whose amount was typed: raised, or of an open price.
-- @Price: hospital money of one unit. Of two such lines of an item the later one. No rows.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_KeepPrice
GO

CREATE PROCEDURE sp_CAPD_KeepPrice
    @RefNum varchar(8000),
    @RevenueID varchar(8000),
    @ItemCode varchar(8000),
    @Price varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    UPDATE CLINICAL_AREA..tbCAPDRequest
    SET Price = CONVERT(money, NULLIF(@Price, ''))
    WHERE RequestID = (
        SELECT MAX(r.RequestID)
        FROM CLINICAL_AREA..tbCAPDRequest r
        WHERE r.RefNum = @RefNum AND r.RevenueID = @RevenueID AND r.ItemCode = @ItemCode);
END
GO
