-- The radiology examinations of one admission or visit, newest first; one that is not read yet has
-- no result date. @IdNum: exact; @Modality: X x-ray, U ultrasound, C CT scan.
-- Returns, in the order of the result lists, "TRANS. NO", "EXAM. NAME", "TRANS. DATE",
-- "RESULT DATE", "DR. LASTNAME", "DR. FIRSTNAME", "DR. MIDDLENAME", "Interpretation".
USE STATION
GO

DROP PROCEDURE IF EXISTS sp_Radiology_Results
GO

CREATE PROCEDURE sp_Radiology_Results
    @IdNum varchar(8000),
    @Modality varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));

    SELECT x.TransNum AS [TRANS. NO], x.ExamName AS [EXAM. NAME], x.TransDate AS [TRANS. DATE],
        x.ResultDate AS [RESULT DATE], d.LastName AS [DR. LASTNAME],
        d.FirstName AS [DR. FIRSTNAME], d.MiddleName AS [DR. MIDDLENAME],
        x.Interpretation AS [Interpretation]
    FROM RADIOLOGY..tbRadResult x
    LEFT JOIN PATIENT_DATA..tbDoctor d ON d.DoctorID = x.DoctorID
    WHERE x.IdNum = @IdNum
        AND x.Modality = @Modality
    ORDER BY x.TransDate DESC, x.TransNum DESC;
END
GO
