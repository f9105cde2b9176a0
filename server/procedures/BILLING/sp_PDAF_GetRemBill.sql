-- What a sponsored visit costs: HospBill, the unit's charges of one cost centre, and Amount, what is
-- left of it after the funds' payments. @DeptID: CY for fees and supplies (supplies net of
-- discount), MD for doctors' fees. No row for a visit that is charged to no company.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_PDAF_GetRemBill
GO

CREATE PROCEDURE sp_PDAF_GetRemBill
    @IdNum varchar(8000),
    @DeptID varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @HospBill money;
    DECLARE @Supplies money;
    DECLARE @Paid money;
    SET @IdNum = LTRIM(RTRIM(@IdNum));
    IF @DeptID = 'MD'
        SELECT @HospBill = SUM(Amount) FROM BILLING..tbDoctorCharge WHERE IdNum = @IdNum;
    ELSE
    BEGIN
        SELECT @HospBill = SUM(Amount)
        FROM BILLING..tbBill
        WHERE IdNum = @IdNum AND RevenueID = @DeptID;
        SELECT @Supplies = SUM(NetAmount)
        FROM BILLING..tbStockCard
        WHERE IdNum = @IdNum AND RefNum LIKE 'C%D';
    END
    SET @HospBill = ISNULL(@HospBill, 0) + ISNULL(@Supplies, 0);
    SELECT @Paid = SUM(Amount)
    FROM BILLING..tbCompanyPayment
    WHERE IdNum = @IdNum AND CancelledAt IS NULL AND RevenueID = @DeptID;

    SELECT @HospBill - ISNULL(@Paid, 0) AS Amount, @HospBill AS HospBill
    FROM BILLING..tbVisitAccount
    WHERE IdNum = @IdNum;
END
GO
