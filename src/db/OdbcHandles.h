#pragma once

#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

#include <QString>

namespace db {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "ODBC texts are UTF-16 here");

/// The first diagnostic record of a failed ODBC call.
struct OdbcDiagnosis {
    /// Five characters, "08S01".
    QString SqlState;
    /// The server's own error number.
    int Number = 0;
    /// Without the "[vendor][driver]" in front.
    QString Text;
    /// Counted from the command's first line, which is 1; 0 where the server names none.
    int Line = 0;
};

/// A failed ODBC call. Stays inside this folder: the driver turns it into base::DatabaseError.
struct OdbcFailure {
    OdbcDiagnosis Diagnosis;
};

/// An ODBC handle, freed with its owner.
class OdbcHandle final {
public:
    /// Throws OdbcFailure when the driver manager gives none.
    OdbcHandle(SQLSMALLINT type, SQLHANDLE parent);
    ~OdbcHandle();
    OdbcHandle(const OdbcHandle&) = delete;
    OdbcHandle& operator=(const OdbcHandle&) = delete;

    SQLHANDLE Raw() const { return m_handle; }
    OdbcDiagnosis Diagnose() const;
    /// Throws OdbcFailure unless the call succeeded.
    void Check(SQLRETURN result) const;

private:
    SQLSMALLINT m_type;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

/// For the W functions, which take a text they do not change without const.
SQLWCHAR* Wide(const QString& text);

}  // namespace db
