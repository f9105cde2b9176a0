-- One out-patient or emergency visit, with the person; no row unless both numbers agree.
-- Returns the columns of sp_Finder_Admission: AttendingDoctor is the visit's doctor, FinalDiagnosis
-- its diagnosis, AdmittingDoctor and AdmittingDiagnosis are null.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Finder_OutPatient
GO

CREATE PROCEDURE sp_Finder_OutPatient
    @IdNum varchar(8000),
    @HospNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, v.AdmDate AS AdmissionDate,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, v.AdmDate) AS Age,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, GETDATE()) AS PatientAge, v.RoomID AS Room,
        m.LastName, m.FirstName, m.MiddleName, m.Sex, m.BirthDate, m.BirthPlace,
        m.Address AS CompleteAddress, n.Nationality, r.Religion, s.CivilStatus, m.SpouseName,
        m.FatherName, m.MotherName,
        PATIENT_DATA.dbo.fn_GetDoctorName(v.DoctorID) AS AttendingDoctor,
        CAST(NULL AS varchar(200)) AS AdmittingDoctor,
        CAST(NULL AS varchar(500)) AS AdmittingDiagnosis,
        v.ChiefComplaint, v.Diagnosis AS FinalDiagnosis
    FROM PATIENT_DATA..tbOutPatient v
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
    LEFT JOIN PATIENT_DATA..tbNationality n ON n.NationalityID = m.NationalityID
    LEFT JOIN PATIENT_DATA..tbReligion r ON r.ReligionID = m.ReligionID
    LEFT JOIN PATIENT_DATA..tbCivilStatus s ON s.CivilStatusID = m.CivilStatus
    WHERE v.IdNum = LTRIM(RTRIM(@IdNum))
        AND v.HospNum = LTRIM(RTRIM(@HospNum));
END
GO
