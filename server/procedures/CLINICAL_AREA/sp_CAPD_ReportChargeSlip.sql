-- The slip that this connection is printing: its lines (Section 1) and, with @WithFunds 'Y', what
-- each fund account pays of it (Section 2, Fund 'Y', Code the account, Description the company).
-- Money of a whole line: Amount, Discount, NetAmount; FundAmount; PatientAmount, which adds up to
-- what is left to the patient. Other connections' rows are not seen.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_ReportChargeSlip
GO

CREATE PROCEDURE sp_CAPD_ReportChargeSlip
    @WithFunds varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT 1 AS Section, LineNum AS Line, '' AS Fund, ItemCode AS Code,
        Description AS Description, Quantity AS Quantity, Price AS Price, Amount AS Amount,
        Discount AS Discount, NetAmount AS NetAmount, CAST(NULL AS money) AS FundAmount,
        NetAmount AS PatientAmount
    FROM CLINICAL_AREA..tbCAPDChargeSlip
    WHERE SPID = @@SPID
    UNION ALL
    SELECT 2 AS Section, MIN(LineNum) AS Line, 'Y' AS Fund, AccountNum AS Code,
        MAX(Company) AS Description, CAST(NULL AS decimal(12,2)) AS Quantity,
        CAST(NULL AS money) AS Price, CAST(NULL AS money) AS Amount,
        CAST(NULL AS money) AS Discount, CAST(NULL AS money) AS NetAmount,
        SUM(Amount) AS FundAmount, -SUM(Amount) AS PatientAmount
    FROM RADIOLOGY..tbChargeSlipFund
    WHERE SPID = @@SPID
        AND @WithFunds = 'Y'
    GROUP BY AccountNum
    ORDER BY Section, Line;
END
GO
