-- The demo hospital's two years: out-patient and emergency visits, admissions, the CAPD register and
-- its log book. D counts the days before today; visit numbers grow with the day.
USE PATIENT_DATA
GO

-- The unit's patients come every thirty days from their registration on; J = 0 is the latest visit.
CREATE TABLE tbDemoVisit (
    N int NOT NULL,
    J int NOT NULL,
    D int NOT NULL,
    IdNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    AdmDate datetime NOT NULL,
    RefNum varchar(20) NOT NULL,
    DiscType varchar(2),
    Accounts int NOT NULL,
    PRIMARY KEY (N, J)
)
GO

DECLARE @Today datetime;
DECLARE @Minutes int;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
SET @Minutes = DATEDIFF(minute, @Today, GETDATE());
INSERT INTO tbDemoVisit (N, J, D, IdNum, HospNum, AdmDate, RefNum, DiscType, Accounts)
SELECT p.N, v.N, v.N * 30 + (p.N / 16 % 15) * 2,
    CONCAT('A', RIGHT(CONCAT('000', 730 - v.N * 30 - (p.N / 16 % 15) * 2), 3), RIGHT(CONCAT('0000',
        p.N), 4), 'B'),
    m.HospNum,
    CASE WHEN v.N = 0 AND p.N / 16 % 15 = 0 THEN DATEADD(minute, @Minutes * (p.N % 50) / 50, @Today)
        ELSE DATEADD(minute, 480 + (p.N * 13 + v.N * 29) % 480,
            DATEADD(day, -(v.N * 30 + (p.N / 16 % 15) * 2), @Today)) END,
    CONCAT('C', 10000 + (730 - v.N * 30 - (p.N / 16 % 15) * 2) * 8 + p.N / 240, 'D'),
    CASE WHEN m.BirthDate <= DATEADD(year, -60, @Today) THEN 'SM'
        ELSE CASE (p.N + p.N / 16) % 12 WHEN 0 THEN 'QF' WHEN 1 THEN 'GE' WHEN 2 THEN 'GD'
            WHEN 3 THEN 'KE' WHEN 4 THEN 'KD' END END,
    CASE WHEN p.N / 16 % 3 = 0 THEN 1 + p.N / 48 % 6 ELSE 0 END
FROM tbDemoNumber p
INNER JOIN tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
INNER JOIN tbDemoNumber v ON v.N < 24 AND v.N <= 2 + p.N * 97 % 22
WHERE p.N % 16 = 5
    AND p.N < 1925
GO

INSERT INTO tbOutPatient (
    IdNum, HospNum, AdmDate, DcrDate, PatientType, RoomID, AccountNum, Company, DiscType,
        BillingDate,
    DoctorID, ChiefComplaint, Diagnosis)
SELECT d.IdNum, d.HospNum, d.AdmDate,
    CASE WHEN d.D > 6 THEN DATEADD(hour, 3, d.AdmDate) END,
    'O', 'OPD', c.AccountNum, ISNULL(c.Company, 'PERSONAL'), d.DiscType,
    CASE WHEN d.J > 0 OR d.N / 16 % 10 = 7 THEN DATEADD(hour, 3, d.AdmDate) END,
    CAST(101 + d.N % 3 AS varchar(10)),
    CASE (d.N + d.J) % 4 WHEN 0 THEN 'Cloudy effluent' WHEN 1 THEN 'Swelling of the legs'
        ELSE 'Monthly follow-up' END,
    'End-stage renal disease on peritoneal dialysis'
FROM tbDemoVisit d
LEFT JOIN BILLING..tbCompany c ON d.Accounts > 0
    AND c.CompanyID = CASE d.N / 48 % 6 WHEN 0 THEN 'VEL' WHEN 1 THEN 'DHF' WHEN 2 THEN 'ASH' WHEN 3
        THEN 'PCS'
        WHEN 4 THEN 'KID' ELSE 'TMB' END
ORDER BY d.AdmDate
GO

