-- The demo hospital's prices, stock locations, rooms, discounts, sponsors and dosages.
USE BILLING
GO

INSERT INTO tbRoomClass (RoomClassID, RoomClass, RoomRate)
VALUES ('A', 'Private', 2400.00), ('B', 'Semi-Private', 1500.00), ('C', 'Ward', 600.00), ('S',
    'Service Ward', 0.00)
GO

INSERT INTO tbRoom (RoomID, RoomClassID, Station)
SELECT CONCAT(CASE n.N % 4 WHEN 0 THEN 'P' WHEN 1 THEN 'S' WHEN 2 THEN 'W' ELSE 'V' END, 201 + n.N),
    CASE n.N % 4 WHEN 0 THEN 'A' WHEN 1 THEN 'B' WHEN 2 THEN 'C' ELSE 'S' END,
    CONCAT('Station ', 1 + n.N / 10)
FROM PATIENT_DATA..tbDemoNumber n
WHERE n.N < 40
GO

INSERT INTO tbLocation (LocationID, Location)
VALUES ('20', 'Pharmacy'), ('21', 'Central Supply Room'), ('46', 'CAPD Unit')
GO

INSERT INTO tbRevenueCode (RevenueID, Revenue, WithItems, SearchInventory, LocationID, InvCode)
VALUES
    ('CA', 'CAPD SUPPLIES', 'Y', 1, '46', 'CA'),
    ('CS', 'CENTRAL SUPPLY', 'Y', 1, '21', 'CS'),
    ('CT', 'CT-SCAN', 'Y', 0, NULL, NULL),
    ('CY', 'CAPD CONSULTATION FEE', 'Y', 0, NULL, NULL),
    ('HS', 'HEART STATION', 'Y', 0, NULL, NULL),
    ('LB', 'LABORATORY', 'Y', 0, NULL, NULL),
    ('MD', 'PROFESSIONAL FEE', 'Y', 0, NULL, NULL),
    ('PH', 'PHARMACY', 'Y', 1, '20', 'PH'),
    ('PT', 'REHABILITATION MEDICINE', 'Y', 0, NULL, NULL),
    ('US', 'ULTRASOUND', 'Y', 0, NULL, NULL),
    ('XR', 'X-RAY', 'Y', 0, NULL, NULL)
GO

INSERT INTO tbOtherRevenue (RevenueID, ItemCode, OtherRevenue, RateA)
VALUES
    ('CY', '501', 'CAPD CONSULTATION', 450.00),
    ('CY', '502', 'CAPD FOLLOW-UP', 300.00),
    ('CY', '503', 'EXIT SITE CARE', 250.00),
    ('CY', '504', 'TRANSFER SET CHANGE', 600.00),
    ('CY', '505', 'PERITONEAL EQUILIBRATION TEST', 1850.00),
    ('CY', '506', 'PATIENT TRAINING, PER SESSION', 750.00),
    ('CY', '507', 'HOME VISIT', 1200.00),
    ('CY', '508', 'CATHETER FLUSHING', 350.00),
    ('CY', '509', 'INTRAPERITONEAL ANTIBIOTIC ADMINISTRATION', 400.00),
    ('CY', '510', 'OTHER CAPD SERVICE', 0.00),
    ('MD', '801', 'NEPHROLOGIST''S CONSULTATION', 800.00),
    ('MD', '802', 'NEPHROLOGIST''S FOLLOW-UP', 500.00),
    ('MD', '803', 'SURGEON''S CONSULTATION', 1000.00),
    ('MD', '804', 'CATHETER INSERTION FEE', 6500.00),
    ('MD', '805', 'CATHETER REMOVAL FEE', 4000.00),
    ('MD', '806', 'PROFESSIONAL FEE, OTHERS', 0.00),
    ('XR', '601', 'CHEST PA', 380.00),
    ('XR', '602', 'KUB', 420.00),
    ('US', '621', 'KIDNEYS AND BLADDER', 950.00),
    ('CT', '641', 'WHOLE ABDOMEN', 6200.00),
    ('HS', '661', 'TWELVE-LEAD ECG', 350.00),
    ('PT', '681', 'THERAPEUTIC EXERCISE', 300.00)
GO

