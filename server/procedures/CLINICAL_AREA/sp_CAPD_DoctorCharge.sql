-- Posts a doctor's fee to a visit, or takes it back with the negative amount, which does nothing
-- beyond what stands. @RefNum: the slip; @ItemCode: the fee; @Amount: hospital money of the whole
-- line. For a walk-in's number (T...C) the fee is also a line of the assessment, so that the cashier
-- sees it. Refuses what is no amount (50182), a fee on a closed account (50181), and for a walk-in
-- what sp_CAPD_SaveAssessment refuses. No rows.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_DoctorCharge
GO

CREATE PROCEDURE sp_CAPD_DoctorCharge
    @RefNum varchar(8000),
    @IdNum varchar(8000),
    @ItemCode varchar(8000),
    @Amount varchar(8000),
    @UserID varchar(8000),
    @HospNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Fee money;
    DECLARE @Stands money;
    DECLARE @PatientName varchar(200);
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @HospNum = LTRIM(RTRIM(@HospNum));
    SET @Amount = NULLIF(@Amount, '');
    SET @Fee = TRY_CONVERT(money, @Amount);
    IF @Fee IS NULL OR @Fee = 0
    BEGIN
        THROW 50182, 'A charge needs an amount above 0.', 1;
    END
    IF @Fee > 0
        EXEC PATIENT_DATA..sp_Account_Check @IdNum;

    BEGIN TRANSACTION;
    SELECT @Stands = SUM(Amount)
    FROM BILLING..tbDoctorCharge WITH (UPDLOCK, HOLDLOCK)
    WHERE RefNum = @RefNum AND ItemCode = @ItemCode AND IdNum = @IdNum;
    IF ISNULL(@Stands, 0) + @Fee >= 0
    BEGIN
        INSERT INTO BILLING..tbDoctorCharge (
            RefNum, IdNum, HospNum, ItemCode, Amount, UserID, TransDate)
        VALUES (@RefNum, @IdNum, @HospNum, @ItemCode, @Fee, @UserID, GETDATE());
        IF @IdNum LIKE 'T%C' AND @Fee > 0
        BEGIN
            SELECT @PatientName = CONCAT(LastName, ', ', FirstName, ' ', MiddleName)
            FROM PATIENT_DATA..tbMaster
            WHERE HospNum = @HospNum;
            EXEC CLINICAL_AREA..sp_CAPD_SaveAssessment @PatientName, 'MD', @ItemCode, '1', @Amount, @UserID,
                @RefNum, @IdNum, 'N', NULL, @HospNum, NULL;
        END
        IF @IdNum LIKE 'T%C' AND @Fee < 0
            UPDATE BILLING..tbCashAssessment
            SET RecordStatus = 'R'
            WHERE RefNum = @RefNum AND ItemCode = @ItemCode AND RevenueID = 'MD';
    END
    COMMIT TRANSACTION;
END
GO
