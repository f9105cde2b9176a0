#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "FakeComponents.h"
#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/clsConfinements.h"
#include "components/builtin/clsPatientFinder.h"
#include "components/builtin/clsRequest.h"
#include "components/builtin/clsResults.h"
#include "db/Recordset.h"
#include "hub/frmFinal.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Theme.h"

using namespace Qt::StringLiterals;
using modGlobals::HubTab;
using toolkit::BoxScript;
using toolkit::FlexGrid;

namespace {

enum PatientType { CapdPatients, OutPatients, InPatients };

const QString kRequestsOnly = u"Nurse_CheckRequest"_s;
constexpr char kPendingCommand[] = "Nurse_CheckRequest '%1',' '";
constexpr char kProcessedCommand[] = "Nurse_CheckRequest '%1','X'";

OpenedPatient Patient(const QString& idNum, int type = CapdPatients) {
    OpenedPatient patient;
    patient.Record.IDNumber = idNum;
    patient.Record.HospitalNumber = u"H"_s + idNum;
    patient.Record.LastName = u"O'HARA-PEÑA"_s;
    patient.Record.FirstName = u"Ana"_s;
    patient.Record.MiddleName = u"Luz"_s;
    patient.Record.Age = u"52"_s;
    patient.Record.Sex = u"F"_s;
    patient.Room = type == InPatients ? u"R-204"_s : u"OPD"_s;
    patient.RoomClassID = type == InPatients ? u"W"_s : QString();
    patient.Company = u"77 Harbour Works"_s;
    patient.CAPDNum = u"C7"_s;
    patient.PatientType = type;
    return patient;
}

QStringList Requests(const QString& idNum) {
    return {QString::fromLatin1(kPendingCommand).arg(idNum),
            QString::fromLatin1(kProcessedCommand).arg(idNum)};
}

}  // namespace

