#include "base/Clock.h"

#include <utility>

namespace base::Clock {

namespace {

std::function<QDateTime()>& Replacement() {
    static std::function<QDateTime()> replacement;
    return replacement;
}

}  // namespace

QDateTime Now() {
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
