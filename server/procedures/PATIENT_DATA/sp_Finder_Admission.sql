-- One admission by its exact number, with the person; no row when it is unknown.
-- Returns IDNumber, HospitalNumber, AdmissionDate, Age (years at admission), PatientAge (today),
-- Room, LastName to MotherName of the person, AttendingDoctor, AdmittingDoctor (complete names),
-- AdmittingDiagnosis, ChiefComplaint, FinalDiagnosis.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Finder_Admission
GO

CREATE PROCEDURE sp_Finder_Admission
    @IdNum varchar(8000)
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
        PATIENT_DATA.dbo.fn_GetDoctorName(v.AttendingDoctorID) AS AttendingDoctor,
        PATIENT_DATA.dbo.fn_GetDoctorName(v.AdmittingDoctorID) AS AdmittingDoctor,
        v.AdmittingDiagnosis, v.ChiefComplaint, v.FinalDiagnosis
    FROM PATIENT_DATA..tbPatient v
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
    LEFT JOIN PATIENT_DATA..tbNationality n ON n.NationalityID = m.NationalityID
    LEFT JOIN PATIENT_DATA..tbReligion r ON r.ReligionID = m.ReligionID
    LEFT JOIN PATIENT_DATA..tbCivilStatus s ON s.CivilStatusID = m.CivilStatus
    WHERE v.IdNum = LTRIM(RTRIM(@IdNum));
END
GO
