-- The demo hospital's charge slips with stock card, bills, doctors' fees and company payments, the
-- fund accounts behind them, and the cash assessments. Every table is filled from tbDemoLine, so that
-- they agree with each other.
USE PATIENT_DATA
GO

-- One line of a past slip; money for the whole quantity.
CREATE TABLE tbDemoLine (
    LineID int IDENTITY(1,1) PRIMARY KEY,
    N int NOT NULL,
    J int NOT NULL,
    LineNum int NOT NULL,
    RefNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    RevenueID varchar(5) NOT NULL,
    ItemCode varchar(10) NOT NULL,
    Quantity int NOT NULL,
    Amount money NOT NULL,
    Discount money NOT NULL,
    NetAmount money NOT NULL,
    Accounts int NOT NULL,
    Moment datetime NOT NULL
)
GO

CREATE INDEX ixDemoLineItem ON tbDemoLine (ItemCode)
GO

CREATE INDEX ixDemoLineRef ON tbDemoLine (RefNum)
GO

-- Supplies: bags on every slip, small items on most. The discount is that of one unit, times the
-- quantity. Today's visits are not charged yet.
INSERT INTO tbDemoLine (
    N, J, LineNum, RefNum, IdNum, HospNum, RevenueID, ItemCode, Quantity, Amount, Discount,
        NetAmount,
    Accounts, Moment)
SELECT d.N, d.J, 1, d.RefNum, d.IdNum, d.HospNum, 'CA', g.DrugCode,
    20 + 10 * ((d.N + d.J) % 3),
    g.SellingPriceOut * (20 + 10 * ((d.N + d.J) % 3)),
    ROUND(g.SellingPriceOut * ISNULL(r.Rate, 0), 2) * (20 + 10 * ((d.N + d.J) % 3)),
    (g.SellingPriceOut - ROUND(g.SellingPriceOut * ISNULL(r.Rate, 0),
        2)) * (20 + 10 * ((d.N + d.J) % 3)),
    d.Accounts, DATEADD(minute, 45, d.AdmDate)
FROM tbDemoVisit d
INNER JOIN tbMaster m ON m.HospNum = d.HospNum
INNER JOIN BILLING..tbDrug g ON g.DrugCode = CAST(101 + d.N / 16 % 4 AS varchar(10))
LEFT JOIN BILLING..tbDiscountRate r ON r.DiscType = d.DiscType
    AND r.RevenueID = 'CA'
    AND r.MSSClassification = CASE WHEN d.DiscType = 'QF' THEN m.MSSClassification ELSE '' END
WHERE d.D > 0
UNION ALL
SELECT d.N, d.J, 2, d.RefNum, d.IdNum, d.HospNum, 'CA', g.DrugCode,
    1 + (d.N + d.J) % 5,
    g.SellingPriceOut * (1 + (d.N + d.J) % 5),
    ROUND(g.SellingPriceOut * ISNULL(r.Rate, 0), 2) * (1 + (d.N + d.J) % 5),
    (g.SellingPriceOut - ROUND(g.SellingPriceOut * ISNULL(r.Rate, 0), 2)) * (1 + (d.N + d.J) % 5),
    d.Accounts, DATEADD(minute, 45, d.AdmDate)
FROM tbDemoVisit d
INNER JOIN tbMaster m ON m.HospNum = d.HospNum
INNER JOIN BILLING..tbDrug g ON g.DrugCode = CAST(105 + (d.N / 16 + d.J) % 11 AS varchar(10))
LEFT JOIN BILLING..tbDiscountRate r ON r.DiscType = d.DiscType
    AND r.RevenueID = 'CA'
    AND r.MSSClassification = CASE WHEN d.DiscType = 'QF' THEN m.MSSClassification ELSE '' END
WHERE d.D > 0
    AND (d.N / 16 + d.J) % 4 <> 3
GO

-- The unit's fee on every slip, a doctor's fee on every third.
INSERT INTO tbDemoLine (
    N, J, LineNum, RefNum, IdNum, HospNum, RevenueID, ItemCode, Quantity, Amount, Discount,
        NetAmount,
    Accounts, Moment)