INSERT INTO tbDrug (DrugCode, DrugName, Kind, Unit, Status, SellingPriceIn, SellingPriceOut)
VALUES
    ('101', 'DIALYSIS SOLUTION 1.5% 2 L', 'S', 'BAG', 0, 392.00, 385.00),
    ('102', 'DIALYSIS SOLUTION 2.3% 2 L', 'S', 'BAG', 0, 398.50, 390.25),
    ('103', 'DIALYSIS SOLUTION 4.25% 2 L', 'S', 'BAG', 0, 410.00, 402.75),
    ('104', 'DIALYSIS SOLUTION 1.5% 5 L', 'S', 'BAG', 0, 815.00, 798.00),
    ('105', 'DISCONNECT CAP WITH IODINE', 'S', 'PC', 0, 32.50, 30.00),
    ('106', 'TRANSFER SET, LONG LIFE', 'S', 'PC', 0, 1650.00, 1595.00),
    ('107', 'OUTLET PORT CLAMP', 'S', 'PC', 0, 95.00, 90.50),
    ('108', 'DRAINAGE BAG 3 L', 'S', 'PC', 0, 145.00, 140.00),
    ('109', 'TITANIUM ADAPTER', 'S', 'PC', 0, 2150.00, 2095.35),
    ('110', 'TENCKHOFF CATHETER, COILED', 'S', 'PC', 0, 5350.00, 5280.00),
    ('111', 'CYCLER TUBING SET', 'S', 'SET', 0, 1240.00, 1215.00),
    ('112', 'EXIT SITE DRESSING KIT', 'S', 'KIT', 0, 118.00, 112.35),
    ('113', 'FACE MASK, 3-PLY', 'S', 'PC', 0, 6.00, 5.50),
    ('114', 'CONNECTION SHIELD', 'S', 'PC', 0, 78.00, 74.25),
    ('115', 'CATHETER IMMOBILIZER', 'S', 'PC', 0, 64.00, 61.00),
    ('116', 'WEIGHING HOOK SCALE', 'S', 'PC', 1, 480.00, 480.00),
    ('201', 'STERILE GAUZE 4X4', 'S', 'PACK', 0, 22.00, 24.00),
    ('202', 'SURGICAL GLOVES 6.5', 'S', 'PAIR', 0, 28.00, 30.00),
    ('203', 'SURGICAL GLOVES 7.0', 'S', 'PAIR', 0, 28.00, 30.00),
    ('204', 'SYRINGE 5 ML', 'S', 'PC', 0, 9.50, 10.50),
    ('205', 'SYRINGE 10 ML', 'S', 'PC', 0, 12.00, 13.25),
    ('206', 'NEEDLE G 23', 'S', 'PC', 0, 4.50, 5.00),
    ('207', 'IV CANNULA G 20', 'S', 'PC', 0, 68.00, 74.00),
    ('208', 'ADHESIVE PLASTER 1 INCH', 'S', 'ROLL', 0, 54.00, 58.00),
    ('209', 'POVIDONE-IODINE SWAB', 'S', 'PC', 0, 7.00, 7.75),
    ('210', 'DRESSING TRAY', 'S', 'SET', 0, 135.00, 142.00),
    ('211', 'URINE CONTAINER', 'S', 'PC', 0, 11.00, 12.00),
    ('212', 'THERMOMETER SHEATH', 'S', 'PC', 1, 2.50, 2.75),
    ('1001', 'AMLODIPINE 5 MG', 'M', 'TAB', 0, 8.50, 9.25),
    ('1002', 'AMLODIPINE 10 MG', 'M', 'TAB', 0, 12.75, 13.50),
    ('1003', 'ATORVASTATIN 20 MG', 'M', 'TAB', 0, 18.00, 19.50),
    ('1004', 'CALCITRIOL 0.25 MCG', 'M', 'CAP', 0, 31.00, 33.00),
    ('1005', 'CALCIUM CARBONATE 500 MG', 'M', 'TAB', 0, 4.25, 4.75),
    ('1006', 'CEFAZOLIN 1 G', 'M', 'VIAL', 0, 145.00, 152.00),
    ('1007', 'CEFTAZIDIME 1 G', 'M', 'VIAL', 0, 265.00, 278.00),
    ('1008', 'CLONIDINE 75 MCG', 'M', 'TAB', 0, 14.00, 15.00),
    ('1009', 'ERYTHROPOIETIN 4000 IU', 'M', 'SYR', 0, 980.00, 1025.00),
    ('1010', 'FERROUS SULFATE 325 MG', 'M', 'TAB', 0, 3.25, 3.50),
    ('1011', 'FOLIC ACID 5 MG', 'M', 'TAB', 0, 2.75, 3.00),
    ('1012', 'FUROSEMIDE 40 MG', 'M', 'TAB', 0, 5.50, 6.00),
    ('1013', 'HEPARIN 5000 IU/ML', 'M', 'VIAL', 0, 210.00, 222.00),
    ('1014', 'INSULIN REGULAR 100 IU/ML', 'M', 'VIAL', 0, 340.00, 358.00),
    ('1015', 'LACTULOSE SYRUP 120 ML', 'M', 'BOT', 0, 235.00, 248.00),
    ('1016', 'LOSARTAN 50 MG', 'M', 'TAB', 0, 11.50, 12.25),
    ('1017', 'METOPROLOL 50 MG', 'M', 'TAB', 0, 7.25, 7.75),
    ('1018', 'MUPIROCIN OINTMENT 15 G', 'M', 'TUBE', 0, 285.00, 299.00),
    ('1019', 'OMEPRAZOLE 20 MG', 'M', 'CAP', 0, 16.50, 17.50),
    ('1020', 'PARACETAMOL 500 MG', 'M', 'TAB', 0, 1.75, 2.00),
    ('1021', 'POTASSIUM CHLORIDE 600 MG', 'M', 'TAB', 0, 9.00, 9.75),
    ('1022', 'SEVELAMER 800 MG', 'M', 'TAB', 0, 42.00, 44.50),
    ('1023', 'SODIUM BICARBONATE 650 MG', 'M', 'TAB', 0, 3.75, 4.00),
    ('1024', 'TRAMADOL 50 MG', 'M', 'CAP', 1, 13.00, 13.75),
    ('1025', 'VANCOMYCIN 500 MG', 'M', 'VIAL', 0, 520.00, 545.00)
