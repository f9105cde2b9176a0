-- The discount that a visit is entitled to: in-patients' stand with the admission, others' with the
-- visit. @HospNum and @IdNum must belong together. Returns DiscType (SM, QF, GE, GD, KE, KD or null
-- for none); no row for an unknown visit.
USE RADIOLOGY
GO

DROP PROCEDURE IF EXISTS spRadio_GetDiscountType
GO

CREATE PROCEDURE spRadio_GetDiscountType
    @HospNum varchar(8000),
    @IdNum varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    SET @HospNum = LTRIM(RTRIM(@HospNum));
    SET @IdNum = LTRIM(RTRIM(@IdNum));

    SELECT p.DiscType
    FROM PATIENT_DATA..tbPatient p
    WHERE p.IdNum = @IdNum AND p.HospNum = @HospNum
    UNION ALL
    SELECT v.DiscType
    FROM PATIENT_DATA..tbOutPatient v
    WHERE v.IdNum = @IdNum AND v.HospNum = @HospNum;
END
GO
