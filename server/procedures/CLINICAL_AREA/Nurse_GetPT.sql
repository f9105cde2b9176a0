-- The rehabilitation medicine examinations of one admission or visit, newest first. @IdNum: exact.
-- Returns "REF. NO", "REQ. NO", "EXAM. NAME", "RESULT DATE", "result", "Code", then what is read of
-- the chosen one: Diagnosis, Remarks, Interpretation.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS Nurse_GetPT
GO

CREATE PROCEDURE Nurse_GetPT
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));

    SELECT p.RefNum AS [REF. NO], p.RequestNum AS [REQ. NO], p.ExamName AS [EXAM. NAME],
        p.ResultDate AS [RESULT DATE], p.Result AS [result], p.ExamCode AS [Code],
        p.Diagnosis AS [Diagnosis], p.Remarks AS [Remarks], p.Interpretation AS [Interpretation]
    FROM STATION..tbPTResult p
    WHERE p.IdNum = @IdNum
    ORDER BY p.TransDate DESC, p.RequestNum DESC;
END
GO
