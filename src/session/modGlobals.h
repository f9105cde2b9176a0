#pragma once

#include <QString>
#include <array>
#include <memory>

#include "components/CodeSearch.h"
#include "components/CurrentUser.h"
#include "components/PatientFinder.h"
#include "components/PatientLister.h"
#include "components/ResultViewer.h"
#include "components/SupplyInfo.h"
#include "components/SupplyList.h"
#include "components/WardActivity.h"
#include "db/Connection.h"
#include "print/Report.h"

/// The session: set once by start-up, alive until the process ends.
namespace modGlobals {

/// The tabs of the patient hub that load when they are first shown for a patient.
enum class HubTab {
    Requests,
    Xray,
    Ultrasound,
    HeartStation,
    Laboratory,
    CtScan,
    Nuclear,
    Clinical,
    Count
};

inline std::shared_ptr<components::CurrentUser> gCurrentUser;
inline std::shared_ptr<db::Connection> gConnection;
inline QString gRevenueID;  ///< "CY" in the unit, else empty
inline QString gCompany;    ///< the hospital's name
inline QString gAddress1;
inline QString gMtsServerName;
inline std::shared_ptr<components::CodeSearch> gCodeSearch;
inline std::shared_ptr<components::PatientFinder> gPatientSearch;
inline std::shared_ptr<components::PatientLister> gOutpatientSearch;
inline std::shared_ptr<components::ResultViewer> gResultViewer;
inline std::shared_ptr<components::WardRequest> gWardRequest;
inline std::shared_ptr<components::WardResults> gWardResults;
inline std::shared_ptr<components::Confinement> gConfinement;
inline std::shared_ptr<components::ConfinementResults> gConfinementResults;
inline std::shared_ptr<components::SupplyList> gSupplyList;  ///< charges and central supply
inline std::shared_ptr<components::SupplyInfo> gSupplyInfo;
inline std::shared_ptr<components::SupplyList> gSupplyList2;  ///< pharmacy
inline std::shared_ptr<print::Report> gReport;                ///< the report last opened
inline std::array<bool, size_t(HubTab::Count)> gTabNeedsLoad{};

/// "46" is this unit: its revenue code becomes "CY"; any other code leaves it empty.
void ApplyDepartmentCode(const QString& code);

/// A patient was chosen: every tab of the hub loads anew.
void RaiseTabFlags();

}  // namespace modGlobals
