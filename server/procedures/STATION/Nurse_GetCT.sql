-- The CT scan examinations of one admission or visit, newest first. @IdNum: exact.
-- Returns the columns of sp_Radiology_Results.
USE STATION
GO

DROP PROCEDURE IF EXISTS Nurse_GetCT
GO

CREATE PROCEDURE Nurse_GetCT
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    EXEC STATION..sp_Radiology_Results @IdNum, 'C';
END
GO
