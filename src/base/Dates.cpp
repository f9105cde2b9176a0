#include "base/Dates.h"

namespace base {

namespace {

constexpr qsizetype kStoredLength = 23;

/// Digits of a fixed place, -1 where anything else stands.
int Digits(QStringView text, qsizetype from, qsizetype count) {
    int value = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const int digit = text[i].unicode() - u'0';
        if (digit < 0 || digit > 9)
            return -1;
        value = value * 10 + digit;
    }
    return value;
}

void PutDigits(QChar* place, int value, int count) {
    for (int i = count - 1; i >= 0; --i) {
        place[i] = QChar(u'0' + value % 10);
        value /= 10;
    }
}

}  // namespace

QString ShortDate(const QDate& date) {
    if (!date.isValid())
        return {};
    return QStringLiteral("%1/%2/%3")
        .arg(date.month())
        .arg(date.day())
        .arg(date.year(), 4, 10, QChar(u'0'));
}

QString DateTimeText(const QDateTime& moment) {
    if (!moment.isValid())
        return {};
    const QTime time = moment.time();
    QString text = ShortDate(moment.date());
    if (time == QTime(0, 0))
        return text;
    const int hour = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    text += QStringLiteral(" %1:%2:%3 %4")
                .arg(hour)
                .arg(time.minute(), 2, 10, QChar(u'0'))
                .arg(time.second(), 2, 10, QChar(u'0'))
                .arg(time.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM"));
    return text;
}

QString StoredDateTime(const QDateTime& moment) {
    if (!moment.isValid())
        return {};
    const QDate date = moment.date();
    const QTime time = moment.time();
    QString text = QStringLiteral("0000-00-00 00:00:00.000");
    QChar* place = text.data();
    PutDigits(place, date.year(), 4);
    PutDigits(place + 5, date.month(), 2);
    PutDigits(place + 8, date.day(), 2);
    PutDigits(place + 11, time.hour(), 2);
    PutDigits(place + 14, time.minute(), 2);
    PutDigits(place + 17, time.second(), 2);
    PutDigits(place + 20, time.msec(), 3);
    return text;
}

std::optional<QDateTime> FromStoredDateTime(QStringView text) {
    if (text.size() != kStoredLength || text[4] != u'-' || text[7] != u'-' || text[10] != u' ' ||
        text[13] != u':' || text[16] != u':' || text[19] != u'.')
        return std::nullopt;
    // A misplaced sign or blank gives -1, which neither QDate nor QTime takes.
    const QDate date(Digits(text, 0, 4), Digits(text, 5, 2), Digits(text, 8, 2));
    const QTime time(Digits(text, 11, 2), Digits(text, 14, 2), Digits(text, 17, 2),
                     Digits(text, 20, 3));
    if (Digits(text, 0, 4) < 1 || !date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time);
}

}  // namespace base
