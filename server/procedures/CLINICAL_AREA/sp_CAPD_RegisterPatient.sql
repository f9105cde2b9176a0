-- Registers a patient on the unit's register or changes the sheet; without @WithPeritonitis logs
-- today's visit instead and leaves the sheet alone (sp_CAPD_LogVisit). An empty @CAPDNum takes the
-- patient's own number, else the next free one. Empty texts of @TypeOfPD, @ChronicPD and @Catheter
-- leave what is stored, every other empty one clears it. Dates are M/d/yyyy. Refuses a patient who
-- is not on file (50201) and a number that is not the patient's (50202). Returns the CAPDNum of the
-- sheet; of a visit no row.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_RegisterPatient
GO

CREATE PROCEDURE sp_CAPD_RegisterPatient
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @CAPDNum varchar(8000),
    @TypeOfPD varchar(8000),
    @Unused5 varchar(8000),
    @NextKin varchar(8000),
    @Diagnosis varchar(8000),
    @AcutePDStart varchar(8000),
    @ChronicPDStart varchar(8000),
    @ChronicPD varchar(8000),
    @Catheter varchar(8000),
    @Weight varchar(8000),
    @Unused13 varchar(8000),
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
    @Status varchar(8000),
    @UserID varchar(8000),
    @Purpose varchar(8000) = NULL,
    @WithPeritonitis varchar(8000) = NULL
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF @WithPeritonitis IS NULL
    BEGIN
        EXEC CLINICAL_AREA..sp_CAPD_LogVisit @HospNum, @IdNum, @CAPDNum, @Diagnosis, @AcutePDStart,
            @ChronicPDStart, @ChronicPD, @Catheter, @Weight, @Diet, @BP, @FluidRestriction,
            @DateShifted, @BloodType, @HBsAg, @Dialysis, @ShiftReason, @DateShiftedBack,
            @DateOfTransplant, @DateOfRejection, @Remarks, @UserID, @Purpose;
        RETURN;
    END

    DECLARE @Own varchar(20);
    SET @HospNum = LTRIM(RTRIM(@HospNum));
    SET @CAPDNum = LTRIM(RTRIM(@CAPDNum));

    BEGIN TRANSACTION;
    IF NOT EXISTS (SELECT 1 FROM PATIENT_DATA..tbMaster WHERE HospNum = @HospNum)
    BEGIN
        THROW 50201, 'There is no patient with this hospital number.', 1;
    END
    SELECT @Own = CAPDNum FROM CLINICAL_AREA..tbCAPDPatient WITH (UPDLOCK, HOLDLOCK) WHERE HospNum = @HospNum;
    IF @CAPDNum <> '' AND (@CAPDNum <> @Own
        OR (@Own IS NULL AND EXISTS (SELECT 1 FROM CLINICAL_AREA..tbCAPDPatient WHERE CAPDNum = @CAPDNum)))
    BEGIN
        THROW 50202, 'This CAPD number is not the patient''s.', 1;
    END

    IF @Own IS NULL
    BEGIN
        IF @CAPDNum = ''
            EXEC CLINICAL_AREA..sp_CAPD_AddToRegister @HospNum, @UserID;
        ELSE
            INSERT INTO CLINICAL_AREA..tbCAPDPatient (HospNum, CAPDNum, RegisteredAt, RegisteredBy)
            VALUES (@HospNum, @CAPDNum, GETDATE(), @UserID);
    END

    UPDATE CLINICAL_AREA..tbCAPDPatient
    SET TypeOfPD = ISNULL(NULLIF(@TypeOfPD, ''), TypeOfPD),
        ChronicPD = ISNULL(NULLIF(@ChronicPD, ''), ChronicPD),
        Catheter = ISNULL(NULLIF(@Catheter, ''), Catheter),
        Purpose = NULLIF(@Purpose, ''),
        NextKin = NULLIF(@NextKin, ''),
        Status = NULLIF(@Status, ''),
        Diagnosis = NULLIF(@Diagnosis, ''),
        AcutePDStartDate = CONVERT(datetime, NULLIF(@AcutePDStart, ''), 101),
        ChronicPDStartDate = CONVERT(datetime, NULLIF(@ChronicPDStart, ''), 101),
        Weight = NULLIF(@Weight, ''),
        Diet = NULLIF(@Diet, ''),
        BP = NULLIF(@BP, ''),
        FluidRestriction = NULLIF(@FluidRestriction, ''),
        DialysisShiftDate = CONVERT(datetime, NULLIF(@DateShifted, ''), 101),
        BloodType = NULLIF(@BloodType, ''),
        HBsAg = NULLIF(@HBsAg, ''),
        Dialysis = NULLIF(@Dialysis, ''),
        ShiftReason = NULLIF(@ShiftReason, ''),
        ShiftBackDate = CONVERT(datetime, NULLIF(@DateShiftedBack, ''), 101),
        TransplantDate = CONVERT(datetime, NULLIF(@DateOfTransplant, ''), 101),
        RejectionDate = CONVERT(datetime, NULLIF(@DateOfRejection, ''), 101),
        Remarks = NULLIF(@Remarks, ''),
        WithPeritonitis = CASE WHEN @WithPeritonitis = 'Y' THEN 'Y' ELSE 'N' END,
        UpdatedAt = GETDATE(),
        UpdatedBy = @UserID
    WHERE HospNum = @HospNum;
    COMMIT TRANSACTION;

    SELECT CAPDNum FROM CLINICAL_AREA..tbCAPDPatient WHERE HospNum = @HospNum;
END
GO
