#pragma once

#include <QString>
#include <vector>

namespace deploy {

struct Script {
    /// Its path below server/: "procedures/BILLING/sp_Drug_Find.sql".
    QString Name;
    QString Text;

    /// SHA-256 of the text, in hexadecimal.
    QString Checksum() const;
};

/// The server's scripts that belong together, each kind in the order in which it runs.
class ScriptSet final {
public:
    /// The scripts that this program was built with.
    static const ScriptSet& Own();
    /// Any other set: its kinds are told by the names, as in the folder server/.
    explicit ScriptSet(std::vector<Script> scripts);

    /// The tables.
    const std::vector<Script>& Schema() const { return m_schema; }
    /// What brings the tables of an older version up to this one.
    const std::vector<Script>& Migrations() const { return m_migrations; }
    const std::vector<Script>& Procedures() const { return m_procedures; }
    /// Rights; they run again whenever procedures were made anew.
    const std::vector<Script>& Roles() const { return m_roles; }
    /// The demo hospital's rows.
    const std::vector<Script>& Demo() const { return m_demo; }

    /// Changes with any script but the demo's.
    const QString& Checksum() const { return m_checksum; }

private:
    std::vector<Script> m_schema;
    std::vector<Script> m_migrations;
    std::vector<Script> m_procedures;
    std::vector<Script> m_roles;
    std::vector<Script> m_demo;
    QString m_checksum;
};

/// The checksum of ScriptSet::Own(), taken when the program was built: known without reading them.
extern const char* const kOwnScriptsChecksum;

}  // namespace deploy
