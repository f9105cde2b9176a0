-- Whether a visit is a pay or a service patient's: service is whoever lies in a service room (room
-- class S) or whom the medical social service has classified. Returns PatientClass (P or S); no row
-- for an unknown visit.
USE RADIOLOGY
GO

DROP PROCEDURE IF EXISTS spRadio_CheckPatientClass
GO

CREATE PROCEDURE spRadio_CheckPatientClass
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @IdNum = LTRIM(RTRIM(@IdNum));

    SELECT CASE WHEN p.RoomClassID = 'S' OR m.MSSClassification > '' THEN 'S' ELSE 'P' END
        AS PatientClass
    FROM PATIENT_DATA..tbPatient p
    LEFT JOIN PATIENT_DATA..tbMaster m ON m.HospNum = p.HospNum
    WHERE p.IdNum = @IdNum
    UNION ALL
    SELECT CASE WHEN m.MSSClassification > '' THEN 'S' ELSE 'P' END
    FROM PATIENT_DATA..tbOutPatient v
    LEFT JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
    WHERE v.IdNum = @IdNum;
END
GO
