#include <map>
#include <set>

#include <QTest>

#include "../charges/SlipPrograms.h"
#include "assessment/CashAssessment.h"
#include "db/CommandText.h"

using namespace Qt::StringLiterals;

// Eight programs on one hospital at the same moment: numbers are unique, nothing is lost or
// doubled, and who comes second is told so.

namespace {

const QString kPatients =
    u"SELECT TOP (%1) m.HospNum FROM PATIENT_DATA..tbMaster m WHERE NOT EXISTS (SELECT 1 FROM "
    "CLINICAL_AREA..tbCAPDPatient c WHERE c.HospNum = m.HospNum) ORDER BY m.HospNum DESC"_s;
const QString kAssessments =
    u"SELECT DISTINCT RefNum FROM BILLING..tbCashAssessment WHERE PatientName = 'MANY, PROGRAMS'"_s;
constexpr int kSlips = 10;
constexpr int kRecords = 20;
constexpr int kSecondVisit = 50204;
// Where a server does not hold the check's lock, its unique key tells the second one.
constexpr int kDuplicate = 2627;

void Say(const char* what, const QString& record) {
    std::cout << what << ' ' << record.toStdString() << std::endl;
}

/// The sheet of each patient, then today's visit.
void Register(const QStringList& patients) {
    const QString name = u"CLINICAL_AREA..sp_CAPD_RegisterPatient"_s;
    for (const QString& patient : patients) {
        QStringList sheet(29, QString());
        sheet[0] = patient;
        sheet[26] = u"4601"_s;
        sheet[28] = u"N"_s;
        Do(db::Call(name, sheet));
        Say("registered", patient);
        try {
            Do(db::Call(name, sheet.mid(0, 28)));
            Say("visit", patient);
        } catch (const base::DatabaseError& error) {
            if (error.Number() != kSecondVisit && error.Number() != kDuplicate)
                throw;
            Say("second", patient);
        }
    }
}

void Revoke(const QStringList& assessments) {
    for (const QString& assessment : assessments) {
        try {
            const auto found = RevokeAssessment(assessment);
            Say(found == AssessmentState::Pending ? "revoked" : "late", assessment);
        } catch (const base::DatabaseError&) {
            // Somebody else settled it at the same moment.
            Say("late", assessment);
        }
    }
}

void Work(const QStringList& arguments) {
    const QStringList records = arguments[5].split(u',');
    arguments[0] == u"register" ? Register(records) : Revoke(records);
}

}  // namespace

class tst_ManyPrograms final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        for (int line = 0; line < 2 * kRecords; ++line)
            Do(u"INSERT INTO BILLING..tbCashAssessment (RefNum, IdNum, HospNum, "
               "PatientName, RevenueID, ItemCode, Quantity, Amount, RecordStatus, "
               "UserID, TransDate) VALUES ('M%1C', 'TMC', 'M', 'MANY, PROGRAMS', 'CY', "
               "'50%2', 1, 450, 'N', '4601', GETDATE())"_s.arg(line / 2)
                   .arg(line % 2));
    }

    void Programs_workOnTheSameRecords() {
        const SlipCase patient;
        patient.Sponsor({300, 200, 5'000'000});
        const auto patients = Ask(kPatients.arg(kRecords)).split(u';');
        const auto assessments = Ask(kAssessments).split(u';');
        std::vector<std::unique_ptr<QProcess>> programs;
        for (const char* work :
             {"save", "register", "revoke", "save", "register", "revoke", "save", "register"}) {
            const auto& records = QByteArray(work) == "register" ? patients : assessments;
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->start(
                QCoreApplication::applicationFilePath(),
                SlipProgram::Arguments(QLatin1String(work), m_session.Hospital().ConnectionString(),
                                       patient, kSlips)
                    << records.join(u','));
        }
        std::map<QByteArray, int> told;
        std::set<QByteArray> slips;
        for (const auto& program : programs) {
            QVERIFY(program->waitForFinished(300'000));
            QVERIFY2(program->exitCode() == 0, program->readAllStandardError());
            for (const QByteArray& line : program->readAllStandardOutput().split('\n')) {
                ++told[line.split(' ').first()];
                if (line.startsWith('C'))
                    slips.insert(line);
            }
        }
        QCOMPARE(int(slips.size()), 3 * kSlips);
        QCOMPARE(told["registered"], 3 * kRecords);
        QCOMPARE(told["visit"], kRecords);
        QCOMPARE(told["second"], 2 * kRecords);
        QCOMPARE(told["revoked"], kRecords);
        QCOMPARE(told["late"], kRecords);

        QCOMPARE(Ask(u"SELECT COUNT(*) FROM BILLING..tbCashAssessment WHERE "
                     "IdNum = 'TMC' AND RecordStatus = 'R'"_s),
                 QString::number(2 * kRecords));
        std::set<QString> numbers;
        for (const QString& hospNum : patients) {
            const QString found = Ask(
                u"SELECT COUNT(*), (SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDLogBook l WHERE "
                "l.HospNum = '%1'), MAX(CAPDNum) FROM CLINICAL_AREA..tbCAPDPatient WHERE HospNum = "
                "'%1'"_s.arg(hospNum));
            QVERIFY(found.startsWith(u"1|1|"));
            numbers.insert(found);
        }
        QCOMPARE(int(numbers.size()), kRecords);
        // Of each slip the fee of 450 and what the patient has to pay of the rest.
        QCOMPARE(Ask(u"SELECT SUM(AllocatedFund - FundBalance) FROM "
                     "BILLING..tbFundAccount WHERE HospNum = '%1'"_s.arg(patient.HospNum))
                     .toDouble(),
                 1574.4 * 3 * kSlips);
    }

private:
    Session m_session;
};

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == u"--slips")
        return SlipProgram::Run(arguments.mid(2), Work);
    tst_ManyPrograms test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_ManyPrograms.moc"
