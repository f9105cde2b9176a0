-- One out-patient or emergency visit by its exact number; no row when it is unknown.
-- Returns the columns of sp_Listing_Inpatient: roomid OPD or ER, RoomClassID null.
USE PATIENT_DATA
GO

DROP PROCEDURE IF EXISTS sp_Listing_Outpatient
GO

CREATE PROCEDURE sp_Listing_Outpatient
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT v.IdNum AS IDNumber, v.HospNum AS HospitalNumber, m.LastName, m.FirstName, m.MiddleName,
        PATIENT_DATA.dbo.fn_GetAge(m.BirthDate, v.AdmDate) AS Age, m.Sex, v.AccountNum, v.Company,
        v.BillingDate, v.RoomID AS roomid, CAST(NULL AS varchar(5)) AS RoomClassID
    FROM PATIENT_DATA..tbOutPatient v
    INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum
    WHERE v.IdNum = LTRIM(RTRIM(@IdNum));
END
GO
