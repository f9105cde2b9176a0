#pragma once

#include <QString>
#include <memory>

#include "embedded/Database.h"

/// The file that holds a hospital's databases.
namespace embedded::HospitalFile {

/// Makes an empty hospital; the file appears only when it is whole. Throws Failure where it
/// exists already or cannot be made.
void Make(const QString& file);

/// Opens an existing hospital. Throws Failure naming the file and what is wrong with it.
std::unique_ptr<Database> Open(const QString& file, int busyMilliseconds);

}  // namespace embedded::HospitalFile
