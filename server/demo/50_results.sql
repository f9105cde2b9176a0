-- The demo hospital's results of every department, medicines given and ward requests.
USE RADIOLOGY
GO

-- X-ray, ultrasound and CT scan of the unit's patients, every few visits, and of every admission.
-- The latest visit of one patient in fifteen (N / 16 % 15 = 2) was seen by every department.
INSERT INTO tbRadResult (TransNum, Modality, HospNum, IdNum, ExamName, TransDate, ResultDate,
    DoctorID, Films, Interpretation)
SELECT CONCAT('X', 300000 + (730 - d.D) * 200 + d.N / 16), 'X', d.HospNum, d.IdNum, 'CHEST PA',
    DATEADD(minute, 30, d.AdmDate),
    CASE WHEN d.D > 0 THEN DATEADD(hour, 5, d.AdmDate) END,
    CASE WHEN d.D > 0 THEN CAST(108 + d.J % 2 AS varchar(10)) END, 1,
    CASE WHEN d.D > 0 THEN CASE (d.N / 16 + d.J) % 4
        WHEN 0 THEN 'The lungs are clear. The heart is not enlarged. The diaphragm and the costophrenic sulci are intact. Impression: normal chest findings.'
        WHEN 1 THEN 'There is blunting of both costophrenic sulci. The heart is moderately enlarged with left ventricular prominence. Impression: cardiomegaly; minimal bilateral pleural effusion.'
        WHEN 2 THEN 'Hazy densities are seen in the right lower lung field. The heart is not enlarged. Impression: pneumonia, right lower lobe; follow-up suggested.'
        ELSE 'The pulmonary vessels are prominent. The heart is enlarged. Impression: cardiomegaly with pulmonary congestion.' END END
FROM PATIENT_DATA..tbDemoVisit d
WHERE (d.N / 16 + d.J) % 5 = 0
    OR d.J = 0 AND d.N / 16 % 15 = 2
UNION ALL
SELECT CONCAT('U', 300000 + (730 - d.D) * 200 + d.N / 16), 'U', d.HospNum, d.IdNum,
    'KIDNEYS AND BLADDER',
    DATEADD(minute, 40, d.AdmDate),
    CASE WHEN d.D > 0 THEN DATEADD(hour, 4, d.AdmDate) END,
    CASE WHEN d.D > 0 THEN '110' END, 2,
    CASE WHEN d.D > 0 THEN CASE d.J % 2
        WHEN 0 THEN 'Both kidneys are small with thin, echogenic cortices. There is no hydronephrosis and no stone. The bladder is not well filled. Impression: bilateral renal parenchymal disease.'
        ELSE 'Both kidneys are small and echogenic. Several simple cysts are seen in the left, the largest 1.8 cm. Peritoneal fluid is noted. Impression: renal parenchymal disease with simple left renal cysts.' END END
FROM PATIENT_DATA..tbDemoVisit d
WHERE (d.N / 16 + d.J) % 6 = 0
    OR d.J = 0 AND d.N / 16 % 15 = 2
UNION ALL
SELECT CONCAT('C', 300000 + (730 - d.D) * 200 + d.N / 16), 'C', d.HospNum, d.IdNum,
    'WHOLE ABDOMEN, PLAIN',
    DATEADD(minute, 50, d.AdmDate), DATEADD(hour, 26, d.AdmDate), '109', 4,
    'Plain axial images show both kidneys to be small. The tip of the peritoneal catheter lies in the pelvis. No loculated fluid collection is seen. Impression: catheter in place; bilateral small kidneys.'
FROM PATIENT_DATA..tbDemoVisit d
WHERE (d.N / 16 + d.J) % 14 = 3 AND d.D > 2
    OR d.J = 0 AND d.N / 16 % 15 = 2
UNION ALL
SELECT CONCAT('XA', v.IdNum), 'X', v.HospNum, v.IdNum, 'CHEST AP', DATEADD(hour, 2, v.AdmDate),
    DATEADD(hour, 9, v.AdmDate),
    '108', 1,
    'Hazy infiltrates are seen in both lower lungs. The heart is magnified. Impression: consider bibasal pneumonia; please correlate clinically.'
FROM PATIENT_DATA..tbPatient v
UNION ALL
SELECT CONCAT('UA', v.IdNum), 'U', v.HospNum, v.IdNum, 'WHOLE ABDOMEN', DATEADD(hour, 20,
    v.AdmDate), DATEADD(hour, 26, v.AdmDate),
    '110', 3,
    'The liver is normal in size and echo pattern. The gallbladder is free of stones. Both kidneys show good cortical thickness. Impression: normal abdominal ultrasound.'
