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

using modGlobals::HubTab;
using toolkit::BoxScript;
using toolkit::FlexGrid;

namespace {

enum PatientType { CapdPatients, OutPatients, InPatients };

const QString kRequestsOnly = QStringLiteral("Nurse_CheckRequest");
constexpr char kPendingCommand[] = "Nurse_CheckRequest '%1',' '";
constexpr char kProcessedCommand[] = "Nurse_CheckRequest '%1','X'";

OpenedPatient Patient(const QString& idNum, int type = CapdPatients) {
    OpenedPatient patient;
    patient.Record.IDNumber = idNum;
    patient.Record.HospitalNumber = QStringLiteral("H") + idNum;
    patient.Record.LastName = QStringLiteral("O'HARA-PEÑA");
    patient.Record.FirstName = QStringLiteral("Ana");
    patient.Record.MiddleName = QStringLiteral("Luz");
    patient.Record.Age = QStringLiteral("52");
    patient.Record.Sex = QStringLiteral("F");
    patient.Room = type == InPatients ? QStringLiteral("R-204") : QStringLiteral("OPD");
    patient.RoomClassID = type == InPatients ? QStringLiteral("W") : QString();
    patient.Company = QStringLiteral("77 Harbour Works");
    patient.CAPDNum = QStringLiteral("C7");
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
    void init();
    void cleanup();
    void Header_showsTheOpenedPatient_data();
    void Header_showsTheOpenedPatient();
    void Requests_arePendingAndProcessed();
    void Requests_haveTheirColumns();
    void Requests_noneLeaveSixColumns();
    void Requests_failToBeReadAreEmpty();
    void ClosedAccount_isToldOnce();
    void Listing_decidesTheActivityTab_data();
    void Listing_decidesTheActivityTab();
    void OutPatients_loadListsBehindTheDisabledTab();
    void Tabs_loadOncePerChoice();
    void Results_areEnteredByXray();
    void AnotherPatient_isShownAlone();
    void AnotherPatient_isNotCheckedAgain();
    void AnotherPatient_whoseListsFailShowsNoOldLine();
    void Closing_leavesNothing_data();
    void Closing_leavesNothing();
    void Buttons_openTheRequestWindows();

private:
    void Choose(const OpenedPatient& patient);
    void Show();
    void ShowTab(int outer, int inner = 0);
    template <class Control>
    Control& Find(const char* name) {
        return *m_hub->findChild<Control*>(QString::fromLatin1(name));
    }
    QString Box(const char* name) { return Find<QLineEdit>(name).text(); }
    QTabWidget& Outer() { return Find<QTabWidget>("tabSSTab1"); }
    FlexGrid& Processed() { return Find<FlexGrid>("mshflexProcessed0"); }
    FlexGrid& Pending() { return Find<FlexGrid>("mshflexProcessed1"); }
    /// Of a visit with requests of both kinds; the second is another patient's.
    QString IdNum(int which) const;
    int Count(const QString& idNum, const char* status) const;

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    std::shared_ptr<fakes::Lister> m_lister;
    std::unique_ptr<BoxScript> m_boxes;
    QPointer<frmFinal> m_hub;
    QStringList m_commands;
};

void tst_frmFinal::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
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

void tst_frmFinal::cleanup() {
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

// A row opened by Enter, which need not have been chosen anew before.
void tst_frmFinal::Choose(const OpenedPatient& patient) {
    m_hub->Open(patient);
}

void tst_frmFinal::Show() {
    m_hub->show();
    QVERIFY(QTest::qWaitForWindowActive(m_hub));
}

void tst_frmFinal::ShowTab(int outer, int inner) {
    Outer().setCurrentIndex(outer);
    Find<QTabWidget>("tabSSTab2").setCurrentIndex(inner);
}

QString tst_frmFinal::IdNum(int which) const {
    const auto rows = m_connection->Execute(QStringLiteral(
        "SELECT r.IdNum FROM STATION..tbNurseLogBook r WHERE r.PatientType = 'O' GROUP BY r.IdNum "
        "HAVING MIN(r.RecordStatus) = ' ' AND MAX(r.RecordStatus) = 'X' ORDER BY r.IdNum"));
    for (int row = 0; row < which; ++row)
        rows->MoveNext();
    return rows->Fields(QStringLiteral("IdNum")).Text();
}

int tst_frmFinal::Count(const QString& idNum, const char* status) const {
    return m_connection
        ->Execute(QStringLiteral("SELECT LogID FROM STATION..tbNurseLogBook WHERE IdNum = '%1' AND "
                                 "RecordStatus = '%2'")
                      .arg(idNum, QLatin1String(status)))
        ->RecordCount();
}

void tst_frmFinal::Header_showsTheOpenedPatient_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("room");
    QTest::addColumn<QString>("patientClass");
    QTest::newRow("in-patient") << int(InPatients) << QStringLiteral("R-204")
                                << QStringLiteral("W");
    QTest::newRow("CAPD patient") << int(CapdPatients) << QStringLiteral("OPD") << QString();
}

void tst_frmFinal::Header_showsTheOpenedPatient() {
    QFETCH(int, type);
    QFETCH(QString, room);
    OpenedPatient patient = Patient(QStringLiteral("A1B"), type);
    patient.Company = QStringLiteral(" Harbour Works");
    Choose(patient);
    QCOMPARE(m_hub->windowTitle(), QStringLiteral("CAPD Services"));
    QCOMPARE(Box("txtRoomID"), room);
    QTEST(Box("txtPatClass"), "patientClass");
    QTEST(m_hub->RoomClassID(), "patientClass");
    QCOMPARE(Box("txtLastName"), QStringLiteral("O'HARA-PEÑA"));
    const PatientOnScreen& onScreen = *m_hub;
    QCOMPARE(
        QStringList({onScreen.HospNum(), onScreen.IdNum(), onScreen.CAPDNum(), onScreen.FirstName(),
                     onScreen.MiddleName(), onScreen.Age(), onScreen.Sex(), onScreen.Company()}),
        QStringList({QStringLiteral("HA1B"), QStringLiteral("A1B"), QStringLiteral("C7"),
                     QStringLiteral("Ana"), QStringLiteral("Luz"), QStringLiteral("52"),
                     QStringLiteral("F"), QStringLiteral(" Harbour Works")}));
    for (const QLineEdit* box : Find<QGroupBox>("fraPatient").findChildren<QLineEdit*>())
        QVERIFY2(box->isReadOnly(), qPrintable(box->objectName()));
}

void tst_frmFinal::Requests_arePendingAndProcessed() {
    const QString idNum = IdNum(0);
    m_commands.clear();
    Choose(Patient(idNum));
    QCOMPARE(m_commands, Requests(idNum));
    QCOMPARE(fakes::Log(), QStringList(QStringLiteral("PatientListing %1,204,0").arg(idNum)));
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

void tst_frmFinal::Requests_haveTheirColumns() {
    Choose(Patient(IdNum(0)));
    Show();
    for (FlexGrid* grid : {&Processed(), &Pending()}) {
        QStringList headers;
        QList<int> widths;
        for (int col = 0; col < grid->Cols(); ++col) {
            headers << grid->TextMatrix(0, col);
            widths << grid->ColWidth(col);
        }
        QCOMPARE(
            headers.join(u'|'),
            QStringLiteral("|ITEM DESCRIPTION|QTY|DEPT|REQUEST DATE/TIME|Code|REQUESTED BY|PROCESS "
                           "DATE/TIME|PROCESSED BY|RESULT DATE/TIME|RESULT BY|REMARKS"));
        const double width = grid->width() * 1440.0 / grid->logicalDpiX();
        const int thirteenth = int(std::nearbyint(width / 13)),
                  fifth = int(std::nearbyint(width / 5));
        QCOMPARE(widths, QList<int>({1, 3001, thirteenth, thirteenth, 2001, thirteenth + 200, fifth,
                                     2001, fifth, 2001, fifth, 3001}));
    }
}

void tst_frmFinal::Requests_noneLeaveSixColumns() {
    Choose(Patient(QStringLiteral("NOBODY")));
    Show();
    for (const FlexGrid* grid : {&Processed(), &Pending()}) {
        QCOMPARE(grid->Cols(), 6);
        QCOMPARE(grid->Rows(), 2);
        QCOMPARE(grid->TextMatrix(0, 4).trimmed(), QStringLiteral("DATE/TIME"));
        QCOMPARE(grid->TextMatrix(0, 5), QStringLiteral("Code"));
        QCOMPARE(grid->TextMatrix(1, 1), QString());
    }
    m_hub->SetIdNum(IdNum(0));
    m_hub->Get_CanPenProc();
    QCOMPARE(Pending().Cols(), 12);
    QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
}

void tst_frmFinal::Requests_failToBeReadAreEmpty() {
    Choose(Patient(IdNum(0)));
    m_connection->SetDefaultDatabase(QStringLiteral("BILLING"));
    QVERIFY_EXCEPTION_THROWN(m_hub->Get_CanPenProc(), base::DatabaseError);
    QCOMPARE(Pending().TextMatrix(1, 1), QString());
    QCOMPARE(Processed().TextMatrix(1, 1), QString());
}

void tst_frmFinal::ClosedAccount_isToldOnce() {
    m_lister->Patient.BillingDate = QStringLiteral("11/20/2026");
    m_boxes->Answer(toolkit::BoxAnswer::Ok);
    Choose(Patient(QStringLiteral("A1B")));
    Show();
    QCOMPARE(m_boxes->Shown().size(), size_t(1));
    QCOMPARE(
        m_boxes->Shown()[0].Text,
        QStringLiteral(
            "Cannot post charges because the patient's account has already been closed. Please "
            "contact BILLING DEPARTMENT for further instructions."));
    QCOMPARE(m_boxes->Shown()[0].Icon, toolkit::BoxIcon::Exclamation);
    QVERIFY(!Outer().isTabEnabled(0));
    QCOMPARE(Outer().currentIndex(), 1);
    QVERIFY(!Find<QPushButton>("cmdPostCharges").isVisible());
    ShowTab(2);
    ShowTab(1, 3);
    QCOMPARE(m_commands.filter(kRequestsOnly), QStringList());
}

void tst_frmFinal::Listing_decidesTheActivityTab_data() {
    QTest::addColumn<bool>("found");
    QTest::newRow("an open account") << true;
    QTest::newRow("not known as an out-patient") << false;
}

void tst_frmFinal::Listing_decidesTheActivityTab() {
    QFETCH(bool, found);
    m_lister->Found = found;
    if (!found)
        m_lister->Patient.BillingDate = QStringLiteral("11/20/2026");
    Choose(Patient(QStringLiteral("1001"), InPatients));
    Show();
    QVERIFY(Outer().isTabEnabled(0));
    QCOMPARE(Outer().currentIndex(), 0);
    QVERIFY(Find<QPushButton>("cmdPostCharges").isVisible());
    QCOMPARE(m_commands, Requests(QStringLiteral("1001")));
}

void tst_frmFinal::OutPatients_loadListsBehindTheDisabledTab() {
    const QString idNum = IdNum(0);
    m_commands.clear();
    m_lister->Patient.BillingDate = QStringLiteral("11/20/2026");
    Choose(Patient(idNum, OutPatients));
    QVERIFY(!Outer().isTabEnabled(0));
    QCOMPARE(m_commands.filter(kRequestsOnly), Requests(idNum));
    QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
    QCOMPARE(fakes::Log(), QStringList());
}

void tst_frmFinal::Tabs_loadOncePerChoice() {
    const QString idNum = QStringLiteral("A1B");
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

void tst_frmFinal::Results_areEnteredByXray() {
    Choose(Patient(QStringLiteral("A1B")));
    ShowTab(1, 4);
    QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::CtScan)]);
    Outer().setCurrentIndex(2);
    modGlobals::RaiseTabFlags();
    Outer().setCurrentIndex(1);
    QCOMPARE(Find<QTabWidget>("tabSSTab2").currentIndex(), 0);
    QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::Xray)]);
    QVERIFY(modGlobals::gTabNeedsLoad[size_t(HubTab::CtScan)]);
}

