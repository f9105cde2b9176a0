-- Records a line of a charge slip as it was requested, after its charge. An empty @Quantity counts
-- as 1; @Amount: hospital money of the whole line, before discount. Keeps the item's description, the
-- amount of one unit as its price (sp_CAPD_KeepPrice where it was typed), and the stock card row that
-- the line's supplies have just been issued on. Of a walk-in's fee the assessment's line gets quantity
-- and doctor. Refuses what is no amount (50182)
-- and a closed account (50181). No rows.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SaveRequest
GO

CREATE PROCEDURE sp_CAPD_SaveRequest
    @HospNum varchar(8000),
    @IdNum varchar(8000),
    @CAPDNum varchar(8000),
    @ItemCode varchar(8000),
    @Quantity varchar(8000),
    @Amount varchar(8000),
    @Department varchar(8000),
    @RefNum varchar(8000),
    @RevenueID varchar(8000),
    @UserID varchar(8000),
    @DoctorID varchar(8000),
    @DoctorName varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Units decimal(12,2);
    DECLARE @LineAmount money;
    DECLARE @Description varchar(200);
    DECLARE @StockCardID int;
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    SET @Units = CONVERT(decimal(12,2), ISNULL(NULLIF(@Quantity, ''), '1'));
    SET @Amount = NULLIF(@Amount, '');
    SET @LineAmount = TRY_CONVERT(money, @Amount);
    IF @LineAmount IS NULL
    BEGIN
        THROW 50182, 'A charge needs an amount above 0.', 1;
    END
    EXEC PATIENT_DATA..sp_Account_Check @IdNum;

    BEGIN TRANSACTION;
    SELECT @Description = OtherRevenue
    FROM BILLING..tbOtherRevenue
    WHERE RevenueID = @RevenueID AND ItemCode = @ItemCode;
    IF @Description IS NULL
    BEGIN
        SELECT @Description = DrugName
        FROM BILLING..tbDrug
        WHERE DrugCode = @ItemCode;
        SET @StockCardID = (
            SELECT TOP (1) StockCardID
            FROM BILLING..tbStockCard
            WHERE RefNum = @RefNum AND ItemCode = @ItemCode AND Quantity >= 0
            ORDER BY StockCardID DESC);
    END
    INSERT INTO CLINICAL_AREA..tbCAPDRequest (
        HospNum, IdNum, CAPDNum, ItemCode, Quantity, Amount, Department, RefNum, RevenueID,
        UserID, DoctorID, DoctorName, RequestDate, Description, Price, StockCardID)
    VALUES (
        LTRIM(RTRIM(@HospNum)), @IdNum, NULLIF(LTRIM(RTRIM(@CAPDNum)), ''), @ItemCode, @Units,
        @LineAmount, @Department, @RefNum, @RevenueID, @UserID, NULLIF(@DoctorID, ''),
        NULLIF(@DoctorName, ''), GETDATE(), @Description,
        ROUND(@LineAmount / NULLIF(@Units, 0), 2), @StockCardID);
    IF @IdNum LIKE 'T%C'
        UPDATE BILLING..tbCashAssessment
        SET Quantity = @Units, DoctorID = NULLIF(@DoctorID, ''),
            RequestDoctor = NULLIF(@DoctorName, '')
        WHERE RefNum = @RefNum
            AND IdNum = @IdNum
            AND RevenueID = @RevenueID
            AND ItemCode = @ItemCode
            AND RequestDoctor IS NULL;
    COMMIT TRANSACTION;
END
GO
