#pragma once

#include <QHash>
#include <QString>

#include "db/Driver.h"
#include "deploy/ScriptSet.h"

namespace deploy {

/// What a hospital remembers of the scripts that it has received.
class DeployedScripts final {
public:
    explicit DeployedScripts(db::Driver& driver) : m_driver(driver) {}

    /// Asks for the checksum of the whole set, over whatever road.
    static QString SetChecksumCommand();
    /// The checksum of the whole set that was deployed last; empty where none was completed.
    QString SetChecksum();
    /// Checksums by script name.
    QHash<QString, QString> All();

    /// Holds other deployments off until the transaction ends.
    void Lock();
    void Record(const QString& name, const QString& checksum);
    void RecordSet(const ScriptSet& scripts);
    void Forget(const QString& scriptName);

private:
    db::Driver& m_driver;
};

}  // namespace deploy