-- Everybody else's visits to the clinics, one to three a patient; one in twenty is a company's.
DECLARE @Today datetime;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
INSERT INTO tbOutPatient (
    IdNum, HospNum, AdmDate, DcrDate, PatientType, RoomID, AccountNum, Company, DiscType,
        BillingDate,
    DoctorID, ChiefComplaint, Diagnosis)
SELECT
    CONCAT('A', RIGHT(CONCAT('000', 729 - (p.N * 53 + v.N * 191) % 729), 3), RIGHT(CONCAT('0000',
        p.N), 4), 'B'),
    m.HospNum,
    DATEADD(minute, 420 + (p.N * 7 + v.N * 41) % 540, DATEADD(day,
        -(1 + (p.N * 53 + v.N * 191) % 729), @Today)),
    DATEADD(minute, 480 + (p.N * 7 + v.N * 41) % 540, DATEADD(day,
        -(1 + (p.N * 53 + v.N * 191) % 729), @Today)),
    'O', 'OPD', c.AccountNum, ISNULL(c.Company, 'PERSONAL'),
    CASE WHEN m.BirthDate <= DATEADD(year, -60, @Today) THEN 'SM'
        ELSE CASE (p.N + p.N / 16) % 12 WHEN 0 THEN 'QF' WHEN 1 THEN 'GE' WHEN 2 THEN 'GD'
            WHEN 3 THEN 'KE' WHEN 4 THEN 'KD' END END,
    DATEADD(minute, 480 + (p.N * 7 + v.N * 41) % 540, DATEADD(day,
        -(1 + (p.N * 53 + v.N * 191) % 729), @Today)),
    CAST(104 + p.N % 2 AS varchar(10)),
    CASE (p.N + v.N) % 5 WHEN 0 THEN 'Cough' WHEN 1 THEN 'Headache' WHEN 2 THEN 'Back pain'
        WHEN 3 THEN 'Follow-up' ELSE 'Fever' END,
    CASE (p.N + v.N) % 5 WHEN 0 THEN 'Acute bronchitis' WHEN 1 THEN 'Hypertension, stage 1'
        WHEN 2 THEN 'Lumbar strain' WHEN 3 THEN 'Diabetes mellitus, type 2' ELSE 'Viral illness' END
FROM tbDemoNumber p
INNER JOIN tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
INNER JOIN tbDemoNumber v ON v.N <= p.N % 3
LEFT JOIN BILLING..tbCompany c ON p.N % 20 = 1
    AND c.CompanyID = CASE p.N / 20 % 3 WHEN 0 THEN 'ASH' WHEN 1 THEN 'PCS' ELSE 'TMB' END
WHERE p.N BETWEEN 1 AND 2000
    AND (p.N % 16 <> 5 OR p.N >= 1925)
GO

-- Registered today and still here: every sixty-fourth patient.
DECLARE @Today datetime;
DECLARE @Minutes int;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
SET @Minutes = DATEDIFF(minute, @Today, GETDATE());
INSERT INTO tbOutPatient (
    IdNum, HospNum, AdmDate, PatientType, RoomID, Company, DiscType, DoctorID, ChiefComplaint)
SELECT CONCAT('A730', RIGHT(CONCAT('0000', p.N), 4), 'B'), m.HospNum,
    DATEADD(minute, @Minutes * (p.N % 61) / 61, @Today), 'O', 'OPD', 'PERSONAL',
    CASE WHEN m.BirthDate <= DATEADD(year, -60, @Today) THEN 'SM' END,
    CAST(104 + p.N % 2 AS varchar(10)), CASE p.N % 3 WHEN 0 THEN 'Check-up' WHEN 1 THEN 'Dizziness'
        ELSE 'Cough' END
FROM tbDemoNumber p
INNER JOIN tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
WHERE p.N BETWEEN 1 AND 2000
    AND p.N % 64 = 9
GO

