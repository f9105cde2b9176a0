#include "app/mdiCAPD.h"

#include <chrono>
#include <thread>

#include "WindowTest.h"
#include "app/modMain.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "patients/frmRegistration.h"
#include "toolkit/ListView.h"
#include "visits/frmCAPDVisit.h"

using toolkit::ListView;

// The frame's menus, toolbar and keys over the demo hospital.
class tst_mdiCAPD final : public WindowTest {
    Q_OBJECT

private slots:
    void init() {
        SetUp();
        components::Register(u"Corvane_User.clsCurrentUser"_s, [this] { return m_session->User; });
        m_frame = modMain::Main();
        QVERIFY(QTest::qWaitForWindowActive(m_frame.get()));
    }

    void cleanup() {
        m_frame.reset();
        TearDown();
    }

    void Toolbar_comparesKeysInAnyCase() {
        QString opened;
        PickListKeys keys([&opened](QDialog& window) { opened = window.windowTitle(); });
        m_frame->Toolbar1_ButtonClick(u"aSSessment"_s);
        QCOMPARE(opened, u"CAPD: Assessment Entry"_s);
        m_frame->Toolbar1_ButtonClick(u"Print"_s);
        QCOMPARE(keys.Shown, 1);
        // In a text box the menu's keys are the menu's.
        auto& box = Find<QLineEdit>(*m_frame, "txtLastName");
        box.setFocus();
        QTest::keyClicks(&box, u"abc"_s);
        QTest::keyClick(m_frame->windowHandle(), Qt::Key_A, Qt::ControlModifier);
        QTRY_COMPARE(keys.Shown, 2);
        QVERIFY(!box.hasSelectedText());
        m_frame->PatientList().parentWidget()->close();
        QVERIFY(m_frame->PatientList().isVisible());
    }

    void Sheets_beforeAnyChoiceAskTheListing() {
        {
            PickListKeys none;
            m_frame->NewRegistration();
            QCOMPARE(none.Shown, 1);
        }
        QCOMPARE(Status(), u"No patient was chosen."_s);
        // Who is picked there has no row in the list: the register knows the number.
        const QString number =
            Ask(u"SELECT TOP (1) v.IdNum, v.HospNum, c.CAPDNum FROM PATIENT_DATA..tbOutPatient v "
                "INNER JOIN CLINICAL_AREA..tbCAPDPatient c ON c.HospNum = v.HospNum"_s);
        PickListKeys pick([&number](QDialog& list) {
            QTest::keyClicks(PickListKeys::Box(list), number.section(u'|', 0, 0));
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
        });
        m_frame->RegisterVisit();
        const auto* visit = m_frame->findChild<frmCAPDVisit*>();
        QVERIFY(visit && visit->isModal());
        QCOMPARE(visit->IdNum() + u'|' + visit->HospNum() + u'|' + TextOf(*visit, "txtCAPDNum"),
                 number);
    }

    void RegisterVisit_isRefusedWithoutACapdNumber() {
        Choose(false);
        Answer(BoxAnswer::Ok);
        m_frame->RegisterVisit();
        QCOMPARE(Said().Text, u"Patient does not exist in CAPD record. Register First."_s);
        QCOMPARE(Said().Title, u"Message"_s);
        QCOMPARE(Said().Icon, BoxIcon::Information);
        QVERIFY(!m_frame->findChild<frmCAPDVisit*>());
        // Nor for one whose visit is gone.
        Do(u"DELETE PATIENT_DATA..tbOutPatient WHERE IdNum = '%1'"_s.arg(
            m_frame->PatientList().IdNum()));
        m_frame->RegisterVisit();
        QVERIFY(Status().contains(m_frame->PatientList().IdNum()));
    }

    void LongName_keepsEveryWindowOnTheScreen() {
        constexpr int narrowScreen = 1280;
        const QString name(60, u'W');
        Choose(true);
        Do(u"UPDATE PATIENT_DATA..tbMaster SET LastName = '%1', FirstName = '%1', MiddleName = "
           "'%1'"_s.arg(name));
        emit m_frame->PatientList().PatientChosen(u"200005"_s, u"A1B"_s, u"1001"_s,
                                                  name.repeated(3));
        QVERIFY(m_frame->minimumSizeHint().width() <= narrowScreen);
        QVERIFY(TextOf(*m_frame, "lblChosenPatient")
                    .endsWith(u"Hosp. No. 200005    Adm. No. A1B    CAPD No. 1001"_s));
        m_frame->RegisterVisit();
        auto* visit = m_frame->findChild<frmCAPDVisit*>();
        QVERIFY(visit->minimumSizeHint().width() <= narrowScreen);
        delete visit;
        m_frame->NewRegistration();
        auto* sheet = m_frame->findChild<frmRegistration*>();
        QVERIFY(sheet->minimumSizeHint().width() <= narrowScreen);
        QCOMPARE(Find<QLineEdit>(*sheet, "txtLastName").text(), name);
        QCOMPARE(Find<QLineEdit>(*sheet, "txtLastName").cursorPosition(), 0);
    }