SELECT d.N, d.J, 3, d.RefNum, d.IdNum, d.HospNum, 'CY', o.ItemCode, 1, o.RateA, 0, o.RateA,
    d.Accounts,
    DATEADD(minute, 45, d.AdmDate)
FROM tbDemoVisit d
INNER JOIN BILLING..tbOtherRevenue o ON o.RevenueID = 'CY'
    AND o.ItemCode = CAST(501 + (d.N / 16 + d.J) % 6 AS varchar(10))
WHERE d.D > 0
UNION ALL
SELECT d.N, d.J, 4, d.RefNum, d.IdNum, d.HospNum, 'MD', o.ItemCode, 1, o.RateA, 0, o.RateA,
    d.Accounts,
    DATEADD(minute, 45, d.AdmDate)
FROM tbDemoVisit d
INNER JOIN BILLING..tbOtherRevenue o ON o.RevenueID = 'MD'
    AND o.ItemCode = CAST(801 + d.N / 16 % 3 AS varchar(10))
WHERE d.D > 0
    AND d.J % 3 = 0
GO

INSERT INTO CLINICAL_AREA..tbCAPDRequest (
    HospNum, IdNum, CAPDNum, ItemCode, Quantity, Amount, Department, RefNum, RevenueID, UserID,
        DoctorID,
    DoctorName, RequestDate)
SELECT l.HospNum, l.IdNum, c.CAPDNum, l.ItemCode, l.Quantity, l.Amount, 'OPD', l.RefNum,
    l.RevenueID,
    CASE l.J % 2 WHEN 0 THEN '4601' ELSE '4602' END, d.DoctorID, CONCAT('DR. ', d.FirstName, ' ',
        d.LastName), l.Moment
FROM tbDemoLine l
INNER JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = l.HospNum
INNER JOIN tbDoctor d ON d.DoctorID = CAST(101 + l.N % 3 AS varchar(10))
ORDER BY l.Moment, l.RefNum, l.LineNum
GO

INSERT INTO BILLING..tbBill (RefNum, IdNum, HospNum, RevenueID, ItemCode, Amount, UserID, TransDate)
SELECT RefNum, IdNum, HospNum, RevenueID, ItemCode, Amount, CASE J % 2 WHEN 0 THEN '4601'
    ELSE '4602' END, Moment
FROM tbDemoLine
WHERE RevenueID = 'CY'
ORDER BY Moment, RefNum
GO

INSERT INTO BILLING..tbDoctorCharge (RefNum, IdNum, HospNum, ItemCode, Amount, UserID, TransDate)
SELECT RefNum, IdNum, HospNum, ItemCode, Amount, CASE J % 2 WHEN 0 THEN '4601' ELSE '4602' END,
    Moment
FROM tbDemoLine
WHERE RevenueID = 'MD'
ORDER BY Moment, RefNum
GO

-- Stock: the unit receives every sixty days what it needs and a little more; gauze and the like lie
-- in central supply, medicines in the pharmacy. Nobody ever counted in the dressing kits.
USE BILLING
GO

DECLARE @Today datetime;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
-- In the order of the days, as the cards were written.
INSERT INTO tbStockCard (
    HospNum, IdNum, ItemCode, TransDate, RefNum, Quantity, Balance, NetAmount, UserID, Frequency,
    Reference, LocationID, Department, Cancelled, InventoryCode, RevenueID, Mark, PatientType, Flag,
    Discount, StockAfter)
SELECT CAST(NULL AS varchar(20)) AS HospNum, CAST(NULL AS varchar(20)) AS IdNum,
    g.DrugCode AS ItemCode,
    DATEADD(minute, 420, DATEADD(day, -(735 - 60 * n.N), @Today)) AS Moment,
    CONCAT('DR', 1001 + n.N) AS RefNum,
    -(10 + 10 * ((SELECT ISNULL(SUM(l.Quantity),
        0) FROM PATIENT_DATA..tbDemoLine l WHERE l.ItemCode = g.DrugCode) / 100)),
    NULL, 0, '4602', CAST(NULL AS varchar(10)), 'DELIVERY', '46', CAST(NULL AS varchar(10)), 0, 'CA',
    'CA', '*', CAST(NULL AS varchar(1)), 0, 0, 0
