-- Medicines or supplies whose code begins with @Text or, where none does, whose name does; an empty
-- text lists all by name. At most 500 rows. @Kind: M medicines, S supplies, empty for both;
-- @LocationID: only what that stock location keeps, or empty. Returns DrugCode, DrugName, Status
-- (bit, 1 = inactive), SellingPriceIn, SellingPriceOut, Unit, OnHand.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_Drug_Search
GO

CREATE PROCEDURE sp_Drug_Search
    @Text varchar(8000),
    @Kind varchar(8000),
    @LocationID varchar(8000) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    SET @Text = LTRIM(RTRIM(@Text));
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);
    SET @LocationID = ISNULL(LTRIM(RTRIM(@LocationID)), '');

    DECLARE @OtherKind varchar(8000);
    SET @OtherKind = CASE @Kind WHEN '' THEN 'M' ELSE @Kind END;
    SET @Kind = CASE @Kind WHEN '' THEN 'S' ELSE @Kind END;

    DECLARE @ByCode int;
    SET @ByCode = 0;
    IF @Text <> ''
    BEGIN
        IF EXISTS (
            SELECT 1 FROM BILLING..tbDrug c
            WHERE c.DrugCode LIKE @Prefix ESCAPE '!' AND c.Kind IN (@Kind, @OtherKind))
            SET @ByCode = 1;
    END

    IF @LocationID = ''
    BEGIN
        IF @ByCode = 1
            SELECT TOP (500) d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn,
                    d.SellingPriceOut, d.Unit,
                (SELECT ISNULL(SUM(s.OnHand), 0) FROM BILLING..tbDrugStock s
                    WHERE s.DrugCode = d.DrugCode) AS OnHand
            FROM BILLING..tbDrug d
            WHERE d.DrugCode LIKE @Prefix ESCAPE '!'
                AND d.Kind IN (@Kind, @OtherKind)
            ORDER BY d.DrugCode;
        ELSE
            SELECT TOP (500) d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn,
                    d.SellingPriceOut, d.Unit,
                (SELECT ISNULL(SUM(s.OnHand), 0) FROM BILLING..tbDrugStock s
                    WHERE s.DrugCode = d.DrugCode) AS OnHand
            FROM BILLING..tbDrug d
            WHERE d.DrugName LIKE @Prefix ESCAPE '!'
                AND d.Kind IN (@Kind, @OtherKind)
            ORDER BY d.DrugName, d.DrugCode;
    END
    ELSE
    BEGIN
        IF @ByCode = 1
            SELECT TOP (500) d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn,
                    d.SellingPriceOut, d.Unit,
                s.OnHand
            FROM BILLING..tbDrug d
            INNER JOIN BILLING..tbDrugStock s ON s.DrugCode = d.DrugCode
            WHERE d.DrugCode LIKE @Prefix ESCAPE '!'
                AND d.Kind IN (@Kind, @OtherKind)
                AND s.LocationID = @LocationID
            ORDER BY d.DrugCode;
        ELSE
            SELECT TOP (500) d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn,
                    d.SellingPriceOut, d.Unit,
                s.OnHand
            FROM BILLING..tbDrug d
            INNER JOIN BILLING..tbDrugStock s ON s.DrugCode = d.DrugCode
            WHERE d.DrugName LIKE @Prefix ESCAPE '!'
                AND d.Kind IN (@Kind, @OtherKind)
                AND s.LocationID = @LocationID
            ORDER BY d.DrugName, d.DrugCode;
    END
END
GO
