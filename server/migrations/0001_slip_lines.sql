-- Slip lines keep what was printed of them, and the stock card row of their supplies.
USE CLINICAL_AREA
GO

ALTER TABLE tbCAPDRequest ADD Description varchar(200)
GO

ALTER TABLE tbCAPDRequest ADD Price money
GO

ALTER TABLE tbCAPDRequest ADD StockCardID int
GO

UPDATE tbCAPDRequest
SET StockCardID = (
    SELECT MAX(s.StockCardID)
    FROM BILLING..tbStockCard s
    WHERE s.RefNum = tbCAPDRequest.RefNum
        AND s.ItemCode = tbCAPDRequest.ItemCode
        AND s.RevenueID = tbCAPDRequest.RevenueID
        AND s.Quantity >= 0)
GO

USE BILLING
GO

-- What the funds have paid of a visit is summed after every share.
DROP INDEX IF EXISTS ixCompanyPaymentIdNum ON tbCompanyPayment
GO

CREATE INDEX ixCompanyPaymentIdNum ON tbCompanyPayment (IdNum, CancelledAt, Amount)
GO
