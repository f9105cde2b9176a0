#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/clsPatientLister.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;
using components::clsPatientLister;
using components::PatientLister;

// The listing finds one stay by its number and picks one where no number is given.
class tst_clsPatientLister final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_lister.Initialize_Classes();
        m_lister.SetInitConnection(m_connection);
    }

    void PatientListing_findsAStayByItsNumber_data() {
        Columns<int, QByteArray>();
        QTest::newRow("in-patient") << PatientLister::kInpatients << QByteArray("tbPatient");
        QTest::newRow("out-patient") << PatientLister::kOutpatients << QByteArray("tbOutPatient");
    }

    void PatientListing_findsAStayByItsNumber() {
        auto [code, table] = Fetch<int, QByteArray>();
        const QString number = FirstNumber(table.constData());
        QString asked = u"  %1 "_s.arg(number);
        QVERIFY(m_lister.PatientListing(asked, code, false));
        const auto& patient =
            code == PatientLister::kInpatients ? m_lister.Inpatient() : m_lister.Outpatient();
        QCOMPARE(patient.IDNumber, number);
        QVERIFY(!patient.HospitalNumber.isEmpty());
        QVERIFY(!patient.LastName.isEmpty());
        QVERIFY(!patient.Age.isEmpty());
        QVERIFY(patient.Sex == u"M"_s || patient.Sex == u"F"_s);
    }

    void PatientListing_answersFalseForStrangers_data() {
        QTest::addColumn<QString>("number");
        QTest::newRow("unknown") << u"A9999999B"_s;
        QTest::newRow("quote") << u"A'B"_s;
        QTest::newRow("wild card") << u"%"_s;
        QTest::newRow("beginning only") << u"A"_s;
    }

    void PatientListing_answersFalseForStrangers() {
        QFETCH(QString, number);
        QVERIFY(!m_lister.PatientListing(number, PatientLister::kOutpatients, false));
        QVERIFY(m_lister.Outpatient().IDNumber.isEmpty());
    }

    void PatientListing_picksWhereNoNumberIsGiven() {
        const QString wanted = FirstNumber("tbOutPatient");
        WhenShown([&wanted](QDialog& list) {
            QTest::keyClicks(list.findChild<QLineEdit*>(u"txtSearch"_s), wanted);
            QTest::keyClick(&list, Qt::Key_Return);
        });
        QString number;
        QVERIFY(m_lister.PatientListing(number, PatientLister::kOutpatients, false));
        QCOMPARE(number, wanted);
        QCOMPARE(m_lister.Outpatient().IDNumber, wanted);
    }

    void PatientListing_keepsTheRecordWhenNothingIsPicked() {
        QString known = FirstNumber("tbOutPatient");
        QVERIFY(m_lister.PatientListing(known, PatientLister::kOutpatients, false));
        // A list that ends before its rows do says so.
        QString wide, narrow;
        WhenShown([&](QDialog& list) {
            auto* box = list.findChild<QLineEdit*>(u"txtSearch"_s);
            const auto* limit = list.findChild<QLabel*>(u"lblLimit"_s);
            QTest::keyClicks(box, u"A0"_s);
            wide = limit->text();
            box->clear();
            QTest::keyClicks(box, u"PENA"_s);
            narrow = limit->text();
            QTest::keyClick(&list, Qt::Key_Escape);
        });
        QString number;
        QVERIFY(!m_lister.PatientListing(number, PatientLister::kOutpatients, false));
        QCOMPARE(wide, u"first 500; type more"_s);
        QCOMPARE(narrow, QString());
        QCOMPARE(number, QString());
        QCOMPARE(m_lister.Outpatient().IDNumber, known);
    }

private:
    QString FirstNumber(const char* table) {
        return m_connection
            ->Execute(u"SELECT TOP (1) IdNum FROM PATIENT_DATA..%1 ORDER BY IdNum"_s.arg(
                QLatin1String(table)))
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

QTEST_MAIN(tst_clsPatientLister)
#include "tst_clsPatientLister.moc"
