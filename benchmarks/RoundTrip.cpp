#include <sql.h>
#include <sqlext.h>

#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <stdexcept>

#include "benchmarks/Measure.h"
#include "db/Connection.h"
#include "db/Recordset.h"

namespace bench {

namespace {

constexpr int kRows = 500;
constexpr int kCalls = 20;

/// The yardstick: the driver manager's C API, every column bound, one row after the other.
class BareOdbc final {
public:
    explicit BareOdbc(const QString& connectionString) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, SQLPOINTER(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        Check(SQLDriverConnectW(m_connection, nullptr, Wide(connectionString),
                                SQLSMALLINT(connectionString.size()), nullptr, 0, nullptr,
                                SQL_DRIVER_NOPROMPT));
    }
    ~BareOdbc() {
        SQLDisconnect(m_connection);
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    BareOdbc(const BareOdbc&) = delete;
    BareOdbc& operator=(const BareOdbc&) = delete;

    int ReadAll(const QString& command) {
        SQLHSTMT statement = SQL_NULL_HSTMT;
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &statement);
        Check(SQLExecDirectW(statement, Wide(command), SQLINTEGER(command.size())));
        SQLSMALLINT columns = 0;
        while (Check(SQLNumResultCols(statement, &columns)), columns == 0)
            Check(SQLMoreResults(statement));
        for (SQLSMALLINT at = 0; at < columns; ++at)
            Bind(statement, at);
        int rows = 0;
        while (SQL_SUCCEEDED(SQLFetch(statement)))
            ++rows;
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return rows;
    }

private:
    struct Cell {
        std::array<SQLWCHAR, 2048> Buffer;
        SQLLEN Length;
    };

    void Bind(SQLHSTMT statement, SQLSMALLINT at) {
        SQLLEN type = 0;
        SQLColAttributeW(statement, SQLUSMALLINT(at + 1), SQL_DESC_CONCISE_TYPE, nullptr, 0,
                         nullptr, &type);
        const bool whole = type == SQL_INTEGER || type == SQL_BIGINT || type == SQL_BIT;
        const bool number = type == SQL_DOUBLE || type == SQL_DECIMAL || type == SQL_NUMERIC;
        const SQLSMALLINT to = whole                        ? SQLSMALLINT(SQL_C_SBIGINT)
                               : number                     ? SQLSMALLINT(SQL_C_DOUBLE)
                               : type == SQL_TYPE_TIMESTAMP ? SQLSMALLINT(SQL_C_TYPE_TIMESTAMP)
                                                            : SQLSMALLINT(SQL_C_WCHAR);
        Cell& cell = m_cells[std::size_t(at)];
        Check(SQLBindCol(statement, SQLUSMALLINT(at + 1), to, cell.Buffer.data(),
                         sizeof cell.Buffer, &cell.Length));
    }

    static SQLWCHAR* Wide(const QString& text) {
        return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
    }

    static void Check(SQLRETURN result) {
        if (!SQL_SUCCEEDED(result))
            throw std::runtime_error("the bare ODBC call failed");
    }

    SQLHENV m_environment = SQL_NULL_HENV;
    SQLHDBC m_connection = SQL_NULL_HDBC;
    std::array<Cell, 64> m_cells{};
};

/// Without a server: as many rows in a file of the driver that every machine can have.
QString FileOfRows(const QTemporaryDir& folder) {
    QFile drivers(folder.filePath(QStringLiteral("odbcinst.ini")));
    if (!drivers.open(QIODevice::WriteOnly))
        throw std::runtime_error("no folder for the ODBC settings");
    drivers.write("[SQLite3]\nDriver=libsqlite3odbc.so\n");
    drivers.close();
    qputenv("ODBCSYSINI", QFile::encodeName(folder.path()));
    const QString text = QStringLiteral("Driver=SQLite3;Database=%1;")
                             .arg(folder.filePath(QStringLiteral("rows.db")));
    const auto connection = db::Connection::Open(text);
    connection->Execute(
        QStringLiteral("CREATE TABLE patient (id INTEGER, hospital VARCHAR(10), "
                       "last VARCHAR(40), first VARCHAR(40), born TIMESTAMP, owed DOUBLE)"));
    connection->Execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT %1) "
                       "INSERT INTO patient SELECT i, 100000 + i, 'Abernathy ' || i, "
                       "'Maria Concepcion', '1950-12-31 00:00:00.000', i * 12.5 FROM n")
            .arg(kRows));
    return text;
}

}  // namespace

// One call that brings 500 rows, beside the bare C API on a connection of the same string. The
// server is the one that CAPD_SERVER names.
void RoundTrip() {
    const QTemporaryDir folder;
    QString text = qEnvironmentVariable("CAPD_SERVER");
    const bool server = !text.isEmpty();
    if (!server)
        text = FileOfRows(folder);
    const QString command = server
                                ? QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '','0',''")
                                : QStringLiteral("SELECT * FROM patient");
    const auto connection = db::Connection::Open(text);
    BareOdbc bare(text);
    const int expected = bare.ReadAll(command);
    if (expected != kRows && !server)
        throw std::runtime_error("the rows are not there");
    db::Recordset rows;
    Print(Alternate(
        server ? QStringLiteral("round-trip") : QStringLiteral("round-trip (no server)"), 31,
        [&] {
            for (int call = 0; call < kCalls; ++call) {
                if (rows.State() != 0)
                    rows.Close();
                rows.Open(command, connection);
            }
        },
        [&] {
            for (int call = 0; call < kCalls; ++call)
                if (bare.ReadAll(command) != expected)
                    throw std::runtime_error("other rows than before");
        }));
}

}  // namespace bench