-- The emergency room: every thirteenth patient once; those with N % 260 = 4 today.
DECLARE @Today datetime;
DECLARE @Minutes int;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
SET @Minutes = DATEDIFF(minute, @Today, GETDATE());
INSERT INTO tbOutPatient (
    IdNum, HospNum, AdmDate, DcrDate, PatientType, RoomID, Company, DiscType, BillingDate, DoctorID,
    ChiefComplaint, Diagnosis)
SELECT CONCAT('A', RIGHT(CONCAT('000', 729 - p.N * 29 % 729), 3), 5000 + p.N, 'B'), m.HospNum,
    DATEADD(minute, (p.N * 101) % 1440, DATEADD(day, -(1 + p.N * 29 % 729), @Today)),
    DATEADD(minute, 300 + (p.N * 101) % 1440, DATEADD(day, -(1 + p.N * 29 % 729), @Today)),
    'E', 'ER', 'PERSONAL', CASE WHEN m.BirthDate <= DATEADD(year, -60, @Today) THEN 'SM' END,
    DATEADD(minute, 300 + (p.N * 101) % 1440, DATEADD(day, -(1 + p.N * 29 % 729), @Today)),
    CAST(115 + p.N % 2 AS varchar(10)),
    CASE p.N % 4 WHEN 0 THEN 'Abdominal pain' WHEN 1 THEN 'Difficulty of breathing'
        WHEN 2 THEN 'Laceration, right hand' ELSE 'Chest pain' END,
    CASE p.N % 4 WHEN 0 THEN 'Acute gastritis' WHEN 1 THEN 'Bronchial asthma in acute exacerbation'
        WHEN 2 THEN 'Lacerated wound, sutured' ELSE 'Musculoskeletal chest pain' END
FROM tbDemoNumber p
INNER JOIN tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
WHERE p.N BETWEEN 1 AND 2000
    AND p.N % 13 = 4
    AND p.N % 260 <> 4
UNION ALL
SELECT CONCAT('A730', 5000 + p.N, 'B'), m.HospNum, DATEADD(minute, @Minutes * (p.N % 37) / 37,
    @Today),
    NULL, 'E', 'ER', 'PERSONAL', NULL, NULL, CAST(115 + p.N % 2 AS varchar(10)), 'Abdominal pain',
        NULL
FROM tbDemoNumber p
INNER JOIN tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
WHERE p.N BETWEEN 1 AND 2000
    AND p.N % 260 = 4
GO

-- Admissions: every eleventh patient once; a fifth of them is in the house now.
DECLARE @Today datetime;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
INSERT INTO tbPatient (
    IdNum, HospNum, AdmDate, DcrDate, RoomID, RoomClassID, Company, DiscType, BillingDate,
    AttendingDoctorID, AdmittingDoctorID, AdmittingDiagnosis, ChiefComplaint, FinalDiagnosis)
SELECT
    CAST(2000000 + 10000 * (730 - CASE WHEN p.N % 5 = 0 THEN 1 + p.N % 8
        ELSE 12 + p.N * 31 % 700 END) + p.N AS varchar(20)),
    m.HospNum,
    DATEADD(minute, (p.N * 59) % 1440,
        DATEADD(day, -CASE WHEN p.N % 5 = 0 THEN 1 + p.N % 8 ELSE 12 + p.N * 31 % 700 END, @Today)),
    CASE WHEN p.N % 5 <> 0
        THEN DATEADD(minute, 600 + (p.N * 71) % 480, DATEADD(day, 2 + p.N % 9 - 12 - p.N * 31 % 700,
            @Today)) END,
    r.RoomID, r.RoomClassID, 'PERSONAL',
    CASE WHEN m.BirthDate <= DATEADD(year, -60, @Today) THEN 'SM'
        WHEN (p.N + p.N / 16) % 12 = 0 THEN 'QF' END,
    CASE WHEN p.N % 5 <> 0
        THEN DATEADD(minute, 600 + (p.N * 71) % 480, DATEADD(day, 2 + p.N % 9 - 12 - p.N * 31 % 700,
            @Today)) END,
    CAST(101 + p.N % 5 AS varchar(10)), CAST(104 + p.N % 2 AS varchar(10)),
    CASE p.N % 4 WHEN 0 THEN 'Peritonitis, PD-related' WHEN 1 THEN 'Community-acquired pneumonia'
        WHEN 2 THEN 'Acute gastroenteritis with dehydration' ELSE 'Fluid overload' END,
    CASE p.N % 4 WHEN 0 THEN 'Abdominal pain and cloudy effluent' WHEN 1
        THEN 'Cough and fever for five days'
        WHEN 2 THEN 'Loose bowel movement' ELSE 'Difficulty of breathing' END,
    CASE WHEN p.N % 5 <> 0
        THEN CASE p.N % 4 WHEN 0 THEN 'PD-related peritonitis, resolved' WHEN 1
            THEN 'Community-acquired pneumonia, improved'
            WHEN 2 THEN 'Acute gastroenteritis, resolved' ELSE 'Fluid overload, corrected' END END
