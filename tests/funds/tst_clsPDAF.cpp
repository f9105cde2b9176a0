#include "funds/clsPDAF.h"

#include "WindowTest.h"
#include "base/Numbers.h"
#include "db/CommandText.h"
#include "funds/frmPDAF.h"
#include "funds/modCDF.h"

namespace {

const QString kHospNum = u"H-1"_s;
const QString kIdNum = u"A900B"_s;

QString Account(int number) {
    return u"Q-%1"_s.arg(number);
}

}  // namespace

/// The fund engine over the real server; what a test writes is undone after it.
class tst_clsPDAF : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_transaction.emplace(m_session.Connection());
        m_fund.emplace();
    }
    void cleanup() { m_transaction.reset(); }

    void Save_splitsTheLineInTheServersOrder_data() {
        Columns<QList<double>, bool, double, QString>();
        using Balances = QList<double>;
        const auto row = [](const char* name, const Balances& balances, double amount,
                            const QString& payments, bool registered = true) {
            Row(name, balances, registered, amount, payments);
        };
        row("the first covers it", {1000, 50}, 400, u"1:400"_s);
        row("the first has exactly as much", {400, 50}, 400, u"1:400"_s);
        row("a later one has exactly as much", {100, 300}, 400, u"1:100 2:300"_s);
        row("four accounts", {300, 300, 300, 1000}, 1000, u"1:300 2:300 3:300 4:100"_s);
        row("a rest is the patient's", {300, 200}, 1000, u"1:300 2:200"_s);
        row("empty accounts are passed", {0, 0, 80.5}, 100, u"3:80.5"_s);
        row("all are empty", {0, 0}, 100, u""_s);
        row("no registered account", {500, 300, 300}, 400, u"2:300 3:100"_s, false);
        row("cents that no binary fraction holds", {0.1, 0.2, 5}, 0.3, u"1:0.1 2:0.2"_s);
        row("a split of many cents", {1.1, 2.2, 3.3, 9}, 6.61, u"1:1.1 2:2.2 3:3.3 4:0.01"_s);
    }

    void Save_splitsTheLineInTheServersOrder() {
        auto [balances, registered, amount, payments] =
            Fetch<QList<double>, bool, double, QString>();
        MakeFund(balances, registered);
        QVERIFY(modCDF::CheckCompany(kIdNum));
        Pay(amount);
        QCOMPARE(Payments(), payments);
        QCOMPARE(Fault({{u"C1D"_s, amount}}), QString());
    }

    void Save_readsFiftyAccountsAtMost() {
        MakeFund(QList<double>(52, 10));
        Pay(1000);
        QCOMPARE(Payments().split(u' ').size(), 50);
        QCOMPARE(Fault({{u"C1D"_s, 1000}}), QString());
    }

    // Another station's slip came between the look at the accounts and the payment.
    void Save_isRefusedWhatAnAccountNoLongerHas() {
        MakeFund({100, 300});
        Prepare(350);
        QVERIFY(m_fund->With_Fund());
        Do(u"UPDATE BILLING..tbFundAccount SET FundBalance = 20 WHERE AccountNum = "
           "'Q-2'"_s);
        QVERIFY_EXCEPTION_THROWN(m_fund->Save_PDAF(), base::DatabaseError);
        cleanup();
        QCOMPARE(Payments(), QString());
        init();
    }

    void Cancel_goesByTheFirstPaymentAndUndoesAll() {
        MakeFund({300, 200});
        Pay(450.5);
        const QString first =
            Ask(u"SELECT MIN(RequestNum) FROM BILLING..tbCompanyPayment WHERE IdNum = 'A900B'"_s);
        const CommandLog log;
        TakeBack(450.5);
        m_fund->With_SavedPayment();
        const QString look = u"BILLING..sp_PDAF_GetSavedPayment 'A900B','C1D','CY', '501'"_s;
        const QStringList expected{
            look,
            u"BILLING..sp_PARS_CancelCompanyPayment 'A900B','H-1','VEL','-450.5','C1D',"
            "'C','CY','%1','4601', '501'"_s.arg(first),
            look};
        QCOMPARE(log.Sent, expected);
        QCOMPARE(Payments(), QString());
        QCOMPARE(Fault({}), QString());
        Pay(450.5);
        QCOMPARE(Payments(), u"1:300 2:150.5"_s);
    }

    void Figures_areZeroOrTheLastWithoutRows() {
        Prepare(0);
        const auto figures = [this] {
            m_fund->Show_FundBalance();
            return QList<double>{m_fund->OutputTotalFund(), m_fund->OutputFundUtilized(),
                                 m_fund->OutputFundBalance(), m_fund->OutputHospBill(),
                                 m_fund->OutputNetBill()};
        };
        QCOMPARE(figures(), QList<double>(5, 0));
        MakeFund({300, 200});
        Do(u"CLINICAL_AREA..sp_capd_addbill 'C1D','A900B','501','450','4601',"
           "'H-1','CY'"_s);
        Pay(350);
        const QList<double> expected{500, 350, 150, 450, 100};
        QCOMPARE(figures(), expected);
        m_fund->SetHospNum(u"nobody"_s);
        m_fund->SetIdNum(u"nowhere"_s);
        QCOMPARE(figures(), expected);
        // The fund's window shows them, of its own patient, and is not shown without.
        QCOMPARE(Shown(kHospNum, kIdNum), u"500|150|450|100"_s);
        QCOMPARE(Shown(u"nobody"_s, u"nowhere"_s), u"0|0|0|0"_s);
        frmPDAF window;
        PluggedDriver::GoesAfter(1);
        QVERIFY_EXCEPTION_THROWN(window.exec(), base::DatabaseError);
        PluggedDriver::Returns();
        QVERIFY(!window.isVisible());
    }

    void Money_isNeverMadeOrLost_data() {
        Columns<uint>();
        for (uint seed = 1; seed <= 20; ++seed)
            QTest::addRow("%u", seed) << seed;
    }

    /// A visit's day of slips, saved and revoked line by line in any order.
    void Money_isNeverMadeOrLost() {
        auto [seed] = Fetch<uint>();
        QRandomGenerator random(seed);
        const auto money = [&random](int most) { return random.bounded(most * 100) / 100.0; };
        QList<double> balances;
        for (int i = random.bounded(1, 7); i > 0; --i)
            balances << (random.bounded(4) ? money(600) : 0);
        MakeFund(balances, random.bounded(3) > 0);
        double allocated = 0;
        for (const double balance : balances)
            allocated += balance;

        QMap<QString, double> netOfSlip;
        QList<QStringList> lines;
        QMap<QStringList, double> amounts;
        for (int step = 0; step < 40; ++step) {
            if (lines.isEmpty() || random.bounded(3)) {
                const QStringList line{u"C%1D"_s.arg(1 + random.bounded(5)),
                                       QString::number(500 + step)};
                amounts[line] = money(300);
                netOfSlip[line[0]] += amounts[line];
                lines << line;
                Pay(amounts[line], line[1], line[0]);
            } else {
                const QStringList line = lines.takeAt(random.bounded(int(lines.size())));
                netOfSlip[line[0]] -= amounts[line];
                TakeBack(amounts[line], line[1], line[0]);
                m_fund->With_SavedPayment();
            }
            const QString fault = Fault(netOfSlip);
            QVERIFY2(fault.isEmpty(), qPrintable(fault));
        }
        for (const QStringList& line : lines)
            TakeBack(amounts[line], line[1], line[0]);
        m_fund->Show_FundBalance();
        QCOMPARE(base::MoneyText(m_fund->OutputFundBalance()), base::MoneyText(allocated));
    }

