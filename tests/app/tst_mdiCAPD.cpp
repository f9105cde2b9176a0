#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPointer>
#include <QStatusBar>
#include <QTest>
#include <chrono>
#include <thread>

#include "FakeComponents.h"
#include "TestHospital.h"
#include "app/mdiCAPD.h"
#include "app/modMain.h"
#include "components/PickListKeys.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "patients/frmRegistration.h"
#include "session/Saved.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"
#include "visits/frmCAPDVisit.h"

// The frame's menus, toolbar and keys over the demo hospital.
class tst_mdiCAPD final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Menus_haveTheirCaptionsAndShortcuts_data();
    void Menus_haveTheirCaptionsAndShortcuts();
    void Toolbar_comparesKeysInAnyCase();
    void NewRegistration_beforeAnyChoiceAsksTheListing();
    void RegisterVisit_isRefusedWithoutACapdNumber();
    void RegisterVisit_ofAPickedPatientTakesTheRegistersNumber();
    void RegisterVisit_stopsWhenThePatientIsUnknown();
    void Shortcuts_winOverTheTextBox();
    void PatientSearch_cannotBeClosedAlone();
    void LongName_keepsEveryWindowOnTheScreen();
    void Hub_isOneWindowOverTheList();
    void Hub_ofAnotherPatientIsAskedAbout();
    void Hub_closedByKeyGivesTheListBack_data();
    void Hub_closedByKeyGivesTheListBack();
    void Hub_thatCannotReadOpensNothing();
    void Waiting_forAnotherProgramIsShown();
    void Saved_isToldUntilTheNextAction();

private:
    void Choose(bool withCapdNumber);
    QString Status() const { return m_frame->statusBar()->currentMessage(); }

    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<fakes::Set> m_fakes;
    std::unique_ptr<toolkit::BoxScript> m_boxes;
    std::unique_ptr<mdiCAPD> m_frame;
};

void tst_mdiCAPD::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_fakes = std::make_unique<fakes::Set>();
    m_fakes->CurrentUser->Session = m_hospital->Connect();
    m_boxes = std::make_unique<toolkit::BoxScript>();
    m_frame = modMain::Main();
    QVERIFY(QTest::qWaitForWindowActive(m_frame.get()));
    fakes::Log().clear();
}

void tst_mdiCAPD::cleanup() {
    m_frame.reset();
    QCOMPARE(m_boxes->Leftovers(), QStringList());
    m_boxes.reset();
}

// Walks down the list to a row with a star, or to one without.
void tst_mdiCAPD::Choose(bool withCapdNumber) {
    auto* list = m_frame->findChild<toolkit::ListView*>(QStringLiteral("lvwSearchPatient"));
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        list->setCurrentIndex(list->model()->index(row, 0));
        if (m_frame->PatientList().CAPDNum().isEmpty() != withCapdNumber)
            return;
    }
    QFAIL("the demo hospital's first list has no such patient");
}

void tst_mdiCAPD::Menus_haveTheirCaptionsAndShortcuts_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("shortcut");
    QTest::newRow("mnuNew") << QStringLiteral("&New Registration") << QStringLiteral("Ctrl+N");
    QTest::newRow("mnuVist") << QStringLiteral("Register &Visit") << QStringLiteral("Ctrl+R");
    QTest::newRow("mnuAssessmentEntry")
        << QStringLiteral("&Assessment Entry") << QStringLiteral("Ctrl+A");
    QTest::newRow("mnuAssessmentStatus")
        << QStringLiteral("Assessment &Status") << QStringLiteral("Ctrl+S");
    QTest::newRow("mnuCAPDVisits") << QStringLiteral("&CAPD Visits") << QStringLiteral("Ctrl+C");
    QTest::newRow("mnuIncomeReport")
        << QStringLiteral("&Income Report") << QStringLiteral("Ctrl+I");
    QTest::newRow("mnuCAPDPatients") << QStringLiteral("&CAPD Patients") << QString();
}

