-- Fees of a revenue code whose item code begins with @Text or, where none does, whose name does; an
-- empty text lists all by name. At most 500 rows. Returns RevenueID, ItemCode, OtherRevenue, RateA.
USE BILLING
GO

DROP PROCEDURE IF EXISTS sp_OtherRevenue_Search
GO

CREATE PROCEDURE sp_OtherRevenue_Search
    @RevenueID varchar(8000),
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    SET @Text = LTRIM(RTRIM(@Text));
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);
    SET @RevenueID = LTRIM(RTRIM(@RevenueID));

    IF EXISTS (
        SELECT 1 FROM BILLING..tbOtherRevenue o
        WHERE o.ItemCode LIKE @Prefix ESCAPE '!'
            AND o.RevenueID = @RevenueID AND @Text <> '')
        SELECT TOP (500) o.RevenueID, o.ItemCode, o.OtherRevenue, o.RateA
        FROM BILLING..tbOtherRevenue o
        WHERE o.ItemCode LIKE @Prefix ESCAPE '!'
            AND o.RevenueID = @RevenueID
        ORDER BY o.ItemCode;
    ELSE
        SELECT TOP (500) o.RevenueID, o.ItemCode, o.OtherRevenue, o.RateA
        FROM BILLING..tbOtherRevenue o
        WHERE o.OtherRevenue LIKE @Prefix ESCAPE '!'
            AND o.RevenueID = @RevenueID
        ORDER BY o.OtherRevenue, o.ItemCode;
END
GO
