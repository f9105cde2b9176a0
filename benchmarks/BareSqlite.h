#pragma once

#include <sqlite3.h>

#include <QString>
#include <stdexcept>
#include <string>
#include <vector>

#include "embedded/Functions.h"

/// The yardstick: the file through SQLite's C API, with nothing in between.
namespace bench {

class BareSqlite final {
public:
    explicit BareSqlite(const QString& file) {
        Check(sqlite3_open_v2(file.toUtf8().constData(), &m_database, SQLITE_OPEN_READWRITE,
                              nullptr));
        embedded::RegisterFunctions(m_database);
        Run("PRAGMA journal_mode=WAL");
        Run("PRAGMA synchronous=FULL");
    }
    ~BareSqlite() { sqlite3_close_v2(m_database); }
    BareSqlite(const BareSqlite&) = delete;
    BareSqlite& operator=(const BareSqlite&) = delete;

    void Run(const char* sql) { Check(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr)); }
    sqlite3* Handle() const { return m_database; }

private:
    void Check(int code) const {
        if (code != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database));
    }
    sqlite3* m_database = nullptr;
};

/// A prepared statement of it.
class BareStatement final {
public:
    BareStatement(const BareSqlite& database, const std::string& sql) {
        if (sqlite3_prepare_v2(database.Handle(), sql.c_str(), -1, &m_statement, nullptr) !=
            SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database.Handle()) + (": " + sql));
    }
    ~BareStatement() { sqlite3_finalize(m_statement); }
    BareStatement(const BareStatement&) = delete;
    BareStatement& operator=(const BareStatement&) = delete;

    void Bind(int position, const std::string& text) {
        sqlite3_bind_text(m_statement, position, text.c_str(), int(text.size()), SQLITE_TRANSIENT);
    }
    void Bind(int position, qint64 number) { sqlite3_bind_int64(m_statement, position, number); }
    /// One step that returns nothing, ready for the next.
    void Write() {
        if (sqlite3_step(m_statement) != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(m_statement)));
        sqlite3_reset(m_statement);
    }
    /// Reads every column of every row as text and returns the number of rows.
    int ReadAll() {
        int rows = 0;
        const int columns = sqlite3_column_count(m_statement);
        while (sqlite3_step(m_statement) == SQLITE_ROW) {
            for (int column = 0; column < columns; ++column)
                m_bytes += size_t(sqlite3_column_text(m_statement, column)
                                      ? sqlite3_column_bytes(m_statement, column)
                                      : 0);
            ++rows;
        }
        sqlite3_reset(m_statement);
        return rows;
    }

private:
    sqlite3_stmt* m_statement = nullptr;
    size_t m_bytes = 0;
};

}  // namespace bench
