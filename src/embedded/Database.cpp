#include "embedded/Database.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <QUrl>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "base/Errors.h"
#include "embedded/Functions.h"

namespace embedded {

namespace {

std::string AfterColon(const std::string& message) {
    const size_t colon = message.find(": ");
    return colon == std::string::npos ? message : message.substr(colon + 2);
}

// "DATABASE..table.column[, ...]": the table stands before the last point.
std::string TableOf(const std::string& columns) {
    const std::string first = columns.substr(0, columns.find(','));
    return first.substr(0, first.rfind('.'));
}

// Every procedure is a savepoint: what it could undo is kept in memory, not in files beside the
// hospital's. Counts for the whole program, before its first database.
void KeepUndoInMemory() {
    static const int told = sqlite3_config(SQLITE_CONFIG_STMTJRNL_SPILL, -1);
    Q_UNUSED(told);
}

// Who has waited so long is the next to write.
constexpr int kTurnMilliseconds = 100;
constexpr int kShownMilliseconds = 500;

std::function<void(bool)>& WaitHook() {
    static std::function<void(bool)> hook;
    return hook;
}

}  // namespace

Database::Database(const QString& file, bool create, bool readOnly, int busyMilliseconds)
    : m_file(file), m_busyMilliseconds(busyMilliseconds) {
    KeepUndoInMemory();
    int flags = SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    QByteArray name = file.toUtf8();
    if (readOnly) {
        // On a medium that takes no files, SQLite cannot make its side files.
        name = "file:" + QUrl::toPercentEncoding(file, "/:") + "?immutable=1";
        flags |= SQLITE_OPEN_READONLY;
    } else {
        name = "file:" + QUrl::toPercentEncoding(file, "/:");
        flags |= SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    }
    const int result = sqlite3_open_v2(name.constData(), &m_handle, flags, nullptr);
    if (result != SQLITE_OK) {
        const Failure failure = LastFailure();
        sqlite3_close(m_handle);
        throw failure;
    }
    sqlite3_extended_result_codes(m_handle, 1);
    sqlite3_busy_handler(m_handle, &Database::WaitForLock, this);
    if (!readOnly) {
        m_turn = std::make_unique<WriteTurn>(file);
    }
    RegisterFunctions(m_handle);
}

Database::~Database() {
    m_begin.reset();
    sqlite3_close_v2(m_handle);
}

void Database::SetWaitHook(std::function<void(bool waiting)> hook) {
    WaitHook() = std::move(hook);
}

int Database::WaitForLock(void* self, int) {
    return static_cast<Database*>(self)->Wait() ? 1 : 0;
}

bool Database::Wait() {
    if (!m_waiting.isValid()) {
        m_waiting.start();
    }
    const qint64 waited = m_waiting.elapsed();
    if (waited >= m_busyMilliseconds) {
        return false;
    }
    if (m_turn && waited >= kTurnMilliseconds) {
        m_turn->Take();
    }
    if (!m_waitShown && waited >= kShownMilliseconds && WaitHook()) {
        m_waitShown = true;
        WaitHook()(true);
    }
    // Short and of uneven length: two programs that meet at the file's lock take turns.
    const int microseconds = QRandomGenerator::global()->bounded(300, 1000);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    return true;
}

void Database::EndWait() {
    if (!m_waiting.isValid()) {
        return;
    }
    m_waiting.invalidate();
    if (m_turn) {
        m_turn->Leave();
    }
    if (m_waitShown && WaitHook()) {
        WaitHook()(false);
    }
    m_waitShown = false;
}

void Database::BeginWriting() {
    while (m_turn && m_turn->IsOthers()) {
        if (!Wait()) {
            EndWait();
            throw InUse();
        }
    }
    if (!m_begin) {
        m_begin = Prepare("BEGIN IMMEDIATE");
    }
    const StatementReset reset(m_begin.get());
    Step(m_begin.get());
}

void Database::RefuseCommitsWhenLost() {
    sqlite3_commit_hook(m_handle, &Database::IsLost, this);
}

// An open file goes on taking rows after it was deleted or replaced, and they go with it when the
// program ends: they must not be told as saved.
int Database::IsLost(void* self) {
    const auto* database = static_cast<Database*>(self);
    int moved = 0;
    sqlite3_file_control(database->m_handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    const char* log = sqlite3_filename_wal(sqlite3_db_filename(database->m_handle, "main"));
    return moved != 0 || !QFileInfo::exists(QString::fromUtf8(log));
}

PreparedStatement Database::Prepare(std::string_view sql, bool lasting) {
    sqlite3_stmt* statement = nullptr;
    const unsigned flags = lasting ? SQLITE_PREPARE_PERSISTENT : 0;
    const int result =
        sqlite3_prepare_v3(m_handle, sql.data(), int(sql.size()), flags, &statement, nullptr);
    EndWait();
    if (result != SQLITE_OK) {
        throw LastFailure();
    }
    return PreparedStatement(statement);
}

void Database::Run(const char* sql) {
    const int result = sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr);
    EndWait();
    if (result != SQLITE_OK) {
        throw LastFailure();
    }
}

bool Database::Step(sqlite3_stmt* statement) {
    const int result = sqlite3_step(statement);
    EndWait();
    if (result == SQLITE_ROW) {
        return true;
    }
    if (result != SQLITE_DONE) {
        throw LastFailure();
    }
    return false;
}

qint64 Database::Number(const char* sql) {
    const PreparedStatement statement = Prepare(sql, false);
    return Step(statement.get()) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

unsigned Database::DataVersion() const {
    unsigned version = 0;
    sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

Failure Database::LastFailure() const {
    const int code = sqlite3_extended_errcode(m_handle);
    const std::string message = sqlite3_errmsg(m_handle);
    if (!message.empty() && message[0] == '#') {
        const size_t colon = message.find(':');
        return Failure(std::atoi(message.c_str() + 1), message.substr(colon + 1));
    }
    switch (code & 0xFF) {
        case SQLITE_CONSTRAINT:
            return ConstraintFailure(code, message);
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return InUse();
        case SQLITE_READONLY:
        case SQLITE_FULL:
        case SQLITE_CANTOPEN:
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
        case SQLITE_IOERR:
            return FileFailure(code, message);
        default:
            return Failure(8180, "Statement could not be run: " + message + ".");
    }
}

Failure Database::InUse() const {
    return Failure(1222, "Lock request time out period exceeded: '" + m_file.toStdString() +
                             "' is in use by another program. Try again in a moment.");
}

Failure Database::FileFailure(int code, const std::string& message) const {
    const std::string file = m_file.toStdString();
    const std::string nothingSaved = base::kNothingSaved.toStdString();
    const Failure full(1105, "Could not write to '" + file + "': the disk is full." + nothingSaved);
    switch (code & 0xFF) {
        case SQLITE_READONLY:
            if (code == SQLITE_READONLY_DIRECTORY || code == SQLITE_READONLY_CANTINIT) {
                return Failure(3906, "Failed to update '" + file +
                                         "' because no files may be made in its folder.");
            }
            return Failure(3906, "Failed to update '" + file + "' because it is read-only.");
        case SQLITE_FULL:
            return full;
        case SQLITE_CANTOPEN:
            return Failure(5133, "The file '" + file + "' cannot be opened.");
        case SQLITE_IOERR:
            // The files beside the hospital's are lengthened in ways that tell a full disk apart
            // only by the system's own number.
            if (sqlite3_system_errno(m_handle) == ENOSPC) {
                return full;
            }
            return Failure(823,
                           "The file '" + file + "' cannot be read or written: " + message + ".");
        default:
            return Failure(824, "The file '" + file + "' is damaged: " + message + ".");
    }
}

Failure Database::ConstraintFailure(int code, const std::string& message) const {
    const std::string what = AfterColon(message);
    switch (code) {
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_PRIMARYKEY:
        case SQLITE_CONSTRAINT_ROWID:
            return Failure(2627,
                           "Violation of PRIMARY KEY or UNIQUE constraint. Cannot insert "
                           "duplicate key in object '" +
                               TableOf(what) + "'.");
        case SQLITE_CONSTRAINT_COMMITHOOK:
            return Failure(5120, "The hospital file '" + m_file.toStdString() +
                                     "' was deleted, moved or replaced while the program was "
                                     "running." +
                                     base::kNothingSaved.toStdString() +
                                     " Leave the program open and call your administrator.");
        case SQLITE_CONSTRAINT_NOTNULL:
            return Failure(515, "Cannot insert the value NULL into column '" +
                                    what.substr(what.rfind('.') + 1) + "', table '" +
                                    TableOf(what) + "'; column does not allow nulls.");
        case SQLITE_CONSTRAINT_CHECK:
            return Failure(547,
                           "The statement conflicted with the CHECK constraint \"" + what + "\".");
        default:
            return Failure(8114, "Error converting data type: " + message + ".");
    }
}

}  // namespace embedded
