#include "visits/VisitChart.h"

#include <QGraphicsLayout>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>
#include <algorithm>
#include <limits>
#include <set>

#include "base/Dates.h"
#include "base/Numbers.h"

namespace {

using visits::Visit;

struct Line {
    const char16_t* Name;
    visits::Reading Read;
    QRgb Colour;
    Qt::PenStyle Style;
    bool IsPressure;
};

const std::array<Line, 3> kLines{{
    {u"Weight", [](const Visit& v) { return v.Weight; }, qRgb(0x0b, 0x5c, 0xad), Qt::SolidLine,
     false},
    {u"Pressure, upper", [](const Visit& v) { return v.Pressure.Systolic; }, qRgb(0xb4, 0x23, 0x18),
     Qt::SolidLine, true},
    {u"lower", [](const Visit& v) { return v.Pressure.Diastolic; }, qRgb(0xc2, 0x6a, 0x00),
     Qt::DashLine, true},
}};

constexpr qint64 kDayMilliseconds = 24 * 60 * 60 * 1000;
constexpr double kDot = 2.5, kMarkedDot = 5;
constexpr size_t kDottedVisits = 60;
constexpr double kDayWidth = 100;

QPen PenOf(const Line& line) {
    return QPen(QColor(line.Colour), 2, line.Style);
}

/// An axis around all values of its lines, with some air; a default where there are none.
void Fit(QValueAxis& axis, double low, double high) {
    if (low > high) {
        low = 0;
        high = 100;
    }
    const double air = std::max(2.0, (high - low) * 0.1);
    axis.setRange(std::max(0.0, low - air), high + air);
    axis.applyNiceNumbers();
}

}  // namespace

VisitChart::VisitChart(QWidget* parent)
    : QChartView(parent),
      m_days(new QCategoryAxis),
      m_weight(new QValueAxis),
      m_pressure(new QValueAxis) {
    setRenderHint(QPainter::Antialiasing);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(QStringLiteral("Weight and blood pressure over the visits"));
    chart()->setMargins(QMargins(4, 0, 4, 0));
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setBackgroundRoundness(0);
    chart()->legend()->setContentsMargins(0, 0, 0, 0);
    chart()->legend()->setAlignment(Qt::AlignTop);
    SetUpAxes();
    SetVisits({});
}

void VisitChart::SetUpAxes() {
    m_days->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    m_weight->setLabelFormat(QStringLiteral("%.0f"));
    m_weight->setLabelsColor(QColor(kLines[0].Colour));
    m_pressure->setLabelFormat(QStringLiteral("%.0f"));
    m_pressure->setLabelsColor(QColor(kLines[1].Colour));
    m_pressure->setGridLineVisible(false);
    chart()->addAxis(m_days, Qt::AlignBottom);
    chart()->addAxis(m_weight, Qt::AlignLeft);
    chart()->addAxis(m_pressure, Qt::AlignRight);
    // A series of its own kind joins all its points, and a visit without a reading must leave a
    // gap: the series give the legend and the axes, the lines are drawn over them.
    for (const Line& line : kLines) {
        auto* series = new QLineSeries;
        series->setName(QString::fromUtf16(line.Name));
        series->setPen(PenOf(line));
        chart()->addSeries(series);
        series->attachAxis(m_days);
        series->attachAxis(line.IsPressure ? m_pressure : m_weight);
    }
}

void VisitChart::SetVisits(std::vector<Visit> visits) {
    m_visits = std::move(visits);
    m_marked = -1;
    for (size_t line = 0; line < kLines.size(); ++line)
        m_runs[line] = visits::Runs(m_visits, kLines[line].Read);
    FitAxes();
    FitDays();
    chart()->setTitle(m_visits.empty() ? QStringLiteral("No earlier visit.") : QString());
    viewport()->update();
}

void VisitChart::FitAxes() {
    double low[2], high[2];
    std::fill_n(low, 2, std::numeric_limits<double>::max());
    std::fill_n(high, 2, std::numeric_limits<double>::lowest());
    for (size_t line = 0; line < kLines.size(); ++line)
        for (const auto& run : m_runs[line])
            for (const QPointF& point : run) {
                const bool pressure = kLines[line].IsPressure;
                low[pressure] = std::min(low[pressure], point.y());
                high[pressure] = std::max(high[pressure], point.y());
            }
    Fit(*m_weight, low[0], high[0]);
    Fit(*m_pressure, low[1], high[1]);
}

