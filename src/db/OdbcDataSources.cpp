#include "db/OdbcDataSources.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <array>

namespace db {

namespace {

QStringList NamesIn(SQLHENV environment) {
    QStringList names;
    // Driver managers keep longer names than the 32 signs of the standard, and tell the whole
    // length of a name that they cut.
    std::array<SQLWCHAR, 256> name{};
    std::array<SQLWCHAR, 256> description{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT descriptionLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDataSourcesW(environment, direction, name.data(),
                                         SQLSMALLINT(name.size()), &nameLength, description.data(),
                                         SQLSMALLINT(description.size()), &descriptionLength))) {
        names << QString::fromUtf16(reinterpret_cast<const char16_t*>(name.data()),
                                    std::min<qsizetype>(nameLength, name.size() - 1));
        direction = SQL_FETCH_NEXT;
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

}  // namespace

QStringList OdbcDataSources() {
    SQLHENV environment = SQL_NULL_HENV;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment)))
        return {};
    QStringList names;
    if (SQL_SUCCEEDED(SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION,
                                    reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0)))
        names = NamesIn(environment);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
    return names;
}

}  // namespace db
