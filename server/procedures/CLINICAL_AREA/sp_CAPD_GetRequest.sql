-- The lines of a visit's charge slips that stand, newest slip first, lines as they were typed.
-- Returns, by position: 1 moment of the request, 2 item code, 3 description, 4 quantity, 5 net
-- amount, 6 slip number, 7 employee code, 8 CAPD number, 9 stock location (of supplies only), 10 amount,
-- 11 discount, 12 price of one unit, 13 revenue code, which is the inventory code of supplies.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_GetRequest
GO

CREATE PROCEDURE sp_CAPD_GetRequest
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SELECT r.RequestDate AS [REQUEST DATE/TIME], r.ItemCode AS [CODE],
        COALESCE(r.Description, o.OtherRevenue, g.DrugName, '') AS [DESCRIPTION],
        r.Quantity AS [QTY], ISNULL(s.NetAmount, r.Amount) AS [NET AMOUNT],
        r.RefNum AS [SLIP NO.], r.UserID AS [EMPLOYEE], ISNULL(r.CAPDNum, '') AS [CAPD NO.],
        ISNULL(s.LocationID, '') AS [LOCATION], r.Amount AS [AMOUNT],
        ISNULL(s.Discount, 0) AS [DISCOUNT],
        ROUND(ISNULL(r.Price, r.Amount / NULLIF(r.Quantity, 0)), 2) AS [PRICE],
        r.RevenueID AS [DEPT.]
    FROM CLINICAL_AREA..tbCAPDRequest r
    LEFT JOIN BILLING..tbStockCard s ON s.StockCardID = r.StockCardID
    LEFT JOIN BILLING..tbOtherRevenue o ON o.RevenueID = r.RevenueID AND o.ItemCode = r.ItemCode
    LEFT JOIN BILLING..tbDrug g ON g.DrugCode = r.ItemCode
    WHERE r.IdNum = @IdNum
        AND (r.RevenueID <> 'MD' OR EXISTS (
            SELECT 1
            FROM BILLING..tbDoctorCharge d
            WHERE d.RefNum = r.RefNum AND d.ItemCode = r.ItemCode AND d.IdNum = r.IdNum
            GROUP BY d.RefNum
            HAVING SUM(d.Amount) > 0))
        AND (r.StockCardID IS NULL
            OR BILLING.dbo.fn_StockCard_IsReturned(r.StockCardID) = 0)
    ORDER BY TRY_CONVERT(int, SUBSTRING(r.RefNum, 2, LEN(r.RefNum) - 2)) DESC, r.RefNum,
        r.RequestID;
END
GO
