#include "components/Registry.h"
#include "components/builtin/clsCodeSearch.h"
#include "components/builtin/clsConfinements.h"
#include "components/builtin/clsCurrentUser.h"
#include "components/builtin/clsPatientFinder.h"
#include "components/builtin/clsPatientLister.h"
#include "components/builtin/clsRequest.h"
#include "components/builtin/clsResultViewer.h"
#include "components/builtin/clsResults.h"
#include "components/builtin/clsSupplies.h"

namespace components {

namespace {

template <class Type>
void Offer(const char* progId) {
    Register(QLatin1String(progId), [] { return std::make_shared<Type>(); });
}

}  // namespace

void RegisterBuiltIns() {
    Offer<clsCurrentUser>("Corvane_User.clsCurrentUser");
    Offer<clsPatientLister>("PatientLister.clsRadioSearch");
    Offer<clsPatientFinder>("PatientFinder.clsPatientSearch");
    Offer<clsCodeSearch>("CodeFinder.clsCodeSearch");
    Offer<clsListDrugs>("DrugRoster.clsListDrugs");
    Offer<clsDrug>("DrugCatalog.clsDrug");
    Offer<clsRequest>("WardActivity.clsRequest");
    Offer<clsResults>("WardActivity.clsResults");
    Offer<clsConfinement>("WardActivity.clsConfinement");
    Offer<clsConfinementResults>("WardActivity.clsConfinementResults");
    Offer<clsResultViewer>("ResultBrowser.ResultViewer");
}

}  // namespace components
