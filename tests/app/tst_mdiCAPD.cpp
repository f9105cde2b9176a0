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
#include "Rows.h"
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

using namespace Qt::StringLiterals;

// The frame's menus, toolbar and keys over the demo hospital.
class tst_mdiCAPD final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_fakes = std::make_unique<fakes::Set>();
        m_fakes->CurrentUser->Session = m_hospital->Connect();
        m_boxes = std::make_unique<toolkit::BoxScript>();
        m_frame = modMain::Main();
        QVERIFY(QTest::qWaitForWindowActive(m_frame.get()));
        fakes::Log().clear();
    }

    void cleanup() {
        m_frame.reset();
        QCOMPARE(m_boxes->Leftovers(), QStringList());
        m_boxes.reset();
    }

    void Menus_haveTheirCaptionsAndShortcuts_data() {
        Columns<QString, QString>();
        QTest::newRow("mnuNew") << u"&New Registration"_s << u"Ctrl+N"_s;
        QTest::newRow("mnuVist") << u"Register &Visit"_s << u"Ctrl+R"_s;
        QTest::newRow("mnuAssessmentEntry") << u"&Assessment Entry"_s << u"Ctrl+A"_s;
        QTest::newRow("mnuAssessmentStatus") << u"Assessment &Status"_s << u"Ctrl+S"_s;
        QTest::newRow("mnuCAPDVisits") << u"&CAPD Visits"_s << u"Ctrl+C"_s;
        QTest::newRow("mnuIncomeReport") << u"&Income Report"_s << u"Ctrl+I"_s;
        QTest::newRow("mnuCAPDPatients") << u"&CAPD Patients"_s << QString();
    }

    void Menus_haveTheirCaptionsAndShortcuts() {
        auto [caption, shortcut] = Fetch<QString, QString>();
        const auto* action =
            m_frame->findChild<QAction*>(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(action);
        QCOMPARE(action->text(), caption);
        QCOMPARE(action->shortcut().toString(), shortcut);
    }

    void Toolbar_comparesKeysInAnyCase() {
        m_frame->Toolbar1_ButtonClick(u"nEw"_s);
        QCOMPARE(fakes::Log().size(), 1);
        QVERIFY(fakes::Log().front().startsWith(u"PatientListing"_s));
        QString opened;
        PickListKeys keys([&opened](QDialog& window) { opened = window.windowTitle(); });
        m_frame->Toolbar1_ButtonClick(u"Assessment"_s);
        QCOMPARE(opened, u"CAPD: Assessment Entry"_s);
        m_frame->statusBar()->clearMessage();
        m_frame->Toolbar1_ButtonClick(u"Print"_s);
        QCOMPARE(Status(), QString());
        QCOMPARE(fakes::Log().size(), 1);
    }

    void NewRegistration_beforeAnyChoiceAsksTheListing() {
        m_frame->findChild<toolkit::ListView*>(u"lvwSearchPatient"_s)->setCurrentIndex({});
        m_fakes->Patients->Found = false;
        m_frame->NewRegistration();
        QCOMPARE(fakes::Log().size(), 1);
    }

    void RegisterVisit_isRefusedWithoutACapdNumber() {
        Choose(false);
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        m_frame->RegisterVisit();
        QCOMPARE(m_boxes->Shown().back().Text,
                 u"Patient does not exist in CAPD record. Register First."_s);
        QCOMPARE(m_boxes->Shown().back().Title, u"Message"_s);
        QCOMPARE(m_boxes->Shown().back().Icon, toolkit::BoxIcon::Information);
        QVERIFY(!m_frame->findChild<frmCAPDVisit*>());
        Choose(true);
        m_frame->RegisterVisit();
        const auto* visit = m_frame->findChild<frmCAPDVisit*>();
        QVERIFY(visit && visit->isModal());
        QCOMPARE(visit->IdNum(), m_frame->PatientList().IdNum());
        QCOMPARE(visit->HospNum(), m_frame->PatientList().HospNum());
    }

    void RegisterVisit_ofAPickedPatientTakesTheRegistersNumber() {
        m_fakes->Patients->Patient.HospitalNumber = u"200005"_s;
        m_frame->RegisterVisit();
        const auto* visit = m_frame->findChild<frmCAPDVisit*>();
        QVERIFY(visit);
        QCOMPARE(visit->HospNum(), u"200005"_s);
        QCOMPARE(visit->findChild<QLineEdit*>(u"txtCAPDNum"_s)->text(), u"1001"_s);
    }

    void RegisterVisit_stopsWhenThePatientIsUnknown() {
        Choose(false);
        m_fakes->Patients->Found = false;
        m_frame->RegisterVisit();
        QVERIFY(Status().contains(m_frame->PatientList().IdNum()));
    }

    void Shortcuts_winOverTheTextBox() {
        auto* box = m_frame->findChild<QLineEdit*>(u"txtLastName"_s);
        box->setFocus();
        QTest::keyClicks(box, u"abc"_s);
        PickListKeys keys;
        QTest::keyClick(m_frame->windowHandle(), Qt::Key_A, Qt::ControlModifier);
        QTRY_COMPARE(keys.Shown, 1);
        QVERIFY(!box->hasSelectedText());
    }

    void PatientSearch_cannotBeClosedAlone() {
        m_frame->PatientList().parentWidget()->close();
        QVERIFY(m_frame->PatientList().isVisible());
    }

    void LongName_keepsEveryWindowOnTheScreen() {
        constexpr int narrowScreen = 1280;
        const QString name(180, u'W');
        Choose(true);
        m_fakes->Patients->Patient.LastName = name;
        emit m_frame->PatientList().PatientChosen(u"200005"_s, u"A1B"_s, u"1001"_s, name);
        QVERIFY(m_frame->minimumSizeHint().width() <= narrowScreen);
        const QString chosen = m_frame->findChild<QLabel*>(u"lblChosenPatient"_s)->text();
        QVERIFY(chosen.endsWith(u"Hosp. No. 200005    Adm. No. A1B    CAPD No. 1001"_s));
        m_frame->RegisterVisit();
        auto* visit = m_frame->findChild<frmCAPDVisit*>();
        QVERIFY(visit->minimumSizeHint().width() <= narrowScreen);
        delete visit;
        m_frame->NewRegistration();
        auto* sheet = m_frame->findChild<frmRegistration*>();
        QVERIFY(sheet->minimumSizeHint().width() <= narrowScreen);
        QCOMPARE(sheet->findChild<QLineEdit*>(u"txtLastName"_s)->cursorPosition(), 0);
    }

    // Two patients of the first list, one after the other.
    void Hub_isOneWindowOverTheList() {
        auto* list = m_frame->findChild<toolkit::ListView*>();
        list->setFocus(Qt::TabFocusReason);
        for (const QString& idNum : {u"A1B"_s, u"A2B"_s}) {
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

    void Hub_ofAnotherPatientIsAskedAbout() {
        Choose(true);
        components::ListedPatient& listed = m_fakes->Patients->Patient;
        listed.HospitalNumber = u"H1"_s;
        listed.LastName = u"Smith"_s;
        QTest::keyClick(m_frame->findChild<toolkit::ListView*>(), Qt::Key_Return);
        QTRY_VERIFY(m_frame->findChild<frmFinal*>()->isVisible());
        listed.HospitalNumber = u"H2"_s;
        listed.LastName = u"Barlow"_s;
        for (const auto& act : {&mdiCAPD::RegisterVisit, &mdiCAPD::NewRegistration}) {
            m_boxes->Answer(toolkit::BoxAnswer::No);
            ((*m_frame).*act)();
            QVERIFY(m_boxes->Shown().back().Text.contains(u"Smith"_s));
            QVERIFY(m_boxes->Shown().back().Text.contains(u"Barlow"_s));
        }
        QVERIFY(!m_frame->findChild<frmCAPDVisit*>() && !m_frame->findChild<frmRegistration*>());
        // The hub's own patient is not asked about.
        listed.HospitalNumber = u"H1"_s;
        m_frame->RegisterVisit();
        QVERIFY(m_frame->findChild<frmCAPDVisit*>());
    }

    void Hub_closedByKeyGivesTheListBack_data() {
        QTest::addColumn<int>("key");
        QTest::newRow("Esc") << int(Qt::Key_Escape);
        QTest::newRow("Ctrl+F4") << (Qt::CTRL | Qt::Key_F4).toCombined();
    }

    void Hub_closedByKeyGivesTheListBack() {
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

    void Hub_thatCannotReadOpensNothing() {
        m_fakes->CurrentUser->Session->SetDefaultDatabase(u"BILLING"_s);
        OpenedPatient patient;
        patient.PatientType = 0;
        QVERIFY_EXCEPTION_THROWN(emit m_frame->PatientList().PatientOpened(patient),
                                 base::DatabaseError);
        QVERIFY(!m_frame->findChild<frmFinal*>());
    }

    void Waiting_forAnotherProgramIsShown() {
        if (m_hospital->IsOnServer())
            QSKIP("a server waits by itself");
        QStringList shown;
        QList<bool> busy;
        connect(m_frame->statusBar(), &QStatusBar::messageChanged, this, [&](const QString& text) {
            shown << text;
            busy << bool(QGuiApplication::overrideCursor());
        });
        const QString before = Status();
        const QString add = u"UPDATE PATIENT_DATA..tbHospitalInfo SET Company = 'X'"_s;
        const auto other = m_hospital->Connect();
        other->BeginTrans();
        std::thread writer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(700));
            other->CommitTrans();
        });
        m_fakes->CurrentUser->Session->Execute(add);
        writer.join();
        QCOMPARE(shown, QStringList({u"Another program is writing…"_s, before}));
        QCOMPARE(busy, QList<bool>({true, false}));
    }

    void Saved_isToldUntilTheNextAction() {
        const QString told = u"Slip C1D is saved: O'HARA, Ana"_s;
        {
            const Saved saved(u"Slip C1D is saved"_s, u"O'HARA, Ana"_s);
            QCOMPARE(Status(), told);
            // What follows a save may read the list anew.
            Choose(false);
        }
        QCOMPARE(Status(), told);
        QDialog box(m_frame.get());
        box.setObjectName(u"MsgBox"_s);
        box.show();
        QCOMPARE(Status(), told);
        QDialog sheet(m_frame.get());
        sheet.show();
        QCOMPARE(Status(), QString());
    }

private:
    // Walks down the list to a row with a star, or to one without.
    void Choose(bool withCapdNumber) {
        auto* list = m_frame->findChild<toolkit::ListView*>(u"lvwSearchPatient"_s);
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            list->setCurrentIndex(list->model()->index(row, 0));
            if (m_frame->PatientList().CAPDNum().isEmpty() != withCapdNumber)
                return;
        }
        QFAIL("the demo hospital's first list has no such patient");
    }

    QString Status() const { return m_frame->statusBar()->currentMessage(); }

    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<fakes::Set> m_fakes;
    std::unique_ptr<toolkit::BoxScript> m_boxes;
    std::unique_ptr<mdiCAPD> m_frame;
};

QTEST_MAIN(tst_mdiCAPD)
#include "tst_mdiCAPD.moc"
