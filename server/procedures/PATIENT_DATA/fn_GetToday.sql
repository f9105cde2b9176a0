-- The midnight with which the server's present day began.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_GetToday
GO

CREATE FUNCTION fn_GetToday ()
RETURNS datetime
AS
BEGIN
    RETURN CONVERT(datetime, CONVERT(varchar(10), GETDATE(), 101), 101);
END
GO
