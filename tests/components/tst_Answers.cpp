#include <QTest>

#include "components/CurrentUser.h"
#include "components/Registry.h"
#include "components/ResultViewer.h"
#include "components/SupplyList.h"
#include "components/builtin/clsPatientFinder.h"
#include "components/builtin/clsRequest.h"
#include "components/builtin/clsResults.h"
#include "db/FakeDriver.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using namespace components;

namespace {

const QStringList kColumns =
    u"IDNumber HospitalNumber AdmissionDate Age Room LastName FirstName MiddleName PatientAge Sex "
    "BirthDate BirthPlace CompleteAddress Nationality Religion CivilStatus SpouseName FatherName "
    "MotherName AttendingDoctor AdmittingDoctor AdmittingDiagnosis ChiefComplaint "
    "FinalDiagnosis"_s.split(u' ');

QStringList CellsOf(const StayRecord& stay) {
    const auto& [id, hosp, at, age, room, person, doctor, admitter, first, complaint, last] = stay;
    const auto& [family, given, middle, today, sex, born, place, address, nation, religion, civil,
                 spouse, father, mother] = person;
    QStringList cells{id, hosp, at, age, room, family, given, middle, today, sex, born, place};
    cells << address << nation << religion << civil << spouse << father << mother;
    return cells << doctor << admitter << first << complaint << last;
}

}  // namespace

// What the components make of a server's answer, and how long its rows live. The clinical summary's
// patient is an admission by its number or a visit by both of its numbers; each cell of the answer
// holds its column's name.
class tst_Answers final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_server = {};
        m_server.Answer = [this](const QString& command, embedded::RowSink& sink) {
            std::vector<embedded::ResultColumn> columns;
            for (const QString& name : kColumns)
                columns.push_back({name, embedded::ColumnKind::Text});
            sink.BeginResult(columns);
            if (m_fails || command.isEmpty())
                throw base::DatabaseError(102, {});
            for (const QString& name : m_found ? kColumns : QStringList())
                sink.Text(name.toStdString());
            if (m_found)
                sink.EndRow();
            return qint64(-1);
        };
        m_connection = std::make_shared<db::Connection>(std::make_unique<FakeDriver>(m_server),
                                                        u"Server=fake"_s);
    }

    // Charges and the pharmacy each have a list of their own.
    void Create_makesAnotherEachTime() {
        RegisterBuiltIns();
        const auto list = [](const QString& progId) { return CreateObject<SupplyList>(progId); };
        QVERIFY(list(u"DrugRoster.clsListDrugs"_s) != list(u"DRUGROSTER.clslistdrugs"_s));
    }

    void Refusals_haveTheirNumbers() {
        for (const auto& [number, refused] : std::vector<std::pair<int, std::function<void()>>>{
                 {429, [] { CreateObject<CurrentUser>(u"DrugCatalog.clsDrug"_s); }},
                 {438, [] { ResultViewer().Show_Results(); }}}) {
            try {
                refused();
                QFAIL("nothing was refused");
            } catch (const base::RuntimeError& error) {
                QCOMPARE(error.Number(), number);
            }
        }
    }

    void Stays_areLoadedApart() {
        QString server = u"MTS"_s;
        clsPatientFinder finder;
        QVERIFY(!finder.InitConnection(u"Server=another"_s, server));
        QVERIFY_EXCEPTION_THROWN(finder.ValidateAdmission(u"5001"_s), base::DatabaseError);
        QVERIFY(finder.InitConnection(u"Server=fake"_s, server));
        // One that could not be read, and one that is unknown: no other patient's data is shown.
        for (const bool fails : {true, false}) {
            m_found = true;
            m_fails = false;
            QVERIFY(finder.ValidateAdmission(u" 50'01 "_s));
            QCOMPARE(CellsOf(finder.Admission()), kColumns);
            QCOMPARE(finder.OutPatient().IDNumber, QString());
            QVERIFY(finder.OpenOutPatient(u"A1B"_s, u"H'1"_s));
            QCOMPARE(CellsOf(finder.OutPatient()), kColumns);
            m_found = false;
            m_fails = fails;
            const auto admission = [&] { QVERIFY(!finder.ValidateAdmission(u"5002"_s)); };
            const auto visit = [&] { QVERIFY(!finder.OpenOutPatient(u"A2B"_s, u"H1"_s)); };
            QCOMPARE(ErrorOf(admission).Number(), fails ? 102 : -1);
            QCOMPARE(ErrorOf(visit).Number(), fails ? 102 : -1);
            QCOMPARE(CellsOf(finder.Admission()).join(QString()), QString());
            QCOMPARE(CellsOf(finder.OutPatient()).join(QString()), QString());
        }
        QCOMPARE(m_server.Steps.mid(0, 2),
                 (QStringList{u"PATIENT_DATA..sp_Finder_Admission ' 50''01 '"_s,
                              u"PATIENT_DATA..sp_Finder_OutPatient 'A1B','H''1'"_s}));
    }

    void UnknownType_failsAndClosesTheRowsBefore() {
        for (const QString& type : {u""_s, u"5"_s, u" 1"_s, u"01"_s, u"x"_s, u"4"_s}) {
            clsResults results;
            const auto held = results.GetResults(m_connection, m_idNum, u"1"_s);
            QCOMPARE(ErrorOf([&] { results.GetResults(m_connection, m_idNum, type); }).Number(),
                     102);
            QCOMPARE(held->State(), 0);
            QCOMPARE(results.GetResults(m_connection, m_idNum, u"3"_s)->State(), 1);
            const auto request = [&] { clsRequest().GetRequests(m_connection, m_idNum, type); };
            QCOMPARE(ErrorOf(request).Number(), type == u"4" ? -1 : 102);
        }
    }

    void OneRecordset_servesEveryCallUntilItsComponentIsGone() {
        clsRequest requests;
        requests.CloseRecordset();
        const auto first = requests.GetRequests(m_connection, m_idNum, u"3"_s);
        QCOMPARE(requests.GetRequests(m_connection, m_idNum, u"4"_s), first);
        QCOMPARE(m_server.Steps,
                 (QStringList{u"Nurse_CheckStatus 'A1B','W'"_s, u"Nurse_VitalSigns 'A1B'"_s}));
        // A caller that closes what it was given disturbs nothing.
        first->Close();
        QCOMPARE(requests.GetRequests(m_connection, m_idNum, u"1"_s)->State(), 1);
        requests.CloseRecordset();
        QCOMPARE(first->State(), 0);
        std::shared_ptr<db::Recordset> other;
        {
            clsRequest another;
            other = another.GetRequests(m_connection, m_idNum, u"2"_s);
            QVERIFY(other != first && other->State() == 1);
        }
        QCOMPARE(other->State(), 0);
    }

private:
    FakeServer m_server;
    bool m_found = true;
    bool m_fails = false;
    std::shared_ptr<db::Connection> m_connection;
    const QString m_idNum = u"A1B"_s;
};

QTEST_MAIN(tst_Answers)
#include "tst_Answers.moc"
