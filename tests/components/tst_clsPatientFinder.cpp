#include <QTest>

#include "TestHospital.h"
#include "components/builtin/clsPatientFinder.h"
#include "db/Recordset.h"

using components::clsPatientFinder;

// The clinical summary's patient: an admission by its number, a visit by both of its numbers.
class tst_clsPatientFinder final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void InitConnection_findsTheOpenSession();
    void ValidateAdmission_loadsTheStay();
    void OpenOutPatient_loadsTheVisit();
    void UnknownStay_emptiesTheRecord_data();
    void UnknownStay_emptiesTheRecord();
    void FailedLoad_emptiesTheRecord();
    void Records_areApart();

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsPatientFinder m_finder;
    const QString m_hospNum = QStringLiteral("H'1");
    const QString m_admission = QStringLiteral("9900001");
    const QString m_visit = QStringLiteral("A'1B");
};

void tst_clsPatientFinder::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_finder = clsPatientFinder();
    QString server;
    QVERIFY(m_finder.InitConnection(m_hospital->ConnectionString(), server));
    for (const char* rows :
         {"INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, MiddleName, Sex, "
          "BirthDate, BirthPlace, CivilStatus, NationalityID, ReligionID, Address, SpouseName, "
          "FatherName, MotherName) VALUES ('H''1', 'O''Hara', 'Zoë', NULL, 'F', '02/29/1980', "
          "'Tiverlea', '2', 'V', '5', '1 Quay', 'Sam', 'Fergus', 'Maeve')",
          "INSERT INTO PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, RoomID, AttendingDoctorID,"
          " AdmittingDoctorID, AdmittingDiagnosis, ChiefComplaint, FinalDiagnosis) VALUES "
          "('9900001', 'H''1', '02/28/2020 10:30', 'P201', '101', '104', 'Fever', 'Chills', NULL)",
          "INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, RoomID, "
          "DoctorID, ChiefComplaint, Diagnosis) VALUES "
          "('A''1B', 'H''1', '03/01/2020', 'O', 'OPD', '102', 'Swelling', 'Renal disease')"})
        m_connection->Execute(QString::fromUtf8(rows));
}

void tst_clsPatientFinder::InitConnection_findsTheOpenSession() {
    clsPatientFinder finder;
    QString server = QStringLiteral("MTS");
    QVERIFY(!finder.InitConnection(QStringLiteral("Driver=Embedded;File=/nowhere"), server));
    QVERIFY_EXCEPTION_THROWN(finder.ValidateAdmission(m_admission), base::DatabaseError);
}

void tst_clsPatientFinder::ValidateAdmission_loadsTheStay() {
    QVERIFY(m_finder.ValidateAdmission(QStringLiteral(" 9900001 ")));
    const components::StayRecord& stay = m_finder.Admission();
    QCOMPARE(stay.IDNumber, m_admission);
    QCOMPARE(stay.HospitalNumber, m_hospNum);
    QCOMPARE(stay.AdmissionDate, QStringLiteral("2/28/2020 10:30:00 AM"));
    // The day before the fortieth birthday.
    QCOMPARE(stay.Age, QStringLiteral("39"));
    QCOMPARE(stay.Room, QStringLiteral("P201"));
    QCOMPARE(stay.AttendingDoctor, QStringLiteral("Clara Wren Abernathy"));
    QCOMPARE(stay.AdmittingDoctor, QStringLiteral("Simon Fairweather"));
    QCOMPARE(stay.AdmittingDiagnosis, QStringLiteral("Fever"));
    QCOMPARE(stay.ChiefComplaint, QStringLiteral("Chills"));
    QCOMPARE(stay.FinalDiagnosis, QString());
    const components::PersonRecord& person = stay.Patient;
    QCOMPARE((QStringList{person.LastName, person.FirstName, person.MiddleName, person.Sex}),
             (QStringList{QStringLiteral("O'Hara"), QStringLiteral("Zoë"), QString(),
                          QStringLiteral("F")}));
    QVERIFY(person.Age.toInt() > 39);
    QCOMPARE((QStringList{person.BirthDate, person.BirthPlace, person.CompleteAddress,
                          person.Nationality, person.Religion, person.CivilStatus}),
             (QStringList{QStringLiteral("2/29/1980"), QStringLiteral("Tiverlea"),
                          QStringLiteral("1 Quay"), QStringLiteral("Velmoran"),
                          QStringLiteral("None"), QStringLiteral("Married")}));
    QCOMPARE(
        (QStringList{person.SpouseName, person.FatherName, person.MotherName}),
        (QStringList{QStringLiteral("Sam"), QStringLiteral("Fergus"), QStringLiteral("Maeve")}));
}

