#include "embedded/Transactions.h"

namespace embedded {

void Transactions::Begin() {
    if (m_depth == 0) {
        m_database.BeginWriting();
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
        if (!m_commit) {
            m_commit = m_database.Prepare("COMMIT");
        }
        const StatementReset reset(m_commit.get());
        m_database.Step(m_commit.get());
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
