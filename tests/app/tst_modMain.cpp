#include <QTest>

#include "FakeComponents.h"
#include "TestHospital.h"
#include "app/mdiCAPD.h"
#include "app/modMain.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using namespace modGlobals;

// Start-up over the demo hospital, with components that only remember.
class tst_modMain final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_fakes = std::make_unique<fakes::Set>();
        m_fakes->CurrentUser->Session = m_hospital->Connect();
        gRevenueID.clear();
    }

    void Main_takesItsStepsInOrder() {
        QStringList commands;
        db::Connection::SetCommandHook([&commands](const QString& text) { commands << text; });
        const auto frame = modMain::Main();
        db::Connection::SetCommandHook({});
        QVERIFY(frame && frame->isVisible());
        QCOMPARE(frame->windowTitle(), u"Velmora: Continuous Ambulatory Peritoneal Dialysis"_s);
        const QStringList expected{u"create Corvane_User.clsCurrentUser"_s,
                                   u"PasswordDeptCode 46"_s,
                                   u"ShowMain"_s,
                                   u"create PatientFinder.clsPatientSearch"_s,
                                   u"create CodeFinder.clsCodeSearch"_s,
                                   u"create PatientLister.clsRadioSearch"_s,
                                   u"Codes.MTS_Server "_s,
                                   u"Codes.Initialize_Classes"_s,
                                   u"Codes.CompanyName "_s + gCompany,
                                   u"Codes.SearchMode 1"_s,
                                   u"Codes.Connection"_s,
                                   u"Lister.Initialize_Classes"_s,
                                   u"Lister.InitConnection"_s,
                                   u"Lister.Hospital "_s + gCompany,
                                   u"Lister.RevenueID CY"_s,
                                   u"Finder.InitConnection "_s + gMtsServerName,
                                   u"create DrugRoster.clsListDrugs"_s,
                                   u"create DrugCatalog.clsDrug"_s,
                                   u"create DrugRoster.clsListDrugs"_s,
                                   u"Supplies.InitConnection"_s,
                                   u"Supplies.InitConnection"_s,
                                   u"SupplyRecord.InitConnect"_s};
        QCOMPARE(fakes::Log(), expected);
        QCOMPARE(commands, QStringList({u"Select * from PATIENT_DATA..tbHospitalInfo"_s,
                                        u"CLINICAL_AREA..sp_CAPD_Patientsearch '1','','A',''"_s}));
        QVERIFY(!gCompany.isEmpty());
        QVERIFY(!gAddress1.isEmpty());
        QCOMPARE(gConnection, gCurrentUser->SQLConnection());
        QCOMPARE(gConnection->CursorLocation(), 3);
        QCOMPARE(gConnection->DefaultDatabase(), u"CLINICAL_AREA"_s);
    }

    void Main_endsSilentlyWithoutALogInOrThePatientSearch() {
        toolkit::BoxScript boxes;
        m_fakes->Stays->Initialized = false;
        QVERIFY(!modMain::Main());
        QVERIFY(!fakes::Log().contains(u"create DrugRoster.clsListDrugs"_s));
        m_fakes->CurrentUser->Admitted = false;
        QVERIFY(!modMain::Main());
        QCOMPARE(fakes::Log().last(), u"ShowMain"_s);
        QCOMPARE(boxes.Leftovers(), QStringList());
    }

    void Main_namesAMissingComponent() {
        components::Register(u"WardActivity.clsConfinement"_s,
                             [] { return std::make_shared<fakes::Lister>(); });
        try {
            modMain::Main();
            QFAIL("a component of another kind was taken");
        } catch (const base::RuntimeError& error) {
            QCOMPARE(error.Number(), 429);
            QVERIFY(error.Description().contains(u"WardActivity.clsConfinement"_s));
        }
    }

    void Main_readsTheFirstOfSeveralHospitalRows() {
        auto& session = *m_fakes->CurrentUser->Session;
        session.Execute(u"DELETE PATIENT_DATA..tbHospitalInfo"_s);
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError, modMain::Main());
        for (int row = 1; row <= 2; ++row)
            session.Execute(
                u"INSERT INTO PATIENT_DATA..tbHospitalInfo (HospitalID, Company, address1, "
                "MtsServerName) VALUES (%1, 'Hospital %1', 'Somewhere', 'MTS')"_s.arg(row));
        QVERIFY(modMain::Main());
        QCOMPARE(gCompany, u"Hospital 1"_s);
        QVERIFY(fakes::Log().contains(u"Finder.InitConnection MTS"_s));
    }

    void Frame_unloadsWithoutTheCatalogue() {
        for (const auto& [reachable, message] :
             {std::pair(&fakes::SupplyRecord::Reachable, u"Cannot load supplies information."_s),
              {&fakes::Supplies::Reachable, u"Cannot load supplies list."_s}}) {
            *reachable = false;
            toolkit::BoxScript boxes;
            boxes.Answer(toolkit::BoxAnswer::Ok);
            const auto frame = modMain::Main();
            QVERIFY(frame && !frame->isVisible());
            QCOMPARE(boxes.Leftovers(), QStringList());
            QCOMPARE(boxes.Shown().front().Text, message);
            QCOMPARE(boxes.Shown().front().Icon, toolkit::BoxIcon::Critical);
        }
        fakes::Supplies::Broken = true;
        QVERIFY_THROWS_EXCEPTION(base::RuntimeError, modMain::Main());
    }

    void ApplyDepartmentCode_knowsOnlyTheUnit() {
        ApplyDepartmentCode(u"45"_s);
        QCOMPARE(gRevenueID, QString());
        ApplyDepartmentCode(u"46"_s);
        QCOMPARE(gRevenueID, u"CY"_s);
    }

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<fakes::Set> m_fakes;
};

QTEST_MAIN(tst_modMain)
#include "tst_modMain.moc"
