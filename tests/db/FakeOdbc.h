#pragma once

#include <sql.h>
#include <sqlext.h>

#include <QDateTime>
#include <QStringList>
#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

/// A stand-in for the driver manager with a SQL Server behind it. Its functions take the place of
/// the real ones in a program that includes this file.
namespace FakeOdbc {

struct Failure {
    QString State = {};
    int Number = 0;
    QString Text = {};
    int Line = 0;
};

struct Column {
    QString Name = {};
    SQLSMALLINT Type = SQL_VARCHAR;
    SQLULEN Width = 20;
};

/// One result of a command: rows under columns, a row count, or a failure. Cells are texts; null
/// is a null QString. A failure with columns comes after its rows.
struct Result {
    std::vector<Column> Columns = {};
    std::vector<std::vector<QString>> Rows = {};
    SQLLEN RowCount = -1;
    std::optional<Failure> Failed = {};
};

using Results = std::deque<Result>;

struct World {
    std::function<Results(const QString& command)> Answer;
    QString DbmsName = u"Microsoft SQL Server"_s;
    QString ConnectionString;
    QStringList Commands;
    /// "autocommit on", "commit", "rollback", "disconnect", ...
    QStringList Steps;
    /// What "connect", "info", "autocommit" and "end" (of a transaction) fail with.
    std::map<QString, Failure> Fails;
    bool Dead = false;
    bool NoHandles = false;
    bool NoDiagnosis = false;
    int OpenHandles = 0;
    quintptr LogInSeconds = 0;
    quintptr CommandSeconds = 0;
    std::size_t LargestBlock = 0;
    int Pieces = 0;
};

inline World& TheWorld() {
    static World world;
    return world;
}

struct Binding {
    SQLSMALLINT Type;
    char* Cells;
    SQLLEN CellBytes;
    SQLLEN* Lengths;
};

struct Handle {
    Failure Last = {};
    Results Pending = {};
    std::vector<Binding> Bindings = {};
    std::size_t BlockRows = 1;
    SQLULEN* Fetched = nullptr;
    std::size_t NextRow = 0;
    SQLUSMALLINT PieceColumn = 0;
    qsizetype PieceAt = 0;

    SQLRETURN Fail(const Failure& failure) {
        Last = failure;
        return SQL_ERROR;
    }
    SQLRETURN Do(const QString& step) {
        const auto failure = TheWorld().Fails.find(step);
        return failure == TheWorld().Fails.end() ? SQL_SUCCESS : Fail(failure->second);
    }
    SQLRETURN Start() {
        NextRow = 0;
        if (Pending.empty())
            return SQL_NO_DATA;
        const Result& result = Pending.front();
        return result.Failed && result.Columns.empty() ? Fail(*result.Failed) : SQL_SUCCESS;
    }
};

inline Handle& Of(SQLHANDLE handle) {
    return *static_cast<Handle*>(handle);
}

inline void Put(const QString& text, SQLPOINTER to, qsizetype room) {
    const qsizetype length = std::min(text.size(), room - 1);
    std::memcpy(to, text.utf16(), std::size_t(length) * sizeof(SQLWCHAR));
    static_cast<SQLWCHAR*>(to)[length] = 0;
}

template <typename Fixed>
SQLLEN PutFixed(const Fixed& value, void* to) {
    std::memcpy(to, &value, sizeof value);
    return sizeof value;
}

/// Writes a cell; says its length in bytes, which may be more than there is room for.
inline SQLLEN PutCell(const QString& text, SQLSMALLINT type, void* to, SQLLEN room) {
    if (text.isNull())
        return SQL_NULL_DATA;
    if (type == SQL_C_SBIGINT)
        return PutFixed(text.toLongLong(), to);
    if (type == SQL_C_DOUBLE)
        return PutFixed(text.toDouble(), to);
    if (type == SQL_C_TYPE_TIMESTAMP) {
        SQL_TIMESTAMP_STRUCT stamp{};
        std::sscanf(qPrintable(text), "%hd-%hu-%huT%hu:%hu:%hu.%u", &stamp.year, &stamp.month,
                    &stamp.day, &stamp.hour, &stamp.minute, &stamp.second, &stamp.fraction);
        stamp.fraction *= 1000000;
        return PutFixed(stamp, to);
    }
    Put(text, to, room / qsizetype(sizeof(SQLWCHAR)));
    return text.size() * qsizetype(sizeof(SQLWCHAR));
}

}  // namespace FakeOdbc

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT, SQLHANDLE, SQLHANDLE* handle) {
    if (FakeOdbc::TheWorld().NoHandles)
        return SQL_ERROR;
    ++FakeOdbc::TheWorld().OpenHandles;
    *handle = new FakeOdbc::Handle;
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    --FakeOdbc::TheWorld().OpenHandles;
    delete &FakeOdbc::Of(handle);
    return SQL_SUCCESS;
}

SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

SQLRETURN SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    auto& world = FakeOdbc::TheWorld();
    if (attribute == SQL_ATTR_LOGIN_TIMEOUT)
        world.LogInSeconds = quintptr(value);
    if (attribute != SQL_ATTR_AUTOCOMMIT)
        return SQL_SUCCESS;
    const SQLRETURN done = FakeOdbc::Of(handle).Do(u"autocommit"_s);
    if (done == SQL_SUCCESS)
        world.Steps << (value ? u"autocommit on"_s : u"autocommit off"_s);
    return done;
}

SQLRETURN SQLGetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    *static_cast<SQLUINTEGER*>(value) = FakeOdbc::TheWorld().Dead ? SQL_CD_TRUE : SQL_CD_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*,
                            SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT) {
    FakeOdbc::TheWorld().ConnectionString =
        QString::fromUtf16(reinterpret_cast<char16_t*>(text), length);
    return FakeOdbc::Of(handle).Do(u"connect"_s);
}

SQLRETURN SQLDisconnect(SQLHDBC) {
    FakeOdbc::TheWorld().Steps << u"disconnect"_s;
    return SQL_SUCCESS;
}

SQLRETURN SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT, SQLPOINTER value, SQLSMALLINT room,
                      SQLSMALLINT*) {
    FakeOdbc::Put(FakeOdbc::TheWorld().DbmsName, value, room / 2);
    return FakeOdbc::Of(handle).Do(u"info"_s);
}

SQLRETURN SQLEndTran(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT how) {
    FakeOdbc::TheWorld().Steps << (how == SQL_COMMIT ? u"commit"_s : u"rollback"_s);
    return FakeOdbc::Of(handle).Do(u"end"_s);
}

SQLRETURN SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT, SQLWCHAR* state,
                         SQLINTEGER* number, SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT*) {
    const auto& last = FakeOdbc::Of(handle).Last;
    FakeOdbc::Put(last.State, state, 6);
    FakeOdbc::Put(last.Text, text, room);
    *number = last.Number;
    return FakeOdbc::TheWorld().NoDiagnosis ? SQL_NO_DATA : SQL_SUCCESS;
}

SQLRETURN SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT, SQLSMALLINT,
                           SQLPOINTER value, SQLSMALLINT, SQLSMALLINT*) {
    *static_cast<SQLINTEGER*>(value) = FakeOdbc::Of(handle).Last.Line;
    return SQL_SUCCESS;
}

// Only of a whole command does "no data" mean that it met no row.
SQLRETURN SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
    auto& world = FakeOdbc::TheWorld();
    auto& statement = FakeOdbc::Of(handle);
    world.Commands << QString::fromUtf16(reinterpret_cast<char16_t*>(text), length);
    statement.Pending = world.Answer(world.Commands.last());
    const SQLRETURN started = statement.Start();
    const auto& first = statement.Pending.front();
    return started == SQL_SUCCESS && first.Columns.empty() && !first.RowCount ? SQL_NO_DATA
                                                                              : started;
}

SQLRETURN SQLMoreResults(SQLHSTMT handle) {
    auto& statement = FakeOdbc::Of(handle);
    if (!statement.Pending.empty())
        statement.Pending.pop_front();
    return statement.Start();
}

