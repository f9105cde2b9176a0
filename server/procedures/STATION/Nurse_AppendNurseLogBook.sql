-- Writes one request of a ward into the nurses' log book. @PatientType I or O; @RecordStatus one
-- blank = pending; @RequestDate 'MM/dd/yyyy hh:mm:ss AM/PM'; @DeptID PH or CS; money and quantity
-- as plain decimal text; the options are kept as they come. Refuses a closed account (50181), a
-- quantity that is no number (50251), an item without a name, off the catalogue or inactive
-- (50252) and one that is requested already and waits (50253). The code 00 needs only a name; it may
-- wait more than once. Returns nothing.
USE STATION
GO

DROP PROCEDURE IF EXISTS Nurse_AppendNurseLogBook
GO

CREATE PROCEDURE Nurse_AppendNurseLogBook
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @PatientType varchar(8000),
    @ItemCode varchar(8000),
    @Amount varchar(8000),
    @Quantity varchar(8000),
    @Dosage varchar(8000),
    @RecordStatus varchar(8000),
    @RequestDate varchar(8000),
    @DeptID varchar(8000),
    @Option1 varchar(8000),
    @Option2 varchar(8000),
    @RequestedBy varchar(8000),
    @Remarks varchar(8000),
    @ItemName varchar(8000),
    @Station varchar(8000),
    @Option3 varchar(8000),
    @UnitPrice varchar(8000),
    @Option4 varchar(8000),
    @Option5 varchar(8000),
    @Option6 varchar(8000),
    @Option7 varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Count decimal(12,2);
    DECLARE @Refusal varchar(8000);
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @ItemCode = LTRIM(RTRIM(@ItemCode));
    EXEC PATIENT_DATA..sp_Account_Check @IdNum;
    SET @Count = TRY_CONVERT(decimal(12,2), NULLIF(@Quantity, ''));
    IF @Count IS NULL
    BEGIN
        SET @Refusal = CONCAT('The quantity ', @Quantity, ' of ', @ItemName, ' is not a number.');
        THROW 50251, @Refusal, 1;
    END

    IF ISNULL(@ItemName, '') = '' OR (@ItemCode <> '00' AND NOT EXISTS (
        SELECT 1 FROM BILLING..tbDrug WHERE DrugCode = @ItemCode AND Status = 0))
    BEGIN
        SET @Refusal = CONCAT('The code ', @ItemCode, ' is not of an item that can be requested.');
        THROW 50252, @Refusal, 1;
    END

    BEGIN TRANSACTION;
    IF @ItemCode <> '00' AND EXISTS (
        SELECT 1
        FROM STATION..tbNurseLogBook WITH (UPDLOCK, HOLDLOCK)
        WHERE IdNum = @IdNum AND ItemCode = @ItemCode AND DeptID = @DeptID AND RecordStatus = ' ')
    BEGIN
        SET @Refusal = CONCAT(@ItemName, ' (', @ItemCode, ') is already requested.');
        THROW 50253, @Refusal, 1;
    END
    INSERT INTO STATION..tbNurseLogBook (
        HospNum, IdNum, PatientType, ItemCode, ItemName, Amount, Quantity, Dosage, RequestDate,
        DeptID, RecordStatus, RequestedBy, Remarks, Station, UnitPrice, Option1, Option2, Option3,
        Option4, Option5, Option6, Option7)
    VALUES (
        LTRIM(RTRIM(@HospNum)), @IdNum, @PatientType, @ItemCode,
        @ItemName, CONVERT(money, @Amount), @Count, @Dosage, CONVERT(datetime, @RequestDate),
        @DeptID, @RecordStatus, @RequestedBy, NULLIF(@Remarks, ''), @Station,
        CONVERT(money, NULLIF(@UnitPrice, '')), @Option1, @Option2, @Option3, @Option4, @Option5,
        @Option6, @Option7);
    COMMIT TRANSACTION;
END
GO
