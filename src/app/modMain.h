#pragma once

#include <memory>

class mdiCAPD;

/// Start-up.
namespace modMain {

/// Logs in, sets up the session and shows the main window. Null, without a word, when nobody
/// logged in or the patient search has no connection. Throws base::RuntimeError for what is
/// broken: start-up has no way around it.
std::unique_ptr<mdiCAPD> Main();

}  // namespace modMain
