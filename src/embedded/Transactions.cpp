#include "embedded/Transactions.h"

namespace embedded {

void Transactions::RunPrepared(PreparedStatement& statement, const char* sql) {
    if (!statement) {
        statement = m_database.Prepare(sql);
    }
    const StatementReset reset(statement.get());
    m_database.Step(statement.get());
}

void Transactions::Begin() {
    if (m_depth == 0) {
        RunPrepared(m_begin, "BEGIN IMMEDIATE");
    }
    ++m_depth;
}

void Transactions::Commit() {
    if (m_depth == 0) {
        throw Failure(3902,
                      "The COMMIT TRANSACTION request has no corresponding BEGIN "
                      "TRANSACTION.");
    }
    if (m_depth == 1) {
        RunPrepared(m_commit, "COMMIT");
    }
    --m_depth;
}

void Transactions::UndoAll() {
    m_depth = 0;
    // A full disk makes SQLite undo by itself.
    if (m_database.InTransaction()) {
        m_database.Run("ROLLBACK");
    }
}

}  // namespace embedded