void tst_clsPatientFinder::OpenOutPatient_loadsTheVisit() {
    QVERIFY(m_finder.OpenOutPatient(m_visit, m_hospNum));
    const components::StayRecord& visit = m_finder.OutPatient();
    QCOMPARE(visit.IDNumber, m_visit);
    QCOMPARE(visit.AdmissionDate, QStringLiteral("3/1/2020"));
    QCOMPARE(visit.Age, QStringLiteral("40"));
    QCOMPARE(visit.AttendingDoctor, QStringLiteral("Martin Leo D'Souza"));
    QCOMPARE(visit.AdmittingDoctor, QString());
    QCOMPARE(visit.AdmittingDiagnosis, QString());
    QCOMPARE(visit.ChiefComplaint, QStringLiteral("Swelling"));
    QCOMPARE(visit.FinalDiagnosis, QStringLiteral("Renal disease"));
    QCOMPARE(visit.Patient.LastName, QStringLiteral("O'Hara"));
}

void tst_clsPatientFinder::UnknownStay_emptiesTheRecord_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("hospNum");
    const auto row = [](const char* name, const char* number, const char* hospNum) {
        QTest::newRow(name) << QString::fromUtf8(number) << QString::fromUtf8(hospNum);
    };
    row("unknown", "8800001", "H'1");
    row("empty", "", "");
    row("wild card", "%", "%");
    row("quote", "' OR '1'='1", "' OR '1'='1");
    row("another patient's visit", "A'1B", "H2");
}

void tst_clsPatientFinder::UnknownStay_emptiesTheRecord() {
    QFETCH(QString, number);
    QFETCH(QString, hospNum);
    QVERIFY(m_finder.ValidateAdmission(m_admission));
    QVERIFY(m_finder.OpenOutPatient(m_visit, m_hospNum));
    QVERIFY(!m_finder.ValidateAdmission(number));
    QVERIFY(!m_finder.OpenOutPatient(number, hospNum));
    for (const auto* stay : {&m_finder.Admission(), &m_finder.OutPatient()}) {
        QCOMPARE(stay->IDNumber, QString());
        QCOMPARE(stay->Patient.LastName, QString());
        QCOMPARE(stay->ChiefComplaint, QString());
    }
}

// A failure on the way leaves no other patient's data to be shown.
void tst_clsPatientFinder::FailedLoad_emptiesTheRecord() {
    QVERIFY(m_finder.ValidateAdmission(m_admission));
    db::Connection::SetCommandHook(
        [](const QString& command) { throw base::DatabaseError(11, {}, command); });
    QVERIFY_EXCEPTION_THROWN(m_finder.ValidateAdmission(m_admission), base::DatabaseError);
    db::Connection::SetCommandHook({});
    QCOMPARE(m_finder.Admission().Patient.LastName, QString());
}

void tst_clsPatientFinder::Records_areApart() {
    QVERIFY(m_finder.ValidateAdmission(m_admission));
    QVERIFY(m_finder.OpenOutPatient(m_visit, m_hospNum));
    QCOMPARE(m_finder.Admission().IDNumber, m_admission);
    QVERIFY(!m_finder.OpenOutPatient(m_admission, m_hospNum));
    QCOMPARE(m_finder.Admission().IDNumber, m_admission);
}

QTEST_GUILESS_MAIN(tst_clsPatientFinder)
#include "tst_clsPatientFinder.moc"
