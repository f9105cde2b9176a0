-- Whether the catalogue of medicines and supplies can be read: one row with Items, their number.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_Drug_Check
GO

CREATE PROCEDURE sp_Drug_Check
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT COUNT(*) AS Items FROM tbDrug;
END
GO
