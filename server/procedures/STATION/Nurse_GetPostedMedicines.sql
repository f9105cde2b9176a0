-- The medicines posted to one admission or visit, oldest first. @IdNum: its number.
-- Returns TransDate, DrugCode, DrugName, Dosage, Quantity.
USE STATION
GO

DROP PROCEDURE IF EXISTS Nurse_GetPostedMedicines
GO

CREATE PROCEDURE Nurse_GetPostedMedicines
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT TransDate, DrugCode, DrugName, Dosage, Quantity
    FROM STATION..tbMedicineGiven
    WHERE IdNum = LTRIM(RTRIM(@IdNum))
    ORDER BY TransDate, GivenID;
END
GO