void tst_frmFinal::AnotherPatient_isShownAlone() {
    Choose(Patient(IdNum(0)));
    Show();
    const QString other = IdNum(1);
    m_commands.clear();
    OpenedPatient patient = Patient(other, InPatients);
    patient.Record.LastName = QStringLiteral("SECOND");
    patient.CAPDNum.clear();
    Choose(patient);
    QCOMPARE(m_commands, Requests(other));
    QCOMPARE(Box("txtLastName"), QStringLiteral("SECOND"));
    QCOMPARE(Box("txtCAPDNum"), QString());
    QCOMPARE(m_hub->RoomClassID(), QStringLiteral("W"));
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

void tst_frmFinal::AnotherPatient_isNotCheckedAgain() {
    Choose(Patient(QStringLiteral("A1B")));
    m_lister->Patient.BillingDate = QStringLiteral("11/20/2026");
    Choose(Patient(QStringLiteral("A2B"), OutPatients));
    QCOMPARE(fakes::Log().size(), 1);
    QVERIFY(Outer().isTabEnabled(0));
}

void tst_frmFinal::AnotherPatient_whoseListsFailShowsNoOldLine() {
    Choose(Patient(IdNum(0)));
    m_connection->SetDefaultDatabase(QStringLiteral("BILLING"));
    QVERIFY_EXCEPTION_THROWN(Choose(Patient(QStringLiteral("A2B"))), base::DatabaseError);
    QCOMPARE(Box("txtIdNum"), QStringLiteral("A2B"));
    QCOMPARE(Pending().TextMatrix(1, 1), QString());
    QCOMPARE(Processed().TextMatrix(1, 1), QString());
    QVERIFY(modGlobals::gTabNeedsLoad[size_t(HubTab::Requests)]);
}

void tst_frmFinal::Closing_leavesNothing_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Esc") << int(Qt::Key_Escape);
    QTest::newRow("Next Patient") << 0;
}

void tst_frmFinal::Closing_leavesNothing() {
    QFETCH(int, key);
    Choose(Patient(QStringLiteral("A1B")));
    Show();
    QVERIFY(Find<QPushButton>("cmdPostCharges").hasFocus());
    if (key != 0)
        QTest::keyClick(m_hub->windowHandle(), Qt::Key(key));
    else
        Find<QPushButton>("cmdNextPatient").click();
    QTRY_VERIFY(!m_hub);
}

void tst_frmFinal::Buttons_openTheRequestWindows() {
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
                ->findChild<QPushButton*>(QStringLiteral("cmdMedOption1"))
                ->click();
        });
        const bool isSupply = QLatin1String(name) == u"cmdCentralSupply";
        QTest::keyClick(m_hub, isSupply ? Qt::Key_F6 : Qt::Key_F7);
        QCOMPARE(opened,
                 QString::fromLatin1(name)
                     .replace(QStringLiteral("cmdCentralSupply"), QStringLiteral("frmCSREntry"))
                     .replace(QStringLiteral("cmdPharmacy"), QStringLiteral("frmPHEntry")));
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

QTEST_MAIN(tst_frmFinal)
#include "tst_frmFinal.moc"
