#include <QTest>

#include "TestHospital.h"
#include "components/builtin/clsConfinements.h"
#include "components/builtin/clsRequest.h"
#include "components/builtin/clsResults.h"
#include "db/Recordset.h"

using namespace components;

// What the wards asked for and what other departments answered, by one patient's number.
class tst_WardActivity final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { db::Connection::SetCommandHook({}); }
    void Commands_areExact_data();
    void Commands_areExact();
    void UnknownType_failsAndClosesTheRowsBefore_data();
    void UnknownType_failsAndClosesTheRowsBefore();
    void OneRecordset_servesEveryCall();
    void CloseRecordset_needsNoOpenRows();
    void GoneComponent_leavesItsRowsClosed();
    void Requests_arePendingOrProcessed();
    void Results_areOfOneDepartment_data();
    void Results_areOfOneDepartment();
    void Confinements_listEveryStayNewestFirst();
    void ConfinementResults_followTheirType_data();
    void ConfinementResults_followTheirType();

private:
    QStringList Columns(db::Recordset& rows, const char* column) const;

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    const QString m_idNum = QStringLiteral("A'1B");
};

void tst_WardActivity::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    for (const char* rows :
         {"INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, RoomID) "
          "VALUES ('A''1B', 'H''1', '11/20/2026 08:00', 'O', 'OPD')",
          "INSERT INTO PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, DcrDate, RoomID) "
          "VALUES ('9900001', 'H''1', '03/02/2026 10:30', '03/05/2026', 'P201')",
          "INSERT INTO STATION..tbNurseLogBook (HospNum, IdNum, PatientType, ItemCode, ItemName, "
          "Amount, Quantity, RequestDate, DeptID, RecordStatus, RequestedBy, Station, ProcessDate, "
          "ProcessedBy) VALUES "
          "('H''1', 'A''1B', 'O', '101', 'EARLY', 1, 2.5, '11/20/2026 09:00', 'CS', ' ', '4601', "
          "'CAPD', NULL, NULL), "
          "('H''1', 'A''1B', 'O', '102', 'LATE', 1, 1, '11/20/2026 10:00', 'CS', ' ', '4601', "
          "'CAPD', NULL, NULL), "
          "('H''1', 'A''1B', 'O', '1001', 'DONE', 1, 1, '11/20/2026 09:30', 'PH', 'X', '4602', "
          "'CAPD', '11/20/2026 09:45', '2001')",
          "INSERT INTO RADIOLOGY..tbRadResult (TransNum, Modality, HospNum, IdNum, ExamName, "
          "TransDate, ResultDate, DoctorID, Interpretation) VALUES "
          "('X1', 'X', 'H''1', 'A''1B', 'CHEST PA', '11/20/2026', '11/21/2026', '102', 'Clear.'), "
          "('X2', 'X', 'H''1', 'A''1B', 'KUB', '11/21/2026', NULL, NULL, NULL), "
          "('U1', 'U', 'H''1', 'A''1B', 'KIDNEYS', '11/20/2026', '11/21/2026', '110', 'Small.'), "
          "('C1', 'C', 'H''1', 'A''1B', 'HEAD', '11/20/2026', '11/21/2026', '109', 'Normal.')",
          "INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, DrugName, "
          "Dosage, Quantity) VALUES ('H''1', 'A''1B', NULL, '1001', 'ORDERED', 'BID', 2)"})
        m_connection->Execute(QString::fromUtf8(rows));
}

QStringList tst_WardActivity::Columns(db::Recordset& rows, const char* column) const {
    QStringList texts;
    for (; !rows.Eof(); rows.MoveNext())
        texts << rows.Fields(QString::fromUtf8(column)).Text();
    return texts;
}

