-- Prices, stock, charges, discounts, cash assessments, rooms and sponsors' funds.
USE BILLING
GO

CREATE ROLE capd_user
GO

-- Who takes the money of cash patients.
CREATE ROLE cashier
GO

CREATE TABLE tbRoomClass (
    RoomClassID varchar(5) NOT NULL PRIMARY KEY,
    RoomClass varchar(40) NOT NULL,
    RoomRate money NOT NULL
)
GO

CREATE TABLE tbRoom (
    RoomID varchar(10) NOT NULL PRIMARY KEY,
    RoomClassID varchar(5) NOT NULL,
    Station varchar(40)
)
GO

-- Who bills: WithItems Y = has a list of billable items; SearchInventory = they are stock items of
-- LocationID, posted under InvCode.
CREATE TABLE tbRevenueCode (
    RevenueID varchar(5) NOT NULL PRIMARY KEY,
    Revenue varchar(60) NOT NULL,
    WithItems varchar(1) NOT NULL CHECK (WithItems IN ('Y', 'N')),
    SearchInventory bit NOT NULL,
    LocationID varchar(5),
    InvCode varchar(5)
)
GO

CREATE INDEX ixRevenueCodeName ON tbRevenueCode (Revenue)
GO

-- Fees: a RateA of 0 is an open price, typed with the charge.
CREATE TABLE tbOtherRevenue (
    RevenueID varchar(5) NOT NULL,
    ItemCode varchar(10) NOT NULL,
    OtherRevenue varchar(100) NOT NULL,
    RateA money NOT NULL CHECK (RateA >= 0),
    PRIMARY KEY (RevenueID, ItemCode)
)
GO

CREATE INDEX ixOtherRevenueName ON tbOtherRevenue (RevenueID, OtherRevenue)
GO

CREATE INDEX ixOtherRevenueCode ON tbOtherRevenue (ItemCode)
GO

CREATE TABLE tbLocation (
    LocationID varchar(5) NOT NULL PRIMARY KEY,
    Location varchar(60) NOT NULL
)
GO

-- Medicines (M) and supplies (S); Status 1 = inactive. Prices in hospital money for one unit.
CREATE TABLE tbDrug (
    DrugCode varchar(10) NOT NULL PRIMARY KEY,
    DrugName varchar(100) NOT NULL,
    Kind varchar(1) NOT NULL CHECK (Kind IN ('M', 'S')),
    Unit varchar(20),
    Status bit NOT NULL DEFAULT 0,
    SellingPriceIn money NOT NULL CHECK (SellingPriceIn >= 0),
    SellingPriceOut money NOT NULL CHECK (SellingPriceOut >= 0)
)
GO

CREATE INDEX ixDrugName ON tbDrug (DrugName)
GO

-- Stock on hand; below zero when a ward took more than was counted in.
CREATE TABLE tbDrugStock (
    DrugCode varchar(10) NOT NULL,
    LocationID varchar(5) NOT NULL,
    OnHand decimal(12,2) NOT NULL,
    PRIMARY KEY (DrugCode, LocationID)
)
GO

-- Every movement: a positive quantity leaves the location, a negative one comes in.
-- StockAfter is the stock on hand behind the movement; Position19 to Position30 have no use yet.
CREATE TABLE tbStockCard (
    StockCardID int IDENTITY(1,1) PRIMARY KEY,
    HospNum varchar(20),
    IdNum varchar(20),
    ItemCode varchar(10) NOT NULL,
    TransDate datetime NOT NULL,
    RefNum varchar(20),
    Quantity decimal(12,2) NOT NULL,
    Balance decimal(12,2),
    NetAmount money NOT NULL,
    UserID varchar(20),
    Frequency varchar(10),
    Reference varchar(60),
    LocationID varchar(5) NOT NULL,
    Remarks varchar(200),
    Department varchar(10),
    Cancelled int NOT NULL DEFAULT 0,
    InventoryCode varchar(5),
    RevenueID varchar(5),
    Mark varchar(5),
    Position19 varchar(60),
    Position20 varchar(60),
    Position21 varchar(60),
    PatientType varchar(1),
    Position23 varchar(60),
    Flag int,
    Position25 varchar(60),
    Position26 varchar(60),
    Position27 varchar(60),
    Position28 varchar(60),
    Position29 varchar(60),
    Position30 varchar(60),
    Discount money NOT NULL DEFAULT 0,
    StockAfter decimal(12,2) NOT NULL
)
GO

CREATE INDEX ixStockCardItem ON tbStockCard (ItemCode, LocationID, TransDate)
GO

CREATE INDEX ixStockCardRefNum ON tbStockCard (RefNum, ItemCode)
GO

CREATE INDEX ixStockCardIdNum ON tbStockCard (IdNum)
GO

CREATE INDEX ixStockCardTransDate ON tbStockCard (TransDate)
GO

-- Fees billed to a visit.
CREATE TABLE tbBill (
    BillID int IDENTITY(1,1) PRIMARY KEY,
    RefNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    RevenueID varchar(5) NOT NULL,
    ItemCode varchar(10) NOT NULL,
    Amount money NOT NULL,
    UserID varchar(20) NOT NULL,
    TransDate datetime NOT NULL
)
GO

CREATE INDEX ixBillIdNum ON tbBill (IdNum)
GO

CREATE INDEX ixBillRefNum ON tbBill (RefNum, ItemCode)
GO

CREATE INDEX ixBillTransDate ON tbBill (TransDate)
GO

