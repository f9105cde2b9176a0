#pragma once

#include "components/WardActivity.h"

namespace components {

/// Every stay of a patient, newest first; each answer is a recordset of its own.
class clsConfinement final : public Confinement {
public:
    /// The admission date is not looked at: the list shows the stays before and after it too.
    std::shared_ptr<db::Recordset> GetConfinementPeriod(const db::ConnectionRef& connection,
                                                        const QString& hospNum,
                                                        const QString& admissionDate) override;
};

/// What was given and examined in one stay; each answer is a recordset of its own.
class clsConfinementResults final : public ConfinementResults {
public:
    /// An unknown type is refused by the server.
    std::shared_ptr<db::Recordset> GetConfinementResults(const db::ConnectionRef& connection,
                                                         const QString& idNum,
                                                         const QString& type) override;
};

}  // namespace components
