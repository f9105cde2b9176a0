#pragma once

#include "components/PatientFinder.h"

namespace components {

/// Admissions and visits over the open session that a connection string names.
class clsPatientFinder final : public PatientFinder {
public:
    bool InitConnection(const QString& connectionString, QString& serverName) override;

private:
    std::shared_ptr<db::Connection> m_connection;
};

}  // namespace components
