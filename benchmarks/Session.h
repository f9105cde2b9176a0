#pragma once

#include <QString>
#include <memory>

#include "app/mdiCAPD.h"

namespace bench {

/// Starts the program on a hospital file as its first user, without the log-in dialog, and shows
/// the main window with its first list.
std::unique_ptr<mdiCAPD> StartSession(const QString& file);

}  // namespace bench
