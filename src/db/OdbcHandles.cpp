#include "db/OdbcHandles.h"

#include <QRegularExpression>

namespace db {

namespace {

/// SQL Server's drivers tell the line under a number of their own.
int ServerLine(SQLSMALLINT type, SQLHANDLE handle) {
    constexpr SQLSMALLINT kLineOfError = -1154;
    SQLINTEGER line = 0;
    SQLGetDiagFieldW(type, handle, 1, kLineOfError, &line, sizeof line, nullptr);
    return int(line);
}

}  // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT type, SQLHANDLE parent) : m_type(type) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent, &m_handle))) {
        throw OdbcFailure{{QString(), 0, QStringLiteral("ODBC gives no further handle.")}};
    }
    if (type == SQL_HANDLE_ENV) {
        SQLSetEnvAttr(m_handle, SQL_ATTR_ODBC_VERSION, SQLPOINTER(SQL_OV_ODBC3), 0);
    }
}

OdbcHandle::~OdbcHandle() {
    SQLFreeHandle(m_type, m_handle);
}

OdbcDiagnosis OdbcHandle::Diagnose() const {
    constexpr SQLSMALLINT kMostCharacters = 4096;
    SQLWCHAR state[6] = {};
    SQLWCHAR text[kMostCharacters] = {};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(
            SQLGetDiagRecW(m_type, m_handle, 1, state, &number, text, kMostCharacters, &length))) {
        return {QString(), 0, QStringLiteral("The server gave no reason.")};
    }
    static const QRegularExpression origin(QStringLiteral("^(\\[[^\\]]*\\]\\s*)+"));
    const auto* utf16 = reinterpret_cast<const char16_t*>(text);
    return {QString::fromUtf16(reinterpret_cast<const char16_t*>(state)), int(number),
            QString::fromUtf16(utf16).remove(origin).trimmed(), ServerLine(m_type, m_handle)};
}

void OdbcHandle::Check(SQLRETURN result) const {
    if (!SQL_SUCCEEDED(result)) {
        throw OdbcFailure{Diagnose()};
    }
}

SQLWCHAR* Wide(const QString& text) {
    return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
}

}  // namespace db
