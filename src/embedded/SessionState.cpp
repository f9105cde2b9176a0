#include "embedded/SessionState.h"

#include <QRandomGenerator>

#include "base/Clock.h"
#include "base/Dates.h"

namespace embedded {

namespace {

constexpr qint64 MillisecondsADay = 86'400'000;

}  // namespace

qint64 SessionState::Id() {
    if (m_id != 0) {
        return m_id;
    }
    if (sqlite3_db_readonly(m_database.Handle(), "main") == 1) {
        m_id = QRandomGenerator::global()->bounded(1 << 20, 1 << 30);
        return m_id;
    }
    m_idUncommitted = transactions.Depth() > 0;
    const PreparedStatement statement =
        m_database.Prepare("UPDATE catalog_sessions SET last = last + 1 RETURNING last", false);
    while (m_database.Step(statement.get())) {
        m_id = sqlite3_column_int64(statement.get(), 0);
    }
    return m_id;
}

void SessionState::UndoAll() {
    // A number taken inside what is now undone may be given to another session.
    if (m_idUncommitted && transactions.Depth() > 0) {
        m_id = 0;
    }
    m_idUncommitted = false;
    transactions.UndoAll();
}

std::string SessionState::Now() {
    const QDateTime now = base::Clock::Now();
    const qint64 ticks = (qint64(now.time().msecsSinceStartOfDay()) * 3 + 5) / 10;
    const qint64 milliseconds = (ticks * 10 + 1) / 3;
    // The last instant of a day rounds into the next one.
    const int day = milliseconds >= MillisecondsADay ? 1 : 0;
    const QTime time = QTime::fromMSecsSinceStartOfDay(int(milliseconds % MillisecondsADay));
    return base::StoredDateTime(QDateTime(now.date().addDays(day), time, Qt::UTC)).toStdString();
}

}  // namespace embedded
