#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "db/Connection.h"
#include "db/RowStore.h"
#include "db/Value.h"

namespace db {

class Recordset;

/// The number of the error that Update() raises when another user changed the row first.
inline constexpr int kRowChanged = -2147217864;

/// One field of the current row. Reading past the end throws base::DatabaseError 3021.
class Field final {
public:
    db::Value Value() const;
    /// The value concatenated with the empty text: null reads as empty.
    QString Text() const { return Value().Text(); }
    double Number() const { return Value().Number(); }
    /// Changes the current row; nothing is sent before Update().
    void SetValue(const db::Value& value);

private:
    friend class Recordset;
    Field(Recordset& recordset, int column) : m_recordset(recordset), m_column(column) {}
    Recordset& m_recordset;
    int m_column;
};

/// The rows of one command, as a snapshot on the client: they stay valid after the connection
/// has moved on.
class Recordset final {
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// 0 closed, 1 open.
    int State() const;
    void Close();
    void SetCursorLocation(int location);

    /// Runs the command and keeps its first result that has columns. Cursor types: 0 forward
    /// only, 2 dynamic; lock types: 1 read-only, 3 rows may be changed in place; options -1.
    /// Throws base::DatabaseError; 3705 when it is still open.
    void Open(const QString& source, const ConnectionRef& activeConnection, int cursorType = 2,
              int lockType = 1, int options = -1);

    /// True past the last row, and at once where there are no rows.
    bool Eof() const;
    int RecordCount() const;
    void MoveFirst();
    /// To the next row; throws base::DatabaseError 3021 past the end.
    void MoveNext();

    /// The field of that name, whatever its case; an unknown name throws base::DatabaseError 3265
    /// naming it.
    Field Fields(const QString& name);
    /// The field at a position from 0.
    Field Fields(int index);
    QStringList FieldNames() const;

    /// Writes the changed fields of the current row back: the condition is the table's key and
    /// the values fetched of those fields. Throws base::DatabaseError kRowChanged and writes
    /// nothing when another user changed or removed the row first; the caller's transaction goes
    /// on. Needs lock type 3 and a statement over one table.
    void Update();

    /// The rows themselves, for a list that shows them; shared, unchanged by later reads.
    std::shared_ptr<const RowStore> Rows() const;

private:
    friend class Field;
    friend class Connection;
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace db
