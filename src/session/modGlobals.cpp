#include "session/modGlobals.h"

namespace modGlobals {

void ApplyDepartmentCode(const QString& code) {
    gRevenueID = code == u"46" ? QStringLiteral("CY") : QString();
}

void RaiseTabFlags() {
    gTabNeedsLoad.fill(true);
}

}  // namespace modGlobals
