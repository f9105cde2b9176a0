#include <sqlite3.h>

#include <QTest>
#include <set>

#include "SlipPrograms.h"
#include "embedded/Functions.h"

// Several programs on one hospital file, and programs that are killed in the middle: there is never
// half a slip, and the funds' money adds up.

namespace {

const QString kCounter = u"SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip"_s;
const QString kOnHand =
    u"SELECT OnHand FROM BILLING..tbDrugStock WHERE DrugCode = '102' AND LocationID = '46'"_s;

const QString kSlips =
    u"SELECT b.RefNum, "
    "(SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest r WHERE r.RefNum = b.RefNum), "
    "(SELECT SUM(d.Amount) FROM BILLING..tbDoctorCharge d WHERE d.RefNum = b.RefNum), "
    "(SELECT SUM(c.Quantity) FROM BILLING..tbStockCard c WHERE c.RefNum = b.RefNum), "
    "(SELECT SUM(p.Amount) FROM BILLING..tbCompanyPayment p WHERE p.RefNum = b.RefNum AND "
    "p.CancelledAt IS NULL) FROM BILLING..tbBill b WHERE b.IdNum = '%1'"_s;
const QString kAssessments =
    u"SELECT a.RefNum, COUNT(*), SUM(a.Amount), "
    "(SELECT SUM(d.Amount) FROM BILLING..tbDoctorCharge d WHERE d.RefNum = a.RefNum), "
    "(SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest r WHERE r.RefNum = a.RefNum AND "
    "r.DoctorName = 'DR. X') FROM BILLING..tbCashAssessment a WHERE a.IdNum = 'T%1C' GROUP BY "
    "a.RefNum"_s;
const QString kDoctorCharges =
    u"SELECT COUNT(*) FROM BILLING..tbDoctorCharge WHERE IdNum = 'T%1C'"_s;
const QString kBrokenFunds =
    u"SELECT TOP (1) CONCAT(f.AccountNum, ': ', f.FundBalance) FROM BILLING..tbFundAccount f WHERE "
    "f.HospNum = '%1' AND (f.FundBalance < 0 OR f.FundBalance <> f.AllocatedFund - ISNULL((SELECT "
    "SUM(p.Amount) FROM BILLING..tbCompanyPayment p WHERE p.AccountNum = f.AccountNum AND "
    "p.CancelledAt IS NULL), 0))"_s;

}  // namespace

