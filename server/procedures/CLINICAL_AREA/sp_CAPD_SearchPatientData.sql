-- The information sheet of a registered patient, with the particulars it shows beside; no row for
-- a patient who is not on the register. @HospNum: hospital number. Age is in years, today;
-- ChangedAt is the moment of the last save.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SearchPatientData
GO

CREATE PROCEDURE sp_CAPD_SearchPatientData
    @HospNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT c.HospNum, c.CAPDNum, m.HouseStreet AS address1, m.Barangay AS address2,
        CASE WHEN m.Town IS NULL THEN m.Province WHEN m.Province IS NULL THEN m.Town
            ELSE CONCAT(m.Town, ', ', m.Province) END AS address3,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, GETDATE()) AS Age, m.Sex,
        m.Occupation AS occupation, c.NextKin AS nextKin, c.Status, c.Diagnosis AS diagnosis,
        c.AcutePDStartDate AS acutepdstartdate, c.ChronicPDStartDate AS chronicpdstartdate,
        c.Weight, c.Diet AS diet, c.BP AS bp, c.FluidRestriction AS fluidrestriction,
        c.DialysisShiftDate AS dialysisshiftdate, c.BloodType AS bloodtype, c.HBsAg AS hbsag,
        c.Dialysis AS dialysis, c.ShiftReason AS shiftreason, c.ShiftBackDate AS shiftbackdate,
        c.TransplantDate AS transplantdate, c.RejectionDate AS rejectiondate, c.Remarks,
        c.Purpose, c.WithPeritonitis, ISNULL(c.UpdatedAt, c.RegisteredAt) AS ChangedAt
    FROM CLINICAL_AREA..tbCAPDPatient c
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = c.HospNum
    WHERE c.HospNum = LTRIM(RTRIM(@HospNum));
END
GO
