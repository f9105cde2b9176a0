#pragma once

#include <map>
#include <memory>
#include <utility>

#include "db/Recordset.h"

namespace db {

class Recordset::Impl final {
public:
    /// Opens on rows that are already there; a result without columns leaves it closed.
    void Keep(std::shared_ptr<RowStore> rows, const QString& source);
    void RequireOpen() const;
    void RequireClosed() const;
    /// Throws base::DatabaseError 3021 unless there is a current row.
    void RequireRow() const;
    [[noreturn]] void Fail(int number, const QString& description) const;

    /// As the server holds the cell of the current row, as far as this recordset knows.
    Value Stored(int column) const;
    void SaveChanges();

    std::shared_ptr<RowStore> Rows;
    std::shared_ptr<Connection> Session;
    QString Source;
    int LockType = 1;
    int Row = 0;
    /// Fields of the current row that Update() has still to send.
    std::map<int, Value> Changes;
    /// What Update() has written, by row and column; the rows themselves stay as fetched.
    std::map<std::pair<int, int>, Value> Written;
};

}  // namespace db
