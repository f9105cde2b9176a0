-- An employee's name; of one who is not on file the code itself, null for null.
-- @EmployeeCode: the employee's code.
USE PATIENT_DATA
GO

DROP FUNCTION IF EXISTS fn_GetEmployeeName
GO

CREATE FUNCTION fn_GetEmployeeName (@EmployeeCode varchar(8000))
RETURNS varchar(100)
AS
BEGIN
    DECLARE @Name varchar(100);

    SET @Name = @EmployeeCode;
    SELECT @Name = EmployeeName FROM PATIENT_DATA..tbUser WHERE EmployeeCode = @EmployeeCode;
    RETURN @Name;
END
GO
