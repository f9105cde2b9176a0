#include "db/OdbcDriver.h"

#include <QScopeGuard>
#include <QStringList>
#include <algorithm>
#include <tuple>
#include <utility>

#include "db/CommandText.h"
#include "db/ConnectionText.h"
#include "db/OdbcFetch.h"
#include "db/RowStore.h"
#include "embedded/ScriptText.h"

namespace db {

namespace {

constexpr quintptr kLogInSeconds = 15;
constexpr quintptr kCommandSeconds = 30;
constexpr int kNothingToCommit = 3902;
constexpr int kConnectionLost = 10054;
constexpr int kDeadlock = 1205;

/// What the results of one command add up to.
class ResultReader final {
public:
    ResultReader(const OdbcHandle& statement, bool widthsHold, embedded::RowSink& sink)
        : m_statement(statement), m_widthsHold(widthsHold), m_sink(sink) {}

    // Row counts may come before the rows, and an error after them: all results are looked at.
    // The second error ends it, a broken statement could go on for ever.
    qint64 ReadAll(SQLRETURN executed) {
        std::optional<OdbcFailure> failed = Attempt(executed);
        SQLRETURN result = SQL_SUCCESS;
        while ((result = SQLMoreResults(m_statement.Raw())) != SQL_NO_DATA) {
            const auto next = Attempt(result);
            if (next && failed) {
                break;
            }
            failed = failed ? failed : next;
        }
        if (failed) {
            throw *failed;
        }
        return m_written;
    }

private:
    std::optional<OdbcFailure> Attempt(SQLRETURN result) {
        try {
            Read(result);
        } catch (const OdbcFailure& failure) {
            return failure;
        }
        return {};
    }

    void Read(SQLRETURN result) {
        // A change that met no row.
        if (result == SQL_NO_DATA) {
            m_written = 0;
            return;
        }
        m_statement.Check(result);
        SQLSMALLINT columns = 0;
        m_statement.Check(SQLNumResultCols(m_statement.Raw(), &columns));
        if (columns > 0) {
            if (!m_kept) {
                m_kept = true;
                FetchRows(m_statement, m_widthsHold, m_sink);
            }
            return;
        }
        SQLLEN count = -1;
        m_statement.Check(SQLRowCount(m_statement.Raw(), &count));
        m_written = count >= 0 ? qint64(count) : m_written;
    }

