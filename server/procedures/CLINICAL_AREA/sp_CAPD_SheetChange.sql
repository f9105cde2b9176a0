-- When and by whom a patient's information sheet was last saved; no row for a patient who is not on
-- the register. @HospNum: hospital number. In a transaction nobody else saves the sheet until its
-- end. Returns ChangedAt, ChangedBy (the employee's name, else the code).
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SheetChange
GO

CREATE PROCEDURE sp_CAPD_SheetChange
    @HospNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SELECT ISNULL(UpdatedAt, RegisteredAt) AS ChangedAt,
        PATIENT_DATA.dbo.fn_GetEmployeeName(ISNULL(UpdatedBy, RegisteredBy)) AS ChangedBy
    FROM CLINICAL_AREA..tbCAPDPatient WITH (UPDLOCK, HOLDLOCK)
    WHERE HospNum = LTRIM(RTRIM(@HospNum));
END
GO
