-- The demo hospital: its particulars, users, doctors and patients. All of it is made up; the same
-- numbers give the same people each time. The tables tbDemo... are scaffolding, dropped at the end.
USE PATIENT_DATA
GO

INSERT INTO tbHospitalInfo (HospitalID, Company, address1, MtsServerName)
VALUES (1, 'Velmora General Hospital', 'Harbour Road, Dunmarrow', '')
GO

INSERT INTO tbCivilStatus (CivilStatusID, CivilStatus)
VALUES ('1', 'Single'), ('2', 'Married'), ('3', 'Widowed'), ('4', 'Separated')
GO

INSERT INTO tbNationality (NationalityID, Nationality)
VALUES ('V', 'Velmoran'), ('C', 'Corvalese'), ('T', 'Tiverlean')
GO

INSERT INTO tbReligion (ReligionID, Religion)
VALUES ('1', 'Roman Catholic'), ('2', 'Protestant'), ('3', 'Muslim'), ('4', 'Buddhist'), ('5',
    'None')
GO

-- The password of all is "practice": the log-in shows it to whoever practises.
DECLARE @Practice varchar(128);
SET @Practice = '$argon2id$v=19$m=65536,t=2,p=1$NY5XtF/EROzifHwGily/Cw$7bmF5OyTkn2fdPfV/6ElJYFO07UCazQr9XLhZBqHkks';
INSERT INTO tbUser (UserName, EmployeeCode, EmployeeName, PasswordHash, DeptCode)
VALUES
    ('nurse1', '4601', 'Amelia Peña', @Practice, '46'),
    ('clerk1', '4602', 'Rory O''Hara', @Practice, '46'),
    ('labuser', '1201', 'Dana Whitlow', @Practice, '12'),
    ('pharmacy1', '2001', 'Ines Calloway', @Practice, '20'),
    ('supply1', '2101', 'Bram Oduya', @Practice, '21')
GO

INSERT INTO tbDoctor (DoctorID, LastName, FirstName, MiddleName, Specialty)
VALUES
    ('101', 'Abernathy', 'Clara', 'Wren', 'Nephrology'),
    ('102', 'D''Souza', 'Martin', 'Leo', 'Nephrology'),
    ('103', 'Peña', 'Lucía', 'Marisol', 'Nephrology'),
    ('104', 'Fairweather', 'Simon', NULL, 'Internal Medicine'),
    ('105', 'Halloran', 'Grace', 'Edith', 'Internal Medicine'),
    ('106', 'Núñez', 'Rafael', 'Tomás', 'Cardiology'),
    ('107', 'Okonedo', 'Femi', 'James', 'Cardiology'),
    ('108', 'Penrose', 'Hugh', 'Alban', 'Radiology'),
    ('109', 'Petrov', 'Anna', 'Mila', 'Radiology'),
    ('110', 'Quill', 'Beatrice', NULL, 'Ultrasonography'),
    ('111', 'Ravenhill', 'Owen', 'Piers', 'Surgery'),
    ('112', 'Sandoval', 'Inés', 'Carmen', 'Surgery'),
    ('113', 'Thistlewood', 'Mark', 'Ellis', 'Pathology'),
    ('114', 'Underhill', 'Nora', 'Faye', 'Rehabilitation Medicine'),
    ('115', 'van der Linden-Harcourt', 'Elisabeth', 'Johanna', 'Emergency Medicine'),
    ('116', 'Yardley', 'Piotr', 'Jan', 'Emergency Medicine')
GO

CREATE TABLE tbDemoDigit (N int NOT NULL PRIMARY KEY)
GO

INSERT INTO tbDemoDigit (N) VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)
GO

CREATE TABLE tbDemoNumber (N int NOT NULL PRIMARY KEY)
GO

INSERT INTO tbDemoNumber (N)
SELECT a.N * 1000 + b.N * 100 + c.N * 10 + d.N
FROM tbDemoDigit a
CROSS JOIN tbDemoDigit b
CROSS JOIN tbDemoDigit c
CROSS JOIN tbDemoDigit d
WHERE a.N < 3
GO

CREATE TABLE tbDemoLastName (K int NOT NULL PRIMARY KEY, Name varchar(60) NOT NULL)
GO

