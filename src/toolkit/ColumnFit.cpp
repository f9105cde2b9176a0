#include "toolkit/ColumnFit.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QStyle>
#include <QTableView>

namespace toolkit {

namespace {

// Enough to see how wide the texts of a column are; measuring all of a long list would be felt.
constexpr int kMeasuredRows = 50;
constexpr int kAroundText = 10;

}  // namespace

int FittedWidth(const QAbstractItemView& view, const QHeaderView& header, int column, int stated) {
    const QAbstractItemModel& model = *view.model();
    const QStyle& style = *view.style();
    const int rows = qMin(kMeasuredRows, model.rowCount());
    const int mark = style.pixelMetric(QStyle::PM_SmallIconSize, nullptr, &view) + kAroundText;
    const int margin = 2 * style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view);
    const int headerWidth = header.sectionSizeHint(column);
    int width = headerWidth;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model.index(row, column);
        const int text = view.fontMetrics().horizontalAdvance(index.data().toString());
        const bool marked = !index.data(Qt::DecorationRole).isNull();
        width = qMax(width, text + margin + kAroundText + (marked ? mark : 0));
    }
    return qBound(stated, width, qMax(2 * stated, headerWidth));
}

int WidthWithRoom(const QTableView& view, int column, int least) {
    const QHeaderView& header = *view.horizontalHeader();
    const int others = header.length() - header.sectionSize(column);
    return qMax(least, view.viewport()->width() - others);
}

}  // namespace toolkit
