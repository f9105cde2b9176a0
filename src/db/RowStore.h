#pragma once

#include <QString>
#include <QStringList>
#include <deque>
#include <memory>
#include <vector>

#include "db/Value.h"
#include "embedded/RowSink.h"

namespace db {

/// The rows of a result, packed into large chunks: no heap block a cell or a row. Filled once by
/// a driver, then only read.
class RowStore final : public embedded::RowSink {
public:
    RowStore();
    ~RowStore() override;

    int RowCount() const { return int(m_rows.size()); }
    int ColumnCount() const { return int(m_columns.size()); }
    const std::vector<embedded::ResultColumn>& Columns() const { return m_columns; }
    /// Position of a column by its name, whatever its case; -1 where there is none.
    int ColumnIndex(const QString& name) const;

    Value At(int row, int column) const;
    /// As At(row, column).Text(), without the detour.
    QString TextAt(int row, int column) const;
    /// The stored bytes of a text cell (empty for null), for sorting without copies.
    std::string_view Utf8At(int row, int column) const;

    // Filling, as embedded::RowSink. Only the first result that has columns is kept.
    void BeginResult(const std::vector<embedded::ResultColumn>& columns) override;
    void Null() override;
    void Integer(qint64 value) override;
    void Double(double value) override;
    void Text(std::string_view utf8) override;
    void DateTime(std::string_view stored) override;
    void EndRow() override;

private:
    std::vector<embedded::ResultColumn> m_columns;
    std::vector<const char*> m_rows;
    struct Storage;
    std::unique_ptr<Storage> m_storage;
};

}  // namespace db
