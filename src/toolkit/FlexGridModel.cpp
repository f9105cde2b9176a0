#include "toolkit/FlexGridModel.h"

#include <QColor>
#include <numeric>

#include "base/Errors.h"
#include "base/Numbers.h"
#include "toolkit/CellText.h"

namespace toolkit {

namespace {

constexpr int kSubscriptOutOfRange = 381;
constexpr int kNoSuchField = 3265;
constexpr int kEmptyListRows = 2;
constexpr QRgb kMarked = 0xffffe6a8;
// More than the widest column shows; a whole report in a cell would be measured and painted.
constexpr int kShownCharacters = 400;

}  // namespace

FlexGridModel::FlexGridModel(QObject* parent)
    : QAbstractTableModel(parent), m_records(kEmptyListRows), m_alignments(2, Qt::AlignLeft) {}

void FlexGridModel::SetRows(int rows) {
    rows = qMax(1, rows);
    beginResetModel();
    m_written.removeIf([rows](const auto& cell) { return int(cell.key() >> 32) >= rows; });
    m_records.resize(rows);
    endResetModel();
}

void FlexGridModel::SetCols(int cols) {
    cols = qMax(1, cols);
    beginResetModel();
    m_written.removeIf([cols](const auto& cell) { return int(cell.key() & 0xFFFFFFFF) >= cols; });
    m_alignments.resize(cols, Qt::AlignLeft);
    // A column that comes back later comes back empty.
    for (Filling& filling : m_fillings) {
        if (int(filling.Fields.size()) >= cols)
            filling.Fields.resize(cols - 1);
    }
    endResetModel();
}

void FlexGridModel::SetAlignment(int col, Qt::Alignment alignment) {
    m_alignments.at(col) = alignment;
}

void FlexGridModel::SetMoney(int col) {
    SetAlignment(col, Qt::AlignRight);
    m_moneyCols.insert(col);
}

QString FlexGridModel::Shown(int row, int col) const {
    const QString text = Text(row, col);
    if (text.isEmpty() && m_records[row].Filling >= 0)
        return m_textsOfEmpty.value(col);
    if (m_moneyCols.contains(col) && base::IsNumeric(text))
        return base::MoneyText(base::Val(text));
    return OneLine(text.left(kShownCharacters));
}

bool FlexGridModel::Contains(int row, int col) const {
    return row >= 0 && row < Rows() && col >= 0 && col < Cols();
}

QString FlexGridModel::Text(int row, int col) const {
    if (!Contains(row, col))
        return {};
    if (!m_written.isEmpty()) {
        const auto written = m_written.constFind(KeyOf(row, col));
        if (written != m_written.constEnd())
            return *written;
    }
    const Record& record = m_records[row];
    if (record.Filling < 0 || col == 0)
        return {};
    const Filling& filling = m_fillings[record.Filling];
    const int field = col <= int(filling.Fields.size()) ? filling.Fields[col - 1] : -1;
    return field < 0 ? QString() : filling.Rows->TextAt(record.Row, field);
}

QString FlexGridModel::FieldText(int row, const QString& field) const {
    if (row < 1 || row >= Rows() || m_records[row].Filling < 0)
        return {};
    const db::RowStore& rows = *m_fillings[m_records[row].Filling].Rows;
    const int column = rows.ColumnIndex(field);
    if (column < 0)
        throw base::DatabaseError(kNoSuchField,
                                  QStringLiteral("The rows have no column %1.").arg(field));
    return rows.TextAt(m_records[row].Row, column);
}

void FlexGridModel::SetText(int row, int col, const QString& text) {
    if (!Contains(row, col))
        throw base::RuntimeError(
            kSubscriptOutOfRange,
            QStringLiteral("The grid has no cell (%1, %2).").arg(row).arg(col));
    m_written[KeyOf(row, col)] = text;
    if (row == 0)
        emit headerDataChanged(Qt::Horizontal, col, col);
    else
        emit dataChanged(index(row - 1, col), index(row - 1, col));
}

void FlexGridModel::AppendRow() {
    beginInsertRows({}, Rows() - 1, Rows() - 1);
    m_records.emplace_back();
    endInsertRows();
}

void FlexGridModel::RemoveRow(int row) {
    beginRemoveRows({}, row - 1, row - 1);
    m_records.erase(m_records.begin() + row);
    QHash<quint64, QString> kept;
    for (auto cell = m_written.cbegin(); cell != m_written.cend(); ++cell) {
        const int writtenRow = int(cell.key() >> 32);
        const int col = int(cell.key() & 0xFFFFFFFF);
        if (writtenRow != row)
            kept[KeyOf(writtenRow > row ? writtenRow - 1 : writtenRow, col)] = cell.value();
    }
    m_written = std::move(kept);
    endRemoveRows();
}

void FlexGridModel::Empty() {
    beginResetModel();
    m_written.clear();
    m_fillings.clear();
    m_records.assign(m_records.size(), Record());
    endResetModel();
}

void FlexGridModel::Append(std::shared_ptr<const db::RowStore> rows,
                           const std::vector<int>& fields) {
    const int count = rows ? rows->RowCount() : 0;
    if (count == 0)
        return;
    beginResetModel();
    const int filling = int(m_fillings.size());
    m_fillings.push_back({rows, fields});
    if (Rows() == 1)
        m_records.resize(kEmptyListRows);
    // The blank row of an empty list is where the first record goes.
    int next = 0;
    if (m_records[1].Filling < 0 && Text(1, 1).isEmpty()) {
        for (int col = 1; col <= int(fields.size()); ++col) {
            if (fields[col - 1] >= 0)
                m_written.remove(KeyOf(1, col));
        }
        m_records[1] = {filling, next++};
    }
    m_records.reserve(m_records.size() + count - next);
    for (; next < count; ++next)
        m_records.push_back({filling, next});
    endResetModel();
}

void FlexGridModel::Replace(std::shared_ptr<const db::RowStore> rows) {
    Empty();
    beginResetModel();
    m_records.assign(qMax(kEmptyListRows, rows->RowCount() + 1), Record());
    for (int row = 0; row < rows->RowCount(); ++row)
        m_records[row + 1] = {0, row};
    std::vector<int> fields(rows->ColumnCount());
    std::iota(fields.begin(), fields.end(), 0);
    m_alignments.resize(rows->ColumnCount() + 1, Qt::AlignLeft);
    for (int field = 0; field < rows->ColumnCount(); ++field)
        m_written[KeyOf(0, field + 1)] = rows->Columns()[field].Name;
    m_fillings.push_back({std::move(rows), std::move(fields)});
    endResetModel();
}

int FlexGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows() - 1;
}

int FlexGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Cols();
}

QVariant FlexGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return Shown(index.row() + 1, index.column());
    if (role == Qt::TextAlignmentRole)
        return int(m_alignments[index.column()] | Qt::AlignVCenter);
    if (role == Qt::BackgroundRole && m_isMarked && m_isMarked(index.row() + 1))
        return QColor(kMarked);
    return {};
}

QVariant FlexGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= Cols())
        return {};
    if (role == Qt::DisplayRole)
        return Text(0, section);
    if (role == Qt::TextAlignmentRole)
        return int(m_alignments[section] | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags FlexGridModel::flags(const QModelIndex& index) const {
    return index.isValid() && index.column() > 0 ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                                                 : Qt::NoItemFlags;
}

}  // namespace toolkit
