#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "charges/ChargeSlip.h"
#include "charges/StockCardEntry.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "funds/clsPDAF.h"
#include "funds/modCDF.h"
#include "session/modGlobals.h"

namespace bench {

namespace {

using modGlobals::gConnection;

// Six accounts of 10 and lines of 12: each of the first five is split over two accounts.
constexpr int kAccounts = 6;
constexpr int kShare = 10;
constexpr int kAmount = 12;
constexpr int kSplitLines = 5;

/// Only so many of a slip's lines are the funds' to pay.
bool IsFunded(int line) {
    return line < kSplitLines;
}

void MakeFund(db::Connection& connection) {
    for (int number = 1; number <= kAccounts; ++number) {
        connection.Execute(QStringLiteral("INSERT INTO BILLING..tbFundAccount (AccountNum, "
                                          "HospNum, CompanyID, SeqNum, AllocatedFund, "
                                          "FundBalance) VALUES ('BENCH-%1', 'BENCH', 'VEL', %1, "
                                          "0, 0)")
                               .arg(number));
        connection.Execute(QStringLiteral("INSERT INTO BILLING..tbFundCostCenter (AccountNum, "
                                          "RevenueID) VALUES ('BENCH-%1', 'CY')")
                               .arg(number));
    }
    connection.Execute(
        QStringLiteral("INSERT INTO BILLING..tbVisitAccount (IdNum, HospNum, "
                       "CompanyID, FundAccountNum) VALUES ('ABENCHB', 'BENCH', "
                       "'VEL', 'BENCH-1')"));
}

/// The accounts are full again, and what earlier slips left does not slow the next one.
void Refill() {
    gConnection->Execute(
        QStringLiteral("DELETE FROM BILLING..tbCompanyPayment WHERE HospNum = 'BENCH'"));
    gConnection->Execute(QStringLiteral("UPDATE BILLING..tbFundAccount SET FundBalance = %1 WHERE "
                                        "HospNum = 'BENCH'")
                             .arg(kShare));
}

void CheckPaid() {
    const double left =
        gConnection
            ->Execute(QStringLiteral("SELECT SUM(FundBalance) FROM BILLING..tbFundAccount WHERE "
                                     "HospNum = 'BENCH'"))
            ->Fields(0)
            .Number();
    if (left != 0)
        throw std::runtime_error("the slip was not paid from the funds");
}

/// A slip of supplies as the charge sheet saves it.
class Slip final : public ChargeSlip {
public:
    Slip()
        : ChargeSlip({QStringLiteral("BENCH"), QStringLiteral("ABENCHB"), QStringLiteral("7"),
                      QStringLiteral("101"), QStringLiteral("DR. BENCH")}) {}

protected:
    // The gate of a patient's slip: is the visit sponsored, and has the fund anything left?
    bool Begin() override {
        m_fund.SetHospNum(Head().HospNum);
        m_fund.SetDeptID(QStringLiteral("CY"));
        m_fund.Show_Balance();
        return modCDF::CheckCompany(Head().IdNum) && m_fund.OutputFundBalance() != 0;
    }
    void WriteLine(const SlipLine& line) override {
        modMain::AppendStockCardEntry({Head().HospNum,
                                       Head().IdNum,
                                       line.ItemCode,
                                       SlipNumber(),
                                       1,
                                       line.NetAmount,
                                       {},
                                       line.LocationID,
                                       QStringLiteral("OPD"),
                                       line.InventoryCode,
                                       1,
                                       line.Discount});
        if (IsFunded(m_line++))
            Pay(line);
        SaveRequest(line);
    }

private:
    void Pay(const SlipLine& line) {
        m_fund.SetDeptID(QStringLiteral("CY"));
        m_fund.SetDrCr(QStringLiteral("C"));
        m_fund.SetHospNum(Head().HospNum);
        m_fund.SetIdNum(Head().IdNum);
        m_fund.SetItemAmount(line.NetAmount);
        m_fund.SetItemID(line.ItemCode);
        m_fund.SetRefNum(SlipNumber());
        m_fund.SetRevenueID(QStringLiteral("CY"));
        m_fund.SetUserID(QStringLiteral("BENCH"));
        if (m_fund.With_Fund())
            m_fund.Save_PDAF();
    }

    clsPDAF m_fund;
    int m_line = 0;
};

/// The same reads and writes through the bare library, one statement each.
class BareSlip final {
public:
    explicit BareSlip(const QString& hospital) : m_file(hospital) {}

    /// As ours: the accounts are full again, earlier payments gone.
    void Refill() {
        for (BareStatement* write : {&m_noPayments, &m_full})
            write->Write();
    }

