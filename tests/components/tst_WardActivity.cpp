#include <QTest>

#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/clsConfinements.h"
#include "components/builtin/clsRequest.h"
#include "components/builtin/clsResults.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using namespace components;

// What the wards asked for and what other departments answered, by one patient's number.
class tst_WardActivity final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        for (const char* rows :
             {"INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, "
              "RoomID) "
              "VALUES ('A''1B', 'H''1', '11/20/2026 08:00', 'O', 'OPD')",
              "INSERT INTO PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, DcrDate, RoomID) "
              "VALUES ('9900001', 'H''1', '03/02/2026 10:30', '03/05/2026', 'P201')",
              "INSERT INTO STATION..tbNurseLogBook (HospNum, IdNum, PatientType, ItemCode, "
              "ItemName, "
              "Amount, Quantity, RequestDate, DeptID, RecordStatus, RequestedBy, Station, "
              "ProcessDate, "
              "ProcessedBy) VALUES "
              "('H''1', 'A''1B', 'O', '101', 'EARLY', 1, 2.5, '11/20/2026 09:00', 'CS', ' ', "
              "'4601', "
              "'CAPD', NULL, NULL), "
              "('H''1', 'A''1B', 'O', '102', 'LATE', 1, 1, '11/20/2026 10:00', 'CS', ' ', '4601', "
              "'CAPD', NULL, NULL), "
              "('H''1', 'A''1B', 'O', '1001', 'DONE', 1, 1, '11/20/2026 09:30', 'PH', 'X', '4602', "
              "'CAPD', '11/20/2026 09:45', '2001')",
              "INSERT INTO RADIOLOGY..tbRadResult (TransNum, Modality, HospNum, IdNum, ExamName, "
              "TransDate, ResultDate, DoctorID, Interpretation) VALUES "
              "('X1', 'X', 'H''1', 'A''1B', 'CHEST PA', '11/20/2026', '11/21/2026', '102', "
              "'Clear.'), "
              "('X2', 'X', 'H''1', 'A''1B', 'KUB', '11/21/2026', NULL, NULL, NULL), "
              "('U1', 'U', 'H''1', 'A''1B', 'KIDNEYS', '11/20/2026', '11/21/2026', '110', "
              "'Small.'), "
              "('C1', 'C', 'H''1', 'A''1B', 'HEAD', '11/20/2026', '11/21/2026', '109', 'Normal.')",
              "INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, "
              "DrugName, "
              "Dosage, Quantity) VALUES ('H''1', 'A''1B', NULL, '1001', 'ORDERED', 'BID', 2)"})
            m_connection->Execute(QString::fromUtf8(rows));
    }

    void cleanup() { db::Connection::SetCommandHook({}); }
    void Commands_areExact_data() {
        Columns<bool, QString, QString>();
        const auto row = [](const char* name, bool results, const char* type, const char* command) {
            QTest::newRow(name) << results << QString::fromUtf8(type) << QString::fromUtf8(command);
        };
        row("processed", false, "1", "Nurse_CheckRequest ' A1B','X'");
        row("pending", false, "2", "Nurse_CheckRequest ' A1B',' '");
        row("waiting", false, "3", "Nurse_CheckStatus ' A1B','W'");
        row("vital signs", false, "4", "Nurse_VitalSigns ' A1B'");
        row("x-ray", true, "1", "STATION..Nurse_GetXray ' A1B'");
        row("ultrasound", true, "2", "STATION..Nurse_GetUltra ' A1B'");
        row("CT scan", true, "3", "STATION..Nurse_GetCT ' A1B'");
    }

    void Commands_areExact() {
        auto [results, type, command] = Fetch<bool, QString, QString>();
        QString sent;
        db::Connection::SetCommandHook([&sent](const QString& text) { sent = text; });
        // The number goes out as it came, blanks and all.
        const QString idNum = u" A1B"_s;
        try {
            if (results)
                clsResults().GetResults(m_connection, idNum, type);
            else
                clsRequest().GetRequests(m_connection, idNum, type);
        } catch (const base::DatabaseError&) {
            // No one in this unit asks for states and vital signs: the server does not offer them.
            QVERIFY(!results && (type == u"3" || type == u"4"));
        }
        QCOMPARE(sent, command);
    }

    void UnknownType_failsAndClosesTheRowsBefore_data() {
        QTest::addColumn<QString>("type");
        for (const char* type : {"", "5", " 1", "01", "x"})
            QTest::newRow(type) << QString::fromUtf8(type);
        QTest::newRow("vital signs of results") << u"4"_s;
    }

    void UnknownType_failsAndClosesTheRowsBefore() {
        QFETCH(QString, type);
        clsResults results;
        const auto held = results.GetResults(m_connection, m_idNum, u"1"_s);
        QCOMPARE(held->RecordCount(), 2);
        QVERIFY_EXCEPTION_THROWN(results.GetResults(m_connection, m_idNum, type),
                                 base::DatabaseError);
        QCOMPARE(held->State(), 0);
        QCOMPARE(results.GetResults(m_connection, m_idNum, u"3"_s)->RecordCount(), 1);
        clsRequest requests;
        if (type != u"4")
            QVERIFY_EXCEPTION_THROWN(requests.GetRequests(m_connection, m_idNum, type),
                                     base::DatabaseError);
    }

    void OneRecordset_servesEveryCall() {
        clsResults results;
        const auto first = results.GetResults(m_connection, m_idNum, u"1"_s);
        const auto second = results.GetResults(m_hospital->ConnectionString(), m_idNum, u"2"_s);
        QCOMPARE(second.get(), first.get());
        QCOMPARE(CellsOf(*first, "TRANS. NO"), QStringList{u"U1"_s});
        // A caller that closes what it was given disturbs nothing.
        first->Close();
        QCOMPARE(results.GetResults(m_connection, m_idNum, u"1"_s)->RecordCount(), 2);
        clsResults other;
        QVERIFY(other.GetResults(m_connection, m_idNum, u"1"_s) != first);
    }

    void CloseRecordset_needsNoOpenRows() {
        clsRequest requests;
        requests.CloseRecordset();
        const auto held = requests.GetRequests(m_connection, m_idNum, u"1"_s);
        QCOMPARE(held->State(), 1);
        requests.CloseRecordset();
        QCOMPARE(held->State(), 0);
        requests.CloseRecordset();
    }

    void GoneComponent_leavesItsRowsClosed() {
        std::shared_ptr<db::Recordset> held;
        {
            clsRequest requests;
            held = requests.GetRequests(m_connection, m_idNum, u"2"_s);
            QCOMPARE(held->State(), 1);
        }
        QCOMPARE(held->State(), 0);
    }

    void Requests_arePendingOrProcessed() {
        clsRequest requests;
        auto rows = requests.GetRequests(m_connection, m_idNum, u"2"_s);
        const QStringList names = {u"ITEM DESCRIPTION"_s,  u"QTY"_s,          u"DEPT"_s,
                                   u"REQUEST DATE/TIME"_s, u"Code"_s,         u"REQUESTED BY"_s,
                                   u"PROCESS DATE/TIME"_s, u"PROCESSED BY"_s, u"RESULT DATE/TIME"_s,
                                   u"RESULT BY"_s,         u"Remarks"_s};
        QCOMPARE(rows->FieldNames(), names);
        QCOMPARE(rows->Fields(u"REQUESTED BY"_s).Text(), u"Amelia Peña"_s);
        QVERIFY(rows->Fields(u"PROCESSED BY"_s).Value().IsNull());
        QCOMPARE(CellsOf(*rows, "ITEM DESCRIPTION"), (QStringList{u"LATE"_s, u"EARLY"_s}));
        rows = requests.GetRequests(m_connection, m_idNum, u"1"_s);
        QCOMPARE(rows->RecordCount(), 1);
        QCOMPARE(rows->Fields(u"PROCESSED BY"_s).Text(), u"Ines Calloway"_s);
        QCOMPARE(rows->Fields(u"PROCESS DATE/TIME"_s).Text(), u"11/20/2026 9:45:00 AM"_s);
        QVERIFY(requests.GetRequests(m_connection, u"A'%"_s, u"1"_s)->Eof());
    }

    void Results_areOfOneDepartment_data() {
        Columns<QString, QStringList>();
        QTest::newRow("x-ray") << u"1"_s << QStringList{u"X2"_s, u"X1"_s};
        QTest::newRow("ultrasound") << u"2"_s << QStringList{u"U1"_s};
        QTest::newRow("CT scan") << u"3"_s << QStringList{u"C1"_s};
    }

    void Results_areOfOneDepartment() {
        auto [type, numbers] = Fetch<QString, QStringList>();
        clsResults results;
        const auto rows = results.GetResults(m_connection, m_idNum, type);
        // The ultrasound and CT grids show the columns as they come.
        QCOMPARE(rows->FieldNames(),
                 (QStringList{u"TRANS. NO"_s, u"EXAM. NAME"_s, u"TRANS. DATE"_s, u"RESULT DATE"_s,
                              u"DR. LASTNAME"_s, u"DR. FIRSTNAME"_s, u"DR. MIDDLENAME"_s,
                              u"Interpretation"_s}));
        QCOMPARE(CellsOf(*rows, "TRANS. NO"), numbers);
        if (type != u"1")
            return;
        rows->MoveFirst();
        QVERIFY(rows->Fields(u"RESULT DATE"_s).Value().IsNull());
        QVERIFY(rows->Fields(u"DR. LASTNAME"_s).Value().IsNull());
        rows->MoveNext();
        QCOMPARE(rows->Fields(u"DR. LASTNAME"_s).Text(), u"D'Souza"_s);
        QCOMPARE(rows->Fields(u"Interpretation"_s).Text(), u"Clear."_s);
    }

    void Confinements_listEveryStayNewestFirst() {
        clsConfinement confinement;
        const auto rows =
            confinement.GetConfinementPeriod(m_hospital->ConnectionString(), u"H'1"_s, {});
        QCOMPARE(rows->RecordCount(), 2);
        QVERIFY(rows->Fields(u"Discharged Date/Time"_s).Value().IsNull());
        QCOMPARE(CellsOf(*rows, "Admision No."), (QStringList{m_idNum, u"9900001"_s}));
        QVERIFY(confinement.GetConfinementPeriod(m_connection, u"H"_s, {})->Eof());
    }

    void ConfinementResults_followTheirType_data() {
        Columns<QString, QByteArray, QString>();
        const auto row = [](const char* name, const char* type, const char* column,
                            const char* value) {
            QTest::newRow(name) << QString::fromUtf8(type) << QByteArray(column)
                                << QString::fromUtf8(value);
        };
        row("medicines", "1", "Drug Name", "ORDERED");
        row("x-ray, only what was read", "2", "Examination", "CHEST PA");
        row("ultrasound", "3", "Interpretation", "Small.");
        row("CT scan", "4", "Exam. Date", "11/20/2026");
    }

    void ConfinementResults_followTheirType() {
        auto [type, column, value] = Fetch<QString, QByteArray, QString>();
        clsConfinementResults results;
        const auto rows = results.GetConfinementResults(m_connection, m_idNum, type);
        QCOMPARE(CellsOf(*rows, column.constData()), QStringList{value});
        QVERIFY_EXCEPTION_THROWN(results.GetConfinementResults(m_connection, m_idNum, u"5"_s),
                                 base::DatabaseError);
    }

private:
    QStringList CellsOf(db::Recordset& rows, const char* column) const {
        QStringList texts;
        for (; !rows.Eof(); rows.MoveNext())
            texts << rows.Fields(QString::fromUtf8(column)).Text();
        return texts;
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    const QString m_idNum = u"A'1B"_s;
};

QTEST_GUILESS_MAIN(tst_WardActivity)
#include "tst_WardActivity.moc"
