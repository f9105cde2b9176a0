-- The ward requests of one admission or visit, newest first. @IdNum: exact; @Flag: 'X' those that
-- were processed, ' ' those still pending.
-- Returns "ITEM DESCRIPTION", "QTY", "DEPT", "REQUEST DATE/TIME", "Code", "REQUESTED BY",
-- "PROCESS DATE/TIME", "PROCESSED BY", "RESULT DATE/TIME", "RESULT BY", "Remarks".
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS Nurse_CheckRequest
GO

CREATE PROCEDURE Nurse_CheckRequest
    @IdNum varchar(8000),
    @Flag varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));

    SELECT r.ItemName AS [ITEM DESCRIPTION], r.Quantity AS [QTY], r.DeptID AS [DEPT],
        r.RequestDate AS [REQUEST DATE/TIME], r.ItemCode AS [Code],
        PATIENT_DATA.dbo.fn_GetEmployeeName(r.RequestedBy) AS [REQUESTED BY],
        r.ProcessDate AS [PROCESS DATE/TIME],
        PATIENT_DATA.dbo.fn_GetEmployeeName(r.ProcessedBy) AS [PROCESSED BY],
        r.ResultDate AS [RESULT DATE/TIME],
        PATIENT_DATA.dbo.fn_GetEmployeeName(r.ResultBy) AS [RESULT BY], r.Remarks AS [Remarks]
    FROM STATION..tbNurseLogBook r
    WHERE r.IdNum = @IdNum
        AND r.RecordStatus = @Flag
    ORDER BY r.RequestDate DESC, r.LogID DESC;
END
GO