FROM tbDrug g
INNER JOIN PATIENT_DATA..tbDemoNumber n ON n.N <= 12
WHERE g.DrugCode BETWEEN '101' AND '116'
    AND LEN(g.DrugCode) = 3
    AND g.DrugCode NOT IN ('112', '116')
UNION ALL
SELECT CAST(NULL AS varchar(20)), CAST(NULL AS varchar(20)), g.DrugCode,
    DATEADD(minute, 420, DATEADD(day, -735, @Today)), 'DR1000',
    -400 - 10 * (CAST(g.DrugCode AS int) % 7),
    NULL, 0, '4602', CAST(NULL AS varchar(10)), 'DELIVERY',
    CASE g.Kind WHEN 'M' THEN '20' ELSE '21' END, CAST(NULL AS varchar(10)), 0,
    CASE g.Kind WHEN 'M' THEN 'PH' ELSE 'CS' END, CASE g.Kind WHEN 'M' THEN 'PH' ELSE 'CS' END, '*',
    CAST(NULL AS varchar(1)), 0, 0, 0
FROM tbDrug g
WHERE g.Kind = 'M'
    OR g.DrugCode LIKE '2%'
UNION ALL
SELECT HospNum, IdNum, ItemCode, Moment, RefNum, Quantity, 0, NetAmount,
    CASE J % 2 WHEN 0 THEN '4601' ELSE '4602' END, 'PRN', NULL, '46', 'OPD', 0, 'CA', 'CA', '*', 'O',
    1, Discount, 0
FROM PATIENT_DATA..tbDemoLine
WHERE RevenueID = 'CA'
ORDER BY Moment, RefNum, ItemCode
GO

UPDATE CLINICAL_AREA..tbCAPDRequest
SET StockCardID = (
    SELECT s.StockCardID
    FROM tbStockCard s
    WHERE s.RefNum = tbCAPDRequest.RefNum AND s.ItemCode = tbCAPDRequest.ItemCode)
WHERE RevenueID = 'CA'
GO

UPDATE tbStockCard
SET StockAfter = (
    SELECT -SUM(s.Quantity)
    FROM tbStockCard s
    WHERE s.ItemCode = tbStockCard.ItemCode
        AND s.LocationID = tbStockCard.LocationID
        AND (s.TransDate < tbStockCard.TransDate
            OR (s.TransDate = tbStockCard.TransDate AND s.StockCardID <= tbStockCard.StockCardID)))
GO

INSERT INTO tbDrugStock (DrugCode, LocationID, OnHand)
SELECT ItemCode, LocationID, -SUM(Quantity)
FROM tbStockCard
GROUP BY ItemCode, LocationID
GO

-- The weighing scale is kept but was never delivered.
INSERT INTO tbDrugStock (DrugCode, LocationID, OnHand)
SELECT g.DrugCode, '46', 0
FROM tbDrug g
WHERE g.DrugCode BETWEEN '101' AND '116'
    AND LEN(g.DrugCode) = 3
    AND NOT EXISTS (SELECT 1 FROM tbDrugStock s WHERE s.DrugCode = g.DrugCode
        AND s.LocationID = '46')
GO

-- Fund accounts: one to six a sponsored patient; the first is the registered one of each visit.
INSERT INTO tbFundAccount (AccountNum, HospNum, CompanyID, SeqNum, AllocatedFund, FundBalance)
SELECT CONCAT('F', 1000 + p.N / 16, '-', n.N), CAST(200000 + p.N AS varchar(20)),
    CASE (p.N / 48 + n.N - 1) % 6 WHEN 0 THEN 'VEL' WHEN 1 THEN 'DHF' WHEN 2 THEN 'ASH' WHEN 3
        THEN 'PCS'
        WHEN 4 THEN 'KID' ELSE 'TMB' END,
    n.N, 0, 0
FROM PATIENT_DATA..tbDemoNumber p
INNER JOIN PATIENT_DATA..tbDemoNumber n ON n.N BETWEEN 1 AND 1 + p.N / 48 % 6
WHERE p.N % 16 = 5
    AND p.N < 1925
    AND p.N / 16 % 3 = 0
GO

-- Some funds are not for this unit: of every eighth sponsored patient they pay doctors only.
INSERT INTO tbFundCostCenter (AccountNum, RevenueID)
SELECT AccountNum, 'MD' FROM tbFundAccount
UNION ALL
SELECT AccountNum, 'CY' FROM tbFundAccount WHERE (CAST(HospNum AS int) - 200000) / 48 % 8 <> 7
GO