void tst_mdiCAPD::Menus_haveTheirCaptionsAndShortcuts() {
    QFETCH(QString, caption);
    QFETCH(QString, shortcut);
    const auto* action = m_frame->findChild<QAction*>(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(action);
    QCOMPARE(action->text(), caption);
    QCOMPARE(action->shortcut().toString(), shortcut);
}

void tst_mdiCAPD::Toolbar_comparesKeysInAnyCase() {
    m_frame->Toolbar1_ButtonClick(QStringLiteral("nEw"));
    QCOMPARE(fakes::Log().size(), 1);
    QVERIFY(fakes::Log().front().startsWith(QStringLiteral("PatientListing")));
    QString opened;
    PickListKeys keys([&opened](QDialog& window) { opened = window.windowTitle(); });
    m_frame->Toolbar1_ButtonClick(QStringLiteral("Assessment"));
    QCOMPARE(opened, QStringLiteral("CAPD: Assessment Entry"));
    m_frame->statusBar()->clearMessage();
    m_frame->Toolbar1_ButtonClick(QStringLiteral("Print"));
    QCOMPARE(Status(), QString());
    QCOMPARE(fakes::Log().size(), 1);
}

void tst_mdiCAPD::NewRegistration_beforeAnyChoiceAsksTheListing() {
    m_frame->findChild<toolkit::ListView*>(QStringLiteral("lvwSearchPatient"))->setCurrentIndex({});
    m_fakes->Patients->Found = false;
    m_frame->NewRegistration();
    QCOMPARE(fakes::Log().size(), 1);
}

void tst_mdiCAPD::RegisterVisit_isRefusedWithoutACapdNumber() {
    Choose(false);
    m_boxes->Answer(toolkit::BoxAnswer::Ok);
    m_frame->RegisterVisit();
    QCOMPARE(m_boxes->Shown().back().Text,
             QStringLiteral("Patient does not exist in CAPD record. Register First."));
    QCOMPARE(m_boxes->Shown().back().Title, QStringLiteral("Message"));
    QCOMPARE(m_boxes->Shown().back().Icon, toolkit::BoxIcon::Information);
    QVERIFY(!m_frame->findChild<frmCAPDVisit*>());
    Choose(true);
    m_frame->RegisterVisit();
    const auto* visit = m_frame->findChild<frmCAPDVisit*>();
    QVERIFY(visit && visit->isModal());
    QCOMPARE(visit->IdNum(), m_frame->PatientList().IdNum());
    QCOMPARE(visit->HospNum(), m_frame->PatientList().HospNum());
}

void tst_mdiCAPD::RegisterVisit_ofAPickedPatientTakesTheRegistersNumber() {
    m_fakes->Patients->Patient.HospitalNumber = QStringLiteral("200005");
    m_frame->RegisterVisit();
    const auto* visit = m_frame->findChild<frmCAPDVisit*>();
    QVERIFY(visit);
    QCOMPARE(visit->HospNum(), QStringLiteral("200005"));
    QCOMPARE(visit->findChild<QLineEdit*>(QStringLiteral("txtCAPDNum"))->text(),
             QStringLiteral("1001"));
}

void tst_mdiCAPD::RegisterVisit_stopsWhenThePatientIsUnknown() {
    Choose(false);
    m_fakes->Patients->Found = false;
    m_frame->RegisterVisit();
    QVERIFY(Status().contains(m_frame->PatientList().IdNum()));
}

void tst_mdiCAPD::Shortcuts_winOverTheTextBox() {
    auto* box = m_frame->findChild<QLineEdit*>(QStringLiteral("txtLastName"));
    box->setFocus();
    QTest::keyClicks(box, QStringLiteral("abc"));
    PickListKeys keys;
    QTest::keyClick(m_frame->windowHandle(), Qt::Key_A, Qt::ControlModifier);
    QTRY_COMPARE(keys.Shown, 1);
    QVERIFY(!box->hasSelectedText());
}

void tst_mdiCAPD::PatientSearch_cannotBeClosedAlone() {
    m_frame->PatientList().parentWidget()->close();
    QVERIFY(m_frame->PatientList().isVisible());
}

void tst_mdiCAPD::LongName_keepsEveryWindowOnTheScreen() {
    constexpr int narrowScreen = 1280;
    const QString name(180, u'W');
    Choose(true);
    m_fakes->Patients->Patient.LastName = name;
    emit m_frame->PatientList().PatientChosen(QStringLiteral("200005"), QStringLiteral("A1B"),
                                              QStringLiteral("1001"), name);
    QVERIFY(m_frame->minimumSizeHint().width() <= narrowScreen);
    const QString chosen = m_frame->findChild<QLabel*>(QStringLiteral("lblChosenPatient"))->text();
    QVERIFY(chosen.endsWith(QStringLiteral("Hosp. No. 200005    Adm. No. A1B    CAPD No. 1001")));
    m_frame->RegisterVisit();
    auto* visit = m_frame->findChild<frmCAPDVisit*>();
    QVERIFY(visit->minimumSizeHint().width() <= narrowScreen);
    delete visit;
    m_frame->NewRegistration();
    auto* sheet = m_frame->findChild<frmRegistration*>();
    QVERIFY(sheet->minimumSizeHint().width() <= narrowScreen);
    QCOMPARE(sheet->findChild<QLineEdit*>(QStringLiteral("txtLastName"))->cursorPosition(), 0);
}

// Two patients of the first list, one after the other.
void tst_mdiCAPD::Hub_isOneWindowOverTheList() {
    auto* list = m_frame->findChild<toolkit::ListView*>();
    list->setFocus(Qt::TabFocusReason);
    for (const QString& idNum : {QStringLiteral("A1B"), QStringLiteral("A2B")}) {
        m_fakes->Patients->Patient.IDNumber = idNum;
        QTest::keyClick(list, Qt::Key_Return);
        const auto hubs = m_frame->findChildren<frmFinal*>();
        QCOMPARE(hubs.size(), 1);
        QTRY_VERIFY(hubs[0]->isAncestorOf(QApplication::focusWidget()));
        QCOMPARE(hubs[0]->IdNum(), idNum);
        QTest::keyClick(m_frame->windowHandle(), Qt::Key_F6, Qt::ControlModifier);
        QTRY_VERIFY(list->hasFocus());
    }
    QTest::keyClick(m_frame->windowHandle(), Qt::Key_F6, Qt::ControlModifier);
    QTRY_VERIFY(!list->hasFocus());
}

void tst_mdiCAPD::Hub_ofAnotherPatientIsAskedAbout() {
    Choose(true);
    components::ListedPatient& listed = m_fakes->Patients->Patient;
    listed.HospitalNumber = QStringLiteral("H1");
    listed.LastName = QStringLiteral("Smith");
    QTest::keyClick(m_frame->findChild<toolkit::ListView*>(), Qt::Key_Return);
    QTRY_VERIFY(m_frame->findChild<frmFinal*>()->isVisible());
    listed.HospitalNumber = QStringLiteral("H2");
    listed.LastName = QStringLiteral("Barlow");
    for (const auto& act : {&mdiCAPD::RegisterVisit, &mdiCAPD::NewRegistration}) {
        m_boxes->Answer(toolkit::BoxAnswer::No);
        ((*m_frame).*act)();
        QVERIFY(m_boxes->Shown().back().Text.contains(QStringLiteral("Smith")));
        QVERIFY(m_boxes->Shown().back().Text.contains(QStringLiteral("Barlow")));
    }
    QVERIFY(!m_frame->findChild<frmCAPDVisit*>() && !m_frame->findChild<frmRegistration*>());
    // The hub's own patient is not asked about.
    listed.HospitalNumber = QStringLiteral("H1");
    m_frame->RegisterVisit();
    QVERIFY(m_frame->findChild<frmCAPDVisit*>());
}

void tst_mdiCAPD::Hub_closedByKeyGivesTheListBack_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Esc") << int(Qt::Key_Escape);
    QTest::newRow("Ctrl+F4") << (Qt::CTRL | Qt::Key_F4).toCombined();
}

