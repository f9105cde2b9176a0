#include "toolkit/EntryGridModel.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

#include "base/Errors.h"

namespace toolkit {

namespace {

constexpr int kSubscriptOutOfRange = 381;

[[noreturn]] void RefuseSubscript(int row, int col) {
    throw base::RuntimeError(kSubscriptOutOfRange,
                             QStringLiteral("The grid has no cell (%1, %2).").arg(row).arg(col));
}

}  // namespace

void EntryGridModel::Reshape(int rows, int cols, int fixedRows, int fixedCols) {
    beginResetModel();
    m_columns.resize(qMax(0, cols));
    m_fixedRows = qBound(0, fixedRows, 1);
    m_fixedCols = qMax(0, fixedCols);
    m_texts.resize(qMax(m_fixedRows, rows));
    for (std::vector<QString>& row : m_texts)
        row.resize(m_columns.size());
    endResetModel();
}

void EntryGridModel::SetRows(int rows) {
    rows = qMax(rows, m_fixedRows);
    const int shown = rowCount();
    const int wanted = rows - m_fixedRows;
    if (wanted > shown) {
        beginInsertRows({}, shown, wanted - 1);
        m_texts.resize(rows, std::vector<QString>(m_columns.size()));
        endInsertRows();
    } else if (wanted < shown) {
        beginRemoveRows({}, wanted, shown - 1);
        m_texts.resize(rows);
        endRemoveRows();
    }
}

void EntryGridModel::Empty() {
    beginResetModel();
    for (std::vector<QString>& row : m_texts)
        std::fill(row.begin(), row.end(), QString());
    endResetModel();
}

bool EntryGridModel::Contains(int row, int col) const {
    return row >= 0 && row < Rows() && col >= 0 && col < Cols();
}

QString EntryGridModel::Text(int row, int col) const {
    return Contains(row, col) ? m_texts[row][col] : QString();
}

void EntryGridModel::SetText(int row, int col, const QString& text) {
    if (!Contains(row, col))
        RefuseSubscript(row, col);
    if (m_texts[row][col] == text)
        return;
    m_texts[row][col] = text;
    if (row < m_fixedRows)
        emit headerDataChanged(Qt::Horizontal, col, col);
    else
        emit dataChanged(IndexOf(row, col), IndexOf(row, col));
}

void EntryGridModel::RemoveRow(int row) {
    beginRemoveRows({}, row - m_fixedRows, row - m_fixedRows);
    m_texts.erase(m_texts.begin() + row);
    endRemoveRows();
}

void EntryGridModel::EmptyRow(int row) {
    for (int col = 0; col < Cols(); ++col)
        SetText(row, col, {});
}

EntryColumn& EntryGridModel::Column(int col) {
    if (col < 0 || col >= Cols())
        RefuseSubscript(0, col);
    return m_columns[col];
}

bool EntryGridModel::IsTyped(int row, int col) const {
    if (!Contains(row, col) || row < m_fixedRows || col < m_fixedCols)
        return false;
    const EntryColumn& column = m_columns[col];
    return !(column.IsProtectedOn ? column.IsProtectedOn(row) : column.IsProtected);
}

int EntryGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows() - m_fixedRows;
}

int EntryGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Cols();
}

QVariant EntryGridModel::data(const QModelIndex& index, int role) const {
    const int row = index.row() + m_fixedRows, col = index.column();
    if (!index.isValid() || !Contains(row, col))
        return {};
    switch (role) {
        case Qt::DisplayRole:
            return m_texts[row][col];
        case Qt::TextAlignmentRole:
            return AlignmentOf(col);
        case Qt::BackgroundRole:
            // What the program fills looks like the desk, what the clerk fills like paper.
            return IsTyped(row, col) ? QVariant()
                                     : QGuiApplication::palette().brush(QPalette::AlternateBase);
        default:
            return {};
    }
}

QVariant EntryGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= Cols() || m_fixedRows == 0)
        return {};
    if (role == Qt::DisplayRole)
        return m_texts[0][section];
    return role == Qt::TextAlignmentRole ? AlignmentOf(section) : QVariant();
}

Qt::ItemFlags EntryGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || index.column() < m_fixedCols)
        return Qt::NoItemFlags;
    const bool typed = IsTyped(index.row() + m_fixedRows, index.column());
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable |
           (typed ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

int EntryGridModel::AlignmentOf(int col) const {
    return int((m_columns[col].IsNumeric ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

}  // namespace toolkit