class tst_SlipPrograms final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_session = std::make_unique<Session>();
        m_case = std::make_unique<SlipCase>();
        m_case->Sponsor({300, 200, 5'000'000});
        m_firstSlip = Ask(kCounter).toInt();
        m_onHand = Ask(kOnHand).toDouble();
    }

    void Kill_leavesWholeSlips_data() {
        QTest::addColumn<QString>("work");
        QTest::newRow("charged to the account") << u"churn"_s;
        QTest::newRow("cash") << u"assess"_s;
    }

    void Kill_leavesWholeSlips() {
        QFETCH(const QString, work);
        // The first slip, which reads the procedures, takes long under sanitizers and on a server:
        // the program says when it is done.
        const int longest = m_session->Hospital().IsOnServer() ? 4000 : 40;
        const int kills = IsStress() ? 200 : 20;
        for (int kill = 0; kill < kills; ++kill) {
            const auto program = Start(work, 0);
            QVERIFY(program->waitForReadyRead(30'000));
            QTest::qWait(QRandomGenerator::global()->bounded(longest));
            program->kill();
            QVERIFY(program->waitForFinished());
            QVERIFY(program->exitStatus() == QProcess::CrashExit);
            const QString fault = work == u"assess" ? CashFault() : Fault();
            QVERIFY2(fault.isEmpty(), qPrintable(fault));
        }
        QVERIFY(Ask(kCounter).toInt() > m_firstSlip);
    }

    void ManyPrograms_saveSlipsOfTheirOwn() {
        const int programs = IsStress() ? 8 : 2;
        const int slips = IsStress() ? 100 : 10;
        std::vector<std::unique_ptr<QProcess>> running;
        for (int program = 0; program < programs; ++program)
            running.push_back(Start(u"save"_s, slips));
        std::set<QByteArray> numbers;
        for (const auto& program : running) {
            QVERIFY(program->waitForFinished(300'000));
            QCOMPARE(program->exitCode(), 0);
            for (const QByteArray& line : program->readAllStandardOutput().split('\n'))
                if (line.startsWith('C'))
                    numbers.insert(line);
        }
        QCOMPARE(int(numbers.size()), programs * slips);
        QCOMPARE(Fault(), QString());
    }

    void TwoStations_printTheirOwnSlips() {
        const auto first = Start(u"print"_s, 1);
        const auto second = Start(u"print"_s, 2);
        for (QProcess* station : {first.get(), second.get()}) {
            QVERIFY(station->waitForFinished(60'000));
            QCOMPARE(station->exitCode(), 0);
        }
    }

private:
    static bool IsStress() { return qEnvironmentVariableIsSet("CAPD_STRESS"); }
    std::unique_ptr<QProcess> Start(const QString& work, int number) const {
        auto program = std::make_unique<QProcess>();
        program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program->start(QCoreApplication::applicationFilePath(),
                       SlipProgram::Arguments(work, m_session->Hospital().ConnectionString(),
                                              *m_case, number));
        return program;
    }

    /// Empty when every slip of the patient is whole and all money adds up; else what is wrong.
    QString Fault() const {
        if (const QString fund = Ask(kBrokenFunds.arg(m_case->HospNum)); !fund.isEmpty())
            return fund;
        // A slip: three lines, one fee, and a doctor's fee and two units of stock that stand both
        // or neither; paid whole or, once it is revoked, for the unit's fee alone.
        const QStringList slips = Rows(kSlips.arg(m_case->IdNum));
        for (const QString& slip : slips) {
            const QString money = slip.section(u'|', 1);
            if (money != u"3|500|2|1574.4" && money != u"3|0|0|450")
                return slip;
        }
        const int count = int(slips.size());
        const int lines =
            Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest WHERE IdNum = '%1'"_s.arg(
                    m_case->IdNum))
                .toInt();
        if (Ask(kCounter).toInt() != m_firstSlip + count || lines != 3 * count)
            return u"%1 lines on %2 slips, or a number taken for none"_s.arg(lines).arg(count);
        const double issued =
            Ask(u"SELECT SUM(Quantity) FROM BILLING..tbStockCard WHERE IdNum = '%1'"_s.arg(
                    m_case->IdNum))
                .toDouble();
        if (Ask(kOnHand).toDouble() != m_onHand - issued)
            return u"stock changed without its line"_s;
        return BrokenFile();
    }

    /// The same of the patient's cash assessments, which touch neither a fund nor the stock.
    QString CashFault() const {
        const QStringList slips = Rows(kAssessments.arg(m_case->HospNum));
        for (const QString& slip : slips)
            if (slip.section(u'|', 1) != u"3|1730.5|500|1")
                return slip;
        const int count = int(slips.size());
        if (Ask(kCounter).toInt() != m_firstSlip + count ||
            Ask(kDoctorCharges.arg(m_case->HospNum)).toInt() != count)
            return u"a number or a fee without its assessment, of %1"_s.arg(count);
        if (Ask(kOnHand).toDouble() != m_onHand || m_case->FundBalances() != u"300;200;5000000"_s)
            return u"an assessment touched the stock or a fund"_s;
        return BrokenFile();
    }

    static QStringList Rows(const QString& query) {
        return Ask(query).split(u';', Qt::SkipEmptyParts);
    }

    QString BrokenFile() const {
        if (m_session->Hospital().IsOnServer())
            return {};
        sqlite3* file = nullptr;
        QString answer = u"cannot be opened"_s;
        if (sqlite3_open(m_session->Hospital().File().toUtf8().constData(), &file) == SQLITE_OK) {
            embedded::RegisterFunctions(file);
            sqlite3_exec(
                file, "PRAGMA integrity_check",
                [](void* found, int, char** cells, char**) {
                    *static_cast<QString*>(found) = QString::fromUtf8(cells[0]);
                    return 0;
                },
                &answer, nullptr);
        }
        sqlite3_close(file);
        return answer == u"ok" ? QString() : answer;
    }

    std::unique_ptr<Session> m_session;
    std::unique_ptr<SlipCase> m_case;
    int m_firstSlip = 0;
    double m_onHand = 0;
};

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == u"--slips")
        return SlipProgram::Run(arguments.mid(2));
    tst_SlipPrograms test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_SlipPrograms.moc"
