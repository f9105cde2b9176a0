#pragma once

#include <QString>
#include <QStringList>

#include "deploy/ScriptSet.h"
#include "embedded/Server.h"

namespace deploy {

/// What the tables of a hospital lack of what the schema scripts make, one sentence each: missing
/// tables, missing columns, columns of another kind. Empty when nothing is missing; what a
/// hospital has beyond the scripts does not matter.
QStringList MissingInTables(embedded::Server& server, const ScriptSet& scripts);

}  // namespace deploy
