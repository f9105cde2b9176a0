-- How a saved slip was made, for printing it again: DoctorName, UserID and Employee who charged it,
-- Moment, State (PARTLY REVOKED once something was taken back of it: what is printed again stands;
-- of a walk-in's REVOKED, or OR and the receipt; else empty). @RefNum: the slip. No row
-- for an unknown one.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_FirstPrint
GO

CREATE PROCEDURE sp_CAPD_FirstPrint
    @RefNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Lines int;
    DECLARE @Standing int;
    DECLARE @Receipt varchar(20);
    DECLARE @State varchar(30);
    SET @RefNum = LTRIM(RTRIM(@RefNum));
    SET @State = '';
    SELECT @Lines = COUNT(*), @Standing = COUNT(CASE WHEN RecordStatus = 'N' THEN 1 END),
        @Receipt = MAX(ORNum)
    FROM BILLING..tbCashAssessment
    WHERE RefNum = @RefNum;
    IF @Lines > 0
    BEGIN
        IF @Receipt > ''
            SET @State = CONCAT('OR ', @Receipt);
        ELSE IF @Standing = 0
            SET @State = 'REVOKED';
        SELECT TOP (1) RequestDoctor AS DoctorName, UserID,
            PATIENT_DATA.dbo.fn_GetEmployeeName(UserID) AS Employee, TransDate AS Moment,
            @State AS State
        FROM BILLING..tbCashAssessment
        WHERE RefNum = @RefNum
        ORDER BY AssessID;
        RETURN;
    END

    IF EXISTS (SELECT 1 FROM BILLING..tbStockCard WHERE RefNum = @RefNum AND Quantity < 0)
        OR EXISTS (SELECT 1 FROM BILLING..tbDoctorCharge WHERE RefNum = @RefNum AND Amount < 0)
        SET @State = 'PARTLY REVOKED';
    SELECT TOP (1) DoctorName, UserID, PATIENT_DATA.dbo.fn_GetEmployeeName(UserID) AS Employee,
        RequestDate AS Moment, @State AS State
    FROM CLINICAL_AREA..tbCAPDRequest
    WHERE RefNum = @RefNum
    ORDER BY RequestID;
END
GO