FROM PATIENT_DATA..tbPatient v
WHERE CAST(v.IdNum AS int) % 2 = 0
UNION ALL
SELECT CONCAT('CA', v.IdNum), 'C', v.HospNum, v.IdNum, 'CRANIAL, PLAIN', DATEADD(hour, 30,
    v.AdmDate), DATEADD(hour, 50, v.AdmDate),
    '109', 4,
    'No hyperdense or hypodense lesion is seen. The ventricles are not dilated and the midline is not shifted. Impression: normal plain cranial CT scan.'
FROM PATIENT_DATA..tbPatient v
WHERE CAST(v.IdNum AS int) % 5 = 1
GO

USE PATIENT_DATA
GO

INSERT INTO tbLabSection (SectionID, SectionName)
VALUES ('HE', 'Hematology'), ('CH', 'Clinical Chemistry'), ('MI', 'Microbiology')
GO

INSERT INTO tbLabExam (LabExamID, LabExam, SectionID)
VALUES ('1', 'COMPLETE BLOOD COUNT', 'HE'), ('2', 'RENAL PANEL', 'CH'), ('3',
    'PERITONEAL FLUID CELL COUNT', 'MI')
GO

-- Blood count and renal panel with every second visit, dialysate cells when it looked cloudy.
INSERT INTO tbLabResult (RequestNum, LabExamID, HospNum, IdNum, RefNum, RequestDate, ResultDate,
    DoctorID, Remarks)
SELECT CONCAT('L', 400000 + (730 - d.D) * 200 + d.N / 16), e.LabExamID, d.HospNum, d.IdNum,
    CONCAT('L', 50000 + (730 - d.D) * 8 + d.N / 240, 'B'), DATEADD(minute, 20, d.AdmDate),
    CASE WHEN d.D > 0 THEN DATEADD(hour, 4, d.AdmDate) END, '113',
    CASE WHEN e.LabExamID = '2' AND d.J % 6 = 0 THEN 'Specimen slightly hemolyzed.' END
FROM tbDemoVisit d
INNER JOIN tbLabExam e ON e.LabExamID IN ('1', '2') AND d.J % 2 = 0
    OR e.LabExamID = '3' AND (d.N + d.J) % 4 = 0
GO

CREATE TABLE tbDemoTest (
    LabExamID varchar(10) NOT NULL,
    LineNum int NOT NULL,
    TestName varchar(60) NOT NULL,
    Unit varchar(20),
    Scale int NOT NULL,
    Low int NOT NULL,
    High int NOT NULL,
    NormalLow int NOT NULL,
    NormalHigh int NOT NULL,
    NormalRange varchar(60) NOT NULL,
    PRIMARY KEY (LabExamID, LineNum)
)
GO

-- The values that occur, from Low to High, and the normal ones, all in Scale-ths of the unit.
INSERT INTO tbDemoTest (LabExamID, LineNum, TestName, Unit, Scale, Low, High, NormalLow, NormalHigh,
    NormalRange)
VALUES
    ('1', 1, 'Hemoglobin', 'g/L', 1, 78, 128, 120, 160, '120 - 160'),
    ('1', 2, 'Hematocrit', '', 100, 24, 40, 37, 47, '0.37 - 0.47'),
    ('1', 3, 'Leukocytes', '10^9/L', 10, 48, 132, 45, 110, '4.5 - 11.0'),
    ('1', 4, 'Platelets', '10^9/L', 1, 145, 390, 150, 400, '150 - 400'),
    ('2', 1, 'Creatinine', 'umol/L', 1, 420, 1180, 53, 115, '53 - 115'),
    ('2', 2, 'Urea nitrogen', 'mmol/L', 10, 96, 284, 25, 64, '2.5 - 6.4'),
    ('2', 3, 'Sodium', 'mmol/L', 1, 130, 146, 135, 145, '135 - 145'),
    ('2', 4, 'Potassium', 'mmol/L', 10, 31, 59, 35, 51, '3.5 - 5.1'),
    ('2', 5, 'Calcium, total', 'mmol/L', 100, 195, 262, 210, 255, '2.10 - 2.55'),
    ('2', 6, 'Phosphorus', 'mmol/L', 100, 85, 240, 81, 145, '0.81 - 1.45'),
    ('2', 7, 'Albumin', 'g/L', 1, 26, 44, 35, 50, '35 - 50'),
    ('3', 1, 'White cells', '/uL', 1, 4, 640, 0, 100, '0 - 100'),
    ('3', 2, 'Segmenters', '%', 1, 8, 92, 0, 50, '0 - 50')
GO

INSERT INTO tbLabResultValue (
    RequestNum, LabExamID, LineNum, TestName, ResultValue, Unit, NormalRange, NormalLow, NormalHigh,
        Flag)
