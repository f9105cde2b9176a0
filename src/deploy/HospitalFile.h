#pragma once

#include <QString>
#include <memory>

#include "db/Connection.h"
#include "deploy/Deployment.h"

/// Makes hospital files for the embedded server and keeps them up to date with the program.
namespace deploy {

/// Makes a new hospital file. It appears under its name only when it is complete; whatever fails
/// or is killed before leaves none. Where another program is making the same file, waits for it
/// and leaves its file as it is. Throws base::DatabaseError naming the file and the cause, also
/// when the file exists already. Exceptions of `progress` end the making.
void MakeHospital(const QString& file, Contents contents, const Progress& progress = {});
void MakeHospital(const QString& file, Contents contents, const Progress& progress,
                  const ScriptSet& scripts);

/// Brings a hospital file that an older version made up to date: runs the migrations that it has
/// not had, makes changed procedures anew and checks its tables; all of it or nothing. True when
/// there was something to do; a file that is up to date costs one look-up. Throws
/// base::DatabaseError naming the file: for what is no hospital file, for one of a newer version,
/// and for one whose tables lack what this version needs.
bool UpgradeHospital(const QString& file);
bool UpgradeHospital(const QString& file, const ScriptSet& scripts);

/// Opens a session on a hospital file, after bringing it up to date where it has to be: what a
/// program does at its start. Throws like UpgradeHospital().
std::shared_ptr<db::Connection> OpenHospital(const QString& file);

}  // namespace deploy
