#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "TestHospital.h"
#include "components/builtin/clsPatientLister.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "toolkit/ListView.h"

using components::clsPatientLister;
using components::PatientLister;

// The listing finds one stay by its number and picks one where no number is given.
class tst_clsPatientLister final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void PatientListing_findsAStayByItsNumber_data();
    void PatientListing_findsAStayByItsNumber();
    void PatientListing_answersFalseForStrangers_data();
    void PatientListing_answersFalseForStrangers();
    void PatientListing_picksWhereNoNumberIsGiven();
    void PatientListing_keepsTheRecordWhenNothingIsPicked();

private:
    QString FirstNumber(const char* table) {
        return m_connection
            ->Execute(QStringLiteral("SELECT TOP (1) IdNum FROM PATIENT_DATA..%1 ORDER BY IdNum")
                          .arg(QLatin1String(table)))
            ->Fields(0)
            .Text();
    }
    // Does something to the pick list once it is on the screen.
    static void WhenShown(std::function<void(QDialog&)> act) {
        QTimer::singleShot(
            0, [act] { act(*qobject_cast<QDialog*>(QApplication::activeModalWidget())); });
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsPatientLister m_lister;
};

void tst_clsPatientLister::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_lister.Initialize_Classes();
    m_lister.SetInitConnection(m_connection);
}

void tst_clsPatientLister::PatientListing_findsAStayByItsNumber_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("table");
    QTest::newRow("in-patient") << PatientLister::kInpatients << QByteArray("tbPatient");
    QTest::newRow("out-patient") << PatientLister::kOutpatients << QByteArray("tbOutPatient");
}

void tst_clsPatientLister::PatientListing_findsAStayByItsNumber() {
    QFETCH(int, code);
    QFETCH(QByteArray, table);
    const QString number = FirstNumber(table.constData());
    QString asked = QStringLiteral("  %1 ").arg(number);
    QVERIFY(m_lister.PatientListing(asked, code, false));
    const auto& patient =
        code == PatientLister::kInpatients ? m_lister.Inpatient() : m_lister.Outpatient();
    QCOMPARE(patient.IDNumber, number);
    QVERIFY(!patient.HospitalNumber.isEmpty());
    QVERIFY(!patient.LastName.isEmpty());
    QVERIFY(!patient.Age.isEmpty());
    QVERIFY(patient.Sex == QStringLiteral("M") || patient.Sex == QStringLiteral("F"));
}

void tst_clsPatientLister::PatientListing_answersFalseForStrangers_data() {
    QTest::addColumn<QString>("number");
    QTest::newRow("unknown") << QStringLiteral("A9999999B");
    QTest::newRow("quote") << QStringLiteral("A'B");
    QTest::newRow("wild card") << QStringLiteral("%");
    QTest::newRow("beginning only") << QStringLiteral("A");
}

void tst_clsPatientLister::PatientListing_answersFalseForStrangers() {
    QFETCH(QString, number);
    QVERIFY(!m_lister.PatientListing(number, PatientLister::kOutpatients, false));
    QVERIFY(m_lister.Outpatient().IDNumber.isEmpty());
}

void tst_clsPatientLister::PatientListing_picksWhereNoNumberIsGiven() {
    const QString wanted = FirstNumber("tbOutPatient");
    WhenShown([&wanted](QDialog& list) {
        QTest::keyClicks(list.findChild<QLineEdit*>(QStringLiteral("txtSearch")), wanted);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    QString number;
    QVERIFY(m_lister.PatientListing(number, PatientLister::kOutpatients, false));
    QCOMPARE(number, wanted);
    QCOMPARE(m_lister.Outpatient().IDNumber, wanted);
}

void tst_clsPatientLister::PatientListing_keepsTheRecordWhenNothingIsPicked() {
    QString known = FirstNumber("tbOutPatient");
    QVERIFY(m_lister.PatientListing(known, PatientLister::kOutpatients, false));
    // A list that ends before its rows do says so.
    QString wide, narrow;
    WhenShown([&](QDialog& list) {
        auto* box = list.findChild<QLineEdit*>(QStringLiteral("txtSearch"));
        const auto* limit = list.findChild<QLabel*>(QStringLiteral("lblLimit"));
        QTest::keyClicks(box, QStringLiteral("A0"));
        wide = limit->text();
        box->clear();
        QTest::keyClicks(box, QStringLiteral("PENA"));
        narrow = limit->text();
        QTest::keyClick(&list, Qt::Key_Escape);
    });
    QString number;
    QVERIFY(!m_lister.PatientListing(number, PatientLister::kOutpatients, false));
    QCOMPARE(wide, QStringLiteral("first 500; type more"));
    QCOMPARE(narrow, QString());
    QCOMPARE(number, QString());
    QCOMPARE(m_lister.Outpatient().IDNumber, known);
}

QTEST_MAIN(tst_clsPatientLister)
#include "tst_clsPatientLister.moc"
