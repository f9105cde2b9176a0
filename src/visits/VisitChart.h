#pragma once

#include <QtCharts/QChartView>
#include <array>
#include <vector>

#include "visits/VisitReadings.h"

class QCategoryAxis;
class QValueAxis;

/// Weight and blood pressure over a patient's visits as lines, with one visit marked: twelve months
/// of them, the last ones unless an earlier visit is marked.
class VisitChart final : public QChartView {
    Q_OBJECT
public:
    explicit VisitChart(QWidget* parent = nullptr);

    /// Draws these visits, in the order of the list; none is marked. Without any it says so.
    void SetVisits(std::vector<visits::Visit> visits);
    /// Marks the visit at a position of the list; another position marks none.
    void Mark(int visit);
    int Marked() const { return m_marked; }
    /// Day and readings of the marked visit; empty for none.
    QString MarkText() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& area) override;

private:
    void SetUpAxes();
    void FitAxes();
    void FitDays();
    void LabelDays(const std::vector<QDateTime>& moments, double span);
    QPointF Place(const QPointF& point, const QValueAxis& axis) const;
    void DrawMark(QPainter& painter) const;

    QCategoryAxis* m_days;
    QValueAxis* m_weight;
    QValueAxis* m_pressure;
    std::vector<visits::Visit> m_visits;
    std::array<std::vector<std::vector<QPointF>>, 3> m_runs;
    int m_marked = -1;
    size_t m_shown = 0;
};
