#include "visits/VisitChart.h"

#include <QtCharts/QDateTimeAxis>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>
#include <algorithm>
#include <limits>

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
    {u"Blood pressure, upper", [](const Visit& v) { return v.Pressure.Systolic; },
     qRgb(0xb4, 0x23, 0x18), Qt::SolidLine, true},
    {u"lower", [](const Visit& v) { return v.Pressure.Diastolic; }, qRgb(0xc2, 0x6a, 0x00),
     Qt::DashLine, true},
}};

constexpr qint64 kDayMilliseconds = 24 * 60 * 60 * 1000;
constexpr double kDot = 2.5, kMarkedDot = 5;
constexpr size_t kDottedVisits = 60;

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
      m_days(new QDateTimeAxis),
      m_weight(new QValueAxis),
      m_pressure(new QValueAxis) {
    setRenderHint(QPainter::Antialiasing);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(QStringLiteral("Weight and blood pressure over the visits"));
    chart()->setMargins(QMargins(4, 4, 4, 4));
    chart()->legend()->setAlignment(Qt::AlignTop);
    SetUpAxes();
    SetVisits({});
}

void VisitChart::SetUpAxes() {
    m_days->setFormat(QStringLiteral("M/d/yyyy"));
    m_days->setTickCount(4);
    m_weight->setTitleText(QStringLiteral("Weight"));
    m_weight->setLabelFormat(QStringLiteral("%.0f"));
    m_pressure->setTitleText(QStringLiteral("Pressure"));
    m_pressure->setLabelFormat(QStringLiteral("%.0f"));
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
    if (m_visits.empty())
        return;
    const auto earlier = [](const Visit& a, const Visit& b) { return a.Moment < b.Moment; };
    const auto [first, last] = std::minmax_element(m_visits.begin(), m_visits.end(), earlier);
    const qint64 air = std::max(kDayMilliseconds, first->Moment.msecsTo(last->Moment) / 40);
    m_days->setRange(first->Moment.addMSecs(-air), last->Moment.addMSecs(air));
}

void VisitChart::Mark(int visit) {
    m_marked = visit >= 0 && visit < int(m_visits.size()) ? visit : -1;
    QString told;
    if (m_marked >= 0) {
        const Visit& chosen = m_visits[size_t(m_marked)];
        const auto text = [](const std::optional<double>& value) {
            return value ? base::PlainText(*value) : QStringLiteral("-");
        };
        told = QStringLiteral("%1:  weight %2,  blood pressure %3/%4")
                   .arg(base::ShortDate(chosen.Moment.date()), text(chosen.Weight),
                        text(chosen.Pressure.Systolic), text(chosen.Pressure.Diastolic));
    }
    if (!m_visits.empty())
        chart()->setTitle(told);
    viewport()->update();
}

QPointF VisitChart::Place(const QPointF& point, const QValueAxis& axis) const {
    const QRectF plot = chart()->plotArea();
    const double start = double(m_days->min().toMSecsSinceEpoch());
    const double end = double(m_days->max().toMSecsSinceEpoch());
    return {plot.left() + (point.x() - start) / (end - start) * plot.width(),
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
            if (m_visits.size() <= kDottedVisits || shown.size() == 1)
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
