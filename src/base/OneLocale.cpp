#include <QByteArray>

// Numbers, dates, sorting and upper case must not follow the workstation's language, and names
// must not be cut to its character set. Set before main(): the application object reads it.
namespace {

[[maybe_unused]] const bool kSet = qputenv("LC_ALL", "C.UTF-8");

}  // namespace