// The hub over the demo hospital; the patient listing alone is a fake.
class tst_frmFinal final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { toolkit::ApplyTheme(*qApp); }
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        m_lister = std::make_shared<fakes::Lister>();
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_connection;
        modGlobals::gCurrentUser = user;
        modGlobals::gOutpatientSearch = m_lister;
        modGlobals::gWardRequest = std::make_shared<components::clsRequest>();
        modGlobals::gWardResults = std::make_shared<components::clsResults>();
        const auto finder = std::make_shared<components::clsPatientFinder>();
        QString server;
        QVERIFY(finder->InitConnection(m_connection->ConnectionString(), server));
        modGlobals::gPatientSearch = finder;
        modGlobals::gConfinement = std::make_shared<components::clsConfinement>();
        m_boxes = std::make_unique<BoxScript>();
        m_hub = new frmFinal;
        fakes::Log().clear();
        m_commands.clear();
        db::Connection::SetCommandHook([this](const QString& command) { m_commands << command; });
    }

    void cleanup() {
        db::Connection::SetCommandHook({});
        delete m_hub;
        modGlobals::gWardRequest.reset();
        modGlobals::gWardResults.reset();
        modGlobals::gPatientSearch.reset();
        modGlobals::gConfinement.reset();
        modGlobals::gCurrentUser.reset();
        QCOMPARE(m_boxes->Leftovers(), QStringList());
        m_boxes.reset();
    }

    void Header_showsTheOpenedPatient_data() {
        Columns<int, QString, QString>();
        QTest::newRow("in-patient") << int(InPatients) << u"R-204"_s << u"W"_s;
        QTest::newRow("CAPD patient") << int(CapdPatients) << u"OPD"_s << QString();
    }

    void Header_showsTheOpenedPatient() {
        auto [type, room, patientClass] = Fetch<int, QString, QString>();
        OpenedPatient patient = Patient(u"A1B"_s, type);
        patient.Company = u" Harbour Works"_s;
        Choose(patient);
        QCOMPARE(m_hub->windowTitle(), u"CAPD Services"_s);
        QCOMPARE(Box("txtRoomID"), room);
        QCOMPARE(Box("txtPatClass"), patientClass);
        QCOMPARE(m_hub->RoomClassID(), patientClass);
        QCOMPARE(Box("txtLastName"), u"O'HARA-PEÑA"_s);
        const PatientOnScreen& onScreen = *m_hub;
        QCOMPARE(QStringList({onScreen.HospNum(), onScreen.IdNum(), onScreen.CAPDNum(),
                              onScreen.FirstName(), onScreen.MiddleName(), onScreen.Age(),
                              onScreen.Sex(), onScreen.Company()}),
                 QStringList({u"HA1B"_s, u"A1B"_s, u"C7"_s, u"Ana"_s, u"Luz"_s, u"52"_s, u"F"_s,
                              u" Harbour Works"_s}));
        for (const QLineEdit* box : Find<QGroupBox>("fraPatient").findChildren<QLineEdit*>())
            QVERIFY2(box->isReadOnly(), qPrintable(box->objectName()));
    }

    void Requests_arePendingAndProcessed() {
        const QString idNum = IdNum(0);
        m_commands.clear();
        Choose(Patient(idNum));
        QCOMPARE(m_commands, Requests(idNum));
        QCOMPARE(fakes::Log(), QStringList(u"PatientListing %1,204,0"_s.arg(idNum)));
        QCOMPARE(m_connection->CursorLocation(), 3);
        QCOMPARE(Processed().Rows() - 1, Count(idNum, "X"));
        QCOMPARE(Pending().Rows() - 1, Count(idNum, " "));
        QVERIFY(!Processed().TextMatrix(1, 8).isEmpty());
        QCOMPARE(Pending().TextMatrix(1, 8), QString());
        // The same patient once more: lists that stayed empty would say that nothing was requested.
        Choose(Patient(idNum));
        QCOMPARE(Processed().Rows() - 1, Count(idNum, "X"));
        QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
    }

    void Requests_haveTheirColumns() {
        Choose(Patient(IdNum(0)));
        Show();
        for (FlexGrid* grid : {&Processed(), &Pending()}) {
            QStringList headers;
            QList<int> widths;
            for (int col = 0; col < grid->Cols(); ++col) {
                headers << grid->TextMatrix(0, col);
                widths << grid->ColWidth(col);
            }
            QCOMPARE(headers.join(u'|'),
                     u"|ITEM DESCRIPTION|QTY|DEPT|REQUEST DATE/TIME|Code|REQUESTED BY|PROCESS "
                     "DATE/TIME|PROCESSED BY|RESULT DATE/TIME|RESULT BY|REMARKS"_s);
            const double width = grid->width() * 1440.0 / grid->logicalDpiX();
            const int thirteenth = int(std::nearbyint(width / 13)),
                      fifth = int(std::nearbyint(width / 5));
            QCOMPARE(widths, QList<int>({1, 3001, thirteenth, thirteenth, 2001, thirteenth + 200,
                                         fifth, 2001, fifth, 2001, fifth, 3001}));
        }
    }

    void Requests_noneLeaveSixColumns() {
        Choose(Patient(u"NOBODY"_s));
        Show();
        for (const FlexGrid* grid : {&Processed(), &Pending()}) {
            QCOMPARE(grid->Cols(), 6);
            QCOMPARE(grid->Rows(), 2);
            QCOMPARE(grid->TextMatrix(0, 4).trimmed(), u"DATE/TIME"_s);
            QCOMPARE(grid->TextMatrix(0, 5), u"Code"_s);
            QCOMPARE(grid->TextMatrix(1, 1), QString());
        }
        m_hub->SetIdNum(IdNum(0));
        m_hub->Get_CanPenProc();
        QCOMPARE(Pending().Cols(), 12);
        QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
    }

    void Requests_failToBeReadAreEmpty() {
        Choose(Patient(IdNum(0)));
        m_connection->SetDefaultDatabase(u"BILLING"_s);
        QVERIFY_EXCEPTION_THROWN(m_hub->Get_CanPenProc(), base::DatabaseError);
        QCOMPARE(Pending().TextMatrix(1, 1), QString());
        QCOMPARE(Processed().TextMatrix(1, 1), QString());
    }

    void ClosedAccount_isToldOnce() {
        m_lister->Patient.BillingDate = u"11/20/2026"_s;
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        Choose(Patient(u"A1B"_s));
        Show();
        QCOMPARE(m_boxes->Shown().size(), size_t(1));
        QCOMPARE(
            m_boxes->Shown()[0].Text,
            u"Cannot post charges because the patient's account has already been closed. Please "
            "contact BILLING DEPARTMENT for further instructions."_s);
        QCOMPARE(m_boxes->Shown()[0].Icon, toolkit::BoxIcon::Exclamation);
        QVERIFY(!Outer().isTabEnabled(0));
        QCOMPARE(Outer().currentIndex(), 1);
        QVERIFY(!Find<QPushButton>("cmdPostCharges").isVisible());
        ShowTab(2);
        ShowTab(1, 3);
        QCOMPARE(m_commands.filter(kRequestsOnly), QStringList());
    }

    void Listing_decidesTheActivityTab_data() {
        QTest::addColumn<bool>("found");
        QTest::newRow("an open account") << true;
        QTest::newRow("not known as an out-patient") << false;
    }

    void Listing_decidesTheActivityTab() {
        QFETCH(bool, found);
        m_lister->Found = found;
        if (!found)
            m_lister->Patient.BillingDate = u"11/20/2026"_s;
        Choose(Patient(u"1001"_s, InPatients));
        Show();
        QVERIFY(Outer().isTabEnabled(0));
        QCOMPARE(Outer().currentIndex(), 0);
        QVERIFY(Find<QPushButton>("cmdPostCharges").isVisible());
        QCOMPARE(m_commands, Requests(u"1001"_s));
    }

    void OutPatients_loadListsBehindTheDisabledTab() {
        const QString idNum = IdNum(0);
        m_commands.clear();
        m_lister->Patient.BillingDate = u"11/20/2026"_s;
        Choose(Patient(idNum, OutPatients));
        QVERIFY(!Outer().isTabEnabled(0));
        QCOMPARE(m_commands.filter(kRequestsOnly), Requests(idNum));
        QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
        QCOMPARE(fakes::Log(), QStringList());
    }

    void Tabs_loadOncePerChoice() {
        const QString idNum = u"A1B"_s;
        Choose(Patient(idNum));
        Show();
        ShowTab(1);
        ShowTab(0);
        ShowTab(2);
        ShowTab(0);
        QCOMPARE(m_commands.filter(kRequestsOnly), Requests(idNum));
        modGlobals::RaiseTabFlags();
        ShowTab(1, 2);
        ShowTab(0);
        ShowTab(2);
        ShowTab(0);
        QCOMPARE(m_commands.filter(kRequestsOnly), Requests(idNum) + Requests(idNum));
        QList<int> raised;
        for (int tab = 0; tab < int(HubTab::Count); ++tab)
            if (modGlobals::gTabNeedsLoad[size_t(tab)])
                raised << tab;
        QCOMPARE(raised, QList<int>({int(HubTab::Ultrasound), int(HubTab::Laboratory),
                                     int(HubTab::CtScan), int(HubTab::Nuclear)}));
    }

    void Results_areEnteredByXray() {
        Choose(Patient(u"A1B"_s));
        ShowTab(1, 4);
        QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::CtScan)]);
        Outer().setCurrentIndex(2);
        modGlobals::RaiseTabFlags();
        Outer().setCurrentIndex(1);
        QCOMPARE(Find<QTabWidget>("tabSSTab2").currentIndex(), 0);
        QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::Xray)]);
        QVERIFY(modGlobals::gTabNeedsLoad[size_t(HubTab::CtScan)]);
    }

    void AnotherPatient_isShownAlone() {
        Choose(Patient(IdNum(0)));
        Show();
        const QString other = IdNum(1);
        m_commands.clear();
        OpenedPatient patient = Patient(other, InPatients);
        patient.Record.LastName = u"SECOND"_s;
        patient.CAPDNum.clear();
        Choose(patient);
        QCOMPARE(m_commands, Requests(other));
        QCOMPARE(Box("txtLastName"), u"SECOND"_s);
        QCOMPARE(Box("txtCAPDNum"), QString());
        QCOMPARE(m_hub->RoomClassID(), u"W"_s);
        QCOMPARE(Pending().Rows() - 1, Count(other, " "));
        // On the clinical tab the request lists wait, empty, for their own showing.
        ShowTab(2);
        m_commands.clear();
        Choose(Patient(IdNum(0)));
        QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::Clinical)]);
        QVERIFY(!m_commands.contains(Requests(IdNum(0)).front()));
        QCOMPARE(Pending().TextMatrix(1, 1), QString());
        ShowTab(0);
        QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
    }

    void AnotherPatient_isNotCheckedAgain() {
        Choose(Patient(u"A1B"_s));
        m_lister->Patient.BillingDate = u"11/20/2026"_s;
        Choose(Patient(u"A2B"_s, OutPatients));
        QCOMPARE(fakes::Log().size(), 1);
        QVERIFY(Outer().isTabEnabled(0));
    }

    void AnotherPatient_whoseListsFailShowsNoOldLine() {
        Choose(Patient(IdNum(0)));
        m_connection->SetDefaultDatabase(u"BILLING"_s);
        QVERIFY_EXCEPTION_THROWN(Choose(Patient(u"A2B"_s)), base::DatabaseError);
        QCOMPARE(Box("txtIdNum"), u"A2B"_s);
        QCOMPARE(Pending().TextMatrix(1, 1), QString());
        QCOMPARE(Processed().TextMatrix(1, 1), QString());
        QVERIFY(modGlobals::gTabNeedsLoad[size_t(HubTab::Requests)]);
    }

    void Closing_leavesNothing_data() {
        QTest::addColumn<int>("key");
        QTest::newRow("Esc") << int(Qt::Key_Escape);
        QTest::newRow("Next Patient") << 0;
    }

    void Closing_leavesNothing() {
        QFETCH(int, key);
        Choose(Patient(u"A1B"_s));
        Show();
        QVERIFY(Find<QPushButton>("cmdPostCharges").hasFocus());
        if (key != 0)
            QTest::keyClick(m_hub->windowHandle(), Qt::Key(key));
        else
            Find<QPushButton>("cmdNextPatient").click();
        QTRY_VERIFY(!m_hub);
    }

    void Buttons_openTheRequestWindows() {
        const QString idNum = IdNum(0);
        Choose(Patient(idNum));
        Show();
        for (const char* name : {"cmdCentralSupply", "cmdPharmacy"}) {
            m_hub->activateWindow();
            QTRY_COMPARE(QApplication::activeWindow(), m_hub->window());
            QString opened;
            QTimer::singleShot(0, this, [&] {
                opened = QApplication::activeModalWidget()->objectName();
                m_commands.clear();
                QApplication::activeModalWidget()
                    ->findChild<QPushButton*>(u"cmdMedOption1"_s)
                    ->click();
            });
            const bool isSupply = QLatin1String(name) == u"cmdCentralSupply";
            QTest::keyClick(m_hub, isSupply ? Qt::Key_F6 : Qt::Key_F7);
            QCOMPARE(opened, QString::fromLatin1(name)
                                 .replace(u"cmdCentralSupply"_s, u"frmCSREntry"_s)
                                 .replace(u"cmdPharmacy"_s, u"frmPHEntry"_s));
            QCOMPARE(m_commands, Requests(idNum));
        }
        m_hub->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), m_hub->window());
        QTest::keyClick(m_hub, Qt::Key_F9);
        QVERIFY(Find<toolkit::FlexGrid>("mshflexProcessed1").hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(Find<QTabWidget>("tabSSTab1").currentIndex(), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(Find<QTabWidget>("tabSSTab2").currentIndex(), 1);
        QVERIFY(Find<toolkit::FlexGrid>("mshflexUltra").hasFocus());
    }

private:
    // A row opened by Enter, which need not have been chosen anew before.
    void Choose(const OpenedPatient& patient) { m_hub->Open(patient); }

    void Show() {
        m_hub->show();
        QVERIFY(QTest::qWaitForWindowActive(m_hub));
    }

    void ShowTab(int outer, int inner = 0) {
        Outer().setCurrentIndex(outer);
        Find<QTabWidget>("tabSSTab2").setCurrentIndex(inner);
    }

    template <class Control>
    Control& Find(const char* name) {
        return *m_hub->findChild<Control*>(QString::fromLatin1(name));
    }
    QString Box(const char* name) { return Find<QLineEdit>(name).text(); }
    QTabWidget& Outer() { return Find<QTabWidget>("tabSSTab1"); }
    FlexGrid& Processed() { return Find<FlexGrid>("mshflexProcessed0"); }
    FlexGrid& Pending() { return Find<FlexGrid>("mshflexProcessed1"); }
    /// Of a visit with requests of both kinds; the second is another patient's.
    QString IdNum(int which) const {
        const auto rows = m_connection->Execute(
            u"SELECT r.IdNum FROM STATION..tbNurseLogBook r WHERE r.PatientType = 'O' GROUP BY "
            u"r.IdNum "
            "HAVING MIN(r.RecordStatus) = ' ' AND MAX(r.RecordStatus) = 'X' ORDER BY r.IdNum"_s);
        for (int row = 0; row < which; ++row)
            rows->MoveNext();
        return rows->Fields(u"IdNum"_s).Text();
    }

    int Count(const QString& idNum, const char* status) const {
        return m_connection
            ->Execute(
                u"SELECT LogID FROM STATION..tbNurseLogBook WHERE IdNum = '%1' AND "
                "RecordStatus = '%2'"_s.arg(idNum, QLatin1String(status)))
            ->RecordCount();
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    std::shared_ptr<fakes::Lister> m_lister;
    std::unique_ptr<BoxScript> m_boxes;
    QPointer<frmFinal> m_hub;
    QStringList m_commands;
};

QTEST_MAIN(tst_frmFinal)
#include "tst_frmFinal.moc"
