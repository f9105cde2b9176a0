#include "toolkit/ListView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>

#include "toolkit/ColumnFit.h"
#include "toolkit/Images.h"
#include "toolkit/Keys.h"
#include "toolkit/Tips.h"
#include "toolkit/Twips.h"

namespace toolkit {

namespace {

/// A header that carries the list's sort marks.
class MarkedHeader final : public QHeaderView {
public:
    explicit MarkedHeader(ListView* list) : QHeaderView(Qt::Horizontal, list), m_list(list) {
        setHighlightSections(false);
        setStretchLastSection(true);
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        const QString mark = m_list->HeaderMark(section);
        if (mark != u"Blank")
            option->icon = Images::Icon(mark == u"ArrowUp" ? Image::ArrowUp : Image::ArrowDown);
    }

private:
    ListView* m_list;
};

}  // namespace

ListView::ListView(QWidget* parent) : QTreeView(parent) {
    setHeader(new MarkedHeader(this));
    header()->setSectionsClickable(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    TipCutTexts(*this);
    connect(header(), &QHeaderView::sectionClicked, this, &ListView::SortBy);
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { emit RowOpened(index.row()); });
}

void ListView::SetListModel(RowListModel* model, const std::vector<ListColumn>& columns) {
    m_sortColumn = -1;
    m_sortOrder = Qt::DescendingOrder;
    if (this->model())
        disconnect(this->model(), &QAbstractItemModel::modelReset, this, nullptr);
    setModel(model);
    m_widths.clear();
    for (const ListColumn& column : columns) {
        const int stated = Twips(column.WidthTwips, this);
        setColumnWidth(int(m_widths.size()), stated);
        m_widths.push_back({stated, stated});
    }
    // Rows that come later stand in the order that the header's mark promises.
    connect(model, &QAbstractItemModel::modelReset, this, [this, model] {
        if (m_sortColumn >= 0)
            model->sort(m_sortColumn, m_sortOrder);
        WidenColumns();
    });
    WidenColumns();
}

QString ListView::HeaderMark(int column) const {
    if (column != m_sortColumn)
        return QStringLiteral("Blank");
    return m_sortOrder == Qt::AscendingOrder ? QStringLiteral("ArrowUp")
                                             : QStringLiteral("ArrowDown");
}

void ListView::SortBy(int column) {
    m_sortOrder = m_sortOrder == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_sortColumn = column;
    model()->sort(column, m_sortOrder);
    header()->viewport()->update();
    scrollTo(currentIndex());
}

void ListView::WidenColumns() {
    const int last = int(m_widths.size()) - 1;
    for (int column = 0; column <= last; ++column) {
        ColumnWidth& width = m_widths[size_t(column)];
        // What the user has sized stays; the last column takes what room there is anyway.
        if (column < last && columnWidth(column) != width.Given)
            continue;
        width.Given = FittedWidth(*this, *header(), column, width.Stated);
        setColumnWidth(column, width.Given);
    }
}

void ListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (current.row() != previous.row())
        emit RowChosen(current.row());
}

void ListView::focusInEvent(QFocusEvent* event) {
    // Whoever comes by key needs a row to stand on. A mouse brings its own; a sheet that closes
    // above the list chooses nobody, though the tree itself would.
    const bool byKey = event->reason() == Qt::TabFocusReason ||
                       event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
    if (currentIndex().isValid() || !model()) {
        QTreeView::focusInEvent(event);
    } else if (byKey) {
        setCurrentIndex(model()->index(0, 0));
        QTreeView::focusInEvent(event);
    } else {
        QAbstractScrollArea::focusInEvent(event);
        viewport()->update();
    }
}

void ListView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex current = currentIndex();
    if (IsCopy(*event)) {
        QStringList texts;
        for (int column = 0; current.isValid() && column < model()->columnCount(); ++column)
            texts.append(current.siblingAtColumn(column).data().toString());
        if (!texts.isEmpty())
            QGuiApplication::clipboard()->setText(texts.join(u'\t'));
    } else if (IsEnter(*event)) {
        if (current.isValid())
            emit RowOpened(current.row());
    } else if ((event->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier &&
               event->key() >= Qt::Key_1 && event->key() <= Qt::Key_9) {
        if (model() && event->key() - Qt::Key_1 < model()->columnCount())
            SortBy(event->key() - Qt::Key_1);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void ListView::mousePressEvent(QMouseEvent* event) {
    const int before = currentIndex().row();
    QTreeView::mousePressEvent(event);
    if (before >= 0 && indexAt(event->position().toPoint()).row() == before)
        emit RowChosen(before);
}

}  // namespace toolkit
