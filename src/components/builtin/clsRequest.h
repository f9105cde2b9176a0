#pragma once

#include "components/WardActivity.h"
#include "components/builtin/HeldRecordset.h"

namespace components {

/// A patient's ward requests: types "1" processed, "2" pending, "3" waiting, "4" vital signs.
class clsRequest final : public WardRequest {
public:
    /// Any other type fails with the database layer's error on an empty command.
    std::shared_ptr<db::Recordset> GetRequests(const db::ConnectionRef& connection,
                                               const QString& idNum, const QString& type) override;
    void CloseRecordset() override { m_requests.Close(); }

private:
    HeldRecordset m_requests;
};

}  // namespace components