    const OdbcHandle& m_statement;
    const bool m_widthsHold;
    embedded::RowSink& m_sink;
    bool m_kept = false;
    qint64 m_written = -1;
};

// [CLINICAL_AREA]..tbCAPDSlip: the pieces between the points, last one first.
QStringList NamePieces(const QString& table) {
    QStringList pieces{QString()};
    QChar close;
    for (const QChar character : table) {
        if (!close.isNull()) {
            if (character == close) {
                close = QChar();
            } else {
                pieces.first().append(character);
            }
        } else if (character == u'[' || character == u'"') {
            close = character == u'[' ? QChar(u']') : character;
        } else if (character == u'.') {
            pieces.prepend(QString());
        } else {
            pieces.first().append(character);
        }
    }
    return pieces;
}

QString CharacterName(char32_t character) {
    return QStringLiteral("\"%1\" (U+%2)")
        .arg(QString::fromUcs4(&character, 1),
             QString::number(uint(character), 16).toUpper().rightJustified(4, QLatin1Char('0')));
}

// The two spellings of the drivers; each leaves the other's aside.
QString Encrypted(const QString& connectionString) {
    if (!ConnectionValue(connectionString, QStringLiteral("Encrypt")).isEmpty() ||
        !ConnectionValue(connectionString, QStringLiteral("Encryption")).isEmpty()) {
        return connectionString;
    }
    const QString separator = connectionString.endsWith(u';') ? QString() : QStringLiteral(";");
    return connectionString + separator + QStringLiteral("Encrypt=yes;Encryption=require");
}

}  // namespace

OdbcDriver::OdbcDriver(const QString& connectionString) try
    : m_environment(SQL_HANDLE_ENV, SQL_NULL_HANDLE),
      m_connectionString(Encrypted(connectionString)) {
    Connect();
} catch (const OdbcFailure& failure) {
    throw base::DatabaseError(failure.Diagnosis.Number, failure.Diagnosis.Text);
}

OdbcDriver::~OdbcDriver() {
    if (m_depth > 0) {
        SQLEndTran(SQL_HANDLE_DBC, m_connection->Raw(), SQL_ROLLBACK);
    }
    SQLDisconnect(m_connection->Raw());
}

void OdbcDriver::Connect() {
    m_connection = std::make_unique<OdbcHandle>(SQL_HANDLE_DBC, m_environment.Raw());
    SQLSetConnectAttrW(m_connection->Raw(), SQL_ATTR_LOGIN_TIMEOUT, SQLPOINTER(kLogInSeconds), 0);
    m_connection->Check(SQLDriverConnectW(m_connection->Raw(), nullptr, Wide(m_connectionString),
                                          SQLSMALLINT(m_connectionString.size()), nullptr, 0,
                                          nullptr, SQL_DRIVER_NOPROMPT));
    try {
        SQLWCHAR name[128] = {};
        m_connection->Check(
            SQLGetInfoW(m_connection->Raw(), SQL_DBMS_NAME, name, sizeof name, nullptr));
        m_isSqlServer = QString::fromUtf16(reinterpret_cast<const char16_t*>(name))
                            .contains(QStringLiteral("SQL Server"));
        if (m_isSqlServer) {
            RowStore nothing;
            Run(QStringLiteral("SET DATEFORMAT mdy"), nothing);
        }
    } catch (const OdbcFailure&) {
        SQLDisconnect(m_connection->Raw());
        throw;
    }
}

void OdbcDriver::Reconnect() {
    try {
        SQLEndTran(SQL_HANDLE_DBC, m_connection->Raw(), SQL_ROLLBACK);
        SQLDisconnect(m_connection->Raw());
        Connect();
        UseDefaultDatabase();
        m_lost.reset();
    } catch (const OdbcFailure& failure) {
        throw base::DatabaseError(
            failure.Diagnosis.Number,
            QStringLiteral("The server cannot be reached again yet: %1")
                .arg(WithoutSecrets(failure.Diagnosis.Text, LogOnOf(m_connectionString))));
    }
}

template <typename Work>
auto OdbcDriver::Guarded(Work work) {
    if (m_lost && m_lostInTransaction) {
        throw *m_lost;
    }
    if (m_lost) {
        Reconnect();
    }
    try {
        return work();
    } catch (const OdbcFailure& failure) {
        Fail(failure.Diagnosis);
    }
}

void OdbcDriver::Fail(const OdbcDiagnosis& diagnosis) {
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLGetConnectAttrW(m_connection->Raw(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
    const bool inTransaction = m_depth > 0;
    m_depth = 0;
    if (diagnosis.SqlState.startsWith(QStringLiteral("08")) || dead == SQL_CD_TRUE) {
        m_lostInTransaction = inTransaction;
        // Not every driver has a number for it.
        m_lost.emplace(
            diagnosis.Number != 0 ? diagnosis.Number : kConnectionLost,
            inTransaction && !m_committing
                ? QStringLiteral(
                      "The connection to the server was lost. Nothing of this was saved; "
                      "the next action connects again.")
                : QStringLiteral("The connection to the server was lost. Look whether this was "
                                 "saved before you repeat it; the next action connects again."));
        throw *m_lost;
    }
    // Procedures undo the caller's transaction when they fail. A command that fails without doing
    // so must not leave half of it to be committed.
    if (inTransaction) {
        SQLEndTran(SQL_HANDLE_DBC, m_connection->Raw(), SQL_ROLLBACK);
        SQLSetConnectAttrW(m_connection->Raw(), SQL_ATTR_AUTOCOMMIT,
                           SQLPOINTER(quintptr(SQL_AUTOCOMMIT_ON)), 0);
    }
    // The server ends one of two that wait for each other, and undoes it.
    throw base::DatabaseError(
        diagnosis.Number,
        diagnosis.Number == kDeadlock
            ? QStringLiteral("Another workstation was changing the same records at this moment. "
                             "Nothing of this was saved. Try again.")
            : diagnosis.Text);
}

qint64 OdbcDriver::Execute(const QString& command, embedded::RowSink& sink) {
    return Guarded([&] {
        RequireKnownCharacters(command);
        return Run(command, sink, kCommandSeconds);
    });
}

void OdbcDriver::RunScript(const QString& name, const QString& script) {
    const std::string text = script.toStdString();
    for (const embedded::ScriptBatch& batch : embedded::Batches(text)) {
        const auto place = [&](int lineInBatch) {
            return QStringLiteral("%1:%2: ").arg(name).arg(batch.firstLine + lineInBatch - 1);
        };
        try {
            Guarded([&] {
                try {
                    RunBatch(QString::fromUtf8(batch.text.data(), qsizetype(batch.text.size())));
                } catch (OdbcFailure& failure) {
                    failure.Diagnosis.Text.prepend(place(std::max(1, failure.Diagnosis.Line)));
                    throw;
                }
            });
        } catch (const base::DatabaseError& error) {
            const bool placed = error.Description().startsWith(name);
            throw base::DatabaseError(error.Number(),
                                      (placed ? QString() : place(1)) + error.Description());
        }
    }
}

void OdbcDriver::RunBatch(const QString& text) {
    if (text.trimmed().isEmpty()) {
        return;
    }
    RequireKnownCharacters(text);
    RowStore nothing;
    Run(text, nothing);
}

void OdbcDriver::RequireKnownCharacters(const QString& command) {
    for (const char32_t character : command.toUcs4()) {
        if (character < 0x80 || m_knownCharacters.contains(character)) {
            continue;
        }
        if (!IsKnown(character)) {
            throw base::DatabaseError(0, QStringLiteral("The server cannot store the character %1.")
                                             .arg(CharacterName(character)));
        }
        m_knownCharacters.insert(character);
    }
}

// SQL Server turns a letter that its code page lacks into "?" or a look-alike without a word, so
// it is asked whether the letter comes back as it went. For other servers the driver manager may
// cut a text with surrogate pairs down to bytes, and a byte of them may be a quote.
bool OdbcDriver::IsKnown(char32_t character) {
    if (!m_isSqlServer) {
        return character <= 0xFFFF;
    }
    const QString text = QString::fromUcs4(&character, 1);
    RowStore answer;
    Run(QStringLiteral("SELECT CAST(N%1 AS varchar(8))").arg(Quoted(text)), answer);
    return answer.RowCount() == 1 && answer.TextAt(0, 0) == text;
}

qint64 OdbcDriver::Run(const QString& command, embedded::RowSink& sink, quintptr seconds) {
    const OdbcHandle statement(SQL_HANDLE_STMT, m_connection->Raw());
    // A driver that knows no time-out goes without.
    if (seconds > 0) {
        SQLSetStmtAttrW(statement.Raw(), SQL_ATTR_QUERY_TIMEOUT, SQLPOINTER(seconds), 0);
    }
    const SQLRETURN executed =
        SQLExecDirectW(statement.Raw(), Wide(command), SQLINTEGER(command.size()));
    // Only SQL Server keeps every text within its column's width.
    return ResultReader(statement, m_isSqlServer, sink).ReadAll(executed);
}

void OdbcDriver::SetDefaultDatabase(const QString& name) {
    const QString before = std::exchange(m_defaultDatabase, name);
    try {
        Guarded([this] { UseDefaultDatabase(); });
    } catch (const base::DatabaseError&) {
        m_defaultDatabase = before;
        throw;
    }
}

void OdbcDriver::UseDefaultDatabase() {
    if (!m_isSqlServer || m_defaultDatabase.isEmpty()) {
        return;
    }
    RowStore nothing;
    Run(QStringLiteral("USE ") + Bracketed(m_defaultDatabase), nothing);
}

void OdbcDriver::SetAutoCommit(bool on) {
    const quintptr value = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
    m_connection->Check(
        SQLSetConnectAttrW(m_connection->Raw(), SQL_ATTR_AUTOCOMMIT, SQLPOINTER(value), 0));
}

void OdbcDriver::BeginTrans() {
    Guarded([&] {
        if (m_depth == 0) {
            SetAutoCommit(false);
        }
        ++m_depth;
    });
}

void OdbcDriver::EndTransaction(SQLSMALLINT how) {
    m_connection->Check(SQLEndTran(SQL_HANDLE_DBC, m_connection->Raw(), how));
    m_depth = 0;
    SetAutoCommit(true);
}

void OdbcDriver::CommitTrans() {
    // A connection lost now leaves it open whether the server still heard the commit.
    m_committing = m_depth == 1;
    const auto told = qScopeGuard([this] { m_committing = false; });
    Guarded([&] {
        if (m_depth == 0) {
            throw base::DatabaseError(
                kNothingToCommit,
                QStringLiteral("The transaction was already undone; nothing is committed."));
        }
        if (m_depth == 1) {
            EndTransaction(SQL_COMMIT);
        } else {
            --m_depth;
        }
    });
}

void OdbcDriver::RollbackTrans() {
    if (m_lost || m_depth == 0) {
        m_lostInTransaction = false;
        return;
    }
    try {
        Guarded([&] { EndTransaction(SQL_ROLLBACK); });
    } catch (const base::DatabaseError&) {
        // A server that lost its client has undone what the client left open.
        m_lostInTransaction = false;
        if (!m_lost) {
            throw;
        }
    }
}

std::vector<QString> OdbcDriver::KeyColumns(const QString& table) {
    return Guarded([&] {
        RowStore rows;
        AskKeys(NamePieces(table), rows);
        constexpr int kColumnName = 3;
        std::vector<QString> keys;
        for (int row = 0; row < rows.RowCount(); ++row) {
            keys.push_back(rows.TextAt(row, kColumnName));
        }
        return keys;
    });
}

// Not every driver asks the table's own database, and another one knows of no key: SQL Server is
// asked in its own words.
void OdbcDriver::AskKeys(QStringList pieces, embedded::RowSink& rows) {
    pieces.resize(std::max<qsizetype>(pieces.size(), 3));
    const auto& [table, schema, catalog] = std::tie(pieces[0], pieces[1], pieces[2]);
    if (m_isSqlServer) {
        const QString database = catalog.isEmpty() ? m_defaultDatabase : catalog;
        const QString place = database.isEmpty() ? QString() : Bracketed(database) + u'.';
        const QString owner = schema.isEmpty() ? QString() : QStringLiteral(", ") + Quoted(schema);
        Run(QStringLiteral("EXEC %1sys.sp_pkeys ").arg(place) + Quoted(table) + owner, rows);
        return;
    }
    const auto wideOrNone = [](const QString& text) {
        return text.isEmpty() ? nullptr : Wide(text);
    };
    const OdbcHandle statement(SQL_HANDLE_STMT, m_connection->Raw());
    statement.Check(SQLPrimaryKeysW(statement.Raw(), wideOrNone(catalog), SQL_NTS,
                                    wideOrNone(schema), SQL_NTS, Wide(table), SQL_NTS));
    FetchRows(statement, false, rows);
}

}  // namespace db
