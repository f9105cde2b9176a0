#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QSet>
#include <functional>
#include <memory>
#include <vector>

#include "db/RowStore.h"

namespace toolkit {

/// The cells of a flexible grid: each shown row points at a record of the rows it came from, a
/// cell written by hand lies over that. Row 0 is the header, column 0 the anchor.
class FlexGridModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit FlexGridModel(QObject* parent = nullptr);

    int Rows() const { return int(m_records.size()); }
    void SetRows(int rows);
    int Cols() const { return int(m_alignments.size()); }
    void SetCols(int cols);
    void SetAlignment(int col, Qt::Alignment alignment);
    /// Shows the column's numbers as money, to the right; Text() stays as it is.
    void SetMoney(int col);
    /// What a filled row shows in this column where its record is empty; Text() stays empty.
    void SetTextOfEmpty(int col, const QString& text) { m_textsOfEmpty[col] = text; }
    /// Rows for which it answers true stand out.
    void SetMarkedWhen(std::function<bool(int row)> isMarked) { m_isMarked = std::move(isMarked); }

    /// Empty outside.
    QString Text(int row, int col) const;
    /// What the row's record holds in a field, shown or not; empty for a blank row. Throws
    /// base::DatabaseError 3265 for a field that the record lacks.
    QString FieldText(int row, const QString& field) const;
    /// Throws base::RuntimeError 381 outside.
    void SetText(int row, int col, const QString& text);
    /// A blank row at the end.
    void AppendRow();
    /// Takes out a data row, which must be there.
    void RemoveRow(int row);
    /// Empties every cell, the header too.
    void Empty();
    /// Shows the records by the row fill; `fields` are the positions in the rows shown from
    /// column 1 on, -1 for a column that stays.
    void Append(std::shared_ptr<const db::RowStore> rows, const std::vector<int>& fields);
    /// Shows exactly these records, all fields in order; a blank row where there are none.
    void Replace(std::shared_ptr<const db::RowStore> rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    /// Rows that were filled in at once, and which of their fields each column shows.
    struct Filling {
        std::shared_ptr<const db::RowStore> Rows;
        std::vector<int> Fields;
    };
    /// Where a shown row comes from; Filling -1 for a blank one.
    struct Record {
        int Filling = -1;
        int Row = 0;
    };
    static quint64 KeyOf(int row, int col) { return quint64(row) << 32 | quint64(col); }
    bool Contains(int row, int col) const;
    QString Shown(int row, int col) const;

    std::vector<Filling> m_fillings;
    std::vector<Record> m_records;
    std::vector<Qt::Alignment> m_alignments;
    QSet<int> m_moneyCols;
    QHash<int, QString> m_textsOfEmpty;
    std::function<bool(int)> m_isMarked;
    QHash<quint64, QString> m_written;
};

}  // namespace toolkit
