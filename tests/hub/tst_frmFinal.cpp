#include "hub/frmFinal.h"

#include "WindowTest.h"

using modGlobals::HubTab;
using toolkit::FlexGrid;

namespace {

enum PatientType { CapdPatients, OutPatients, InPatients };

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
    patient.Company = u" Harbour Works"_s;
    patient.CAPDNum = u"C7"_s;
    patient.PatientType = type;
    return patient;
}

QStringList Requests(const QString& idNum) {
    return {u"Nurse_CheckRequest '%1',' '"_s.arg(idNum),
            u"Nurse_CheckRequest '%1','X'"_s.arg(idNum)};
}

}  // namespace

// The hub over the demo hospital: it shows one patient, and never what was another's.
class tst_frmFinal final : public WindowTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        const QString both = Ask(
            u"SELECT r.IdNum FROM STATION..tbNurseLogBook r INNER JOIN PATIENT_DATA..tbOutPatient "
            "v ON v.IdNum = r.IdNum WHERE v.BillingDate IS NULL GROUP BY r.IdNum HAVING "
            "MIN(r.RecordStatus) = ' ' AND MAX(r.RecordStatus) = 'X' ORDER BY r.IdNum"_s);
        m_first = both.section(u';', 0, 0);
        m_second = both.section(u';', 1, 1);
        m_hub = new frmFinal;
        m_log = std::make_unique<CommandLog>();
    }

    void cleanup() {
        m_log.reset();
        delete m_hub;
        TearDown();
    }

    void Header_showsTheOpenedPatient() {
        m_hub->Open(Patient(u"1001"_s, InPatients));
        const PatientOnScreen& onScreen = *m_hub;
        QCOMPARE(QStringList({onScreen.HospNum(), onScreen.IdNum(), onScreen.CAPDNum(),
                              onScreen.LastName(), onScreen.FirstName(), onScreen.MiddleName(),
                              onScreen.Age(), onScreen.Sex(), onScreen.Company(),
                              TextOf(*m_hub, "txtRoomID"), TextOf(*m_hub, "txtPatClass")})
                     .join(u'|'),
                 u"H1001|1001|C7|O'HARA-PEÑA|Ana|Luz|52|F| Harbour Works|R-204|W"_s);
        for (const QLineEdit* box :
             Find<QGroupBox>(*m_hub, "fraPatient").findChildren<QLineEdit*>())
            QVERIFY2(box->isReadOnly(), qPrintable(box->objectName()));
    }

    void Requests_areThoseOfTheVisit() {
        m_hub->Open(Patient(m_first));
        QCOMPARE(m_log->Sent.filter(u"Nurse_CheckRequest"_s), Requests(m_first));
        QCOMPARE(m_session->Connection().CursorLocation(), 3);
        ExpectRequestsOf(m_first);
        QVERIFY(!Processed().TextMatrix(1, 8).isEmpty());
        QCOMPARE(Pending().TextMatrix(1, 8), QString());
        // The same patient once more: lists that stayed empty would say that nothing was requested.
        m_hub->Open(Patient(m_first));
        ExpectRequestsOf(m_first);
        m_hub->Open(Patient(u"NOBODY"_s));
        for (const FlexGrid* grid : {&Processed(), &Pending()}) {
            QCOMPARE(grid->Cols(), 6);
            QCOMPARE(LineOf(*grid, 1), u"|||||"_s);
        }
        m_hub->Open(Patient(m_second));
        ExpectRequestsOf(m_second);
    }

    void Requests_thatCannotBeReadAreEmpty() {
        m_hub->Open(Patient(m_first));
        m_session->Connection().SetDefaultDatabase(u"BILLING"_s);
        QVERIFY_EXCEPTION_THROWN(m_hub->Open(Patient(u"A2B"_s)), base::DatabaseError);
        QCOMPARE(m_hub->IdNum(), u"A2B"_s);
        QCOMPARE(Pending().TextMatrix(1, 1) + Processed().TextMatrix(1, 1), QString());
        QVERIFY(modGlobals::gTabNeedsLoad[size_t(HubTab::Requests)]);
    }

    void ClosedAccount_isToldAndNothingIsPosted() {
        CloseAccount(m_first);
        Answer(BoxAnswer::Ok);
        m_hub->Open(Patient(m_first));
        BringUp(*m_hub);
        QCOMPARE(Said().Text,
                 u"Cannot post charges because the patient's account has already been closed. "
                 "Please contact BILLING DEPARTMENT for further instructions."_s);
        QCOMPARE(Said().Icon, BoxIcon::Exclamation);
        QVERIFY(!Outer().isTabEnabled(0));
        QVERIFY(!Find<QPushButton>(*m_hub, "cmdPostCharges").isVisible());
        ShowTab(2);
        ShowTab(1, 3);
        QCOMPARE(m_log->Sent.filter(u"Nurse_CheckRequest"_s), QStringList());
    }

    void Listing_decidesTheActivityTab() {
        // No out-patient's number: nothing says that the account is closed.
        m_hub->Open(Patient(u"1001"_s, InPatients));
        BringUp(*m_hub);
        QVERIFY(Find<QPushButton>(*m_hub, "cmdPostCharges").isVisible());
        // The patient opened next is not asked about again.
        CloseAccount(m_first);
        m_log->Sent.clear();
        m_hub->Open(Patient(m_first));
        QCOMPARE(m_log->Sent, Requests(m_first));
        QVERIFY(Outer().isTabEnabled(0));
        // From the out-patients nothing is posted; the lists are read all the same.
        delete m_hub;
        m_hub = new frmFinal;
        m_log->Sent.clear();
        m_hub->Open(Patient(m_second, OutPatients));
        QVERIFY(!Outer().isTabEnabled(0));
        QCOMPARE(m_log->Sent.filter(u"sp_Listing"_s), QStringList());
        ExpectRequestsOf(m_second);
    }

    void Tabs_loadOncePerChoice() {
        m_hub->Open(Patient(m_first));
        BringUp(*m_hub);
        for (const int tab : {1, 0, 2, 0})
            ShowTab(tab);
        QCOMPARE(m_log->Sent.filter(u"Nurse_CheckRequest"_s), Requests(m_first));
        modGlobals::RaiseTabFlags();
        ShowTab(1, 2);
        for (const int tab : {0, 2, 0})
            ShowTab(tab);
        QCOMPARE(m_log->Sent.filter(u"Nurse_CheckRequest"_s),
                 Requests(m_first) + Requests(m_first));
        QList<int> raised;
        for (int tab = 0; tab < int(HubTab::Count); ++tab)
            if (modGlobals::gTabNeedsLoad[size_t(tab)])
                raised << tab;
        QCOMPARE(raised, QList<int>({int(HubTab::Ultrasound), int(HubTab::Laboratory),
                                     int(HubTab::CtScan), int(HubTab::Nuclear)}));
        // The results are entered by the x-ray, whichever was left.
        ShowTab(1, 4);
        Outer().setCurrentIndex(2);
        modGlobals::RaiseTabFlags();
        Outer().setCurrentIndex(1);
        QCOMPARE(Find<QTabWidget>(*m_hub, "tabSSTab2").currentIndex(), 0);
        QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::Xray)]);
        QVERIFY(modGlobals::gTabNeedsLoad[size_t(HubTab::CtScan)]);
    }

    void AnotherPatient_waitsForTheListsToBeShown() {
        m_hub->Open(Patient(m_first));
        BringUp(*m_hub);
        ShowTab(2);
        m_log->Sent.clear();
        m_hub->Open(Patient(m_second, InPatients));
        QCOMPARE(TextOf(*m_hub, "txtPatClass"), u"W"_s);
        QVERIFY(!modGlobals::gTabNeedsLoad[size_t(HubTab::Clinical)]);
        QVERIFY(!m_log->Sent.contains(Requests(m_second).front()));
        QCOMPARE(Pending().TextMatrix(1, 1), QString());
        ShowTab(0);
        ExpectRequestsOf(m_second);
    }

    void Keys_openTheRequestsAndGoThroughTheTabs() {
        m_hub->Open(Patient(m_first));
        BringUp(*m_hub);
        QVERIFY(Find<QPushButton>(*m_hub, "cmdPostCharges").hasFocus());
        for (const auto& [key, form] :
             {std::pair(Qt::Key_F6, u"frmCSREntry"_s), {Qt::Key_F7, u"frmPHEntry"_s}}) {
            QString opened;
            PickListKeys keys([&](QDialog& sheet) {
                opened = sheet.objectName();
                m_log->Sent.clear();
                Click(sheet, "cmdMedOption1");
            });
            PressKey(key);
            QCOMPARE(opened, form);
            QCOMPARE(m_log->Sent, Requests(m_first));
        }
        PressKey(Qt::Key_F9);
        QVERIFY(Pending().hasFocus());
        PressKey(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(Outer().currentIndex(), 1);
        PressKey(Qt::Key_PageDown, Qt::ControlModifier);
        QVERIFY(Find<FlexGrid>(*m_hub, "mshflexUltra").hasFocus());
        PressKey(Qt::Key_Escape);
        QTRY_VERIFY(!m_hub);
    }

private:
    static void CloseAccount(const QString& idNum) {
        Do(u"UPDATE PATIENT_DATA..tbOutPatient SET BillingDate = '11/20/2026' WHERE IdNum = '%1'"_s
               .arg(idNum));
    }
    void ShowTab(int outer, int inner = 0) {
        Outer().setCurrentIndex(outer);
        Find<QTabWidget>(*m_hub, "tabSSTab2").setCurrentIndex(inner);
    }
    void ExpectRequestsOf(const QString& idNum) {
        QCOMPARE(u"%1|%2"_s.arg(Pending().Rows() - 1).arg(Processed().Rows() - 1),
                 Ask(u"SELECT SUM(CASE RecordStatus WHEN 'X' THEN 0 ELSE 1 END), SUM(CASE "
                     "RecordStatus WHEN 'X' THEN 1 ELSE 0 END) FROM STATION..tbNurseLogBook WHERE "
                     "IdNum = '%1'"_s.arg(idNum)));
        QVERIFY(!Pending().TextMatrix(1, 1).isEmpty());
    }
    QTabWidget& Outer() { return Find<QTabWidget>(*m_hub, "tabSSTab1"); }
    FlexGrid& Processed() { return Find<FlexGrid>(*m_hub, "mshflexProcessed0"); }
    FlexGrid& Pending() { return Find<FlexGrid>(*m_hub, "mshflexProcessed1"); }

    QString m_first, m_second;  ///< visits with requests of both kinds
    QPointer<frmFinal> m_hub;
    std::unique_ptr<CommandLog> m_log;
};

QTEST_MAIN(tst_frmFinal)
#include "tst_frmFinal.moc"
