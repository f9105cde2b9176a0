#include <QTest>

#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/clsPatientFinder.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using components::clsPatientFinder;

// The clinical summary's patient: an admission by its number, a visit by both of its numbers.
class tst_clsPatientFinder final : public QObject {
    Q_OBJECT

private slots:
    void init() {
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
              "INSERT INTO PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, RoomID, "
              "AttendingDoctorID,"
              " AdmittingDoctorID, AdmittingDiagnosis, ChiefComplaint, FinalDiagnosis) VALUES "
              "('9900001', 'H''1', '02/28/2020 10:30', 'P201', '101', '104', 'Fever', 'Chills', "
              "NULL)",
              "INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, "
              "RoomID, "
              "DoctorID, ChiefComplaint, Diagnosis) VALUES "
              "('A''1B', 'H''1', '03/01/2020', 'O', 'OPD', '102', 'Swelling', 'Renal disease')"})
            m_connection->Execute(QString::fromUtf8(rows));
    }

    void InitConnection_findsTheOpenSession() {
        clsPatientFinder finder;
        QString server = u"MTS"_s;
        QVERIFY(!finder.InitConnection(u"Driver=Embedded;File=/nowhere"_s, server));
        QVERIFY_EXCEPTION_THROWN(finder.ValidateAdmission(m_admission), base::DatabaseError);
    }

    void ValidateAdmission_loadsTheStay() {
        QVERIFY(m_finder.ValidateAdmission(u" 9900001 "_s));
        const components::StayRecord& stay = m_finder.Admission();
        QCOMPARE(stay.IDNumber, m_admission);
        QCOMPARE(stay.HospitalNumber, m_hospNum);
        QCOMPARE(stay.AdmissionDate, u"2/28/2020 10:30:00 AM"_s);
        // The day before the fortieth birthday.
        QCOMPARE(stay.Age, u"39"_s);
        QCOMPARE(stay.Room, u"P201"_s);
        QCOMPARE(stay.AttendingDoctor, u"Clara Wren Abernathy"_s);
        QCOMPARE(stay.AdmittingDoctor, u"Simon Fairweather"_s);
        QCOMPARE(stay.AdmittingDiagnosis, u"Fever"_s);
        QCOMPARE(stay.ChiefComplaint, u"Chills"_s);
        QCOMPARE(stay.FinalDiagnosis, QString());
        const components::PersonRecord& person = stay.Patient;
        QCOMPARE((QStringList{person.LastName, person.FirstName, person.MiddleName, person.Sex}),
                 (QStringList{u"O'Hara"_s, u"Zoë"_s, QString(), u"F"_s}));
        QVERIFY(person.Age.toInt() > 39);
        QCOMPARE((QStringList{person.BirthDate, person.BirthPlace, person.CompleteAddress,
                              person.Nationality, person.Religion, person.CivilStatus}),
                 (QStringList{u"2/29/1980"_s, u"Tiverlea"_s, u"1 Quay"_s, u"Velmoran"_s, u"None"_s,
                              u"Married"_s}));
        QCOMPARE((QStringList{person.SpouseName, person.FatherName, person.MotherName}),
                 (QStringList{u"Sam"_s, u"Fergus"_s, u"Maeve"_s}));
    }

    void OpenOutPatient_loadsTheVisit() {
        QVERIFY(m_finder.OpenOutPatient(m_visit, m_hospNum));
        const components::StayRecord& visit = m_finder.OutPatient();
        QCOMPARE(visit.IDNumber, m_visit);
        QCOMPARE(visit.AdmissionDate, u"3/1/2020"_s);
        QCOMPARE(visit.Age, u"40"_s);
        QCOMPARE(visit.AttendingDoctor, u"Martin Leo D'Souza"_s);
        QCOMPARE(visit.AdmittingDoctor, QString());
        QCOMPARE(visit.AdmittingDiagnosis, QString());
        QCOMPARE(visit.ChiefComplaint, u"Swelling"_s);
        QCOMPARE(visit.FinalDiagnosis, u"Renal disease"_s);
        QCOMPARE(visit.Patient.LastName, u"O'Hara"_s);
    }

    void UnknownStay_emptiesTheRecord_data() {
        Columns<QString, QString>();
        const auto row = [](const char* name, const char* number, const char* hospNum) {
            QTest::newRow(name) << QString::fromUtf8(number) << QString::fromUtf8(hospNum);
        };
        row("unknown", "8800001", "H'1");
        row("empty", "", "");
        row("wild card", "%", "%");
        row("quote", "' OR '1'='1", "' OR '1'='1");
        row("another patient's visit", "A'1B", "H2");
    }

    void UnknownStay_emptiesTheRecord() {
        auto [number, hospNum] = Fetch<QString, QString>();
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
    void FailedLoad_emptiesTheRecord() {
        QVERIFY(m_finder.ValidateAdmission(m_admission));
        db::Connection::SetCommandHook(
            [](const QString& command) { throw base::DatabaseError(11, {}, command); });
        QVERIFY_EXCEPTION_THROWN(m_finder.ValidateAdmission(m_admission), base::DatabaseError);
        db::Connection::SetCommandHook({});
        QCOMPARE(m_finder.Admission().Patient.LastName, QString());
    }

    void Records_areApart() {
        QVERIFY(m_finder.ValidateAdmission(m_admission));
        QVERIFY(m_finder.OpenOutPatient(m_visit, m_hospNum));
        QCOMPARE(m_finder.Admission().IDNumber, m_admission);
        QVERIFY(!m_finder.OpenOutPatient(m_admission, m_hospNum));
        QCOMPARE(m_finder.Admission().IDNumber, m_admission);
    }

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsPatientFinder m_finder;
    const QString m_hospNum = u"H'1"_s;
    const QString m_admission = u"9900001"_s;
    const QString m_visit = u"A'1B"_s;
};

QTEST_GUILESS_MAIN(tst_clsPatientFinder)
#include "tst_clsPatientFinder.moc"
