-- One examination of the heart station, as it is printed; none before it is released. @IdNum, @RequestNum: exact, both.
-- Returns RequestNum, ExamName, TransDate, ResultDate, Form, AttendingDoctor, Cardiologist,
-- Diagnosis, Remarks, Resting, Exercise, Comments, Interpretation.
USE STATION
GO

DROP PROCEDURE IF EXISTS sp_Heart_Result
GO

CREATE PROCEDURE sp_Heart_Result
    @IdNum varchar(8000),
    @RequestNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT h.RequestNum, h.ExamName, h.TransDate, h.ResultDate, h.Form,
        PATIENT_DATA.dbo.fn_GetDoctorName(h.AttendingDoctorID) AS AttendingDoctor,
        PATIENT_DATA.dbo.fn_GetDoctorName(h.CardiologistID) AS Cardiologist, h.Diagnosis, h.Remarks,
        h.Resting, h.Exercise, h.Comments, h.Interpretation
    FROM STATION..tbHeartResult h
    WHERE h.RequestNum = @RequestNum
        AND h.IdNum = @IdNum
        AND h.ResultDate IS NOT NULL;
END
GO
