#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

/// How dates are written as text, everywhere in the program, whatever the machine's language.
namespace base {

/// "M/d/yyyy"; empty for an invalid date.
QString ShortDate(const QDate& date);

/// "M/d/yyyy h:mm:ss AM/PM", without the time at exactly midnight; empty for an invalid one.
QString DateTimeText(const QDateTime& moment);

/// "yyyy-MM-dd HH:mm:ss.fff": how a moment is stored; sorts as text.
QString StoredDateTime(const QDateTime& moment);

/// Reads the stored form. Nothing for any other text.
std::optional<QDateTime> FromStoredDateTime(QStringView text);

}  // namespace base
