#pragma once

#include <QCommandLineParser>
#include <optional>

namespace base {

/// Reads the program's arguments, with --help and --version beside the options of `parser`. Returns
/// the exit status where the program must not go on: 0 after --help and --version, 2 after a line
/// on standard error about what it cannot understand. Needs an application object, not a screen.
std::optional<int> ReadOptions(QCommandLineParser& parser, int mostArguments);

}  // namespace base
