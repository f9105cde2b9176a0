-- Logs a registered patient's visit of the server's present day; part of sp_CAPD_RegisterPatient.
-- An empty @CAPDNum means the patient's own; dates are M/d/yyyy. Refuses a patient who is not on the
-- register (50203), a number that is not the patient's (50202) and a second visit of the day (50204).
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_LogVisit
GO

CREATE PROCEDURE sp_CAPD_LogVisit
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @CAPDNum varchar(8000),
    @Diagnosis varchar(8000),
    @AcutePDStart varchar(8000),
    @ChronicPDStart varchar(8000),
    @ChronicPD varchar(8000),
    @Catheter varchar(8000),
    @Weight varchar(8000),
    @Diet varchar(8000),
    @BP varchar(8000),
    @FluidRestriction varchar(8000),
    @DateShifted varchar(8000),
    @BloodType varchar(8000),
    @HBsAg varchar(8000),
    @Dialysis varchar(8000),
    @ShiftReason varchar(8000),
    @DateShiftedBack varchar(8000),
    @DateOfTransplant varchar(8000),
    @DateOfRejection varchar(8000),
    @Remarks varchar(8000),
    @UserID varchar(8000),
    @Purpose varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Own varchar(20);
    DECLARE @Now datetime;
    DECLARE @Day datetime;
    SET @HospNum = LTRIM(RTRIM(@HospNum));
    SET @CAPDNum = LTRIM(RTRIM(@CAPDNum));

    BEGIN TRANSACTION;
    SELECT @Own = CAPDNum FROM CLINICAL_AREA..tbCAPDPatient WHERE HospNum = @HospNum;
    IF @Own IS NULL
    BEGIN
        THROW 50203, 'Patient does not exist in CAPD record. Register First.', 1;
    END
    IF @CAPDNum <> '' AND @CAPDNum <> @Own
    BEGIN
        THROW 50202, 'This CAPD number is not the patient''s.', 1;
    END
    SET @Now = GETDATE();
    SET @Day = CONVERT(datetime, CONVERT(varchar(10), @Now, 101), 101);
    IF EXISTS (SELECT 1 FROM CLINICAL_AREA..tbCAPDLogBook WITH (UPDLOCK, HOLDLOCK)
        WHERE HospNum = @HospNum AND VisitDay = @Day)
    BEGIN
        THROW 50204, 'Patient''s visit for this day is already registered.', 1;
    END

    INSERT INTO CLINICAL_AREA..tbCAPDLogBook (
        IdNum, HospNum, CAPDNum, TransDate, VisitDay, Diagnosis, Weight, BP, ChronicPD, Catheter,
        Diet, FluidRestriction, AcutePDStartDate, ChronicPDStartDate, DialysisShiftDate, BloodType,
        HBsAg, Dialysis, ShiftReason, ShiftBackDate, TransplantDate, RejectionDate, Remarks,
        Purpose, UserID)
    VALUES (
        LTRIM(RTRIM(@IdNum)), @HospNum, @Own, @Now, @Day, NULLIF(@Diagnosis, ''),
        NULLIF(@Weight, ''), NULLIF(@BP, ''), NULLIF(@ChronicPD, ''), NULLIF(@Catheter, ''),
        NULLIF(@Diet, ''), NULLIF(@FluidRestriction, ''),
        CONVERT(datetime, NULLIF(@AcutePDStart, ''), 101),
        CONVERT(datetime, NULLIF(@ChronicPDStart, ''), 101),
        CONVERT(datetime, NULLIF(@DateShifted, ''), 101), NULLIF(@BloodType, ''),
        NULLIF(@HBsAg, ''), NULLIF(@Dialysis, ''), NULLIF(@ShiftReason, ''),
        CONVERT(datetime, NULLIF(@DateShiftedBack, ''), 101),
        CONVERT(datetime, NULLIF(@DateOfTransplant, ''), 101),
        CONVERT(datetime, NULLIF(@DateOfRejection, ''), 101), NULLIF(@Remarks, ''),
        NULLIF(@Purpose, ''), @UserID);
    COMMIT TRANSACTION;
END
GO
