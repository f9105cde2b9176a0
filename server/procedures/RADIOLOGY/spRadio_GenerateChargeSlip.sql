-- Puts what the funds pay of a slip beside the lines that this connection is printing; what stood
-- there of the slip printed before goes. @RefNum: the slip; @UserID: who prints. No rows.
USE RADIOLOGY
GO

DROP PROCEDURE IF EXISTS spRadio_GenerateChargeSlip
GO

CREATE PROCEDURE spRadio_GenerateChargeSlip
    @RefNum varchar(8000),
    @UserID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    BEGIN TRANSACTION;
    DELETE FROM RADIOLOGY..tbChargeSlipFund WHERE SPID = @@SPID;
    INSERT INTO RADIOLOGY..tbChargeSlipFund (
        SPID, RefNum, AccountNum, Company, RevenueID, ItemID, Amount, UserID)
    SELECT @@SPID, p.RefNum, p.AccountNum, ISNULL(c.Company, p.CompanyID), p.RevenueID, p.ItemID,
        p.Amount, @UserID
    FROM BILLING..tbCompanyPayment p
    LEFT JOIN BILLING..tbCompany c ON c.CompanyID = p.CompanyID
    WHERE p.RefNum = @RefNum AND p.CancelledAt IS NULL
    ORDER BY p.RequestNum;
    COMMIT TRANSACTION;
END
GO
