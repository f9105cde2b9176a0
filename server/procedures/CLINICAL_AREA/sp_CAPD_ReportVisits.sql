-- The logged visits of two dates and the days between, oldest first.
-- @StartDate, @EndDate: M/d/yyyy, both days count; an earlier end gives no rows.
-- Returns TransDate, IdNum, CAPDNum, HospNum, LastName, FirstName, MiddleName, Age (years at the
-- visit), Sex, TypeOfPD, Purpose, Diagnosis, Weight, BP, Remarks. Refuses what is no date (50102).
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_ReportVisits
GO

CREATE PROCEDURE sp_CAPD_ReportVisits
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

    SELECT l.TransDate, l.IdNum, l.CAPDNum, l.HospNum, m.LastName, m.FirstName, m.MiddleName,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, l.TransDate) AS Age, m.Sex,
        LTRIM(RTRIM(l.ChronicPD)) AS TypeOfPD, LTRIM(RTRIM(l.Purpose)) AS Purpose, l.Diagnosis,
        l.Weight, l.BP, l.Remarks
    FROM CLINICAL_AREA..tbCAPDLogBook l
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = l.HospNum
    WHERE l.TransDate >= @From
        AND l.TransDate < @To
    ORDER BY l.TransDate, l.LogID;
END
GO
