#pragma once

#include "components/WardActivity.h"
#include "components/builtin/HeldRecordset.h"

namespace components {

/// A patient's radiology results: types "1" x-ray, "2" ultrasound, "3" CT scan.
class clsResults final : public WardResults {
public:
    /// Any other type fails with the database layer's error on an empty command.
    std::shared_ptr<db::Recordset> GetResults(const db::ConnectionRef& connection,
                                              const QString& idNum, const QString& type) override;
    void CloseRecordset() override { m_results.Close(); }

private:
    HeldRecordset m_results;
};

}  // namespace components
