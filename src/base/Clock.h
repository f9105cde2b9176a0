#pragma once

#include <QDateTime>
#include <functional>

/// The workstation's clock, local time. Everything that asks the time asks here, so that a
/// test can stand at midnight.
namespace base::Clock {

QDateTime Now();
QDate Today();

/// Replaces the clock; an empty function gives the real one back.
void Replace(std::function<QDateTime()> now);

}  // namespace base::Clock