SQLRETURN SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
    *count = SQLSMALLINT(FakeOdbc::Of(handle).Pending.front().Columns.size());
    return SQL_SUCCESS;
}

SQLRETURN SQLRowCount(SQLHSTMT handle, SQLLEN* count) {
    *count = FakeOdbc::Of(handle).Pending.front().RowCount;
    return SQL_SUCCESS;
}

SQLRETURN SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT room,
                          SQLSMALLINT*, SQLSMALLINT* type, SQLULEN* width, SQLSMALLINT*,
                          SQLSMALLINT*) {
    const auto& column = FakeOdbc::Of(handle).Pending.front().Columns[number - 1U];
    FakeOdbc::Put(column.Name, name, room);
    *type = column.Type;
    *width = column.Width;
    return SQL_SUCCESS;
}

SQLRETURN SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    auto& world = FakeOdbc::TheWorld();
    auto& statement = FakeOdbc::Of(handle);
    if (attribute == SQL_ATTR_QUERY_TIMEOUT)
        world.CommandSeconds = quintptr(value);
    if (attribute == SQL_ATTR_ROWS_FETCHED_PTR)
        statement.Fetched = static_cast<SQLULEN*>(value);
    if (attribute == SQL_ATTR_ROW_ARRAY_SIZE)
        statement.BlockRows = std::size_t(quintptr(value));
    world.LargestBlock = std::max(world.LargestBlock, statement.BlockRows);
    return SQL_SUCCESS;
}

SQLRETURN SQLBindCol(SQLHSTMT handle, SQLUSMALLINT, SQLSMALLINT type, SQLPOINTER cells,
                     SQLLEN cellBytes, SQLLEN* lengths) {
    FakeOdbc::Of(handle).Bindings.push_back({type, static_cast<char*>(cells), cellBytes, lengths});
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT) {
    FakeOdbc::Of(handle).Bindings.clear();
    return SQL_SUCCESS;
}

SQLRETURN SQLFetch(SQLHSTMT handle) {
    auto& statement = FakeOdbc::Of(handle);
    const auto& result = statement.Pending.front();
    statement.PieceColumn = 0;
    const std::size_t start = statement.NextRow;
    const std::size_t end = std::min(start + statement.BlockRows, result.Rows.size());
    if (start == end)
        return result.Failed ? statement.Fail(*result.Failed) : SQL_NO_DATA;
    for (std::size_t at = 0; at < statement.Bindings.size(); ++at) {
        const auto& [type, cells, bytes, lengths] = statement.Bindings[at];
        for (std::size_t row = start; row < end; ++row)
            lengths[row - start] = FakeOdbc::PutCell(result.Rows[row][at], type,
                                                     cells + SQLLEN(row - start) * bytes, bytes);
    }
    if (statement.Fetched)
        *statement.Fetched = end - start;
    statement.NextRow = end;
    return SQL_SUCCESS;
}

// As the real ones do: a text longer than the room comes in pieces, each with its end mark.
SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER to,
                     SQLLEN room, SQLLEN* length) {
    auto& statement = FakeOdbc::Of(handle);
    if (std::exchange(statement.PieceColumn, number) != number)
        statement.PieceAt = 0;
    else if (statement.PieceAt < 0)
        return SQL_NO_DATA;
    const QString& text = statement.Pending.front().Rows[statement.NextRow - 1][number - 1U];
    const QString rest = text.isNull() ? text : text.mid(statement.PieceAt);
    *length = FakeOdbc::PutCell(rest, type, to, room);
    if (type != SQL_C_WCHAR || *length < room) {
        statement.PieceAt = -1;
        return SQL_SUCCESS;
    }
    ++FakeOdbc::TheWorld().Pieces;
    *length = FakeOdbc::TheWorld().Pieces % 2 ? SQL_NO_TOTAL : *length;
    statement.PieceAt += room / qsizetype(sizeof(SQLWCHAR)) - 1;
    return SQL_SUCCESS_WITH_INFO;
}

}  // extern "C"
