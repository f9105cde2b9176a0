-- The lines of the cash assessments and whether they are paid, the youngest assessment first, its
-- lines as they were typed. @Text: the beginning of a last name; a text of digits, with or without
-- the T before them, is the beginning of an assessment's number; empty: all. Returns PatientName,
-- Code, Exam, Quantity, RefNum, Amount, Status (PENDING, OR and the receipt, REVOKED), RecordStatus,
-- AssessID, IdNum, RevenueID, RequestDoctor, Age, Sex, PatientClass (P or S), HospNum, TransDate.
USE CLINICAL_AREA
GO

DROP PROCEDURE IF EXISTS sp_CAPD_AssessmentStatus
GO

CREATE PROCEDURE sp_CAPD_AssessmentStatus
    @Text varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Prefix varchar(8000);
    DECLARE @Year int;
    DECLARE @Day int;
    DECLARE @IsNumber bit;
    SET @Text = ISNULL(LTRIM(RTRIM(@Text)), '');
    SET @Year = YEAR(GETDATE());
    SET @Day = MONTH(GETDATE()) * 100 + DAY(GETDATE());
    SET @IsNumber = 0;
    IF LEFT(@Text, 1) BETWEEN '0' AND '9'
    BEGIN
        SET @Text = 'T' + @Text;
    END
    IF LEFT(@Text, 1) = 'T' AND SUBSTRING(@Text, 2, 1) BETWEEN '0' AND '9'
        SET @IsNumber = 1;
    SET @Prefix = PATIENT_DATA.dbo.fn_LikePrefix(@Text);

    IF @Text = ''
        SELECT a.PatientName, a.ItemCode AS Code, COALESCE(o.OtherRevenue, g.DrugName) AS Exam,
            a.Quantity, a.RefNum, a.Amount,
            CASE WHEN a.RecordStatus = 'R' THEN 'REVOKED'
                WHEN a.ORNum > '' THEN 'OR ' + a.ORNum ELSE 'PENDING' END AS Status,
            a.RecordStatus, a.AssessID, a.IdNum, a.RevenueID, a.RequestDoctor,
            @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.Sex, CASE WHEN m.MSSClassification > '' THEN 'S' ELSE 'P' END AS PatientClass,
            a.HospNum, a.TransDate
        FROM BILLING..tbCashAssessment a
        LEFT JOIN BILLING..tbOtherRevenue o ON o.RevenueID = a.RevenueID AND o.ItemCode = a.ItemCode
        LEFT JOIN BILLING..tbDrug g ON g.DrugCode = a.ItemCode
        LEFT JOIN PATIENT_DATA..tbMaster m ON m.HospNum = a.HospNum
        ORDER BY a.TransDate DESC, a.AssessID;
    ELSE IF @IsNumber = 1
        SELECT a.PatientName, a.ItemCode AS Code, COALESCE(o.OtherRevenue, g.DrugName) AS Exam,
            a.Quantity, a.RefNum, a.Amount,
            CASE WHEN a.RecordStatus = 'R' THEN 'REVOKED'
                WHEN a.ORNum > '' THEN 'OR ' + a.ORNum ELSE 'PENDING' END AS Status,
            a.RecordStatus, a.AssessID, a.IdNum, a.RevenueID, a.RequestDoctor,
            @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.Sex, CASE WHEN m.MSSClassification > '' THEN 'S' ELSE 'P' END AS PatientClass,
            a.HospNum, a.TransDate
        FROM BILLING..tbCashAssessment a
        LEFT JOIN BILLING..tbOtherRevenue o ON o.RevenueID = a.RevenueID AND o.ItemCode = a.ItemCode
        LEFT JOIN BILLING..tbDrug g ON g.DrugCode = a.ItemCode
        LEFT JOIN PATIENT_DATA..tbMaster m ON m.HospNum = a.HospNum
        WHERE a.IdNum LIKE @Prefix ESCAPE '!'
        ORDER BY a.TransDate DESC, a.AssessID;
    ELSE
        SELECT a.PatientName, a.ItemCode AS Code, COALESCE(o.OtherRevenue, g.DrugName) AS Exam,
            a.Quantity, a.RefNum, a.Amount,
            CASE WHEN a.RecordStatus = 'R' THEN 'REVOKED'
                WHEN a.ORNum > '' THEN 'OR ' + a.ORNum ELSE 'PENDING' END AS Status,
            a.RecordStatus, a.AssessID, a.IdNum, a.RevenueID, a.RequestDoctor,
            @Year - YEAR(m.BirthDate)
                - CASE WHEN @Day < MONTH(m.BirthDate) * 100 + DAY(m.BirthDate)
                    THEN 1 ELSE 0 END AS Age,
            m.Sex, CASE WHEN m.MSSClassification > '' THEN 'S' ELSE 'P' END AS PatientClass,
            a.HospNum, a.TransDate
        FROM BILLING..tbCashAssessment a
        LEFT JOIN BILLING..tbOtherRevenue o ON o.RevenueID = a.RevenueID AND o.ItemCode = a.ItemCode
        LEFT JOIN BILLING..tbDrug g ON g.DrugCode = a.ItemCode
        LEFT JOIN PATIENT_DATA..tbMaster m ON m.HospNum = a.HospNum
        WHERE a.PatientName LIKE @Prefix ESCAPE '!'
        ORDER BY a.TransDate DESC, a.AssessID;
END
GO