FROM tbDemoNumber p
INNER JOIN tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
INNER JOIN BILLING..tbRoom r ON r.RoomID = CONCAT(
    CASE p.N % 4 WHEN 0 THEN 'P' WHEN 1 THEN 'S' WHEN 2 THEN 'W' ELSE 'V' END, 201 + p.N % 40)
WHERE p.N BETWEEN 1 AND 2000
    AND p.N % 11 = 3
GO

USE CLINICAL_AREA
GO

UPDATE tbCAPDNumber SET NextNumber = 1121
GO

DECLARE @Today datetime;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
INSERT INTO tbCAPDPatient (
    HospNum, CAPDNum, TypeOfPD, ChronicPD, Catheter, NextKin, Status, Diagnosis, AcutePDStartDate,
    ChronicPDStartDate, Weight, Diet, BP, FluidRestriction, DialysisShiftDate, BloodType, HBsAg,
        Dialysis,
    ShiftReason, ShiftBackDate, TransplantDate, RejectionDate, Remarks, Purpose, WithPeritonitis,
    RegisteredAt, RegisteredBy)
SELECT m.HospNum, CAST(1001 + p.N / 16 AS varchar(20)),
    CASE p.N / 16 % 5 WHEN 0 THEN 'CAPD' WHEN 1 THEN 'CIPD-C' WHEN 2 THEN 'CIPD-M' WHEN 3
        THEN 'CCPD' ELSE 'NIPD' END,
    CASE p.N / 16 % 5 WHEN 0 THEN '  CAPD' WHEN 1 THEN '  CIPD-C' WHEN 2 THEN '  CIPD-M' WHEN 3
        THEN '  CCPD'
        ELSE '  NIPD' END,
    CASE p.N / 16 % 3 WHEN 0 THEN '  Tenckhoff' WHEN 1 THEN '  Silastic ' ELSE '  Stiff' END,
    m.NextKin,
    CASE p.N / 16 % 12 WHEN 11 THEN 'Shifted to HD' WHEN 10 THEN 'Transplanted' ELSE 'Active' END,
    CASE p.N / 16 % 4 WHEN 0 THEN 'End-stage renal disease secondary to diabetic nephropathy'
        WHEN 1 THEN 'End-stage renal disease secondary to hypertensive nephrosclerosis'
        WHEN 2 THEN 'End-stage renal disease secondary to chronic glomerulonephritis'
        ELSE 'Chronic kidney disease, stage 5' END,
    DATEADD(day, -(90 + 30 * (2 + p.N * 97 % 22)), @Today), DATEADD(day,
        -(40 + 30 * (2 + p.N * 97 % 22)), @Today),
    CASE WHEN p.N / 16 % 8 <> 6 THEN CONCAT(42 + p.N * 7 % 38, '.', p.N % 10) END,
    CASE p.N / 16 % 3 WHEN 0 THEN 'Low salt, high protein' WHEN 1
        THEN 'Low salt, low potassium' END,
    CASE WHEN p.N / 16 % 9 <> 4 THEN CONCAT(110 + p.N * 3 % 60, '/', 70 + p.N % 30) END,
    CASE p.N / 16 % 3 WHEN 0 THEN '1 liter a day' WHEN 1 THEN '800 ml a day' END,
    CASE WHEN p.N / 16 % 12 = 11 THEN DATEADD(day, -20, @Today) END,
    CASE p.N / 16 % 4 WHEN 0 THEN 'O+' WHEN 1 THEN 'A+' WHEN 2 THEN 'B+' ELSE 'AB+' END,
    CASE WHEN p.N / 16 % 20 = 3 THEN 'Reactive' ELSE 'Non-reactive' END,
    CASE WHEN p.N / 16 % 12 = 11 THEN 'Hemodialysis' END,
    CASE WHEN p.N / 16 % 12 = 11 THEN 'Membrane failure' END,
    NULL,
    CASE WHEN p.N / 16 % 12 = 10 THEN DATEADD(day, -15, @Today) END,
    NULL,
    CASE WHEN p.N / 16 % 6 = 2 THEN 'Needs a companion; the daughter does the exchanges.' END,
    CASE p.N / 16 % 3 WHEN 0 THEN 'Treatment' WHEN 1 THEN ' Presciption' ELSE ' Inquiry' END,
    CASE WHEN p.N / 16 % 7 = 2 THEN 'Y' ELSE 'N' END,
    DATEADD(minute, 600, DATEADD(day, -(30 * (2 + p.N * 97 % 22) + p.N / 16 % 15 * 2), @Today)),
    '4601'
