-- Puts a patient on the register under the next number of the counter; part of
-- sp_CAPD_RegisterPatient, in its transaction. A number that a patient has already is passed over.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_AddToRegister
GO

CREATE PROCEDURE sp_CAPD_AddToRegister
    @HospNum varchar(8000),
    @UserID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Number int;

    BEGIN TRANSACTION;
    UPDATE CLINICAL_AREA..tbCAPDNumber SET @Number = NextNumber = NextNumber + 1
    WHILE EXISTS (SELECT 1 FROM CLINICAL_AREA..tbCAPDPatient WHERE CAPDNum = CAST(@Number - 1 AS varchar(20)))
        UPDATE CLINICAL_AREA..tbCAPDNumber SET @Number = NextNumber = NextNumber + 1

    INSERT INTO CLINICAL_AREA..tbCAPDPatient (HospNum, CAPDNum, RegisteredAt, RegisteredBy)
    VALUES (@HospNum, CAST(@Number - 1 AS varchar(20)), GETDATE(), @UserID);
    COMMIT TRANSACTION;
END
GO