-- Doctors' fees; a reversal is a row with the negative amount.
CREATE TABLE tbDoctorCharge (
    ChargeID int IDENTITY(1,1) PRIMARY KEY,
    RefNum varchar(20) NOT NULL,
    IdNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    ItemCode varchar(10) NOT NULL,
    Amount money NOT NULL,
    UserID varchar(20) NOT NULL,
    TransDate datetime NOT NULL
)
GO

CREATE INDEX ixDoctorChargeIdNum ON tbDoctorCharge (IdNum)
GO

CREATE INDEX ixDoctorChargeRefNum ON tbDoctorCharge (RefNum, ItemCode)
GO

CREATE INDEX ixDoctorChargeTransDate ON tbDoctorCharge (TransDate)
GO

CREATE TABLE tbDiscountType (
    DiscType varchar(2) NOT NULL PRIMARY KEY,
    Description varchar(60) NOT NULL
)
GO

-- Rates from 0 to 1. MSSClassification is empty but for discounts of the social service.
CREATE TABLE tbDiscountRate (
    DiscType varchar(2) NOT NULL,
    MSSClassification varchar(5) NOT NULL DEFAULT '',
    RevenueID varchar(5) NOT NULL,
    Rate decimal(5,4) NOT NULL CHECK (Rate >= 0 AND Rate <= 1),
    PRIMARY KEY (DiscType, MSSClassification, RevenueID)
)
GO

-- Walk-in cash patients: RecordStatus N stands, R is revoked; paid once it has a receipt.
CREATE TABLE tbCashAssessment (
    AssessID int IDENTITY(1,1) PRIMARY KEY,
    PatientName varchar(190) COLLATE Latin1_General_CI_AI NOT NULL,
    RevenueID varchar(5) NOT NULL,
    ItemCode varchar(10) NOT NULL,
    Quantity decimal(12,2),
    Amount money NOT NULL,
    UserID varchar(20) NOT NULL,
    RefNum varchar(20) NOT NULL,
    IdNum varchar(25) NOT NULL,
    RecordStatus varchar(1) NOT NULL CHECK (RecordStatus IN ('N', 'R')),
    DoctorID varchar(10),
    HospNum varchar(20) NOT NULL,
    RequestDoctor varchar(150),
    ORNum varchar(20),
    TransDate datetime NOT NULL
)
GO

CREATE INDEX ixCashAssessmentRefNum ON tbCashAssessment (RefNum)
GO

CREATE INDEX ixCashAssessmentName ON tbCashAssessment (PatientName)
GO

CREATE INDEX ixCashAssessmentIdNum ON tbCashAssessment (IdNum)
GO

CREATE INDEX ixCashAssessmentTransDate ON tbCashAssessment (TransDate)
GO

CREATE TABLE tbCompany (
    CompanyID varchar(10) NOT NULL PRIMARY KEY,
    AccountNum varchar(20) NOT NULL UNIQUE,
    Company varchar(100) NOT NULL
)
GO

-- Money that a company set aside for a patient; SeqNum is the order in which accounts pay.
-- FundBalance = AllocatedFund less the payments that stand.
CREATE TABLE tbFundAccount (
    AccountNum varchar(20) NOT NULL PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    CompanyID varchar(10) NOT NULL,
    SeqNum int NOT NULL,
    AllocatedFund money NOT NULL CHECK (AllocatedFund >= 0),
    FundBalance money NOT NULL CHECK (FundBalance >= 0)
)
GO

CREATE UNIQUE INDEX ixFundAccountPatient ON tbFundAccount (HospNum, SeqNum)
GO

-- The revenue codes that an account pays for.
CREATE TABLE tbFundCostCenter (
    AccountNum varchar(20) NOT NULL,
    RevenueID varchar(5) NOT NULL,
    PRIMARY KEY (AccountNum, RevenueID)
)
GO

-- A visit that is charged to a company, with the fund account it was registered under and what
-- the funds have paid of it so far.
CREATE TABLE tbVisitAccount (
    IdNum varchar(20) NOT NULL PRIMARY KEY,
    HospNum varchar(20) NOT NULL,
    CompanyID varchar(10) NOT NULL,
    FundAccountNum varchar(20),
    PaidAmount money NOT NULL DEFAULT 0,
    UpdatedAt datetime
)
GO

CREATE INDEX ixVisitAccountHospNum ON tbVisitAccount (HospNum)
GO

-- One share of a charge line paid from one account; a cancelled share no longer counts.
CREATE TABLE tbCompanyPayment (
    RequestNum int IDENTITY(1,1) PRIMARY KEY,
    IdNum varchar(20) NOT NULL,
    HospNum varchar(20) NOT NULL,
    AccountNum varchar(20) NOT NULL,
    CompanyID varchar(10) NOT NULL,
    Amount money NOT NULL CHECK (Amount > 0),
    RefNum varchar(20) NOT NULL,
    DrCr varchar(1) NOT NULL,
    RevenueID varchar(5) NOT NULL,
    SeqNum int NOT NULL,
    ItemID varchar(10) NOT NULL,
    UserID varchar(20) NOT NULL,
    PaidAt datetime NOT NULL,
    CancelledAt datetime,
    CancelledBy varchar(20)
)
GO

CREATE INDEX ixCompanyPaymentRefNum ON tbCompanyPayment (RefNum, ItemID)
GO

CREATE INDEX ixCompanyPaymentIdNum ON tbCompanyPayment (IdNum, CancelledAt, Amount)
GO

CREATE INDEX ixCompanyPaymentAccount ON tbCompanyPayment (AccountNum)
GO

CREATE INDEX ixCompanyPaymentPaidAt ON tbCompanyPayment (PaidAt)
GO