    void Save(int lines) {
        m_file.Run("BEGIN IMMEDIATE");
        m_counter.ReadAll();
        m_count.Write();
        m_company.ReadAll();
        m_fundBalance.ReadAll();
        for (int line = 0; line < lines; ++line)
            Write(IsFunded(line));
        m_file.Run("COMMIT");
    }

private:
    void Write(bool funded) {
        m_onHand.Write();
        m_readOnHand.ReadAll();
        m_stockCard.Write();
        if (funded)
            Pay();
        CheckAccount();
        for (BareStatement* read : {&m_fee, &m_drug, &m_issue})
            read->ReadAll();
        m_request.Write();
    }

    /// Two shares: what an account has, and the rest of the line from the next one.
    void Pay() {
        m_accounts.ReadAll();
        m_registered.ReadAll();
        for (int share = 0; share < 2; ++share) {
            CheckAccount();
            for (BareStatement* read : {&m_account, &m_visitAccount})
                read->ReadAll();
            for (BareStatement* write : {&m_balance, &m_payment, &m_registration})
                write->Write();
        }
    }

    void CheckAccount() {
        m_visit.ReadAll();
        m_admission.ReadAll();
    }

    BareSqlite m_file;
    BareStatement m_noPayments{
        m_file, R"(DELETE FROM "BILLING..tbCompanyPayment" WHERE HospNum = 'BENCH')"};
    BareStatement m_full{
        m_file, R"(UPDATE "BILLING..tbFundAccount" SET FundBalance = 10 WHERE HospNum = 'BENCH')"};
    BareStatement m_counter{m_file, R"(SELECT ChargeSlip FROM "CLINICAL_AREA..tbCAPDSlip")"};
    BareStatement m_count{m_file,
                          R"(UPDATE "CLINICAL_AREA..tbCAPDSlip" SET ChargeSlip = ChargeSlip + 1)"};
    BareStatement m_company{m_file,
                            R"(SELECT v.CompanyID, c.Company FROM "BILLING..tbVisitAccount" v
        LEFT JOIN "BILLING..tbCompany" c ON c.CompanyID = v.CompanyID WHERE v.IdNum = 'ABENCHB')"};
    BareStatement m_fundBalance{m_file, R"(SELECT SUM(f.FundBalance),
        SUM(f.AllocatedFund - f.FundBalance), SUM(f.AllocatedFund) FROM "BILLING..tbFundAccount" f
        JOIN "BILLING..tbFundCostCenter" c ON c.AccountNum = f.AccountNum AND c.RevenueID = 'CY'
        WHERE f.HospNum = 'BENCH' GROUP BY f.HospNum)"};
    BareStatement m_onHand{m_file,
                           R"(UPDATE "BILLING..tbDrugStock" SET OnHand = OnHand - 1
        WHERE DrugCode = '101' AND LocationID = '46')"};
    BareStatement m_readOnHand{m_file, R"(SELECT OnHand FROM "BILLING..tbDrugStock"
        WHERE DrugCode = '101' AND LocationID = '46')"};
    BareStatement m_stockCard{m_file, R"(INSERT INTO "BILLING..tbStockCard" (HospNum, IdNum,
        ItemCode, TransDate, RefNum, Quantity, Balance, NetAmount, UserID, Frequency, LocationID,
        Department, Cancelled, InventoryCode, RevenueID, Mark, PatientType, Flag, Discount,
        StockAfter) SELECT 'BENCH', 'ABENCHB', '101', '2026-11-22 14:30:00.000',
        'C' || ChargeSlip || 'D', 1, 0, 12, 'BENCH', 'PRN', '46', 'OPD', 0, 'CA', 'CA', '*', 'O',
        1, 0, 5 FROM "CLINICAL_AREA..tbCAPDSlip")"};
    BareStatement m_accounts{m_file, R"(SELECT f.AccountNum, f.FundBalance, f.CompanyID, f.SeqNum
        FROM "BILLING..tbFundAccount" f JOIN "BILLING..tbFundCostCenter" c
        ON c.AccountNum = f.AccountNum AND c.RevenueID = 'CY' WHERE f.HospNum = 'BENCH'
        ORDER BY f.SeqNum)"};
    BareStatement m_registered{m_file, R"(SELECT f.FundBalance FROM "BILLING..tbVisitAccount" v
        JOIN "BILLING..tbFundAccount" f ON f.AccountNum = v.FundAccountNum
        JOIN "BILLING..tbFundCostCenter" c ON c.AccountNum = f.AccountNum AND c.RevenueID = 'CY'
        WHERE v.IdNum = 'ABENCHB' AND NOT EXISTS (SELECT 1 FROM "BILLING..tbFundAccount" e
        JOIN "BILLING..tbFundCostCenter" d ON d.AccountNum = e.AccountNum AND d.RevenueID = 'CY'
        WHERE e.HospNum = v.HospNum AND e.SeqNum < f.SeqNum))"};
    BareStatement m_visit{m_file, R"(SELECT 1 FROM "PATIENT_DATA..tbOutPatient"
        WHERE IdNum = 'ABENCHB' AND BillingDate IS NOT NULL)"};
    BareStatement m_admission{m_file, R"(SELECT 1 FROM "PATIENT_DATA..tbPatient"
        WHERE IdNum = 'ABENCHB' AND BillingDate IS NOT NULL)"};
    BareStatement m_account{m_file, R"(SELECT f.FundBalance, f.CompanyID, f.SeqNum
        FROM "BILLING..tbFundAccount" f WHERE f.AccountNum = 'BENCH-1' AND EXISTS (
        SELECT 1 FROM "BILLING..tbFundCostCenter" c WHERE c.AccountNum = f.AccountNum
        AND c.RevenueID = 'CY'))"};
    BareStatement m_visitAccount{
        m_file, R"(SELECT 1 FROM "BILLING..tbVisitAccount" WHERE IdNum = 'ABENCHB')"};
    BareStatement m_balance{m_file, R"(UPDATE "BILLING..tbFundAccount"
        SET FundBalance = FundBalance - 0.001 WHERE AccountNum = 'BENCH-1')"};
    BareStatement m_payment{m_file, R"(INSERT INTO "BILLING..tbCompanyPayment" (IdNum, HospNum,
        AccountNum, CompanyID, Amount, RefNum, DrCr, RevenueID, SeqNum, ItemID, UserID, PaidAt)
        SELECT 'ABENCHB', 'BENCH', 'BENCH-1', 'VEL', 6, 'C' || ChargeSlip || 'D', 'C', 'CY', 1,
        '101', 'BENCH', '2026-11-22 14:30:00.000' FROM "CLINICAL_AREA..tbCAPDSlip")"};
    BareStatement m_registration{m_file, R"(UPDATE "BILLING..tbVisitAccount" SET PaidAmount = (
        SELECT SUM(p.Amount) FROM "BILLING..tbCompanyPayment" p WHERE p.IdNum = 'ABENCHB'
        AND p.CancelledAt IS NULL), UpdatedAt = '2026-11-22 14:30:00.000'
        WHERE IdNum = 'ABENCHB')"};
    BareStatement m_fee{m_file, R"(SELECT OtherRevenue, RateA FROM "BILLING..tbOtherRevenue"
        WHERE RevenueID = 'CA' AND ItemCode = '101')"};
    BareStatement m_drug{m_file, R"(SELECT DrugName, SellingPriceOut FROM "BILLING..tbDrug"
        WHERE DrugCode = '101')"};
    BareStatement m_issue{m_file, R"(SELECT StockCardID FROM "BILLING..tbStockCard"
        WHERE RefNum = (SELECT 'C' || ChargeSlip || 'D' FROM "CLINICAL_AREA..tbCAPDSlip")
        AND ItemCode = '101' AND Quantity >= 0
        ORDER BY StockCardID DESC LIMIT 1)"};
    BareStatement m_request{m_file, R"(INSERT INTO "CLINICAL_AREA..tbCAPDRequest" (HospNum, IdNum,
        CAPDNum, ItemCode, Quantity, Amount, Department, RefNum, RevenueID, UserID, DoctorID,
        DoctorName, RequestDate, Description, Price, StockCardID) SELECT 'BENCH', 'ABENCHB', '7',
        '101', 1, 12, 'OPD', 'C' || ChargeSlip || 'D', 'CA', 'BENCH', '101', 'DR. BENCH',
        '2026-11-22 14:30:00.000', 'DIALYSIS SOLUTION 1.5% 2 L', 385, 1
        FROM "CLINICAL_AREA..tbCAPDSlip")"};
};