GO

INSERT INTO tbDiscountType (DiscType, Description)
VALUES
    ('SM', 'Senior Citizen'), ('QF', 'Med.Social Service Discount'), ('GE',
        'Gov`t Employees Discount'),
    ('GD', 'Gov`t Employees Dependent Discount'), ('KE', 'Velmora Employees Discount'),
    ('KD', 'Velmora Employees Dependent Discount')
GO

INSERT INTO tbDiscountRate (DiscType, MSSClassification, RevenueID, Rate)
SELECT 'SM', '', RevenueID, 0.20 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'GE', '', RevenueID, 0.10 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'GD', '', RevenueID, 0.05 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'KE', '', RevenueID, 0.15 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'KD', '', RevenueID, 0.10 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'QF', 'C1', RevenueID, 0.25 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'QF', 'C2', RevenueID, 0.50 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'QF', 'C3', RevenueID, 0.75 FROM tbRevenueCode WHERE SearchInventory = 1
UNION ALL SELECT 'QF', 'D', RevenueID, 1.00 FROM tbRevenueCode WHERE SearchInventory = 1
GO

INSERT INTO tbCompany (CompanyID, AccountNum, Company)
VALUES
    ('VEL', 'C-1001', 'Velmora Relief Fund'),
    ('DHF', 'C-1002', 'Dunmarrow Harbour Foundation'),
    ('ASH', 'C-1003', 'Ashwick Mills'),
    ('PCS', 'C-1004', 'Provincial Charity Sweep'),
    ('KID', 'C-1005', 'Kidney Friends of Corvale'),
    ('TMB', 'C-1006', 'Tiverlea Mutual Benefit')
GO

USE STATION
GO

INSERT INTO tbDosage (DosageID, Dosage, Frequency)
VALUES
    ('OD', 'ONCE A DAY', 1), ('BID', 'TWICE A DAY', 2), ('TID', 'THREE TIMES A DAY', 3),
    ('QID', 'FOUR TIMES A DAY', 4), ('HS', 'AT BEDTIME', 1), ('PRN', 'AS NEEDED', 1),
    ('STAT', 'AT ONCE', 1), ('EOD', 'EVERY OTHER DAY', 1), ('WEEKLY', 'ONCE A WEEK', 1),
    ('AC', 'BEFORE MEALS', 3), ('PC', 'AFTER MEALS', 3), ('WITHMEAL', 'WITH MEALS', 3)
GO