SELECT r.RequestNum, r.LabExamID, t.LineNum, t.TestName,
    CASE t.Scale
        WHEN 1 THEN CAST(t.Low + (d.N * 7 + d.J * 31 + t.LineNum * 13) % (t.High - t.Low + 1) AS varchar(20))
        WHEN 10 THEN CAST(CAST((t.Low + (d.N * 7 + d.J * 31 + t.LineNum * 13) % (t.High - t.Low + 1)) / 10.0 AS decimal(9,1)) AS varchar(20))
        ELSE CAST(CAST((t.Low + (d.N * 7 + d.J * 31 + t.LineNum * 13) % (t.High - t.Low + 1)) / 100.0 AS decimal(9,2)) AS varchar(20))
    END,
    t.Unit, t.NormalRange, CAST(t.NormalLow AS float) / t.Scale,
        CAST(t.NormalHigh AS float) / t.Scale,
    CASE WHEN t.Low + (d.N * 7 + d.J * 31 + t.LineNum * 13) % (t.High - t.Low + 1) < t.NormalLow
        THEN 'L'
        WHEN t.Low + (d.N * 7 + d.J * 31 + t.LineNum * 13) % (t.High - t.Low + 1) > t.NormalHigh
            THEN 'H' END
FROM tbDemoVisit d
INNER JOIN tbLabResult r ON r.IdNum = d.IdNum
INNER JOIN tbDemoTest t ON t.LabExamID = r.LabExamID
WHERE r.ResultDate IS NOT NULL
GO

USE STATION
GO

INSERT INTO tbHeartResult (
    RequestNum, HospNum, IdNum, ExamName, TransDate, ResultDate, Form, AttendingDoctorID,
        CardiologistID,
    Diagnosis, Remarks, Resting, Exercise, Comments, Interpretation)
SELECT CONCAT('H', 300000 + (730 - d.D) * 200 + d.N / 16), d.HospNum, d.IdNum,
    CASE d.J % 3 WHEN 2 THEN 'TREADMILL EXERCISE TEST' ELSE 'TWELVE-LEAD ECG' END,
    DATEADD(minute, 25, d.AdmDate), CASE WHEN d.D > 0 THEN DATEADD(hour, 6, d.AdmDate) END,
    CASE d.J % 3 WHEN 2 THEN 'TET' ELSE 'ECG' END,
    CAST(101 + d.N % 3 AS varchar(10)), CASE WHEN d.D > 0
        THEN CAST(106 + d.J % 2 AS varchar(10)) END,
    'End-stage renal disease; hypertension',
    CASE d.J % 2 WHEN 0 THEN 'Patient on peritoneal dialysis.' END,
    CASE WHEN d.D > 0 THEN CONCAT('Rate ', 62 + (d.N + d.J) % 34,
        '/min, regular sinus rhythm, PR 0.16 s, QRS 0.08 s.') END,
    CASE WHEN d.D > 0 AND d.J % 3 = 2
        THEN 'Exercised for 6 minutes; stopped for leg fatigue. No ST-segment change.' END,
    CASE WHEN d.D > 0 AND d.J % 3 = 2 THEN 'Blood pressure response adequate.' END,
    CASE WHEN d.D > 0 THEN CASE (d.N / 16 + d.J) % 3
        WHEN 0 THEN 'Left ventricular hypertrophy by voltage.'
        WHEN 1 THEN 'Sinus rhythm; non-specific ST-T wave changes.'
        ELSE 'Sinus rhythm; within normal limits.' END END
FROM PATIENT_DATA..tbDemoVisit d
WHERE (d.N / 16 + d.J) % 7 = 0
    OR d.J = 0 AND d.N / 16 % 15 = 2
GO

INSERT INTO tbPTResult (
    RequestNum, RefNum, HospNum, IdNum, ExamCode, ExamName, TransDate, ResultDate, Diagnosis,
        Result, Remarks, Interpretation)
SELECT CONCAT('P', 300000 + (730 - d.D) * 200 + d.N / 16), CONCAT('R',
    20000 + (730 - d.D) * 8 + d.N / 240, 'B'), d.HospNum, d.IdNum, '681',
    'THERAPEUTIC EXERCISE', DATEADD(minute, 55, d.AdmDate), DATEADD(hour, 2, d.AdmDate),
    'Generalized weakness',
        'Tolerated 20 minutes of active exercise of both lower limbs; no pain reported.',
    'Continue twice a week.', 'Muscle strength 4/5 in both lower limbs; gait steady with a cane.'
FROM PATIENT_DATA..tbDemoVisit d
WHERE (d.N / 16 + d.J) % 10 = 1 AND d.D > 0
    OR d.J = 0 AND d.N / 16 % 15 = 2
GO

