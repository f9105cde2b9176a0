-- What one laboratory request found, in printed order; an examination without values still has one
-- row. @HospNum, @IdNum, @RequestNum: exact; @RefNum: its charge slip, empty for any.
-- Returns LabExamID, LabExam, SectionName, RequestDate, ResultDate (null: not released), Doctor,
-- Remarks, TestName, ResultValue, Unit, NormalRange, Mark (fn_LabMark).
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Lab_Result
GO

CREATE PROCEDURE sp_Lab_Result
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @RequestNum varchar(8000),
    @RefNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    -- Nothing that was found is shown of an examination that is not released.
    SELECT r.LabExamID, ISNULL(e.LabExam, r.LabExamID) AS LabExam, s.SectionName, r.RequestDate,
        r.ResultDate, PATIENT_DATA.dbo.fn_GetDoctorName(r.DoctorID) AS Doctor,
        CASE WHEN r.ResultDate IS NOT NULL THEN r.Remarks END AS Remarks,
        v.TestName, v.ResultValue, v.Unit, v.NormalRange,
        PATIENT_DATA.dbo.fn_LabMark(v.ResultValue, v.Flag, v.NormalLow, v.NormalHigh,
            v.NormalRange) AS Mark
    FROM PATIENT_DATA..tbLabResult r
    LEFT JOIN PATIENT_DATA..tbLabExam e ON e.LabExamID = r.LabExamID
    LEFT JOIN PATIENT_DATA..tbLabSection s ON s.SectionID = e.SectionID
    LEFT JOIN PATIENT_DATA..tbLabResultValue v ON v.RequestNum = r.RequestNum
        AND v.LabExamID = r.LabExamID
        AND r.ResultDate IS NOT NULL
    WHERE r.RequestNum = @RequestNum
        AND r.HospNum = @HospNum
        AND r.IdNum = @IdNum
        AND (@RefNum = '' OR r.RefNum = @RefNum)
    ORDER BY e.LabExam, r.LabExamID, v.LineNum;
END
GO