void tst_mdiCAPD::Hub_closedByKeyGivesTheListBack() {
    QFETCH(int, key);
    auto* list = m_frame->findChild<toolkit::ListView*>();
    list->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list, Qt::Key_Return);
    QPointer<frmFinal> hub = m_frame->findChild<frmFinal*>();
    QTRY_VERIFY(hub->isVisible());
    const auto keys = QKeyCombination::fromCombined(key);
    QTest::keyClick(m_frame->windowHandle(), keys.key(), keys.keyboardModifiers());
    QTRY_VERIFY(!hub);
    QTRY_VERIFY(list->hasFocus());
    QVERIFY(m_frame->findChildren<QMdiSubWindow*>().size() == 1);
}

void tst_mdiCAPD::Hub_thatCannotReadOpensNothing() {
    m_fakes->CurrentUser->Session->SetDefaultDatabase(QStringLiteral("BILLING"));
    OpenedPatient patient;
    patient.PatientType = 0;
    QVERIFY_EXCEPTION_THROWN(emit m_frame->PatientList().PatientOpened(patient),
                             base::DatabaseError);
    QVERIFY(!m_frame->findChild<frmFinal*>());
}

void tst_mdiCAPD::Waiting_forAnotherProgramIsShown() {
    if (m_hospital->IsOnServer())
        QSKIP("a server waits by itself");
    QStringList shown;
    QList<bool> busy;
    connect(m_frame->statusBar(), &QStatusBar::messageChanged, this, [&](const QString& text) {
        shown << text;
        busy << bool(QGuiApplication::overrideCursor());
    });
    const QString before = Status();
    const QString add = QStringLiteral("UPDATE PATIENT_DATA..tbHospitalInfo SET Company = 'X'");
    const auto other = m_hospital->Connect();
    other->BeginTrans();
    std::thread writer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        other->CommitTrans();
    });
    m_fakes->CurrentUser->Session->Execute(add);
    writer.join();
    QCOMPARE(shown, QStringList({QStringLiteral("Another program is writing…"), before}));
    QCOMPARE(busy, QList<bool>({true, false}));
}

void tst_mdiCAPD::Saved_isToldUntilTheNextAction() {
    const QString told = QStringLiteral("Slip C1D is saved: O'HARA, Ana");
    {
        const Saved saved(QStringLiteral("Slip C1D is saved"), QStringLiteral("O'HARA, Ana"));
        QCOMPARE(Status(), told);
        // What follows a save may read the list anew.
        Choose(false);
    }
    QCOMPARE(Status(), told);
    QDialog box(m_frame.get());
    box.setObjectName(QStringLiteral("MsgBox"));
    box.show();
    QCOMPARE(Status(), told);
    QDialog sheet(m_frame.get());
    sheet.show();
    QCOMPARE(Status(), QString());
}

QTEST_MAIN(tst_mdiCAPD)
#include "tst_mdiCAPD.moc"
