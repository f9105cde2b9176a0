-- One admission by its exact number, for the patient listing; no row when it is unknown.
-- Returns IDNumber, HospitalNumber, LastName, FirstName, MiddleName, Age (years at admission), Sex,
-- AccountNum, Company, BillingDate (null while open), roomid, RoomClassID.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Listing_Inpatient
GO

CREATE PROCEDURE sp_Listing_Inpatient
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName, m.MiddleName,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, v.AdmDate) AS Age, m.Sex, v.AccountNum, v.Company,
        v.BillingDate, v.RoomID AS roomid, v.RoomClassID
    FROM PATIENT_DATA..tbPatient v
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
    WHERE v.IdNum = LTRIM(RTRIM(@IdNum));
END
GO
