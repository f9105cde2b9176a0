-- Whether an item is already requested for an admission or visit and still waits. @DeptID: PH the
-- pharmacy, CS the central supply room. Returns Requestdate, of the latest such request; no row
-- where there is none.
USE STATION
GO

DROP PROCEDURE IF EXISTS Nurse_CheckExamStatus
GO

CREATE PROCEDURE Nurse_CheckExamStatus
    @IdNum varchar(8000),
    @ItemCode varchar(8000),
    @DeptID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @ItemCode = LTRIM(RTRIM(@ItemCode));
    SET @DeptID = LTRIM(RTRIM(@DeptID));

    SELECT TOP (1) r.RequestDate AS [Requestdate]
    FROM STATION..tbNurseLogBook r
    WHERE r.IdNum = @IdNum
        AND r.ItemCode = @ItemCode
        AND r.DeptID = @DeptID
        AND r.RecordStatus = ' '
    ORDER BY r.RequestDate DESC, r.LogID DESC;
END
GO
