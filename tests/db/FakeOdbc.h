#pragma once

#include <sql.h>
#include <sqlext.h>

#include <QDateTime>
#include <QStringList>
#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
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
    std::optional<Failure> ConnectFails;
    std::optional<Failure> InfoFails;
    std::optional<Failure> EndFails;
    bool AutoCommitFails = false;
    bool Dead = false;
    bool NoHandles = false;
    bool NoDiagnosis = false;
    int OpenHandles = 0;
    quintptr LogInSeconds = 0;
    std::size_t LargestBlock = 0;
    int Pieces = 0;
};

World& TheWorld();

}  // namespace FakeOdbc

namespace FakeOdbc {

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
    SQLSMALLINT Kind;
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
    // Only of a whole command does "no data" mean that it met no row.
    SQLRETURN Execute(Results results) {
        Pending = std::move(results);
        const SQLRETURN started = Start();
        const bool metNoRow =
            started == SQL_SUCCESS && Pending.front().Columns.empty() && !Pending.front().RowCount;
        return metNoRow ? SQL_NO_DATA : started;
    }
    SQLRETURN Start() {
        NextRow = 0;
        if (Pending.empty()) {
            return SQL_NO_DATA;
        }
        const Result& result = Pending.front();
        if (result.Failed && result.Columns.empty()) {
            return Fail(*result.Failed);
        }
        return SQL_SUCCESS;
    }
};

inline Handle* Of(SQLHANDLE handle) {
    return static_cast<Handle*>(handle);
}

inline QString TextOf(const SQLWCHAR* text, qsizetype length) {
    const auto* utf16 = reinterpret_cast<const char16_t*>(text);
    return length < 0 ? QString::fromUtf16(utf16) : QString::fromUtf16(utf16, length);
}

inline void Put(const QString& text, SQLWCHAR* to, qsizetype room) {
    const qsizetype length = std::min(text.size(), room - 1);
    std::memcpy(to, text.utf16(), std::size_t(length) * sizeof(SQLWCHAR));
    to[length] = 0;
}

/// Writes a cell; says its length in bytes, which may be more than there is room for.
inline SQLLEN PutCell(const QString& text, SQLSMALLINT type, char* to, SQLLEN room) {
    if (text.isNull()) {
        return SQL_NULL_DATA;
    }
    if (type == SQL_C_SBIGINT) {
        const qint64 number = text.toLongLong();
        std::memcpy(to, &number, sizeof number);
        return sizeof number;
    }
    if (type == SQL_C_DOUBLE) {
        const double number = text.toDouble();
        std::memcpy(to, &number, sizeof number);
        return sizeof number;
    }
    if (type == SQL_C_TYPE_TIMESTAMP) {
        const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
        const QDate date = moment.date();
        const QTime time = moment.time();
        const SQL_TIMESTAMP_STRUCT stamp{
            SQLSMALLINT(date.year()),          SQLUSMALLINT(date.month()),
            SQLUSMALLINT(date.day()),          SQLUSMALLINT(time.hour()),
            SQLUSMALLINT(time.minute()),       SQLUSMALLINT(time.second()),
            SQLUINTEGER(time.msec()) * 1000000};
        std::memcpy(to, &stamp, sizeof stamp);
        return sizeof stamp;
    }
    Put(text, reinterpret_cast<SQLWCHAR*>(to), room / qsizetype(sizeof(SQLWCHAR)));
    return text.size() * qsizetype(sizeof(SQLWCHAR));
}

}  // namespace FakeOdbc

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT kind, SQLHANDLE, SQLHANDLE* handle) {
    if (FakeOdbc::TheWorld().NoHandles) {
        return SQL_ERROR;
    }
    ++FakeOdbc::TheWorld().OpenHandles;
    *handle = new FakeOdbc::Handle{.Kind = kind};
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    --FakeOdbc::TheWorld().OpenHandles;
    delete FakeOdbc::Of(handle);
    return SQL_SUCCESS;
}

SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

SQLRETURN SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    auto& world = FakeOdbc::TheWorld();
    if (attribute == SQL_ATTR_LOGIN_TIMEOUT) {
        world.LogInSeconds = quintptr(value);
    } else if (attribute == SQL_ATTR_AUTOCOMMIT) {
        if (world.AutoCommitFails) {
            return FakeOdbc::Of(handle)->Fail({u"HY000"_s, 9, u"no"_s});
        }
        world.Steps << (value ? u"autocommit on"_s : u"autocommit off"_s);
    }
    return SQL_SUCCESS;
}

SQLRETURN SQLGetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    *static_cast<SQLUINTEGER*>(value) = FakeOdbc::TheWorld().Dead ? SQL_CD_TRUE : SQL_CD_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*,
                            SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT) {
    auto& world = FakeOdbc::TheWorld();
    world.ConnectionString = FakeOdbc::TextOf(text, length);
    return world.ConnectFails ? FakeOdbc::Of(handle)->Fail(*world.ConnectFails) : SQL_SUCCESS;
}

SQLRETURN SQLDisconnect(SQLHDBC) {
    FakeOdbc::TheWorld().Steps << u"disconnect"_s;
    return SQL_SUCCESS;
}

SQLRETURN SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT, SQLPOINTER value, SQLSMALLINT room,
                      SQLSMALLINT*) {
    auto& world = FakeOdbc::TheWorld();
    if (world.InfoFails) {
        return FakeOdbc::Of(handle)->Fail(*world.InfoFails);
    }
    FakeOdbc::Put(world.DbmsName, static_cast<SQLWCHAR*>(value), room / 2);
    return SQL_SUCCESS;
}

