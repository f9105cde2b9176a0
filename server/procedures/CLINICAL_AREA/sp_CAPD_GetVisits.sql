-- The logged visits of a patient, newest first; its column names head the list that nurses read.
-- @HospNum: hospital number.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_GetVisits
GO

CREATE PROCEDURE sp_CAPD_GetVisits
    @HospNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT l.IdNum AS [ID NUMBER], l.TransDate AS [VISIT DATE], l.CAPDNum AS [CAPD NUM.],
        l.Diagnosis AS [DIAGNOSIS], l.Weight AS [WEIGHT], l.BP AS [BLOOD PRESSURE],
        LTRIM(RTRIM(l.ChronicPD)) AS [TYPE OF CHRONIC PD], LTRIM(RTRIM(l.Catheter)) AS [CATHETER],
        l.Diet AS [DIET], l.FluidRestriction AS [FLUID RESTRICTION],
        l.AcutePDStartDate AS [ACUTE PD STARTED], l.ChronicPDStartDate AS [CHRONIC PD STARTED],
        l.BloodType AS [BLOOD TYPE], l.HBsAg AS [HBsAg STATUS],
        l.DialysisShiftDate AS [DATE SHIFTED], l.Dialysis AS [SHIFTED TO],
        l.ShiftReason AS [REASON FOR SHIFTING], l.ShiftBackDate AS [DATE SHIFTED BACK],
        l.TransplantDate AS [DATE OF TRANSPLANT], l.RejectionDate AS [DATE OF REJECTION],
        l.Remarks AS [OTHER COMMENTS], LTRIM(RTRIM(l.Purpose)) AS [PURPOSE]
    FROM CLINICAL_AREA..tbCAPDLogBook l
    WHERE l.HospNum = LTRIM(RTRIM(@HospNum))
    ORDER BY l.VisitDay DESC;
END
GO
