#include "base/Clock.h"

#include <QFile>
#include <utility>

namespace base::Clock {

namespace {

std::function<QDateTime()>& Replacement() {
    static std::function<QDateTime()> replacement;
    return replacement;
}

// Where no time zone is named, the C library looks at the zone's file again at each conversion:
// a third of the time of a slip. Naming that very file changes nothing else.
void NameTheTimeZone() {
    static const bool named = [] {
        const QString file = QStringLiteral("/etc/localtime");
        return !qEnvironmentVariableIsSet("TZ") && QFile::exists(file) &&
               qputenv("TZ", (u':' + file).toLocal8Bit());
    }();
    Q_UNUSED(named);
}

}  // namespace

QDateTime Now() {
    NameTheTimeZone();
    const auto& replacement = Replacement();
    return replacement ? replacement() : QDateTime::currentDateTime();
}

QDate Today() {
    return Now().date();
}

void Replace(std::function<QDateTime()> now) {
    Replacement() = std::move(now);
}

}  // namespace base::Clock
