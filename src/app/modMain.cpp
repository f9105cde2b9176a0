#include "app/modMain.h"

#include "app/mdiCAPD.h"
#include "components/Registry.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

using components::CreateObject;
using namespace modGlobals;

namespace modMain {

namespace {

const QString kDepartmentCode = QStringLiteral("46");
const QString kDefaultDatabase = QStringLiteral("CLINICAL_AREA");
const QString kReadHospital = QStringLiteral("Select * from PATIENT_DATA..tbHospitalInfo");

void ReadHospital() {
    db::Recordset hospital;
    hospital.Open(kReadHospital, gCurrentUser->SQLConnection(), 2, 1, -1);
    gCompany = hospital.Fields(QStringLiteral("Company")).Text();
    gAddress1 = hospital.Fields(QStringLiteral("address1")).Text();
    gMtsServerName = hospital.Fields(QStringLiteral("MtsServerName")).Text();
}

void CreateComponents() {
    gResultViewer =
        CreateObject<components::ResultViewer>(QStringLiteral("ResultBrowser.ResultViewer"));
    gPatientSearch =
        CreateObject<components::PatientFinder>(QStringLiteral("PatientFinder.clsPatientSearch"));
    gCodeSearch = CreateObject<components::CodeSearch>(QStringLiteral("CodeFinder.clsCodeSearch"));
    gOutpatientSearch =
        CreateObject<components::PatientLister>(QStringLiteral("PatientLister.clsRadioSearch"), {});
    gWardRequest = CreateObject<components::WardRequest>(QStringLiteral("WardActivity.clsRequest"),
                                                         gMtsServerName);
    gWardResults = CreateObject<components::WardResults>(QStringLiteral("WardActivity.clsResults"),
                                                         gMtsServerName);
    gConfinement = CreateObject<components::Confinement>(
        QStringLiteral("WardActivity.clsConfinement"), gMtsServerName);
    gConfinementResults = CreateObject<components::ConfinementResults>(
        QStringLiteral("WardActivity.clsConfinementResults"), gMtsServerName);
}

void InitializeCodeSearch() {
    gCodeSearch->SetMTS_Server({});
    gCodeSearch->Initialize_Classes();
    gCodeSearch->SetCompanyName(gCompany);
    gCodeSearch->SetSearchMode(true);
    gCodeSearch->SetConnection(gCurrentUser->SQLConnection());
}

void InitializePatientListing() {
    gOutpatientSearch->Initialize_Classes();
    gOutpatientSearch->SetInitConnection(gCurrentUser->SQLConnection());
    gOutpatientSearch->SetHospital(gCompany);
    gOutpatientSearch->SetRevenueID(gRevenueID);
}

// The main window connects these when it loads.
void CreateSupplyCatalogue() {
    gSupplyList = CreateObject<components::SupplyList>(QStringLiteral("DrugRoster.clsListDrugs"));
    gSupplyInfo = CreateObject<components::SupplyInfo>(QStringLiteral("DrugCatalog.clsDrug"));
    gSupplyList2 = CreateObject<components::SupplyList>(QStringLiteral("DrugRoster.clsListDrugs"));
}

}  // namespace

std::unique_ptr<mdiCAPD> Main() {
    ApplyDepartmentCode(kDepartmentCode);
    gCurrentUser =
        CreateObject<components::CurrentUser>(QStringLiteral("Corvane_User.clsCurrentUser"));
    gCurrentUser->SetPasswordDeptCode(kDepartmentCode);
    gCurrentUser->ShowMain();
    if (!gCurrentUser->Connected())
        return nullptr;
    gCurrentUser->SQLConnection()->SetDefaultDatabase(kDefaultDatabase);
    ReadHospital();
    CreateComponents();
    InitializeCodeSearch();
    InitializePatientListing();
    if (!gPatientSearch->InitConnection(gCurrentUser->SQLConnection()->ConnectionString(),
                                        gMtsServerName))
        return nullptr;
    gConnection = gCurrentUser->SQLConnection();
    gConnection->SetCursorLocation(3);
    CreateSupplyCatalogue();
    auto frame = std::make_unique<mdiCAPD>();
    frame->showMaximized();
    frame->Load();
    return frame;
}

}  // namespace modMain
