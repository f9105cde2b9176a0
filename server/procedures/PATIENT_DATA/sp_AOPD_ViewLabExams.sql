-- The laboratory's examinations of one admission or visit, the latest request first; one that is
-- not released yet has no result date. @HospNum, @IdNum: exact, both must be the patient's.
-- Returns "ID Number", "RequestNum", "Resultdate", "LabExamID", "LabExam", "SectionName", "RefNum".
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_AOPD_ViewLabExams
GO

CREATE PROCEDURE sp_AOPD_ViewLabExams
    @HospNum varchar(8000),
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT r.IdNum AS [ID Number], r.RequestNum AS [RequestNum], r.ResultDate AS [Resultdate],
        r.LabExamID AS [LabExamID], e.LabExam AS [LabExam], s.SectionName AS [SectionName],
        r.RefNum AS [RefNum]
    FROM PATIENT_DATA..tbLabResult r
    LEFT JOIN PATIENT_DATA..tbLabExam e ON e.LabExamID = r.LabExamID
    LEFT JOIN PATIENT_DATA..tbLabSection s ON s.SectionID = e.SectionID
    WHERE r.IdNum = @IdNum
        AND r.HospNum = @HospNum
    ORDER BY r.RequestDate DESC, r.RequestNum DESC, r.LabExamID;
END
GO