INSERT INTO tbDemoLastName (K, Name)
VALUES
    (0, 'Abbott'), (1, 'Alvarez'), (2, 'Ashdown'), (3, 'Barlow'), (4, 'Bautista'), (5, 'Beckett'),
    (6, 'Cabrera'), (7, 'Calloway'), (8, 'Castañeda'), (9, 'Coleridge'), (10, 'Cruz'),
    (11, 'D''Souza'), (12, 'Dalton'), (13, 'De la Cruz'), (14, 'Delgado'), (15, 'Drummond'),
    (16, 'Ellery'), (17, 'Espinoza'), (18, 'Farrow'), (19, 'Fletcher'), (20, 'Garrick'),
    (21, 'Gómez'), (22, 'Greaves'), (23, 'Hartigan'), (24, 'Hollis'), (25, 'Ibáñez'),
    (26, 'Ingram'), (27, 'Jarvis'), (28, 'Keating'), (29, 'Kowalski'), (30, 'Lacson'),
    (31, 'Lockhart'), (32, 'Macaraeg'), (33, 'Marlowe'), (34, 'Mendoza'), (35,
        'Montgomery-Castellanos'),
    (36, 'Núñez'), (37, 'O''Hara'), (38, 'O''Malley'), (39, 'Oakes'), (40, 'Ocampo'),
    (41, 'Pemberton'), (42, 'Peña'), (43, 'Prescott'), (44, 'Quintana'), (45, 'Ramos'),
    (46, 'Redfern'), (47, 'Reyes'), (48, 'Salazar'), (49, 'Santos'), (50, 'Sheridan'),
    (51, 'Smith'), (52, 'Soriano'), (53, 'Stanhope'), (54, 'Thorne'), (55, 'Tolentino'),
    (56, 'Valdés'), (57, 'van Houten'), (58, 'Villanueva-Montenegro'), (59, 'Winslow')
GO

CREATE TABLE tbDemoFirstName (
    Sex varchar(1) NOT NULL,
    K int NOT NULL,
    Name varchar(60) NOT NULL,
    PRIMARY KEY (Sex, K)
)
GO

INSERT INTO tbDemoFirstName (Sex, K, Name)
VALUES
    ('M', 0, 'Aaron'), ('M', 1, 'Alfonso'), ('M', 2, 'Andrés'), ('M', 3, 'Benedict'), ('M', 4,
        'Carlo'),
    ('M', 5, 'Cedric'), ('M', 6, 'Daniel'), ('M', 7, 'Dominic'), ('M', 8, 'Edgar'), ('M', 9,
        'Emilio'),
    ('M', 10, 'Felix'), ('M', 11, 'Gerard'), ('M', 12, 'Henry'), ('M', 13, 'Isidro'),
    ('M', 14, 'José Antonio'), ('M', 15, 'Julian'), ('M', 16, 'Leonard'), ('M', 17, 'Luis'),
    ('M', 18, 'Marcus'), ('M', 19, 'Nathan'), ('M', 20, 'Oliver'), ('M', 21, 'Patrick'),
    ('M', 22, 'Quentin'), ('M', 23, 'Ramón'), ('M', 24, 'Samuel'), ('M', 25, 'Tobias'),
    ('M', 26, 'Victor'), ('M', 27, 'Walter'), ('M', 28, 'Xavier'), ('M', 29, 'Zachary'),
    ('F', 0, 'Adela'), ('F', 1, 'Agnes'), ('F', 2, 'Beatriz'), ('F', 3, 'Bernadette'), ('F', 4,
        'Camille'),
    ('F', 5, 'Celeste'), ('F', 6, 'Corazon'), ('F', 7, 'Diana'), ('F', 8, 'Eleanor'), ('F', 9,
        'Elena'),
    ('F', 10, 'Fiona'), ('F', 11, 'Gloria'), ('F', 12, 'Helen'), ('F', 13, 'Imelda'), ('F', 14,
        'Irene'),
    ('F', 15, 'Josefina'), ('F', 16, 'Katherine'), ('F', 17, 'Leticia'), ('F', 18, 'Lourdes'),
    ('F', 19, 'María Fernanda'), ('F', 20, 'Miriam'), ('F', 21, 'Nadia'), ('F', 22, 'Ophelia'),
    ('F', 23, 'Paloma'), ('F', 24, 'Rosalind'), ('F', 25, 'Sofía'), ('F', 26, 'Teresa'),
    ('F', 27, 'Ursula'), ('F', 28, 'Violeta'), ('F', 29, 'Yolanda')
GO

CREATE TABLE tbDemoPlace (
    K int NOT NULL PRIMARY KEY,
    Barangay varchar(60) NOT NULL,
    Town varchar(60) NOT NULL,
    Province varchar(60) NOT NULL
)
GO

INSERT INTO tbDemoPlace (K, Barangay, Town, Province)
VALUES
    (0, 'Old Quay', 'Dunmarrow', 'Velmora'), (1, 'Castle Hill', 'Dunmarrow', 'Velmora'),
    (2, 'Saltmarsh', 'Dunmarrow', 'Velmora'), (3, 'North Gate', 'Ashwick', 'Velmora'),
    (4, 'Millpond', 'Ashwick', 'Velmora'), (5, 'San Isidro', 'Corvale', 'Corvale'),
    (6, 'Poblacion', 'Corvale', 'Corvale'), (7, 'Riverside', 'Little Tiver', 'Tiverlea'),
    (8, 'Abbey Cross', 'Tiverlea', 'Tiverlea'), (9, 'Santa Inés', 'Puerto Alba', 'Corvale')
GO