    // Two patients of the first list, one after the other; what is about to be done to another
    // patient than the one in sight is asked about.
    void Hub_isOneWindowOverTheList() {
        Choose(true);
        QTest::keyClick(&List(), Qt::Key_Return);
        const QString first = Hub()->LastName();
        QTest::keyClick(m_frame->windowHandle(), Qt::Key_F6, Qt::ControlModifier);
        QTRY_VERIFY(List().hasFocus());
        Choose(true, Hub()->HospNum());
        const QString idNum = m_frame->PatientList().IdNum();
        QTest::keyClick(m_frame->windowHandle(), Qt::Key_F6, Qt::ControlModifier);
        QTRY_VERIFY(Hub()->isAncestorOf(QApplication::focusWidget()));
        for (const auto& act : {&mdiCAPD::RegisterVisit, &mdiCAPD::NewRegistration}) {
            Answer(BoxAnswer::No);
            ((*m_frame).*act)();
            QVERIFY(Said().Text.contains(first));
            QCOMPARE(Said().Text.count(modGlobals::gOutpatientSearch->Outpatient().LastName),
                     first == modGlobals::gOutpatientSearch->Outpatient().LastName ? 3 : 2);
        }
        QVERIFY(!m_frame->findChild<frmCAPDVisit*>() && !m_frame->findChild<frmRegistration*>());
        QTest::keyClick(m_frame->windowHandle(), Qt::Key_F6, Qt::ControlModifier);
        QTRY_VERIFY(List().hasFocus());
        QTest::keyClick(&List(), Qt::Key_Return);
        QCOMPARE(m_frame->findChildren<frmFinal*>().size(), 1);
        QCOMPARE(Hub()->IdNum(), idNum);
        // The hub's own patient is not asked about.
        m_frame->RegisterVisit();
        QVERIFY(m_frame->findChild<frmCAPDVisit*>());
    }

    void Hub_closedByKeyGivesTheListBack() {
        for (const QKeyCombination keys :
             {QKeyCombination(Qt::Key_Escape), Qt::CTRL | Qt::Key_F4}) {
            Choose(true);
            List().setFocus();
            QTest::keyClick(&List(), Qt::Key_Return);
            const QPointer<frmFinal> hub = Hub();
            QTRY_VERIFY(hub->isVisible());
            QTest::keyClick(m_frame->windowHandle(), keys.key(), keys.keyboardModifiers());
            QTRY_VERIFY(!hub);
            QTRY_VERIFY(List().hasFocus());
            QCOMPARE(m_frame->findChildren<QMdiSubWindow*>().size(), 1);
        }
        // One whose lists cannot be read does not open.
        m_session->Connection().SetDefaultDatabase(u"BILLING"_s);
        OpenedPatient patient;
        patient.PatientType = 0;
        patient.Record.IDNumber = u"A1B"_s;
        QVERIFY_EXCEPTION_THROWN(emit m_frame->PatientList().PatientOpened(patient),
                                 base::DatabaseError);
        QVERIFY(!Hub());
    }

    void Waiting_forAnotherProgramIsShown() {
        if (m_session->IsOnServer())
            QSKIP("a server waits by itself");
        QStringList shown;
        connect(m_frame->statusBar(), &QStatusBar::messageChanged, this, [&](const QString& text) {
            shown << text + (QGuiApplication::overrideCursor() ? u" (busy)"_s : QString());
        });
        const QString before = Status();
        const auto other = m_session->Hospital().Connect();
        other->BeginTrans();
        std::thread writer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(700));
            other->CommitTrans();
        });
        Do(u"UPDATE PATIENT_DATA..tbHospitalInfo SET Company = 'X'"_s);
        writer.join();
        QCOMPARE(shown, QStringList({u"Another program is writing… (busy)"_s, before}));
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
    ListView& List() const { return Find<ListView>(*m_frame, "lvwSearchPatient"); }
    frmFinal* Hub() const { return m_frame->findChild<frmFinal*>(); }
    // Walks down the list to a row with a star, or to one without, of another patient.
    void Choose(bool withCapdNumber, const QString& butNot = u"-"_s) {
        for (int row = 0; row < List().model()->rowCount(); ++row) {
            List().setCurrentIndex(List().model()->index(row, 0));
            const frmPatientList& list = m_frame->PatientList();
            if (list.CAPDNum().isEmpty() != withCapdNumber && list.HospNum() != butNot)
                return;
        }
        QFAIL("the demo hospital's first list has no such patient");
    }

    QString Status() const { return m_frame->statusBar()->currentMessage(); }

    std::unique_ptr<mdiCAPD> m_frame;
};

QTEST_MAIN(tst_mdiCAPD)
#include "tst_mdiCAPD.moc"
