-- How a laboratory value stands to its normal range: HIGH, LOW, '?' where the value or the range
-- cannot be read with certainty, null where it is normal, empty or has no range.
-- @Flag: the laboratory's own mark, H or L; it holds unless the number says the opposite. @Range as
-- printed ("3.5 - 5.1", "< 5", "up to 40"); @Low and @High where the laboratory gave them as numbers,
-- which must not contradict what is printed.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_LabMark
GO

CREATE FUNCTION fn_LabMark (
    @Value varchar(8000), @Flag varchar(8000), @Low float, @High float, @Range varchar(8000))
RETURNS varchar(8000)
AS
BEGIN
    DECLARE @Number float;
    DECLARE @Sign varchar(1);
    DECLARE @Dash int;
    DECLARE @BoundIsOut int;
    DECLARE @PrintedLow float;
    DECLARE @PrintedHigh float;
    DECLARE @Mark varchar(4);

    SET @Value = LTRIM(RTRIM(ISNULL(@Value, '')));
    SET @Range = LTRIM(RTRIM(ISNULL(@Range, '')));
    SET @BoundIsOut = 0;
    IF @Value = ''
        RETURN NULL;

    SET @Sign = LEFT(@Range, 1);
    SET @Dash = 1 + CHARINDEX('-', SUBSTRING(@Range, 2, 8000));
    IF @Sign IN ('<', '>')
    BEGIN
        SET @BoundIsOut = CASE SUBSTRING(@Range, 2, 1) WHEN '=' THEN 0 ELSE 1 END;
        SET @Number = TRY_CONVERT(float, NULLIF(LTRIM(SUBSTRING(@Range, 3 - @BoundIsOut, 8000)), ''));
        SET @PrintedHigh = CASE @Sign WHEN '<' THEN @Number END;
        SET @PrintedLow = CASE @Sign WHEN '>' THEN @Number END;
    END
    ELSE IF LEFT(@Range, 6) = 'up to '
        SET @PrintedHigh = TRY_CONVERT(float, NULLIF(LTRIM(SUBSTRING(@Range, 7, 8000)), ''));
    ELSE IF @Dash > 1
    BEGIN
        SET @PrintedLow = TRY_CONVERT(float, NULLIF(RTRIM(LEFT(@Range, @Dash - 1)), ''));
        SET @PrintedHigh = TRY_CONVERT(float, NULLIF(LTRIM(SUBSTRING(@Range, @Dash + 1, 8000)), ''));
        IF @PrintedLow IS NULL OR @PrintedHigh IS NULL OR @PrintedLow > @PrintedHigh
            SET @Mark = '?';
    END
    IF @PrintedLow <> @Low OR @PrintedHigh <> @High
        SET @Mark = '?';
    SET @Low = ISNULL(@Low, @PrintedLow);
    SET @High = ISNULL(@High, @PrintedHigh);

    IF @Low IS NULL AND @High IS NULL
    BEGIN
        -- "Negative" where negative is expected, or nothing to hold the value against.
        SET @Mark = CASE WHEN @Flag IN ('H', 'L') OR @Range IN ('', @Value) THEN NULL ELSE '?' END;
    END
    ELSE IF @Mark IS NULL
    BEGIN
        SET @Number = TRY_CONVERT(float, @Value);
        SET @Sign = LEFT(@Value, 1);
        IF @Number IS NOT NULL
            SET @Mark = CASE WHEN @Number > @High OR (@Number = @High AND @BoundIsOut = 1) THEN 'HIGH'
                WHEN @Number < @Low OR (@Number = @Low AND @BoundIsOut = 1) THEN 'LOW' END;
        ELSE
        BEGIN
            -- What the instrument could not measure any more: "<0.5", ">500".
            SET @Number = TRY_CONVERT(float, NULLIF(LTRIM(SUBSTRING(@Value, 2, 8000)), ''));
            SET @Mark = CASE WHEN @Sign = '>' AND @Number >= @High THEN 'HIGH'
                WHEN @Sign = '<' AND @Number <= @Low THEN 'LOW'
                WHEN @Sign = '>' AND @High IS NULL AND @Number >= @Low THEN NULL
                WHEN @Sign = '<' AND @Low IS NULL AND @Number <= @High THEN NULL
                ELSE '?' END;
        END
    END

    RETURN CASE WHEN @Flag = 'H' AND @Mark = 'LOW' OR @Flag = 'L' AND @Mark = 'HIGH' THEN '?'
        WHEN @Flag = 'H' THEN 'HIGH'
        WHEN @Flag = 'L' THEN 'LOW'
        ELSE @Mark END;
END
GO
