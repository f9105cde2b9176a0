-- The unit's income of two dates and the days between: charges by day and revenue code.
-- @StartDate, @EndDate: M/d/yyyy, both days count. Returns ChargeDay, RevenueID, Revenue, Kind
-- (Charged on slips, Cash paid at the cashier), Lines, and in hospital money Amount, Discount,
-- NetAmount, FundPaid; the patient's is net less fund. Refuses what is no date (50102).
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_ReportIncome
GO

CREATE PROCEDURE sp_CAPD_ReportIncome
    @StartDate varchar(8000),
    @EndDate varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @From datetime;
    DECLARE @To datetime;
    SET @From = TRY_CONVERT(datetime, NULLIF(@StartDate, ''), 101);
    SET @To = TRY_CONVERT(datetime, NULLIF(@EndDate, ''), 101);
    IF @From IS NULL OR @To IS NULL
    BEGIN
        THROW 50102, 'The report needs a start and an end date.', 1;
    END
    -- There is no day behind the last one.
    IF @To < '12/31/9999'
        SET @To = DATEADD(day, 1, @To);

    SELECT CONVERT(datetime, CONVERT(varchar(10), b.TransDate, 101), 101) AS ChargeDay,
        b.RevenueID AS RevenueID, MAX(r.Revenue) AS Revenue, 'Charged' AS Kind, COUNT(*) AS Lines,
        SUM(b.Amount) AS Amount, SUM(CAST(0 AS money)) AS Discount,
        SUM(b.Amount) AS NetAmount,
        CLINICAL_AREA.dbo.fn_CAPD_FundPaid(
            CONVERT(datetime, CONVERT(varchar(10), b.TransDate, 101), 101), b.RevenueID) AS FundPaid
    FROM BILLING..tbBill b
    LEFT JOIN BILLING..tbRevenueCode r ON r.RevenueID = b.RevenueID
    WHERE b.TransDate >= @From
        AND b.TransDate < @To
        AND b.RefNum LIKE 'C%D'
    GROUP BY CONVERT(datetime, CONVERT(varchar(10), b.TransDate, 101), 101), b.RevenueID
    UNION ALL
    SELECT CONVERT(datetime, CONVERT(varchar(10), f.TransDate, 101), 101) AS ChargeDay,
        'MD' AS RevenueID, MAX(r.Revenue) AS Revenue, 'Charged' AS Kind, COUNT(*) AS Lines,
        SUM(f.Amount) AS Amount, SUM(CAST(0 AS money)) AS Discount,
        SUM(f.Amount) AS NetAmount,
        CLINICAL_AREA.dbo.fn_CAPD_FundPaid(
            CONVERT(datetime, CONVERT(varchar(10), f.TransDate, 101), 101), 'MD') AS FundPaid
    FROM BILLING..tbDoctorCharge f
    LEFT JOIN BILLING..tbRevenueCode r ON r.RevenueID = 'MD'
    WHERE f.TransDate >= @From
        AND f.TransDate < @To
        AND f.IdNum NOT LIKE 'T%C'
    GROUP BY CONVERT(datetime, CONVERT(varchar(10), f.TransDate, 101), 101)
    UNION ALL
    SELECT CONVERT(datetime, CONVERT(varchar(10), s.TransDate, 101), 101) AS ChargeDay,
        s.RevenueID AS RevenueID, MAX(r.Revenue) AS Revenue, 'Charged' AS Kind, COUNT(*) AS Lines,
        SUM(s.NetAmount + s.Discount) AS Amount, SUM(s.Discount) AS Discount,
        SUM(s.NetAmount) AS NetAmount,
        CLINICAL_AREA.dbo.fn_CAPD_FundPaid(
            CONVERT(datetime, CONVERT(varchar(10), s.TransDate, 101), 101), s.RevenueID) AS FundPaid
    FROM BILLING..tbStockCard s
    LEFT JOIN BILLING..tbRevenueCode r ON r.RevenueID = s.RevenueID
    WHERE s.TransDate >= @From
        AND s.TransDate < @To
        AND s.RefNum LIKE 'C%D'
    GROUP BY CONVERT(datetime, CONVERT(varchar(10), s.TransDate, 101), 101), s.RevenueID
    UNION ALL
    SELECT CONVERT(datetime, CONVERT(varchar(10), a.TransDate, 101), 101) AS ChargeDay,
        a.RevenueID AS RevenueID, MAX(r.Revenue) AS Revenue, 'Cash' AS Kind, COUNT(*) AS Lines,
        SUM(a.Amount) AS Amount, SUM(CAST(0 AS money)) AS Discount,
        SUM(a.Amount) AS NetAmount,
        CAST(0 AS money) AS FundPaid
    FROM BILLING..tbCashAssessment a
    LEFT JOIN BILLING..tbRevenueCode r ON r.RevenueID = a.RevenueID
    WHERE a.TransDate >= @From
        AND a.TransDate < @To
        AND a.RecordStatus = 'N'
        AND a.ORNum IS NOT NULL
    GROUP BY CONVERT(datetime, CONVERT(varchar(10), a.TransDate, 101), 101), a.RevenueID
    ORDER BY ChargeDay, RevenueID, Kind;
END
GO
