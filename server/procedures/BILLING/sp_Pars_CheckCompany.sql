-- The company that a visit is charged to: CompanyID, Company. @IdNum: exact. No row for a visit that
-- the patient pays.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_Pars_CheckCompany
GO

CREATE PROCEDURE sp_Pars_CheckCompany
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT v.CompanyID AS CompanyID, c.Company AS Company
    FROM BILLING..tbVisitAccount v
    LEFT JOIN BILLING..tbCompany c ON c.CompanyID = v.CompanyID
    WHERE v.IdNum = LTRIM(RTRIM(@IdNum));
END
GO
