-- What was given and examined in one stay, oldest first. @IdNum: its number; @Type 1 medicines
-- (Transdate, "Drug Name", Dosage, Quantity), 2 x-ray, 3 ultrasound, 4 CT scan ("Examination",
-- "Exam. Date", "Interpretation"; results not read yet are left out). Refuses others (50141).
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Confinement_Results
GO

CREATE PROCEDURE sp_Confinement_Results
    @IdNum varchar(8000),
    @Type varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Modality varchar(1);
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @Modality = CASE @Type WHEN '2' THEN 'X' WHEN '3' THEN 'U' WHEN '4' THEN 'C' END;

    IF @Type = '1'
        SELECT g.TransDate AS [Transdate], g.DrugName AS [Drug Name], g.Dosage, g.Quantity
        FROM STATION..tbMedicineGiven g
        WHERE g.IdNum = @IdNum
        ORDER BY g.TransDate, g.GivenID;
    ELSE IF @Modality IS NOT NULL
        SELECT x.ExamName AS [Examination], x.TransDate AS [Exam. Date],
            x.Interpretation AS [Interpretation]
        FROM RADIOLOGY..tbRadResult x
        WHERE x.IdNum = @IdNum
            AND x.Modality = @Modality
            AND x.ResultDate IS NOT NULL
        ORDER BY x.TransDate, x.TransNum;
    ELSE
    BEGIN
        THROW 50141, 'Unknown type of results.', 1;
    END
END
GO
