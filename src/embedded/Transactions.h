#pragma once

#include "embedded/Database.h"

namespace embedded {

/// The session's open transactions: the outermost one holds the file's write lock from its
/// beginning, the inner ones only count. Any error undoes them all.
class Transactions final {
public:
    explicit Transactions(Database& database) : m_database(database) {}

    int Depth() const { return m_depth; }
    void Begin();
    /// Throws Failure 3902 where none is open.
    void Commit();
    /// Nothing where none is open.
    void UndoAll();

private:
    Database& m_database;
    PreparedStatement m_commit;
    int m_depth = 0;
};

}  // namespace embedded
