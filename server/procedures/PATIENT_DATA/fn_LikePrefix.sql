-- The LIKE pattern (with ESCAPE '!') of all texts that begin with a typed text; what the user
-- types stands for itself, wildcards too.
-- @Text: blanks at both ends do not count; an empty text matches everything.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_LikePrefix
GO

CREATE FUNCTION fn_LikePrefix (@Text varchar(8000))
RETURNS varchar(8000)
AS
BEGIN
    DECLARE @Pattern varchar(8000);

    SET @Pattern = REPLACE(LTRIM(RTRIM(@Text)), '!', '!!');
    SET @Pattern = REPLACE(REPLACE(REPLACE(@Pattern, '%', '!%'), '_', '!_'), '[', '![');
    RETURN @Pattern + '%';
END
GO
