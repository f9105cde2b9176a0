#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <vector>

namespace toolkit {

/// How a cell of an entry column is filled.
enum class EntryKind {
    Text,     ///< typed
    LookUp,   ///< typed, or found in a list that the window shows
    PickList  ///< one of a few fixed items
};

/// The rules of one column of an entry grid.
struct EntryColumn {
    EntryKind Kind = EntryKind::Text;
    QStringList Items;
    bool IsNumeric = false;
    bool IsProtected = false;
    /// Where set, decides for each row instead of IsProtected.
    std::function<bool(int row)> IsProtectedOn;
};

/// The texts of an entry grid, numbered as the windows number them: row 0 is the header while
/// there is a fixed row, the data rows follow. Model indexes count from the first row that is
/// not fixed.
class EntryGridModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    int Rows() const { return int(m_texts.size()); }
    int Cols() const { return int(m_columns.size()); }
    int FixedRows() const { return m_fixedRows; }
    int FixedCols() const { return m_fixedCols; }
    /// Texts within the new shape stay.
    void Reshape(int rows, int cols, int fixedRows, int fixedCols);
    void SetRows(int rows);
    /// Empties every cell, headers too.
    void Empty();

    bool Contains(int row, int col) const;
    /// Empty outside.
    QString Text(int row, int col) const;
    /// Throws base::RuntimeError 381 outside.
    void SetText(int row, int col, const QString& text);
    void RemoveRow(int row);
    void EmptyRow(int row);

    /// Throws base::RuntimeError 381 for a column that is not there.
    EntryColumn& Column(int col);
    const EntryColumn& Column(int col) const { return m_columns.at(col); }
    /// True where the user may write: neither fixed nor protected.
    bool IsTyped(int row, int col) const;
    QModelIndex IndexOf(int row, int col) const { return index(row - m_fixedRows, col); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    int AlignmentOf(int col) const;

    std::vector<std::vector<QString>> m_texts;
    std::vector<EntryColumn> m_columns;
    int m_fixedRows = 0;
    int m_fixedCols = 0;
};

}  // namespace toolkit