void tst_WardActivity::Commands_areExact_data() {
    QTest::addColumn<bool>("results");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("command");
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

void tst_WardActivity::Commands_areExact() {
    QFETCH(bool, results);
    QFETCH(QString, type);
    QFETCH(QString, command);
    QString sent;
    db::Connection::SetCommandHook([&sent](const QString& text) { sent = text; });
    // The number goes out as it came, blanks and all.
    const QString idNum = QStringLiteral(" A1B");
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

void tst_WardActivity::UnknownType_failsAndClosesTheRowsBefore_data() {
    QTest::addColumn<QString>("type");
    for (const char* type : {"", "5", " 1", "01", "x"})
        QTest::newRow(type) << QString::fromUtf8(type);
    QTest::newRow("vital signs of results") << QStringLiteral("4");
}

void tst_WardActivity::UnknownType_failsAndClosesTheRowsBefore() {
    QFETCH(QString, type);
    clsResults results;
    const auto held = results.GetResults(m_connection, m_idNum, QStringLiteral("1"));
    QCOMPARE(held->RecordCount(), 2);
    QVERIFY_EXCEPTION_THROWN(results.GetResults(m_connection, m_idNum, type), base::DatabaseError);
    QCOMPARE(held->State(), 0);
    QCOMPARE(results.GetResults(m_connection, m_idNum, QStringLiteral("3"))->RecordCount(), 1);
    clsRequest requests;
    if (type != u"4")
        QVERIFY_EXCEPTION_THROWN(requests.GetRequests(m_connection, m_idNum, type),
                                 base::DatabaseError);
}

void tst_WardActivity::OneRecordset_servesEveryCall() {
    clsResults results;
    const auto first = results.GetResults(m_connection, m_idNum, QStringLiteral("1"));
    const auto second =
        results.GetResults(m_hospital->ConnectionString(), m_idNum, QStringLiteral("2"));
    QCOMPARE(second.get(), first.get());
    QCOMPARE(Columns(*first, "TRANS. NO"), QStringList{QStringLiteral("U1")});
    // A caller that closes what it was given disturbs nothing.
    first->Close();
    QCOMPARE(results.GetResults(m_connection, m_idNum, QStringLiteral("1"))->RecordCount(), 2);
    clsResults other;
    QVERIFY(other.GetResults(m_connection, m_idNum, QStringLiteral("1")) != first);
}

void tst_WardActivity::CloseRecordset_needsNoOpenRows() {
    clsRequest requests;
    requests.CloseRecordset();
    const auto held = requests.GetRequests(m_connection, m_idNum, QStringLiteral("1"));
    QCOMPARE(held->State(), 1);
    requests.CloseRecordset();
    QCOMPARE(held->State(), 0);
    requests.CloseRecordset();
}

void tst_WardActivity::GoneComponent_leavesItsRowsClosed() {
    std::shared_ptr<db::Recordset> held;
    {
        clsRequest requests;
        held = requests.GetRequests(m_connection, m_idNum, QStringLiteral("2"));
        QCOMPARE(held->State(), 1);
    }
    QCOMPARE(held->State(), 0);
}

void tst_WardActivity::Requests_arePendingOrProcessed() {
    clsRequest requests;
    auto rows = requests.GetRequests(m_connection, m_idNum, QStringLiteral("2"));
    const QStringList names = {QStringLiteral("ITEM DESCRIPTION"),
                               QStringLiteral("QTY"),
                               QStringLiteral("DEPT"),
                               QStringLiteral("REQUEST DATE/TIME"),
                               QStringLiteral("Code"),
                               QStringLiteral("REQUESTED BY"),
                               QStringLiteral("PROCESS DATE/TIME"),
                               QStringLiteral("PROCESSED BY"),
                               QStringLiteral("RESULT DATE/TIME"),
                               QStringLiteral("RESULT BY"),
                               QStringLiteral("Remarks")};
    QCOMPARE(rows->FieldNames(), names);
    QCOMPARE(rows->Fields(QStringLiteral("REQUESTED BY")).Text(), QStringLiteral("Amelia Peña"));
    QVERIFY(rows->Fields(QStringLiteral("PROCESSED BY")).Value().IsNull());
    QCOMPARE(Columns(*rows, "ITEM DESCRIPTION"),
             (QStringList{QStringLiteral("LATE"), QStringLiteral("EARLY")}));
    rows = requests.GetRequests(m_connection, m_idNum, QStringLiteral("1"));
    QCOMPARE(rows->RecordCount(), 1);
    QCOMPARE(rows->Fields(QStringLiteral("PROCESSED BY")).Text(), QStringLiteral("Ines Calloway"));
    QCOMPARE(rows->Fields(QStringLiteral("PROCESS DATE/TIME")).Text(),
             QStringLiteral("11/20/2026 9:45:00 AM"));
    QVERIFY(requests.GetRequests(m_connection, QStringLiteral("A'%"), QStringLiteral("1"))->Eof());
}

void tst_WardActivity::Results_areOfOneDepartment_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("numbers");
    QTest::newRow("x-ray") << QStringLiteral("1")
                           << QStringList{QStringLiteral("X2"), QStringLiteral("X1")};
    QTest::newRow("ultrasound") << QStringLiteral("2") << QStringList{QStringLiteral("U1")};
    QTest::newRow("CT scan") << QStringLiteral("3") << QStringList{QStringLiteral("C1")};
}

void tst_WardActivity::Results_areOfOneDepartment() {
    QFETCH(QString, type);
    QFETCH(QStringList, numbers);
    clsResults results;
    const auto rows = results.GetResults(m_connection, m_idNum, type);
    // The ultrasound and CT grids show the columns as they come.
    QCOMPARE(rows->FieldNames(),
             (QStringList{QStringLiteral("TRANS. NO"), QStringLiteral("EXAM. NAME"),
                          QStringLiteral("TRANS. DATE"), QStringLiteral("RESULT DATE"),
                          QStringLiteral("DR. LASTNAME"), QStringLiteral("DR. FIRSTNAME"),
                          QStringLiteral("DR. MIDDLENAME"), QStringLiteral("Interpretation")}));
    QCOMPARE(Columns(*rows, "TRANS. NO"), numbers);
    if (type != u"1")
        return;
    rows->MoveFirst();
    QVERIFY(rows->Fields(QStringLiteral("RESULT DATE")).Value().IsNull());
    QVERIFY(rows->Fields(QStringLiteral("DR. LASTNAME")).Value().IsNull());
    rows->MoveNext();
    QCOMPARE(rows->Fields(QStringLiteral("DR. LASTNAME")).Text(), QStringLiteral("D'Souza"));
    QCOMPARE(rows->Fields(QStringLiteral("Interpretation")).Text(), QStringLiteral("Clear."));
}

void tst_WardActivity::Confinements_listEveryStayNewestFirst() {
    clsConfinement confinement;
    const auto rows =
        confinement.GetConfinementPeriod(m_hospital->ConnectionString(), QStringLiteral("H'1"), {});
    QCOMPARE(rows->RecordCount(), 2);
    QVERIFY(rows->Fields(QStringLiteral("Discharged Date/Time")).Value().IsNull());
    QCOMPARE(Columns(*rows, "Admision No."), (QStringList{m_idNum, QStringLiteral("9900001")}));
    QVERIFY(confinement.GetConfinementPeriod(m_connection, QStringLiteral("H"), {})->Eof());
}

void tst_WardActivity::ConfinementResults_followTheirType_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("column");
    QTest::addColumn<QString>("value");
    const auto row = [](const char* name, const char* type, const char* column, const char* value) {
        QTest::newRow(name) << QString::fromUtf8(type) << QByteArray(column)
                            << QString::fromUtf8(value);
    };
    row("medicines", "1", "Drug Name", "ORDERED");
    row("x-ray, only what was read", "2", "Examination", "CHEST PA");
    row("ultrasound", "3", "Interpretation", "Small.");
    row("CT scan", "4", "Exam. Date", "11/20/2026");
}

void tst_WardActivity::ConfinementResults_followTheirType() {
    QFETCH(QString, type);
    QFETCH(QByteArray, column);
    QFETCH(QString, value);
    clsConfinementResults results;
    const auto rows = results.GetConfinementResults(m_connection, m_idNum, type);
    QCOMPARE(Columns(*rows, column.constData()), QStringList{value});
    QVERIFY_EXCEPTION_THROWN(
        results.GetConfinementResults(m_connection, m_idNum, QStringLiteral("5")),
        base::DatabaseError);
}

QTEST_GUILESS_MAIN(tst_WardActivity)
#include "tst_WardActivity.moc"
