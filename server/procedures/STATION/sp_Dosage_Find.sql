-- One dosage by the exact code; no row when it is unknown.
-- Returns DosageID, Dosage, Frequency (how many a day).
USE STATION
GO

DROP PROCEDURE IF EXISTS sp_Dosage_Find
GO

CREATE PROCEDURE sp_Dosage_Find
    @DosageID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT DosageID, Dosage, Frequency
    FROM STATION..tbDosage
    WHERE DosageID = LTRIM(RTRIM(@DosageID));
END
GO
