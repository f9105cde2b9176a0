#include "db/EmbeddedDriver.h"

namespace db {

EmbeddedDriver::EmbeddedDriver(const QString& file)
    : m_server(file, embedded::Server::Mode::OpenExisting) {}

qint64 EmbeddedDriver::Execute(const QString& command, embedded::RowSink& sink) {
    return m_server.Execute(command, m_defaultDatabase, &sink);
}

std::vector<QString> EmbeddedDriver::KeyColumns(const QString& table) {
    return m_server.KeyColumns(table, m_defaultDatabase);
}

}  // namespace db
