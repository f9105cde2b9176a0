-- Brings a visit's registration up to what the funds have paid of it, payments that stand only.
-- Running it again changes no money. No rows.
USE BILLING
GO

DROP PROCEDURE IF EXISTS SP_PDAF_UpdateOPDRegistration
GO

CREATE PROCEDURE SP_PDAF_UpdateOPDRegistration
    @HospNum varchar(8000),
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));
    UPDATE BILLING..tbVisitAccount
    SET PaidAmount = ISNULL((
            SELECT SUM(p.Amount) FROM BILLING..tbCompanyPayment p
            WHERE p.IdNum = @IdNum AND p.CancelledAt IS NULL), 0),
        UpdatedAt = GETDATE()
    WHERE IdNum = @IdNum AND HospNum = @HospNum;
END
GO
