-- The revenue codes that the unit charges: its own (CY), doctors' fees (MD) and every code with a
-- stock location. @Mode: 0 the list for picking, 1 the exact code or, where there is none, the codes
-- that begin with @Text or whose description does, 2 the count of what 1 returns; an empty text means
-- all. Mode 0 returns description, code, by description; 1 RevenueID, Revenue, WithItems (Y or N),
-- SearchInventory (bit), LocationID, InvCode, by code; 2 recCount. Refuses another mode (50101).
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_SearchRevenue
GO

CREATE PROCEDURE sp_CAPD_SearchRevenue
    @Mode varchar(8000),
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    DECLARE @IsExact bit;
    SET @Text = ISNULL(LTRIM(RTRIM(@Text)), '');
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);
    SET @IsExact = 0;
    IF EXISTS (
        SELECT 1 FROM BILLING..tbRevenueCode r
        WHERE r.RevenueID = @Text
            AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD')))
        SET @IsExact = 1;

    IF @Mode = '0'
        SELECT r.Revenue AS description, r.RevenueID AS code
        FROM BILLING..tbRevenueCode r
        WHERE r.Revenue LIKE @Prefix ESCAPE '!'
            AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD'))
        UNION ALL
        SELECT r.Revenue, r.RevenueID
        FROM BILLING..tbRevenueCode r
        WHERE r.RevenueID LIKE @Prefix ESCAPE '!'
            AND r.Revenue NOT LIKE @Prefix ESCAPE '!'
            AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD'))
        ORDER BY description, code;
    ELSE IF @Mode = '1' AND @IsExact = 1
        SELECT r.RevenueID, r.Revenue, r.WithItems, r.SearchInventory, r.LocationID, r.InvCode
        FROM BILLING..tbRevenueCode r
        WHERE r.RevenueID = @Text;
    ELSE IF @Mode = '1'
        SELECT r.RevenueID, r.Revenue, r.WithItems, r.SearchInventory, r.LocationID, r.InvCode
        FROM BILLING..tbRevenueCode r
        WHERE r.RevenueID LIKE @Prefix ESCAPE '!'
            AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD'))
        UNION ALL
        SELECT r.RevenueID, r.Revenue, r.WithItems, r.SearchInventory, r.LocationID, r.InvCode
        FROM BILLING..tbRevenueCode r
        WHERE r.Revenue LIKE @Prefix ESCAPE '!'
            AND r.RevenueID NOT LIKE @Prefix ESCAPE '!'
            AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD'))
        ORDER BY RevenueID;
    ELSE IF @Mode = '2' AND @IsExact = 1
        SELECT 1 AS recCount;
    ELSE IF @Mode = '2'
        SELECT
            (SELECT COUNT(*) FROM BILLING..tbRevenueCode r
                WHERE r.RevenueID LIKE @Prefix ESCAPE '!'
                    AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD')))
            + (SELECT COUNT(*) FROM BILLING..tbRevenueCode r
                WHERE r.Revenue LIKE @Prefix ESCAPE '!'
                    AND r.RevenueID NOT LIKE @Prefix ESCAPE '!'
                    AND (r.LocationID > '' OR r.RevenueID IN ('CY', 'MD'))) AS recCount;
    ELSE
    BEGIN
        THROW 50101, 'Unknown search mode.', 1;
    END
END
GO