-- A line is paid by one account; the first line of a patient with several is split between two.
INSERT INTO tbCompanyPayment (
    IdNum, HospNum, AccountNum, CompanyID, Amount, RefNum, DrCr, RevenueID, SeqNum, ItemID, UserID,
        PaidAt)
SELECT l.IdNum, l.HospNum, f.AccountNum, f.CompanyID,
    CASE WHEN l.LineNum <> 1 OR l.Accounts = 1 THEN l.NetAmount
        WHEN f.SeqNum = 1 + l.J % NULLIF(l.Accounts, 0) THEN ROUND(l.NetAmount / 2, 2)
        ELSE l.NetAmount - ROUND(l.NetAmount / 2, 2) END,
    l.RefNum, 'C', CASE l.RevenueID WHEN 'MD' THEN 'MD' ELSE 'CY' END, f.SeqNum, l.ItemCode,
    CASE l.J % 2 WHEN 0 THEN '4601' ELSE '4602' END, l.Moment
FROM PATIENT_DATA..tbDemoLine l
INNER JOIN tbFundAccount f ON f.HospNum = l.HospNum
    AND (f.SeqNum = 1 + l.J % NULLIF(l.Accounts, 0)
        OR (l.LineNum = 1 AND f.SeqNum = 1 + (l.J + 1) % NULLIF(l.Accounts, 0)))
INNER JOIN tbFundCostCenter c ON c.AccountNum = f.AccountNum
    AND c.RevenueID = CASE l.RevenueID WHEN 'MD' THEN 'MD' ELSE 'CY' END
WHERE l.Accounts > 0
    AND l.NetAmount > 0
ORDER BY l.Moment, l.RefNum, l.LineNum, f.SeqNum
GO

-- What a fund received is what it paid and what is left of it: of some first accounts nothing.
UPDATE tbFundAccount
SET FundBalance = CASE WHEN SeqNum = 1 AND CAST(HospNum AS int) % 5 = 0 THEN 0
    ELSE 250 * ((CAST(HospNum AS int) + 3 * SeqNum) % 41) END
GO

UPDATE tbFundAccount
SET AllocatedFund = FundBalance + ISNULL((
    SELECT SUM(p.Amount) FROM tbCompanyPayment p
    WHERE p.AccountNum = tbFundAccount.AccountNum AND p.CancelledAt IS NULL), 0)
GO

INSERT INTO tbVisitAccount (IdNum, HospNum, CompanyID, FundAccountNum)
SELECT d.IdNum, d.HospNum, f.CompanyID, f.AccountNum
FROM PATIENT_DATA..tbDemoVisit d
INNER JOIN tbFundAccount f ON f.HospNum = d.HospNum AND f.SeqNum = 1
UNION ALL
SELECT v.IdNum, v.HospNum, c.CompanyID, NULL
FROM PATIENT_DATA..tbOutPatient v
INNER JOIN tbCompany c ON c.AccountNum = v.AccountNum
WHERE NOT EXISTS (SELECT 1 FROM PATIENT_DATA..tbDemoVisit d WHERE d.IdNum = v.IdNum)
GO

UPDATE tbVisitAccount
SET PaidAmount = ISNULL((
        SELECT SUM(p.Amount) FROM tbCompanyPayment p
        WHERE p.IdNum = tbVisitAccount.IdNum AND p.CancelledAt IS NULL), 0),
    UpdatedAt = (SELECT MAX(p.PaidAt) FROM tbCompanyPayment p WHERE p.IdNum = tbVisitAccount.IdNum)
GO

-- Cash assessments of walk-in patients: paid ones have a receipt, some are revoked, the youngest wait.
CREATE TABLE tbDemoAssessment (
    K int NOT NULL PRIMARY KEY,
    D int NOT NULL,
    N int NOT NULL,
    RefNum varchar(20) NOT NULL,
    Moment datetime NOT NULL
)
GO

