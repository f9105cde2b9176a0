-- The x-ray examinations of one admission or visit, newest first. @IdNum: exact.
-- Returns the columns of sp_Radiology_Results.
USE STATION
GO

DROP PROCEDURE IF EXISTS Nurse_GetXray
GO

CREATE PROCEDURE Nurse_GetXray
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    EXEC STATION..sp_Radiology_Results @IdNum, 'X';
END
GO
