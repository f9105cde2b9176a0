#include "toolkit/Tips.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

namespace toolkit {

namespace {

class CutTextTips final : public QObject {
public:
    explicit CutTextTips(QAbstractItemView& view) : QObject(&view), m_view(view) {
        view.viewport()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::ToolTip)
            return false;
        const auto& help = static_cast<const QHelpEvent&>(*event);
        const QModelIndex index = m_view.indexAt(help.pos());
        const QRect cell = m_view.visualRect(index);
        const QString text = index.data().toString();
        QToolTip::showText(help.globalPos(), IsCut(text, cell) ? TipOf(text) : QString(),
                           m_view.viewport(), cell);
        return true;
    }

private:
    bool IsCut(const QString& text, const QRect& cell) const {
        const int margin =
            m_view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &m_view) + 1;
        return m_view.fontMetrics().horizontalAdvance(text) + 2 * margin > cell.width();
    }

    QAbstractItemView& m_view;
};

}  // namespace

QString TipOf(const QString& text) {
    return text.isEmpty() ? text : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

void TipCutTexts(QAbstractItemView& view) {
    new CutTextTips(view);
}

}  // namespace toolkit
