#pragma once

#include <QAbstractScrollArea>
#include <memory>

#include "print/ReportPages.h"

namespace print {

/// The pages of a report one below the other, as paper on a desk.
class PageView final : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit PageView(QWidget* parent = nullptr);

    /// Shows the first page, fitted to the width.
    void SetPages(std::shared_ptr<const ReportPages> pages);
    /// The page that most of the window shows, from 0.
    int CurrentPage() const;
    /// Scrolls to the top of a page; a number outside goes to the nearest.
    void GoToPage(int page);

    /// 1 shows the paper at its own size; between 0.25 and 4.
    double Zoom() const { return m_zoom; }
    /// What stands at the top of the window stays there.
    void SetZoom(double zoom);
    /// Follows the width of the window until SetZoom is called.
    void FitWidth();

    /// Marks what was found, the current one stronger; -1 for none. Scrolls it into view.
    void SetHits(std::vector<ReportHit> hits, int current);

signals:
    /// Another page or another zoom is shown.
    void ViewChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double PixelsPerUnit() const;
    QSizeF PagePixels() const;
    double PageTop(int page) const;
    QRectF PageRect(int page) const;
    void ApplyZoom(double zoom);
    void UpdateScrollBars();
    void ShowCurrentHit();
    void PaintHits(QPainter& painter, int page) const;

    std::shared_ptr<const ReportPages> m_pages;
    std::vector<ReportHit> m_hits;
    int m_currentHit = -1;
    double m_zoom = 1;
    bool m_fitWidth = true;
};

}  // namespace print