// Twelve months at a time, counted back from the latest visit: those that hold the marked one.
void VisitChart::FitDays() {
    if (m_visits.empty())
        return;
    const auto earlier = [](const Visit& a, const Visit& b) { return a.Moment < b.Moment; };
    QDateTime end = std::max_element(m_visits.begin(), m_visits.end(), earlier)->Moment;
    const QDateTime shown = m_marked >= 0 ? m_visits[size_t(m_marked)].Moment : end;
    while (shown <= end.addYears(-1))
        end = end.addYears(-1);
    std::set<QDateTime> moments;
    for (const Visit& visit : m_visits)
        if (visit.Moment > end.addYears(-1) && visit.Moment <= end)
            moments.insert(visit.Moment);
    m_shown = moments.size();
    const qint64 span = moments.begin()->msecsTo(*moments.rbegin());
    const qint64 air = std::max(kDayMilliseconds, span / 12);
    m_days->setRange(double(moments.begin()->toMSecsSinceEpoch() - air),
                     double(moments.rbegin()->toMSecsSinceEpoch() + air));
    LabelDays({moments.begin(), moments.end()}, double(span));
}

// The visits' own days stand below, as many as have room; each once.
void VisitChart::LabelDays(const std::vector<QDateTime>& moments, double span) {
    for (const QString& label : m_days->categoriesLabels())
        m_days->remove(label);
    const double apart = span * kDayWidth / std::max(1.0, chart()->plotArea().width());
    double last = std::numeric_limits<double>::lowest();
    for (const QDateTime& moment : moments) {
        const double place = double(moment.toMSecsSinceEpoch());
        if (place - last < apart || m_days->max() - place < apart)
            continue;
        m_days->append(base::ShortDate(moment.date()), place);
        last = place;
    }
}

void VisitChart::Mark(int visit) {
    m_marked = visit >= 0 && visit < int(m_visits.size()) ? visit : -1;
    FitDays();
    viewport()->update();
}

QString VisitChart::MarkText() const {
    if (m_marked < 0)
        return {};
    const Visit& chosen = m_visits[size_t(m_marked)];
    const auto text = [](const std::optional<double>& value) {
        return value ? base::PlainText(*value) : QStringLiteral("-");
    };
    return QStringLiteral("%1:  weight %2,  blood pressure %3/%4")
        .arg(base::ShortDate(chosen.Moment.date()), text(chosen.Weight),
             text(chosen.Pressure.Systolic), text(chosen.Pressure.Diastolic));
}

void VisitChart::resizeEvent(QResizeEvent* event) {
    QChartView::resizeEvent(event);
    FitDays();
}

QPointF VisitChart::Place(const QPointF& point, const QValueAxis& axis) const {
    const QRectF plot = chart()->plotArea();
    return {
        plot.left() + (point.x() - m_days->min()) / (m_days->max() - m_days->min()) * plot.width(),
        plot.bottom() - (point.y() - axis.min()) / (axis.max() - axis.min()) * plot.height()};
}

void VisitChart::drawForeground(QPainter* painter, const QRectF&) {
    if (m_visits.empty())
        return;
    painter->save();
    painter->setClipRect(chart()->plotArea());
    DrawMark(*painter);
    for (size_t line = 0; line < kLines.size(); ++line) {
        const QValueAxis& axis = kLines[line].IsPressure ? *m_pressure : *m_weight;
        const QColor colour(kLines[line].Colour);
        for (const auto& run : m_runs[line]) {
            QPolygonF shown;
            for (const QPointF& point : run)
                shown << Place(point, axis);
            painter->setPen(PenOf(kLines[line]));
            painter->setBrush(Qt::NoBrush);
            painter->drawPolyline(shown);
            painter->setPen(Qt::NoPen);
            painter->setBrush(colour);
            if (m_shown <= kDottedVisits || shown.size() == 1)
                for (const QPointF& place : shown)
                    painter->drawEllipse(place, kDot, kDot);
        }
        const std::optional<double> marked =
            m_marked >= 0 ? kLines[line].Read(m_visits[size_t(m_marked)]) : std::nullopt;
        if (marked) {
            const double day = double(m_visits[size_t(m_marked)].Moment.toMSecsSinceEpoch());
            painter->setPen(QPen(Qt::white, 1));
            painter->setBrush(colour);
            painter->drawEllipse(Place({day, *marked}, axis), kMarkedDot, kMarkedDot);
        }
    }
    painter->restore();
}

void VisitChart::DrawMark(QPainter& painter) const {
    if (m_marked < 0)
        return;
    const double day = double(m_visits[size_t(m_marked)].Moment.toMSecsSinceEpoch());
    const double x = Place({day, 0}, *m_weight).x();
    painter.setPen(QPen(QColor(0x6b, 0x75, 0x7f), 1.5));
    painter.drawLine(QPointF(x, chart()->plotArea().top()),
                     QPointF(x, chart()->plotArea().bottom()));
}