SQLRETURN SQLEndTran(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT how) {
    auto& world = FakeOdbc::TheWorld();
    world.Steps << (how == SQL_COMMIT ? u"commit"_s : u"rollback"_s);
    return world.EndFails ? FakeOdbc::Of(handle)->Fail(*world.EndFails) : SQL_SUCCESS;
}

SQLRETURN SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT, SQLWCHAR* state,
                         SQLINTEGER* number, SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT*) {
    if (FakeOdbc::TheWorld().NoDiagnosis) {
        return SQL_NO_DATA;
    }
    const auto& last = FakeOdbc::Of(handle)->Last;
    FakeOdbc::Put(last.State, state, 6);
    FakeOdbc::Put(last.Text, text, room);
    *number = last.Number;
    return SQL_SUCCESS;
}

SQLRETURN SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
    auto& world = FakeOdbc::TheWorld();
    world.Commands << FakeOdbc::TextOf(text, length);
    return FakeOdbc::Of(handle)->Execute(world.Answer(world.Commands.last()));
}

SQLRETURN SQLMoreResults(SQLHSTMT handle) {
    auto* statement = FakeOdbc::Of(handle);
    if (!statement->Pending.empty()) {
        statement->Pending.pop_front();
    }
    return statement->Start();
}

SQLRETURN SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
    *count = SQLSMALLINT(FakeOdbc::Of(handle)->Pending.front().Columns.size());
    return SQL_SUCCESS;
}

SQLRETURN SQLRowCount(SQLHSTMT handle, SQLLEN* count) {
    *count = FakeOdbc::Of(handle)->Pending.front().RowCount;
    return SQL_SUCCESS;
}

SQLRETURN SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT room,
                          SQLSMALLINT*, SQLSMALLINT* type, SQLULEN* width, SQLSMALLINT*,
                          SQLSMALLINT*) {
    const auto& column = FakeOdbc::Of(handle)->Pending.front().Columns[number - 1U];
    FakeOdbc::Put(column.Name, name, room);
    *type = column.Type;
    *width = column.Width;
    return SQL_SUCCESS;
}

SQLRETURN SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    auto* statement = FakeOdbc::Of(handle);
    if (attribute == SQL_ATTR_ROW_ARRAY_SIZE) {
        statement->BlockRows = std::size_t(quintptr(value));
        auto& largest = FakeOdbc::TheWorld().LargestBlock;
        largest = std::max(largest, statement->BlockRows);
    } else if (attribute == SQL_ATTR_ROWS_FETCHED_PTR) {
        statement->Fetched = static_cast<SQLULEN*>(value);
    }
    return SQL_SUCCESS;
}

SQLRETURN SQLBindCol(SQLHSTMT handle, SQLUSMALLINT, SQLSMALLINT type, SQLPOINTER cells,
                     SQLLEN cellBytes, SQLLEN* lengths) {
    FakeOdbc::Of(handle)->Bindings.push_back({type, static_cast<char*>(cells), cellBytes, lengths});
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT) {
    FakeOdbc::Of(handle)->Bindings.clear();
    return SQL_SUCCESS;
}

SQLRETURN SQLFetch(SQLHSTMT handle) {
    auto* statement = FakeOdbc::Of(handle);
    const auto& result = statement->Pending.front();
    statement->PieceColumn = 0;
    const std::size_t start = statement->NextRow;
    const std::size_t end = std::min(start + statement->BlockRows, result.Rows.size());
    if (start == end) {
        return result.Failed ? statement->Fail(*result.Failed) : SQL_NO_DATA;
    }
    for (std::size_t at = 0; at < statement->Bindings.size(); ++at) {
        const auto& binding = statement->Bindings[at];
        for (std::size_t row = start; row < end; ++row) {
            char* cell = binding.Cells + SQLLEN(row - start) * binding.CellBytes;
            binding.Lengths[row - start] =
                FakeOdbc::PutCell(result.Rows[row][at], binding.Type, cell, binding.CellBytes);
        }
    }
    if (statement->Fetched) {
        *statement->Fetched = end - start;
    }
    statement->NextRow = end;
    return SQL_SUCCESS;
}

// As the real ones do: a text longer than the room comes in pieces, each with its end mark.
SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER to,
                     SQLLEN room, SQLLEN* length) {
    auto* statement = FakeOdbc::Of(handle);
    if (statement->PieceColumn != number) {
        statement->PieceColumn = number;
        statement->PieceAt = 0;
    } else if (statement->PieceAt < 0) {
        return SQL_NO_DATA;
    }
    const QString& text = statement->Pending.front().Rows[statement->NextRow - 1][number - 1U];
    const QString rest = text.isNull() ? text : text.mid(statement->PieceAt);
    *length = FakeOdbc::PutCell(rest, type, static_cast<char*>(to), room);
    if (type != SQL_C_WCHAR || *length < room) {
        statement->PieceAt = -1;
        return SQL_SUCCESS;
    }
    ++FakeOdbc::TheWorld().Pieces;
    *length = FakeOdbc::TheWorld().Pieces % 2 ? SQL_NO_TOTAL : *length;
    statement->PieceAt += room / qsizetype(sizeof(SQLWCHAR)) - 1;
    return SQL_SUCCESS_WITH_INFO;
}

SQLRETURN SQLPrimaryKeysW(SQLHSTMT, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*,
                          SQLSMALLINT) {
    return SQL_ERROR;
}

}  // extern "C"