FROM PATIENT_DATA..tbDemoNumber p
INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = CAST(200000 + p.N AS varchar(20))
WHERE p.N % 16 = 5
    AND p.N < 1925
GO

-- Of today's visits of the unit only every other one is logged yet.
INSERT INTO tbCAPDLogBook (
    IdNum, HospNum, CAPDNum, TransDate, VisitDay, Diagnosis, Weight, BP, ChronicPD, Catheter, Diet,
    FluidRestriction, AcutePDStartDate, ChronicPDStartDate, BloodType, HBsAg, Remarks, Purpose,
        UserID)
SELECT d.IdNum, d.HospNum, c.CAPDNum, d.AdmDate,
    CONVERT(datetime, CONVERT(varchar(10), d.AdmDate, 101), 101),
    CASE WHEN d.J % 5 = 3 AND c.WithPeritonitis = 'Y' THEN 'PD-related peritonitis'
        ELSE c.Diagnosis END,
    CASE WHEN (d.N + d.J) % 11 <> 0 THEN CONCAT(42 + d.N * 7 % 38 + d.J % 3, '.',
        (d.N + d.J * 3) % 10) END,
    CASE WHEN (d.N + d.J) % 13 <> 0 THEN CONCAT(110 + (d.N * 3 + d.J * 7) % 60, '/',
        70 + (d.N + d.J * 5) % 30) END,
    c.ChronicPD, CASE d.N / 16 % 3 WHEN 0 THEN '  Tenchkoff' WHEN 1 THEN '  Silatic '
        ELSE '  Stiff' END,
    c.Diet, c.FluidRestriction, c.AcutePDStartDate, c.ChronicPDStartDate, c.BloodType, c.HBsAg,
    CASE (d.N + d.J) % 6 WHEN 1 THEN 'Exit site clean and dry.' WHEN 4
        THEN 'Ultrafiltration lower than last month.' END,
    CASE d.J % 3 WHEN 0 THEN 'Treatment' WHEN 1 THEN ' Presciption' ELSE ' Inquiry' END,
    CASE d.J % 2 WHEN 0 THEN '4601' ELSE '4602' END
FROM PATIENT_DATA..tbDemoVisit d
INNER JOIN tbCAPDPatient c ON c.HospNum = d.HospNum
WHERE d.D > 0
    OR d.N / 240 % 2 = 0
ORDER BY d.AdmDate
GO
