-- Dosages whose code or description begins with @Text; an empty text lists all. At most 500 rows.
-- Returns DosageID, Dosage, Frequency (how many a day).
USE STATION
GO

DROP PROCEDURE IF EXISTS sp_Dosage_Search
GO

CREATE PROCEDURE sp_Dosage_Search
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    SET @Text = LTRIM(RTRIM(@Text));
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);

    SELECT TOP (500) d.DosageID, d.Dosage, d.Frequency
    FROM STATION..tbDosage d
    WHERE d.DosageID LIKE @Prefix ESCAPE '!'
        OR d.Dosage LIKE @Prefix ESCAPE '!'
    ORDER BY d.DosageID;
END
GO
