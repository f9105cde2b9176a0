-- Whether the catalogue of medicines and supplies can be read: one row with Items, their number.
USE STATION
GO

DROP PROCEDURE IF EXISTS sp_Catalogue_Check
GO

CREATE PROCEDURE sp_Catalogue_Check
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT COUNT(*) AS Items FROM BILLING..tbDrug;
END
GO
