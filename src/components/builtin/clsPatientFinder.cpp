#include "components/builtin/clsPatientFinder.h"

namespace components {

bool clsPatientFinder::InitConnection(const QString& connectionString, QString& serverName) {
    Q_UNUSED(serverName);
    m_connection = db::Connection::Find(connectionString);
    return m_connection != nullptr;
}

}  // namespace components
