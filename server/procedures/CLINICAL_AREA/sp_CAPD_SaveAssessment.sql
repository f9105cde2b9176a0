-- Writes one line of a walk-in's cash assessment. Money is for the whole quantity; an empty quantity
-- stays open; @RecordStatus N: it stands and waits for its payment. All lines of an assessment carry
-- the moment of its first. Refuses an amount that is not above zero, a patient who is not on file
-- and an assessment that is paid or revoked already (50161 to 50163).
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SaveAssessment
GO

CREATE PROCEDURE sp_CAPD_SaveAssessment
    @PatientName varchar(8000),
    @RevenueID varchar(8000),
    @ItemCode varchar(8000),
    @Quantity varchar(8000),
    @Amount varchar(8000),
    @UserID varchar(8000),
    @RefNum varchar(8000),
    @IdNum varchar(8000),
    @RecordStatus varchar(8000),
    @DoctorID varchar(8000),
    @HospNum varchar(8000),
    @RequestDoctor varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Money money;
    DECLARE @Moment datetime;
    DECLARE @Settled int;
    SET @Amount = NULLIF(@Amount, '');
    SET @Money = TRY_CONVERT(money, @Amount);
    IF @Money IS NULL OR @Money <= 0
    BEGIN
        THROW 50161, 'An assessment''s line needs an amount.', 1;
    END
    IF NOT EXISTS (SELECT 1 FROM PATIENT_DATA..tbMaster WHERE HospNum = @HospNum)
    BEGIN
        THROW 50162, 'The patient of the assessment is not on file.', 1;
    END
    BEGIN TRANSACTION;
    SET @Moment = GETDATE();
    SELECT @Moment = ISNULL(MIN(TransDate), @Moment),
        @Settled = COUNT(CASE WHEN RecordStatus = 'R' OR ORNum > '' THEN 1 END)
    FROM BILLING..tbCashAssessment WITH (UPDLOCK, HOLDLOCK)
    WHERE RefNum = @RefNum;
    IF @Settled > 0
    BEGIN
        THROW 50163, 'The assessment is paid or revoked already.', 1;
    END
    INSERT INTO BILLING..tbCashAssessment (
        PatientName, RevenueID, ItemCode, Quantity, Amount, UserID, RefNum, IdNum, RecordStatus,
        DoctorID, HospNum, RequestDoctor, TransDate)
    VALUES (
        @PatientName, @RevenueID, @ItemCode, NULLIF(@Quantity, ''), @Money, @UserID, @RefNum, @IdNum,
        @RecordStatus, @DoctorID, @HospNum, @RequestDoctor, @Moment);
    COMMIT TRANSACTION;
END
GO
