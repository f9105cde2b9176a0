#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

#include "base/Collation.h"
#include "base/Errors.h"
#include "base/Numbers.h"
#include "toolkit/ListView.h"

namespace toolkit {

namespace {

constexpr int kNoSuchField = 3265;

/// Orders the rows by keys taken once a row.
template <class TakeKey, class Compare>
void SortByKeys(std::vector<int>& order, bool ascending, TakeKey takeKey, Compare comesFirst) {
    using Entry = std::pair<decltype(takeKey(0)), int>;
    std::vector<Entry> entries;
    entries.reserve(order.size());
    for (const int row : order)
        entries.emplace_back(takeKey(row), row);
    std::stable_sort(entries.begin(), entries.end(), [&](const Entry& left, const Entry& right) {
        return ascending ? comesFirst(left.first, right.first)
                         : comesFirst(right.first, left.first);
    });
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const Entry& entry) { return entry.second; });
}

/// A row without a value comes before all others.
void SortRows(std::vector<int>& order, const db::RowStore& rows, int field, bool ascending) {
    const auto number = [&](int row) {
        const db::Value value = rows.At(row, field);
        return value.IsNull() ? -std::numeric_limits<double>::infinity() : value.Number();
    };
    const auto bytes = [&](int row) { return rows.Utf8At(row, field); };
    switch (rows.Columns()[field].Kind) {
        case embedded::ColumnKind::Integer:
        case embedded::ColumnKind::Double:
            SortByKeys(order, ascending, number, std::less<>());
            break;
        case embedded::ColumnKind::DateTime:
            // The stored form of a moment sorts as its bytes do.
            SortByKeys(order, ascending, bytes, std::less<>());
            break;
        case embedded::ColumnKind::Text:
            SortByKeys(order, ascending, bytes, [](std::string_view left, std::string_view right) {
                return base::CompareTexts(left, right) < 0;
            });
            break;
    }
}

}  // namespace

RowListModel::RowListModel(std::vector<ListColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns)) {}

void RowListModel::SetRows(std::shared_ptr<const db::RowStore> rows, Missing missing) {
    std::vector<int> fields;
    for (const ListColumn& column : m_columns) {
        const int field = rows ? rows->ColumnIndex(column.Field) : -1;
        if (rows && field < 0 && missing == Missing::Refused)
            throw base::DatabaseError(
                kNoSuchField, QStringLiteral("The rows have no column %1.").arg(column.Field));
        fields.push_back(field);
    }
    beginResetModel();
    m_rows = std::move(rows);
    m_fields = std::move(fields);
    m_written.clear();
    m_order.resize(m_rows ? m_rows->RowCount() : 0);
    std::iota(m_order.begin(), m_order.end(), 0);
    endResetModel();
}

void RowListModel::SetTextAt(int row, int column, const QString& text) {
    m_written[{m_order.at(size_t(row)), column}] = text;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

QString RowListModel::TextAt(int row, int column) const {
    if (row < 0 || row >= int(m_order.size()) || column < 0 || column >= int(m_fields.size()))
        return {};
    if (!m_written.isEmpty()) {
        const auto written = m_written.constFind({m_order[row], column});
        if (written != m_written.constEnd())
            return *written;
    }
    const QString text =
        m_fields[column] < 0 ? QString() : m_rows->TextAt(m_order[row], m_fields[column]);
    return text.isEmpty() ? m_columns[column].IfEmpty : text;
}

int RowListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_order.size());
}

int RowListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant RowListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    switch (role) {
        case Qt::DisplayRole: {
            const QString text = TextAt(index.row(), index.column());
            return IsMoney(index.column()) && !text.isEmpty() ? base::MoneyText(base::Val(text))
                                                              : text;
        }
        case Qt::DecorationRole:
            if (index.column() != 0 || !m_imageOf)
                return {};
            return Images::Icon(m_imageOf(index.row()));
        case Qt::TextAlignmentRole:
            return Alignment(index.column());
        default:
            return {};
    }
}

int RowListModel::Alignment(int column) const {
    return int((IsMoney(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

QVariant RowListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= int(m_columns.size()))
        return {};
    if (role == Qt::DisplayRole)
        return m_columns[section].Header;
    if (role == Qt::TextAlignmentRole)
        return Alignment(section);
    return {};
}

void RowListModel::sort(int column, Qt::SortOrder order) {
    if (!m_rows || column < 0 || column >= int(m_fields.size()) || m_fields[column] < 0)
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList held = persistentIndexList();
    std::vector<int> heldRows;
    for (const QModelIndex& index : held)
        heldRows.push_back(m_order[index.row()]);

    SortRows(m_order, *m_rows, m_fields[column], order == Qt::AscendingOrder);

    std::vector<int> shownAt(m_order.size());
    for (int row = 0; row < int(m_order.size()); ++row)
        shownAt[m_order[row]] = row;
    QModelIndexList moved;
    for (int i = 0; i < held.size(); ++i)
        moved.append(index(shownAt[heldRows[i]], held[i].column()));
    changePersistentIndexList(held, moved);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

}  // namespace toolkit
