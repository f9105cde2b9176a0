#pragma once

#include <QHash>
#include <QString>

#include "deploy/ScriptSet.h"
#include "embedded/Server.h"

namespace deploy {

/// What a hospital remembers of the scripts that it has received.
class DeployedScripts final {
public:
    explicit DeployedScripts(embedded::Server& server) : m_server(server) {}

    /// Asks for the checksum of the whole set, over whatever road.
    static QString SetChecksumCommand();
    /// The checksum of the whole set that was deployed last; empty where none was completed.
    QString SetChecksum();
    /// Checksums by script name.
    QHash<QString, QString> All();

    void Record(const Script& script);
    void RecordSet(const ScriptSet& scripts);
    void Forget(const QString& scriptName);

private:
    void Record(const QString& name, const QString& checksum);

    embedded::Server& m_server;
};

}  // namespace deploy