void MeasureSlip(int lines, int rounds, BareSlip& slip) {
    const std::vector<SlipLine> sheet(
        size_t(lines),
        {QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("DIALYSIS SOLUTION"),
         QStringLiteral("12.00"), QStringLiteral("1"), QStringLiteral("12.00"),
         QStringLiteral("46"), QStringLiteral("CA"), kAmount, 0});
    const auto ours = [&] {
        Refill();
        const double taken = Milliseconds([&] { Slip().Save(sheet); });
        if (lines >= kSplitLines)
            CheckPaid();
        return taken;
    };
    const auto bare = [&] {
        slip.Refill();
        return Milliseconds([&] { slip.Save(lines); });
    };
    Print(AlternateTimed(QStringLiteral("slip-%1").arg(lines), QStringLiteral("ms"), rounds, ours,
                         bare));
}

}  // namespace

// From the first command of a save to its commit: supplies, five lines of them split over funds.
// Each side has a file of its own, so that neither reads what the other has just written.
void SlipSave() {
    const auto frame = StartSession(CopyOfDemoHospital(QStringLiteral("-slips")));
    MakeFund(*gConnection);
    const QString bareHospital = CopyOfDemoHospital(QStringLiteral("-slips-bare"));
    MakeFund(*Open(bareHospital));
    BareSlip slip(bareHospital);
    MeasureSlip(1, 101, slip);
    MeasureSlip(20, 101, slip);
    MeasureSlip(1000, 11, slip);
}

}  // namespace bench
