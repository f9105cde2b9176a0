-- Whether a request for an item was processed today, by the server's clock, for an admission or
-- visit. @DeptID: PH the pharmacy, CS the central supply room. Returns ProcessDate, of the latest
-- such request; no row where there is none.
USE STATION
GO

DROP PROCEDURE IF EXISTS Nurse_CheckExam_Posted
GO

CREATE PROCEDURE Nurse_CheckExam_Posted
    @IdNum varchar(8000),
    @ItemCode varchar(8000),
    @DeptID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Today datetime;
    SET @Today = PATIENT_DATA.dbo.fn_GetToday();
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @ItemCode = LTRIM(RTRIM(@ItemCode));
    SET @DeptID = LTRIM(RTRIM(@DeptID));

    SELECT TOP (1) r.ProcessDate AS [ProcessDate]
    FROM STATION..tbNurseLogBook r
    WHERE r.IdNum = @IdNum
        AND r.ItemCode = @ItemCode
        AND r.DeptID = @DeptID
        AND r.RecordStatus = 'X'
        AND r.ProcessDate >= @Today
        AND r.ProcessDate < DATEADD(day, 1, @Today)
    ORDER BY r.ProcessDate DESC, r.LogID DESC;
END
GO