-- Patients 1 to 2000; those with N % 16 = 5 below 1925 are the unit's, 120 of them.
DECLARE @Today datetime;
SET @Today = PATIENT_DATA.dbo.fn_GetToday();
INSERT INTO tbMaster (
    HospNum, OldHospNum, LastName, FirstName, MiddleName, Sex, BirthDate, BirthPlace, CivilStatus,
    NationalityID, ReligionID, Occupation, HouseStreet, Barangay, Town, Province, Address, TelNum,
    NextKin, SpouseName, FatherName, MotherName, MSSNum, MSSClassification)
SELECT
    CAST(200000 + a.N AS varchar(20)),
    CASE WHEN a.N % 6 = 0 THEN CONCAT('H-', 90000 - a.N) END,
    l.Name, f.Name,
    CASE WHEN a.N % 9 <> 0 THEN w.Name END,
    f.Sex,
    CASE WHEN a.N % 16 = 5 THEN DATEADD(day, -(8000 + (a.N * 331) % 21500), @Today)
        ELSE DATEADD(day, -(800 + (a.N * 733) % 31000), @Today) END,
    CONCAT(p.Town, ', ', p.Province),
    CASE WHEN a.N % 10 = 0 THEN NULL
        WHEN a.N % 10 < 4 OR (a.N % 16 <> 5 AND (a.N * 733) % 31000 < 7000) THEN '1'
        WHEN a.N % 10 < 8 THEN '2'
        WHEN a.N % 10 = 8 THEN '3' ELSE '4' END,
    CASE WHEN a.N % 23 = 0 THEN 'C' WHEN a.N % 29 = 0 THEN 'T' ELSE 'V' END,
    CAST(1 + a.N % 5 AS varchar(5)),
    CASE WHEN a.N % 16 = 5 OR (a.N * 733) % 31000 > 6999 THEN
        CASE a.N % 7 WHEN 0 THEN 'Teacher' WHEN 1 THEN 'Farmer' WHEN 2 THEN 'Retired' WHEN 3
            THEN 'Clerk'
        WHEN 4 THEN 'Seamstress' WHEN 5 THEN 'Driver' END END,
    CONCAT(1 + a.N * 37 % 240, CASE a.N / 7 % 4 WHEN 0 THEN ' Harbour Road' WHEN 1 THEN ' Chapel Street'
        WHEN 2 THEN ' Orchard Lane' ELSE ' Mabini Street' END),
    p.Barangay, p.Town, p.Province,
    CONCAT(1 + a.N * 37 % 240, CASE a.N / 7 % 4 WHEN 0 THEN ' Harbour Road' WHEN 1 THEN ' Chapel Street'
        WHEN 2 THEN ' Orchard Lane' ELSE ' Mabini Street' END, ', ', p.Barangay, ', ', p.Town, ', ',
            p.Province),
    CASE WHEN a.N % 3 <> 0 THEN CONCAT('555-', 1000 + (a.N * 37) % 9000) END,
    CONCAT(g.Name, ' ', l.Name),
    CASE WHEN a.N % 10 > 3 AND a.N % 10 < 8 AND (a.N % 16 = 5 OR (a.N * 733) % 31000 > 6999)
        THEN CONCAT(g.Name, ' ', l.Name) END,
    CASE WHEN a.N % 5 <> 1 THEN CONCAT(h.Name, ' ', l.Name) END,
    CASE WHEN a.N % 9 <> 0 THEN CONCAT(i.Name, ' ', w.Name) END,
    CASE WHEN (a.N + a.N / 16) % 12 = 0 THEN CONCAT('MSS-', 5000 + a.N) END,
    CASE WHEN (a.N + a.N / 16) % 12 = 0
        THEN CASE (a.N / 7) % 4 WHEN 0 THEN 'C1' WHEN 1 THEN 'C2' WHEN 2 THEN 'C3' ELSE 'D' END END
FROM tbDemoNumber a
INNER JOIN tbDemoLastName l ON l.K = (a.N * 7 + a.N / 60) % 60
INNER JOIN tbDemoLastName w ON w.K = (a.N * 13 + a.N / 45 + 11) % 60
INNER JOIN tbDemoFirstName f ON f.Sex = CASE WHEN (a.N + a.N / 16) % 2 = 0 THEN 'F' ELSE 'M' END
    AND f.K = (a.N * 11 + a.N / 30) % 30
INNER JOIN tbDemoFirstName g ON g.Sex = CASE WHEN (a.N + a.N / 16) % 2 = 0 THEN 'M' ELSE 'F' END
    AND g.K = (a.N * 17 + 3) % 30
INNER JOIN tbDemoFirstName h ON h.Sex = 'M' AND h.K = (a.N * 19 + 5) % 30
INNER JOIN tbDemoFirstName i ON i.Sex = 'F' AND i.K = (a.N * 23 + 7) % 30
INNER JOIN tbDemoPlace p ON p.K = (a.N * 3 + a.N / 10) % 10
WHERE a.N BETWEEN 1 AND 2000
ORDER BY a.N
GO
