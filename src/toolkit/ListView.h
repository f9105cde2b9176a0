#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QTreeView>
#include <functional>
#include <memory>
#include <vector>

#include "db/RowStore.h"
#include "toolkit/Images.h"

namespace toolkit {

/// A column of a list: what its header says and which column of the rows it shows.
struct ListColumn {
    QString Header;
    int WidthTwips;
    QString Field;
    QString IfEmpty = {};  ///< shown where the field is empty or null
    bool IsMoney = false;  ///< shown with two decimals, to the right
};

/// Rows of a recordset as a list: nothing is copied a cell, the order is a permutation of row
/// numbers. Sorting compares stored values of one kind (numbers as numbers, moments as moments,
/// texts by base::CompareTexts), never what is shown; equal rows keep their order.
class RowListModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit RowListModel(std::vector<ListColumn> columns, QObject* parent = nullptr);

    /// What becomes of a column whose field the rows lack.
    enum class Missing { Refused, Empty };

    /// Shows these rows in the order they came; null shows none. A column whose field the rows
    /// lack throws base::DatabaseError 3265 naming it, unless it may stay empty.
    void SetRows(std::shared_ptr<const db::RowStore> rows, Missing missing = Missing::Refused);
    /// What stands before the first column of a shown row.
    void SetImages(std::function<Image(int row)> imageOf) { m_imageOf = std::move(imageOf); }
    /// Shows another text in a cell until other rows are set. The row keeps its place when sorted.
    void SetTextAt(int row, int column, const QString& text);
    /// The text of a cell, before money takes its form; empty outside.
    QString TextAt(int row, int column) const;
    /// Position in the rows behind a shown row.
    int SourceRow(int row) const { return m_order[row]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    bool IsMoney(int column) const { return m_columns[size_t(column)].IsMoney; }
    int Alignment(int column) const;

    std::vector<ListColumn> m_columns;
    std::vector<int> m_fields;
    std::shared_ptr<const db::RowStore> m_rows;
    std::vector<int> m_order;
    QHash<std::pair<int, int>, QString> m_written;
    std::function<Image(int)> m_imageOf;
};

/// A report-style list with the unit's habits: a click on a header sorts, reversing the order each
/// time, and marks that header with an arrow; rows that come later are sorted so too. Whole rows
/// are chosen; focus that comes by key chooses the first row where none is; Ctrl+1 to Ctrl+9 sort
/// as a click on that header does; Ctrl+Insert copies the row, its cells separated by tabs. Columns
/// are wider than stated where the texts they show need it, until the user sizes them.
class ListView final : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(QWidget* parent = nullptr);

    /// Shows the model's columns with their widths; header marks start blank.
    void SetListModel(RowListModel* model, const std::vector<ListColumn>& columns);
    /// "ArrowUp", "ArrowDown" or "Blank": the mark of a header.
    QString HeaderMark(int column) const;
    /// The order of the next sort is the reverse of this one.
    Qt::SortOrder SortOrder() const { return m_sortOrder; }

public slots:
    /// As a click on that header. The current row stays current.
    void SortBy(int column);

signals:
    /// The current row changed, by key or by mouse, or was clicked once more; -1 for none.
    void RowChosen(int row);
    /// Double click or Enter on a row.
    void RowOpened(int row);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Letters choose nobody: the next name is often typed before the search box has the keys.
    void keyboardSearch(const QString&) override {}
    void mousePressEvent(QMouseEvent* event) override;

private:
    void WidenColumns();

    Qt::SortOrder m_sortOrder = Qt::DescendingOrder;
    int m_sortColumn = -1;
    struct ColumnWidth {
        int Stated;
        int Given;
    };
    std::vector<ColumnWidth> m_widths;
};

}  // namespace toolkit
