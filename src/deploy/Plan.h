#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <vector>

#include "deploy/ScriptSet.h"

namespace deploy {

enum class Contents {
    /// Tables and procedures only.
    Empty,
    /// The demo hospital.
    Demo
};

/// One script, or part of one, that is to run.
struct Step {
    enum class Kind { Make, Migrate, Drop, Grant, Fill };
    Kind What = Kind::Make;
    /// The script's path below server/.
    QString Name;
    QString Text;
    /// Recorded once it has run; empty where nothing is.
    QString Checksum;

    /// As a list of what is going to happen says it: "migrate  migrations/0003_rooms.sql".
    QString Title() const;
};

/// What brings a hospital to the state of a set of scripts.
struct Plan {
    /// Nothing is there yet.
    bool Fresh = false;
    /// What changes the tables; they are checked after it.
    std::vector<Step> Tables;
    std::vector<Step> Rest;

    bool IsEmpty() const { return Tables.empty() && Rest.empty(); }
};

/// `deployed` holds the checksums of the scripts that the hospital has had, by name; none where
/// there is no hospital yet. Throws base::DatabaseError (321) for a hospital that a newer version
/// of the program has changed, and for a demo hospital asked for where another one lives.
Plan PlanFor(const ScriptSet& scripts, Contents contents,
             const std::optional<QHash<QString, QString>>& deployed);

/// The number of PlanFor()'s refusals.
inline constexpr int kNotThisVersion = 321;

}  // namespace deploy
