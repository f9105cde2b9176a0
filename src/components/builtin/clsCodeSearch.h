#pragma once

#include "components/CodeSearch.h"

namespace components {

/// The code lists over the session's connection.
class clsCodeSearch final : public CodeSearch {
public:
    void SetMTS_Server(const QString& name) override;
    void Initialize_Classes() override;
    void SetCompanyName(const QString& name) override { m_companyName = name; }
    void SetSearchMode(bool byCode) override { m_byCode = byCode; }
    void SetConnection(const std::shared_ptr<db::Connection>& connection) override {
        m_connection = connection;
    }

private:
    QString m_companyName;
    bool m_byCode = false;
    std::shared_ptr<db::Connection> m_connection;
};

}  // namespace components
