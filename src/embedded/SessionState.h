#pragma once

#include <QtGlobal>
#include <string>

#include "embedded/Database.h"
#include "embedded/Transactions.h"

namespace embedded {

/// What the statements of one session share: transactions, counts and the session's number.
class SessionState final {
public:
    explicit SessionState(Database& database) : transactions(database), m_database(database) {}

    /// @@SPID: unlike that of every other session on the file.
    qint64 Id();
    /// Undoes all open transactions.
    void UndoAll();
    /// GETDATE() in stored form: the program's clock, rounded to 1/300 s.
    static std::string Now();

    Transactions transactions;
    /// @@ROWCOUNT.
    qint64 rowCount = 0;
    /// Rows of the last writing statement of the command, -1 for none.
    qint64 changed = -1;

private:
    Database& m_database;
    qint64 m_id = 0;
    bool m_idUncommitted = false;
};

}  // namespace embedded
