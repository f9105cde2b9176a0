#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "db/Driver.h"
#include "deploy/Plan.h"

namespace deploy {

/// Told before each script how many have run, and how many there are.
using Progress = std::function<void(int done, int all)>;

/// Brings the databases behind a connection to the state of a set of scripts: the embedded
/// hospital file and SQL Server alike.
class Deployment final {
public:
    /// Looks, and changes nothing. Databases that the scripts need and the server lacks count as
    /// empty. Throws base::DatabaseError like PlanFor(), and for what is no hospital.
    Deployment(db::Driver& driver, const ScriptSet& scripts, Contents contents);

    bool IsEmpty() const { return m_plan.IsEmpty() && m_newDatabases.isEmpty() && m_upToDate; }
    /// What Run() would do, a line each.
    QStringList Titles() const;
    /// All of it in one transaction, or nothing: a failure leaves the state before and names
    /// script, line and the server's error (base::DatabaseError). Exceptions of `progress` end it.
    void Run(const Progress& progress = {});

private:
    void CreateDatabases();
    void DropDatabases();
    void RunSteps(const Progress& progress);
    void Record();

    db::Driver& m_driver;
    const ScriptSet& m_scripts;
    Contents m_contents;
    QStringList m_newDatabases;
    bool m_upToDate = false;
    Plan m_plan;
};

/// What the look-up of a hospital's record finds where there is no such table, or no such database.
inline constexpr int kUnknownTable = 208;

}  // namespace deploy
