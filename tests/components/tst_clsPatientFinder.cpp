#include <QTest>

#include "components/builtin/clsPatientFinder.h"
#include "db/FakeDriver.h"

using namespace Qt::StringLiterals;
using components::clsPatientFinder;
using components::StayRecord;

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

// The clinical summary's patient: an admission by its number, a visit by both of its numbers. Each
// cell of the answer holds its column's name.
class tst_clsPatientFinder final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_server = {};
        m_server.Answer = [this](const QString&, embedded::RowSink& sink) {
            std::vector<embedded::ResultColumn> columns;
            for (const QString& name : kColumns)
                columns.push_back({name, embedded::ColumnKind::Text});
            sink.BeginResult(columns);
            if (m_fails)
                throw base::DatabaseError(11, {});
            for (const QString& name : m_found ? kColumns : QStringList())
                sink.Text(name.toStdString());
            if (m_found)
                sink.EndRow();
            return qint64(-1);
        };
        m_finder = {};
        m_connection.reset();
        QString server = u"MTS"_s;
        QVERIFY(!m_finder.InitConnection(u"Server=fake"_s, server));
        QVERIFY_EXCEPTION_THROWN(m_finder.ValidateAdmission(u"5001"_s), base::DatabaseError);
        m_connection = std::make_shared<db::Connection>(std::make_unique<FakeDriver>(m_server),
                                                        u"Server=fake"_s);
        QVERIFY(m_finder.InitConnection(u"Server=fake"_s, server));
    }

    void Stays_areLoadedApart() {
        QVERIFY(m_finder.ValidateAdmission(u" 50'01 "_s));
        QCOMPARE(CellsOf(m_finder.Admission()), kColumns);
        QCOMPARE(m_finder.OutPatient().IDNumber, QString());
        QVERIFY(m_finder.OpenOutPatient(u"A1B"_s, u"H'1"_s));
        QCOMPARE(CellsOf(m_finder.OutPatient()), kColumns);
        QCOMPARE(m_server.Steps,
                 (QStringList{u"PATIENT_DATA..sp_Finder_Admission ' 50''01 '"_s,
                              u"PATIENT_DATA..sp_Finder_OutPatient 'A1B','H''1'"_s}));
    }

    // One that is unknown, and one that could not be read: no other patient's data is shown.
    void StayThatIsNotThere_emptiesTheRecord() {
        for (const bool fails : {false, true}) {
            m_found = true;
            m_fails = false;
            QVERIFY(m_finder.ValidateAdmission(u"5001"_s));
            QVERIFY(m_finder.OpenOutPatient(u"A1B"_s, u"H1"_s));
            m_found = false;
            m_fails = fails;
            const auto admission = [this] { QVERIFY(!m_finder.ValidateAdmission(u"5002"_s)); };
            const auto visit = [this] { QVERIFY(!m_finder.OpenOutPatient(u"A2B"_s, u"H1"_s)); };
            QCOMPARE(ErrorOf(admission).Number(), fails ? 11 : -1);
            QCOMPARE(ErrorOf(visit).Number(), fails ? 11 : -1);
            QCOMPARE(CellsOf(m_finder.Admission()).join(QString()), QString());
            QCOMPARE(CellsOf(m_finder.OutPatient()).join(QString()), QString());
        }
    }

private:
    FakeServer m_server;
    bool m_found = true;
    bool m_fails = false;
    std::shared_ptr<db::Connection> m_connection;
    clsPatientFinder m_finder;
};

QTEST_GUILESS_MAIN(tst_clsPatientFinder)
#include "tst_clsPatientFinder.moc"