DECLARE @Today datetime;
DECLARE @Minutes int;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
SET @Minutes = DATEDIFF(minute, @Today, GETDATE());
INSERT INTO tbDemoAssessment (K, D, N, RefNum, Moment)
SELECT k.N, CASE WHEN k.N < 6 THEN 0 ELSE 2 * k.N - 11 END, 40 * k.N + 7,
    CONCAT('C', 10000 + (730 - CASE WHEN k.N < 6 THEN -1 ELSE 2 * k.N - 11 END) * 8 + k.N % 8, 'D'),
    CASE WHEN k.N < 6 THEN DATEADD(minute, @Minutes * (k.N + 1) / 8, @Today)
        ELSE DATEADD(minute, 500 + k.N * 7, DATEADD(day, -(2 * k.N - 11), @Today)) END
FROM PATIENT_DATA..tbDemoNumber k
WHERE k.N < 48
GO

INSERT INTO tbCashAssessment (
    PatientName, RevenueID, ItemCode, Quantity, Amount, UserID, RefNum, IdNum, RecordStatus,
        DoctorID,
    HospNum, RequestDoctor, ORNum, TransDate)
SELECT CONCAT(m.LastName, ', ', m.FirstName, ' ', m.MiddleName), o.RevenueID, o.ItemCode, 1,
    o.RateA,
    '4602', a.RefNum, CONCAT('T', m.HospNum, 'C'), CASE WHEN a.K % 6 = 5 THEN 'R' ELSE 'N' END,
    d.DoctorID, m.HospNum, CONCAT('DR. ', d.FirstName, ' ', d.LastName),
    CASE WHEN a.K % 6 <> 5 AND (a.K > 9 OR a.K = 2) THEN CAST(700100 - a.K AS varchar(20)) END,
        a.Moment
FROM tbDemoAssessment a
INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = CAST(200000 + a.N AS varchar(20))
INNER JOIN PATIENT_DATA..tbDoctor d ON d.DoctorID = CAST(101 + a.K % 5 AS varchar(10))
INNER JOIN tbOtherRevenue o ON o.RevenueID = 'CY'
    AND o.ItemCode = CAST(501 + a.K % 6 AS varchar(10))
    OR o.RevenueID = 'MD' AND o.ItemCode = '801' AND a.K % 4 = 1
UNION ALL
SELECT CONCAT(m.LastName, ', ', m.FirstName, ' ', m.MiddleName), 'CA', g.DrugCode, 1 + a.K % 4,
    g.SellingPriceOut * (1 + a.K % 4),
    '4602', a.RefNum, CONCAT('T', m.HospNum, 'C'), CASE WHEN a.K % 6 = 5 THEN 'R' ELSE 'N' END,
    d.DoctorID, m.HospNum, CONCAT('DR. ', d.FirstName, ' ', d.LastName),
    CASE WHEN a.K % 6 <> 5 AND (a.K > 9 OR a.K = 2) THEN CAST(700100 - a.K AS varchar(20)) END,
        a.Moment
FROM tbDemoAssessment a
INNER JOIN PATIENT_DATA..tbMaster m ON m.HospNum = CAST(200000 + a.N AS varchar(20))
INNER JOIN PATIENT_DATA..tbDoctor d ON d.DoctorID = CAST(101 + a.K % 5 AS varchar(10))
INNER JOIN tbDrug g ON g.DrugCode = CAST(105 + a.K % 9 AS varchar(10))
WHERE a.K % 3 <> 1
GO

INSERT INTO tbDoctorCharge (RefNum, IdNum, HospNum, ItemCode, Amount, UserID, TransDate)
SELECT RefNum, IdNum, HospNum, ItemCode, Amount, UserID, TransDate
FROM tbCashAssessment
WHERE RevenueID = 'MD'
GO

INSERT INTO CLINICAL_AREA..tbCAPDRequest (
    HospNum, IdNum, ItemCode, Quantity, Amount, Department, RefNum, RevenueID, UserID, DoctorID,
    DoctorName, RequestDate)
SELECT HospNum, IdNum, ItemCode, Quantity, Amount, 'OPD', RefNum, RevenueID, UserID, DoctorID,
    RequestDoctor, TransDate
FROM tbCashAssessment
WHERE RevenueID = 'MD'
GO

-- The next slip follows today's last one.
UPDATE CLINICAL_AREA..tbCAPDSlip SET ChargeSlip = 15856
GO