-- Medicines: of every admission up to six; of the unit's visits one now and then. A medicine that
-- was ordered but not given has no date.
INSERT INTO tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, DrugName, Dosage, Quantity)
SELECT v.HospNum, v.IdNum,
    CASE WHEN (CAST(v.IdNum AS int) + n.N) % 9 <> 0 THEN DATEADD(hour, 3 + 20 * n.N, v.AdmDate) END,
    g.DrugCode, g.DrugName, CASE n.N % 3 WHEN 0 THEN 'TWICE A DAY' WHEN 1 THEN 'THREE TIMES A DAY'
        ELSE 'ONCE A DAY' END,
    1 + (CAST(v.IdNum AS int) + n.N) % 6
FROM PATIENT_DATA..tbPatient v
INNER JOIN PATIENT_DATA..tbDemoNumber n ON n.N <= 2 + CAST(v.IdNum AS int) % 4
INNER JOIN BILLING..tbDrug g ON g.DrugCode = CAST(1001 + (CAST(v.IdNum AS int) + n.N * 7) % 23 AS varchar(10))
UNION ALL
SELECT d.HospNum, d.IdNum, DATEADD(minute, 90, d.AdmDate), g.DrugCode, g.DrugName, 'ONCE A WEEK', 1
FROM PATIENT_DATA..tbDemoVisit d
INNER JOIN BILLING..tbDrug g ON g.DrugCode = CASE d.J % 2 WHEN 0 THEN '1009' ELSE '1018' END
WHERE (d.N / 16 + d.J) % 3 = 0
    AND d.D > 0
GO

-- Ward requests of the unit's latest visits and of the patients in the house: the last still open.
INSERT INTO tbNurseLogBook (
    HospNum, IdNum, PatientType, ItemCode, ItemName, Amount, Quantity, Dosage, RequestDate, DeptID,
    RecordStatus, RequestedBy, Remarks, Station, UnitPrice, ProcessDate, ProcessedBy, ResultDate,
        ResultBy)
SELECT d.HospNum, d.IdNum, 'O', g.DrugCode, g.DrugName, g.SellingPriceIn * (1 + n.N), 1 + n.N,
    CASE g.Kind WHEN 'M' THEN 'BID' ELSE 'PRN' END, DATEADD(minute, 15 + n.N, d.AdmDate),
    CASE g.Kind WHEN 'M' THEN 'PH' ELSE 'CS' END, CASE WHEN n.N < 2 OR d.D > 6 THEN 'X'
        ELSE ' ' END,
    '4601', CASE n.N WHEN 1 THEN 'To follow the exchange' END, 'CAPD', g.SellingPriceIn,
    CASE WHEN n.N < 2 OR d.D > 6 THEN DATEADD(minute, 50 + n.N, d.AdmDate) END,
    CASE WHEN n.N < 2 OR d.D > 6 THEN CASE g.Kind WHEN 'M' THEN '2001' ELSE '2101' END END,
    CASE WHEN n.N = 0 THEN DATEADD(minute, 70, d.AdmDate) END, CASE WHEN n.N = 0 THEN '4601' END
FROM PATIENT_DATA..tbDemoVisit d
INNER JOIN PATIENT_DATA..tbDemoNumber n ON n.N < 4
INNER JOIN BILLING..tbDrug g ON g.DrugCode = CASE n.N % 2 WHEN 0
    THEN CAST(1001 + (d.N + n.N) % 23 AS varchar(10))
    ELSE CAST(201 + (d.N + n.N) % 11 AS varchar(10)) END
WHERE d.J = 0
    AND d.D > 0
UNION ALL
SELECT v.HospNum, v.IdNum, 'I', g.DrugCode, g.DrugName, g.SellingPriceIn * (1 + n.N), 1 + n.N,
    CASE g.Kind WHEN 'M' THEN 'TID' ELSE 'PRN' END, DATEADD(minute, 30 + n.N, v.AdmDate),
    CASE g.Kind WHEN 'M' THEN 'PH' ELSE 'CS' END, CASE WHEN n.N < 2 THEN 'X' ELSE ' ' END,
    '4601', NULL, 'CAPD', g.SellingPriceIn,
    CASE WHEN n.N < 2 THEN DATEADD(minute, 80 + n.N, v.AdmDate) END,
    CASE WHEN n.N < 2 THEN CASE g.Kind WHEN 'M' THEN '2001' ELSE '2101' END END, NULL, NULL
FROM PATIENT_DATA..tbPatient v
INNER JOIN PATIENT_DATA..tbDemoNumber n ON n.N < 4
INNER JOIN BILLING..tbDrug g ON g.DrugCode = CASE n.N % 2 WHEN 0
    THEN CAST(1003 + n.N AS varchar(10)) ELSE CAST(201 + n.N AS varchar(10)) END
WHERE v.DcrDate IS NULL
GO
