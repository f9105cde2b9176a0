#include "db/OdbcFetch.h"

#include <QStringConverter>
#include <QVarLengthArray>
#include <algorithm>
#include <cstdio>
#include <cstring>

namespace db {

namespace {

using embedded::ColumnKind;

constexpr SQLULEN kWidestBoundText = 1024;
constexpr std::size_t kBlockBytes = 256 * 1024;
constexpr std::size_t kMostBlockRows = 1000;
constexpr std::size_t kPieceCharacters = 32 * 1024;

struct OdbcColumn {
    embedded::ResultColumn Shown;
    SQLSMALLINT TransferType = SQL_C_WCHAR;
    /// Bytes of one cell's buffer.
    std::size_t CellBytes = 0;
    /// Of a width that the server keeps to.
    bool Bounded = true;
    /// Of a width that most cells keep to.
    bool Bindable = true;
};

ColumnKind KindOf(SQLSMALLINT sqlType) {
    switch (sqlType) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            return ColumnKind::Integer;
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return ColumnKind::Double;
        case SQL_TYPE_DATE:
        case SQL_TYPE_TIME:
        case SQL_TYPE_TIMESTAMP:
            return ColumnKind::DateTime;
        default:
            return ColumnKind::Text;
    }
}

OdbcColumn Describe(const OdbcHandle& statement, SQLUSMALLINT number, bool widthsHold) {
    constexpr SQLSMALLINT kMostCharacters = 256;
    SQLWCHAR name[kMostCharacters] = {};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT sqlType = 0;
    SQLSMALLINT decimals = 0;
    SQLSMALLINT nullable = 0;
    SQLULEN width = 0;
    statement.Check(SQLDescribeColW(statement.Raw(), number, name, kMostCharacters, &nameLength,
                                    &sqlType, &width, &decimals, &nullable));
    OdbcColumn column;
    column.Shown.Name = QString::fromUtf16(reinterpret_cast<const char16_t*>(name));
    column.Shown.Kind = KindOf(sqlType);
    switch (column.Shown.Kind) {
        case ColumnKind::Integer:
            column.TransferType = SQL_C_SBIGINT;
            column.CellBytes = sizeof(qint64);
            break;
        case ColumnKind::Double:
            column.TransferType = SQL_C_DOUBLE;
            column.CellBytes = sizeof(double);
            break;
        case ColumnKind::DateTime:
            column.TransferType = SQL_C_TYPE_TIMESTAMP;
            column.CellBytes = sizeof(SQL_TIMESTAMP_STRUCT);
            break;
        case ColumnKind::Text:
            column.Bindable = width > 0 && width <= kWidestBoundText;
            column.Bounded = widthsHold && column.Bindable;
            column.CellBytes = (width + 1) * 2 * sizeof(SQLWCHAR);
            break;
    }
    return column;
}

template <typename T>
T Load(const char* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

void PutMoment(const char* cell, embedded::RowSink& sink) {
    const auto moment = Load<SQL_TIMESTAMP_STRUCT>(cell);
    char stored[64];
    const int length =
        std::snprintf(stored, sizeof stored, "%04d-%02d-%02d %02d:%02d:%02d.%03d", int(moment.year),
                      int(moment.month), int(moment.day), int(moment.hour), int(moment.minute),
                      int(moment.second), int(moment.fraction / 1000000));
    sink.DateTime({stored, std::size_t(length)});
}

void PutText(QStringView text, embedded::RowSink& sink) {
    QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QVarLengthArray<char, 4096> utf8(encoder.requiredSpace(text.size()));
    const char* end = encoder.appendToBuffer(utf8.data(), text);
    sink.Text({utf8.data(), std::size_t(end - utf8.data())});
}

/// A cell of fixed width, or a text that came whole; `length` is its length in bytes.
void PutCell(const OdbcColumn& column, const char* cell, SQLLEN length, embedded::RowSink& sink) {
    if (length == SQL_NULL_DATA) {
        sink.Null();
        return;
    }
    switch (column.Shown.Kind) {
        case ColumnKind::Integer:
            sink.Integer(Load<qint64>(cell));
            break;
        case ColumnKind::Double:
            sink.Double(Load<double>(cell));
            break;
        case ColumnKind::DateTime:
            PutMoment(cell, sink);
            break;
        case ColumnKind::Text:
            PutText({reinterpret_cast<const char16_t*>(cell), length / qsizetype(sizeof(SQLWCHAR))},
                    sink);
            break;
    }
}

/// Rows in blocks, each column bound to its own array.
class BlockFetch final {
public:
    BlockFetch(const OdbcHandle& statement, const std::vector<OdbcColumn>& columns)
        : m_statement(statement), m_columns(columns) {
        std::size_t rowBytes = 0;
        for (const OdbcColumn& column : columns) {
            rowBytes += column.CellBytes;
        }
        m_blockRows = std::clamp<std::size_t>(kBlockBytes / rowBytes, 1, kMostBlockRows);
        Set(SQL_ATTR_ROW_ARRAY_SIZE, SQLPOINTER(m_blockRows));
        Set(SQL_ATTR_ROWS_FETCHED_PTR, &m_fetched);
        for (std::size_t at = 0; at < columns.size(); ++at) {
            m_cells.emplace_back(m_blockRows * columns[at].CellBytes);
            m_lengths.emplace_back(m_blockRows);
            m_statement.Check(SQLBindCol(m_statement.Raw(), SQLUSMALLINT(at + 1),
                                         columns[at].TransferType, m_cells[at].data(),
                                         SQLLEN(columns[at].CellBytes), m_lengths[at].data()));
        }
    }

    ~BlockFetch() {
        SQLFreeStmt(m_statement.Raw(), SQL_UNBIND);
        Set(SQL_ATTR_ROWS_FETCHED_PTR, nullptr);
        Set(SQL_ATTR_ROW_ARRAY_SIZE, SQLPOINTER(1));
    }

    void Run(embedded::RowSink& sink) {
        SQLRETURN result = SQL_SUCCESS;
        while ((result = SQLFetch(m_statement.Raw())) != SQL_NO_DATA) {
            m_statement.Check(result);
            for (std::size_t row = 0; row < m_fetched; ++row) {
                PutRow(row, sink);
            }
        }
    }

private:
    void Set(SQLINTEGER attribute, SQLPOINTER value) {
        SQLSetStmtAttrW(m_statement.Raw(), attribute, value, 0);
    }

    void PutRow(std::size_t row, embedded::RowSink& sink) {
        for (std::size_t at = 0; at < m_columns.size(); ++at) {
            const OdbcColumn& column = m_columns[at];
            const SQLLEN length = m_lengths[at][row];
            const bool cut = length == SQL_NO_TOTAL || length >= SQLLEN(column.CellBytes);
            if (cut && column.Shown.Kind == ColumnKind::Text) {
                throw OdbcFailure{
                    {QStringLiteral("22001"), 0,
                     QStringLiteral("A value of column \"%1\" is wider than the server said.")
                         .arg(column.Shown.Name)}};
            }
            PutCell(column, m_cells[at].data() + row * column.CellBytes, length, sink);
        }
        sink.EndRow();
    }

    const OdbcHandle& m_statement;
    const std::vector<OdbcColumn>& m_columns;
    std::size_t m_blockRows = 1;
    SQLULEN m_fetched = 0;
    std::vector<std::vector<char>> m_cells;
    std::vector<std::vector<SQLLEN>> m_lengths;
};

/// One row after the other: cells of a known width are bound, and asked for again in pieces where
/// a text turns out to be longer.
class PieceFetch final {
public:
    PieceFetch(const OdbcHandle& statement, const std::vector<OdbcColumn>& columns, bool mayRebind)
        : m_statement(statement),
          m_columns(columns),
          m_cells(columns.size()),
          m_lengths(columns.size()),
          m_piece(kPieceCharacters) {
        for (std::size_t at = 0; mayRebind && at < columns.size(); ++at) {
            if (!columns[at].Bindable) {
                continue;
            }
            m_cells[at].resize(columns[at].CellBytes);
            m_statement.Check(SQLBindCol(m_statement.Raw(), SQLUSMALLINT(at + 1),
                                         columns[at].TransferType, m_cells[at].data(),
                                         SQLLEN(columns[at].CellBytes), &m_lengths[at]));
        }
    }
    ~PieceFetch() { SQLFreeStmt(m_statement.Raw(), SQL_UNBIND); }
    PieceFetch(const PieceFetch&) = delete;
    PieceFetch& operator=(const PieceFetch&) = delete;

    void Run(embedded::RowSink& sink) {
        SQLRETURN result = SQL_SUCCESS;
        while ((result = SQLFetch(m_statement.Raw())) != SQL_NO_DATA) {
            m_statement.Check(result);
            for (std::size_t at = 0; at < m_columns.size(); ++at) {
                PutOrGet(at, sink);
            }
            sink.EndRow();
        }
    }

private:
    void PutOrGet(std::size_t at, embedded::RowSink& sink) {
        const OdbcColumn& column = m_columns[at];
        const SQLLEN length = m_lengths[at];
        const bool isText = column.Shown.Kind == ColumnKind::Text;
        const bool cut = isText && (length == SQL_NO_TOTAL ||
                                    length + SQLLEN(sizeof(SQLWCHAR)) > SQLLEN(column.CellBytes));
        if (m_cells[at].empty() || cut) {
            GetCell(column, SQLUSMALLINT(at + 1), sink);
        } else {
            PutCell(column, m_cells[at].data(), length, sink);
        }
    }

    void GetCell(const OdbcColumn& column, SQLUSMALLINT number, embedded::RowSink& sink) {
        if (column.Shown.Kind == ColumnKind::Text) {
            GetText(number, sink);
            return;
        }
        char cell[sizeof(SQL_TIMESTAMP_STRUCT)] = {};
        SQLLEN length = 0;
        m_statement.Check(
            SQLGetData(m_statement.Raw(), number, column.TransferType, cell, sizeof cell, &length));
        PutCell(column, cell, length, sink);
    }

    void GetText(SQLUSMALLINT number, embedded::RowSink& sink) {
        m_text.clear();
        while (true) {
            SQLLEN length = 0;
            const SQLLEN room = SQLLEN(m_piece.size() * sizeof(SQLWCHAR));
            const SQLRETURN result =
                SQLGetData(m_statement.Raw(), number, SQL_C_WCHAR, m_piece.data(), room, &length);
            if (result == SQL_NO_DATA) {
                break;
            }
            m_statement.Check(result);
            if (length == SQL_NULL_DATA) {
                sink.Null();
                return;
            }
            // A full piece gives its last place to the terminator.
            const bool more = length == SQL_NO_TOTAL || length >= room;
            const auto characters = more ? qsizetype(m_piece.size()) - 1
                                         : qsizetype(length) / qsizetype(sizeof(SQLWCHAR));
            m_text.append(
                QStringView(reinterpret_cast<const char16_t*>(m_piece.data()), characters));
            if (!more) {
                break;
            }
        }
        PutText(m_text, sink);
    }

    const OdbcHandle& m_statement;
    const std::vector<OdbcColumn>& m_columns;
    std::vector<std::vector<char>> m_cells;
    std::vector<SQLLEN> m_lengths;
    std::vector<SQLWCHAR> m_piece;
    QString m_text;
};

}  // namespace

void FetchRows(const OdbcHandle& statement, bool widthsHold, embedded::RowSink& sink) {
    SQLSMALLINT count = 0;
    statement.Check(SQLNumResultCols(statement.Raw(), &count));
    std::vector<OdbcColumn> columns;
    std::vector<embedded::ResultColumn> shown;
    bool bounded = true;
    for (SQLSMALLINT number = 1; number <= count; ++number) {
        columns.push_back(Describe(statement, SQLUSMALLINT(number), widthsHold));
        shown.push_back(columns.back().Shown);
        bounded = bounded && columns.back().Bounded;
    }
    sink.BeginResult(shown);
    if (bounded) {
        BlockFetch(statement, columns).Run(sink);
    } else {
        PieceFetch(statement, columns, !widthsHold).Run(sink);
    }
}

}  // namespace db
