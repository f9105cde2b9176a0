#include "print/PageView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "print/ReportOutput.h"

namespace print {

namespace {

constexpr double kGap = 12;
constexpr double kSmallestZoom = 0.25;
constexpr double kLargestZoom = 4;
constexpr double kZoomStep = 1.25;
const QColor kFound(255, 240, 140);
const QColor kFoundHere(255, 190, 70);

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setSingleStep(40);
}

void PageView::SetPages(std::shared_ptr<const ReportPages> pages) {
    m_pages = std::move(pages);
    m_hits.clear();
    m_currentHit = -1;
    FitWidth();
    GoToPage(0);
}

double PageView::PixelsPerUnit() const {
    return m_zoom * logicalDpiX() / kUnitsPerInch;
}

QSizeF PageView::PagePixels() const {
    return m_pages->SheetSize() * PixelsPerUnit();
}

double PageView::PageTop(int page) const {
    return kGap + page * (PagePixels().height() + kGap);
}

QRectF PageView::PageRect(int page) const {
    const QSizeF size = PagePixels();
    const double left = std::max(kGap, (viewport()->width() - size.width()) / 2);
    return {QPointF(left - horizontalScrollBar()->value(),
                    PageTop(page) - verticalScrollBar()->value()),
            size};
}

int PageView::CurrentPage() const {
    if (!m_pages)
        return 0;
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    return std::clamp(int((middle - kGap) / (PagePixels().height() + kGap)), 0,
                      m_pages->Count() - 1);
}

void PageView::GoToPage(int page) {
    if (!m_pages)
        return;
    const int last = m_pages->Count() - 1;
    verticalScrollBar()->setValue(int(PageTop(std::clamp(page, 0, last)) - kGap));
    emit ViewChanged();
}

void PageView::SetZoom(double zoom) {
    m_fitWidth = false;
    ApplyZoom(zoom);
}

void PageView::FitWidth() {
    m_fitWidth = true;
    if (!m_pages)
        return;
    const double room = viewport()->width() - 2 * kGap;
    ApplyZoom(room / (m_pages->SheetSize().width() * logicalDpiX() / kUnitsPerInch));
}

void PageView::ApplyZoom(double zoom) {
    if (!m_pages)
        return;
    const double place = verticalScrollBar()->value() / PageTop(m_pages->Count());
    m_zoom = std::clamp(zoom, kSmallestZoom, kLargestZoom);
    UpdateScrollBars();
    verticalScrollBar()->setValue(int(std::lround(place * PageTop(m_pages->Count()))));
    viewport()->update();
    emit ViewChanged();
}

void PageView::UpdateScrollBars() {
    const double height = PageTop(m_pages->Count());
    const double width = PagePixels().width() + 2 * kGap;
    verticalScrollBar()->setRange(0, std::max(0, int(std::ceil(height)) - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    horizontalScrollBar()->setRange(0, std::max(0, int(width) - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
}

void PageView::SetHits(std::vector<ReportHit> hits, int current) {
    m_hits = std::move(hits);
    m_currentHit = current;
    ShowCurrentHit();
    viewport()->update();
}

void PageView::ShowCurrentHit() {
    if (m_currentHit < 0)
        return;
    const ReportHit& hit = m_hits[m_currentHit];
    const QRectF place = hit.Places.front();
    const double top = PageTop(hit.Page) + place.top() * PixelsPerUnit();
    const double bottom = top + place.height() * PixelsPerUnit();
    const int shown = verticalScrollBar()->value();
    if (top < shown || bottom > shown + viewport()->height())
        verticalScrollBar()->setValue(int(top - viewport()->height() / 3.0));
    const double left = kGap + place.left() * PixelsPerUnit();
    if (left < horizontalScrollBar()->value() ||
        left > horizontalScrollBar()->value() + viewport()->width())
        horizontalScrollBar()->setValue(int(left - viewport()->width() / 3.0));
}

void PageView::PaintHits(QPainter& painter, int page) const {
    for (size_t i = 0; i < m_hits.size(); ++i) {
        if (m_hits[i].Page != page)
            continue;
        for (const QRectF& place : m_hits[i].Places)
            painter.fillRect(place, int(i) == m_currentHit ? kFoundHere : kFound);
    }
}

void PageView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Mid));
    if (!m_pages)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const double step = PagePixels().height() + kGap;
    const int first = std::max(0, int((verticalScrollBar()->value() - kGap) / step));
    for (int page = first; page < m_pages->Count(); ++page) {
        const QRectF rect = PageRect(page);
        if (rect.top() > viewport()->height())
            break;
        painter.fillRect(rect, Qt::white);
        painter.save();
        painter.translate(rect.topLeft());
        painter.scale(PixelsPerUnit(), PixelsPerUnit());
        PaintHits(painter, page);
        PaintPage(painter, *m_pages, page);
        painter.restore();
    }
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (!m_pages)
        return;
    if (m_fitWidth)
        FitWidth();
    else
        UpdateScrollBars();
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    emit ViewChanged();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::ZoomIn))
        SetZoom(m_zoom * kZoomStep);
    else if (event->matches(QKeySequence::ZoomOut))
        SetZoom(m_zoom / kZoomStep);
    else if (event->key() == Qt::Key_Home)
        verticalScrollBar()->setValue(0);
    else if (event->key() == Qt::Key_End)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    if (event->angleDelta().y() != 0)
        SetZoom(event->angleDelta().y() > 0 ? m_zoom * kZoomStep : m_zoom / kZoomStep);
    event->accept();
}

}  // namespace print
