-- Full years from a birth date to a day; null where either is missing.
-- @BirthDate, @Day: dates, their times of day do not count.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_GetAge
GO

CREATE FUNCTION fn_GetAge (@BirthDate datetime, @Day datetime)
RETURNS int
AS
BEGIN
    DECLARE @Age int;

    SET @Age = YEAR(@Day) - YEAR(@BirthDate);
    IF MONTH(@Day) * 100 + DAY(@Day) < MONTH(@BirthDate) * 100 + DAY(@BirthDate)
        SET @Age = @Age - 1;
    RETURN @Age;
END
GO
