#pragma once

#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace db {
class Recordset;
}

namespace components {

/// `WardActivity.clsRequest`: a patient's ward requests.
class WardRequest : public Component {
public:
    /// Types "1" processed, "2" pending. The recordset is this object's own and is opened anew by
    /// the next call.
    virtual std::shared_ptr<db::Recordset> GetRequests(const db::ConnectionRef& connection,
                                                       const QString& idNum, const QString& type);
    virtual void CloseRecordset();
};

/// `WardActivity.clsResults`: a patient's radiology results.
class WardResults : public Component {
public:
    /// Types "1" x-ray, "2" ultrasound, "3" CT scan; as GetRequests.
    virtual std::shared_ptr<db::Recordset> GetResults(const db::ConnectionRef& connection,
                                                      const QString& idNum, const QString& type);
    virtual void CloseRecordset();
};

/// `WardActivity.clsConfinement`: a patient's hospital stays.
class Confinement : public Component {
public:
    virtual std::shared_ptr<db::Recordset> GetConfinementPeriod(const db::ConnectionRef& connection,
                                                                const QString& hospNum,
                                                                const QString& admissionDate);
};

/// `WardActivity.clsConfinementResults`: what was given and examined in one stay.
class ConfinementResults : public Component {
public:
    /// Types "1" medicines, "2" x-ray, "3" ultrasound, "4" CT scan.
    virtual std::shared_ptr<db::Recordset> GetConfinementResults(
        const db::ConnectionRef& connection, const QString& idNum, const QString& type);
};

}  // namespace components
