-- The heart station's examinations of one admission or visit, newest first; one that is not read
-- yet has no result date. @IdNum: exact.
-- Returns "REQUEST NO.", "EXAMINATION NAME", "TRANS. DATE", "RESULT DATE", "Form", "ATTN. DOCTOR",
-- "CARDIOLOGIST", then what is read of the chosen one: Diagnosis, Remarks, Resting, Exercise,
-- Comments, Interpretation.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS Nurse_GetHrt
GO

CREATE PROCEDURE Nurse_GetHrt
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));

    SELECT h.RequestNum AS [REQUEST NO.], h.ExamName AS [EXAMINATION NAME],
        h.TransDate AS [TRANS. DATE], h.ResultDate AS [RESULT DATE], h.Form AS [Form],
        CASE WHEN a.DoctorID IS NOT NULL THEN CONCAT(a.FirstName, ' ',
            CASE WHEN ISNULL(a.MiddleName, '') = '' THEN '' ELSE a.MiddleName + ' ' END,
            a.LastName) END AS [ATTN. DOCTOR],
        CASE WHEN c.DoctorID IS NOT NULL THEN CONCAT(c.FirstName, ' ',
            CASE WHEN ISNULL(c.MiddleName, '') = '' THEN '' ELSE c.MiddleName + ' ' END,
            c.LastName) END AS [CARDIOLOGIST],
        h.Diagnosis AS [Diagnosis], h.Remarks AS [Remarks], h.Resting AS [Resting],
        h.Exercise AS [Exercise], h.Comments AS [Comments], h.Interpretation AS [Interpretation]
    FROM STATION..tbHeartResult h
    LEFT JOIN PATIENT_DATA..tbDoctor a ON a.DoctorID = h.AttendingDoctorID
    LEFT JOIN PATIENT_DATA..tbDoctor c ON c.DoctorID = h.CardiologistID
    WHERE h.IdNum = @IdNum
    ORDER BY h.TransDate DESC, h.RequestNum DESC;
END
GO