private:
    static void MakeFund(const QList<double>& balances, bool registered = true) {
        for (int i = 1; i <= balances.size(); ++i) {
            Do(u"INSERT INTO BILLING..tbFundAccount (AccountNum, HospNum, CompanyID, SeqNum, "
               "AllocatedFund, FundBalance) VALUES ('%1', '%2', 'VEL', %3, '%4', '%4')"_s
                   .arg(Account(i), kHospNum)
                   .arg(10 * i)
                   .arg(base::PlainText(balances[i - 1])));
            Do(u"INSERT INTO BILLING..tbFundCostCenter (AccountNum, RevenueID) VALUES "
               "('%1', 'CY')"_s.arg(Account(i)));
        }
        Do(u"INSERT INTO BILLING..tbVisitAccount (IdNum, HospNum, CompanyID, FundAccountNum) "
           "VALUES ('%1', '%2', 'VEL', %3)"_s.arg(kIdNum, kHospNum,
                                                  registered ? db::Quoted(Account(1)) : u"NULL"_s));
    }

    void Prepare(double amount, const QString& itemId = u"501"_s, const QString& slip = u"C1D"_s) {
        m_fund->SetDeptID(u"CY"_s);
        m_fund->SetDrCr(u"C"_s);
        m_fund->SetHospNum(kHospNum);
        m_fund->SetIdNum(kIdNum);
        m_fund->SetItemAmount(amount);
        m_fund->SetItemID(itemId);
        m_fund->SetRefNum(slip);
        m_fund->SetRevenueID(u"CY"_s);
        m_fund->SetUserID(u"4601"_s);
    }
    template <class... Line>
    void Pay(double amount, const Line&... line) {
        Prepare(amount, line...);
        QVERIFY(m_fund->With_Fund());
        m_fund->Save_PDAF();
    }
    template <class... Line>
    void TakeBack(double amount, const Line&... line) {
        Prepare(-amount, line...);
        m_fund->With_SavedPayment();
    }

    /// "account's place:amount" of the payments that stand, in the order written.
    static QString Payments() {
        return Ask(u"SELECT SeqNum / 10, Amount FROM BILLING..tbCompanyPayment WHERE IdNum = '%1' "
                   "AND CancelledAt IS NULL ORDER BY RequestNum"_s.arg(kIdNum))
            .replace(u'|', u':')
            .replace(u';', u' ');
    }

    /// Allocated, left, billed and left to pay in the fund's window, until Enter closes it.
    static QString Shown(const QString& hospNum, const QString& idNum) {
        frmPDAF window;
        window.SetIdNum(idNum);
        window.SetHospNum(hospNum);
        QStringList shown;
        PickListKeys keys([&](QDialog& fund) {
            for (const char* box :
                 {"txtTotalCDF", "txtCDFBalance", "txtHospBill", "txtNetHospBill"})
                shown << TextOf(fund, box);
            QTest::keyClick(fund.focusWidget(), Qt::Key_Return);
            QVERIFY(!fund.isVisible());
        });
        window.exec();
        return shown.join(u'|');
    }

    /// Empty when no money was made or lost; else where.
    static QString Fault(const QMap<QString, double>& netOfSlip) {
        const auto cents = [](const QString& money) { return qRound64(money.toDouble() * 100); };
        const QString account = Ask(
            u"SELECT TOP (1) f.AccountNum, f.FundBalance FROM BILLING..tbFundAccount f WHERE "
            "f.FundBalance < 0 OR ABS(f.AllocatedFund - f.FundBalance - ISNULL((SELECT "
            "SUM(p.Amount) FROM BILLING..tbCompanyPayment p WHERE p.AccountNum = f.AccountNum AND "
            "p.CancelledAt IS NULL), 0)) > 0.001"_s);
        if (!account.isEmpty())
            return account;
        qint64 paid = 0;
        const QString slips = Ask(
            u"SELECT RefNum, SUM(Amount) FROM BILLING..tbCompanyPayment WHERE IdNum = 'A900B' AND "
            "CancelledAt IS NULL GROUP BY RefNum"_s);
        for (const QString& slip : slips.split(u';', Qt::SkipEmptyParts)) {
            paid += cents(slip.section(u'|', 1));
            const double net = netOfSlip.value(slip.section(u'|', 0, 0));
            if (cents(slip.section(u'|', 1)) > qRound64(net * 100))
                return u"the funds paid more than the slip costs: "_s + slip;
        }
        const QString registered =
            Ask(u"SELECT PaidAmount FROM BILLING..tbVisitAccount WHERE IdNum = 'A900B'"_s);
        return cents(registered) == paid ? QString() : u"the visit's registration is behind"_s;
    }

    const Session m_session;
    std::optional<db::Transaction> m_transaction;
    std::optional<clsPDAF> m_fund;
};

QTEST_MAIN(tst_clsPDAF)
#include "tst_clsPDAF.moc"
