#pragma once

#include <QString>
#include <QStringList>

#include "db/Driver.h"
#include "deploy/ScriptSet.h"

namespace deploy {

/// What the tables of a hospital lack of what the schema scripts make, one sentence each: missing
/// tables, missing columns, columns of another kind. Empty when nothing is missing; what a
/// hospital has beyond the scripts does not matter.
QStringList MissingInTables(db::Driver& driver, const ScriptSet& scripts);

}  // namespace deploy
