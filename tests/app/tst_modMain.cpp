#include <QTest>

#include "FakeComponents.h"
#include "TestHospital.h"
#include "app/mdiCAPD.h"
#include "app/modMain.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"

using namespace modGlobals;

// Start-up over the demo hospital, with components that only remember.
class tst_modMain final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void Main_takesItsStepsInOrder();
    void Main_endsSilentlyWithoutALogIn();
    void Main_endsSilentlyWithoutThePatientSearch();
    void Main_namesAMissingComponent();
    void Main_failsWithoutAHospitalRow();
    void Main_readsTheFirstOfSeveralHospitalRows();
    void Frame_unloadsWithoutTheCatalogue_data();
    void Frame_unloadsWithoutTheCatalogue();
    void Frame_thatCannotLoadEndsStartUp();
    void ApplyDepartmentCode_knowsOnlyTheUnit();

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<fakes::Set> m_fakes;
};

void tst_modMain::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_fakes = std::make_unique<fakes::Set>();
    m_fakes->CurrentUser->Session = m_hospital->Connect();
    gRevenueID.clear();
}

void tst_modMain::Main_takesItsStepsInOrder() {
    QStringList commands;
    db::Connection::SetCommandHook([&commands](const QString& text) { commands << text; });
    const auto frame = modMain::Main();
    db::Connection::SetCommandHook({});
    QVERIFY(frame && frame->isVisible());
    QCOMPARE(frame->windowTitle(),
             QStringLiteral("Velmora: Continuous Ambulatory Peritoneal Dialysis"));
    const QStringList expected{QStringLiteral("create Corvane_User.clsCurrentUser"),
                               QStringLiteral("PasswordDeptCode 46"),
                               QStringLiteral("ShowMain"),
                               QStringLiteral("create PatientFinder.clsPatientSearch"),
                               QStringLiteral("create CodeFinder.clsCodeSearch"),
                               QStringLiteral("create PatientLister.clsRadioSearch"),
                               QStringLiteral("Codes.MTS_Server "),
                               QStringLiteral("Codes.Initialize_Classes"),
                               QStringLiteral("Codes.CompanyName ") + gCompany,
                               QStringLiteral("Codes.SearchMode 1"),
                               QStringLiteral("Codes.Connection"),
                               QStringLiteral("Lister.Initialize_Classes"),
                               QStringLiteral("Lister.InitConnection"),
                               QStringLiteral("Lister.Hospital ") + gCompany,
                               QStringLiteral("Lister.RevenueID CY"),
                               QStringLiteral("Finder.InitConnection ") + gMtsServerName,
                               QStringLiteral("create DrugRoster.clsListDrugs"),
                               QStringLiteral("create DrugCatalog.clsDrug"),
                               QStringLiteral("create DrugRoster.clsListDrugs"),
                               QStringLiteral("Supplies.InitConnection"),
                               QStringLiteral("Supplies.InitConnection"),
                               QStringLiteral("SupplyRecord.InitConnect")};
    QCOMPARE(fakes::Log(), expected);
    QCOMPARE(commands,
             QStringList({QStringLiteral("Select * from PATIENT_DATA..tbHospitalInfo"),
                          QStringLiteral("CLINICAL_AREA..sp_CAPD_Patientsearch '1','','A',''")}));
    QVERIFY(!gCompany.isEmpty());
    QVERIFY(!gAddress1.isEmpty());
    QCOMPARE(gConnection, gCurrentUser->SQLConnection());
    QCOMPARE(gConnection->CursorLocation(), 3);
    QCOMPARE(gConnection->DefaultDatabase(), QStringLiteral("CLINICAL_AREA"));
}

void tst_modMain::Main_endsSilentlyWithoutALogIn() {
    toolkit::BoxScript boxes;
    m_fakes->CurrentUser->Admitted = false;
    QVERIFY(!modMain::Main());
    QCOMPARE(fakes::Log().last(), QStringLiteral("ShowMain"));
    QCOMPARE(boxes.Leftovers(), QStringList());
}

void tst_modMain::Main_endsSilentlyWithoutThePatientSearch() {
    toolkit::BoxScript boxes;
    m_fakes->Stays->Initialized = false;
    QVERIFY(!modMain::Main());
    QVERIFY(!fakes::Log().contains(QStringLiteral("create DrugRoster.clsListDrugs")));
    QCOMPARE(boxes.Leftovers(), QStringList());
}

void tst_modMain::Main_namesAMissingComponent() {
    components::Register(QStringLiteral("WardActivity.clsConfinement"),
                         [] { return std::make_shared<fakes::Lister>(); });
    try {
        modMain::Main();
        QFAIL("a component of another kind was taken");
    } catch (const base::RuntimeError& error) {
        QCOMPARE(error.Number(), 429);
        QVERIFY(error.Description().contains(QStringLiteral("WardActivity.clsConfinement")));
    }
}

void tst_modMain::Main_failsWithoutAHospitalRow() {
    m_fakes->CurrentUser->Session->Execute(QStringLiteral("DELETE PATIENT_DATA..tbHospitalInfo"));
    QVERIFY_THROWS_EXCEPTION(base::DatabaseError, modMain::Main());
}

void tst_modMain::Main_readsTheFirstOfSeveralHospitalRows() {
    auto& session = *m_fakes->CurrentUser->Session;
    session.Execute(QStringLiteral("DELETE PATIENT_DATA..tbHospitalInfo"));
    for (int row = 1; row <= 2; ++row)
        session.Execute(
            QStringLiteral(
                "INSERT INTO PATIENT_DATA..tbHospitalInfo (HospitalID, Company, address1, "
                "MtsServerName) VALUES (%1, 'Hospital %1', 'Somewhere', 'MTS')")
                .arg(row));
    QVERIFY(modMain::Main());
    QCOMPARE(gCompany, QStringLiteral("Hospital 1"));
    QVERIFY(fakes::Log().contains(QStringLiteral("Finder.InitConnection MTS")));
}

void tst_modMain::Frame_unloadsWithoutTheCatalogue_data() {
    QTest::addColumn<bool>("list");
    QTest::addColumn<QString>("message");
    QTest::newRow("list") << true << QStringLiteral("Cannot load supplies list.");
    QTest::newRow("information") << false << QStringLiteral("Cannot load supplies information.");
}

void tst_modMain::Frame_unloadsWithoutTheCatalogue() {
    QFETCH(bool, list);
    QFETCH(QString, message);
    (list ? fakes::Supplies::Reachable : fakes::SupplyRecord::Reachable) = false;
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    const auto frame = modMain::Main();
    QVERIFY(frame && !frame->isVisible());
    QCOMPARE(boxes.Leftovers(), QStringList());
    QCOMPARE(boxes.Shown().front().Text, message);
    QCOMPARE(boxes.Shown().front().Title, toolkit::kProgramName);
    QCOMPARE(boxes.Shown().front().Icon, toolkit::BoxIcon::Critical);
}

void tst_modMain::Frame_thatCannotLoadEndsStartUp() {
    fakes::Supplies::Broken = true;
    QVERIFY_THROWS_EXCEPTION(base::RuntimeError, modMain::Main());
}

void tst_modMain::ApplyDepartmentCode_knowsOnlyTheUnit() {
    ApplyDepartmentCode(QStringLiteral("45"));
    QCOMPARE(gRevenueID, QString());
    ApplyDepartmentCode(QStringLiteral("46"));
    QCOMPARE(gRevenueID, QStringLiteral("CY"));
}

QTEST_MAIN(tst_modMain)
#include "tst_modMain.moc"
