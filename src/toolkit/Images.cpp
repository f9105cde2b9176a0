#include "toolkit/Images.h"

#include <QIconEngine>
#include <QPainter>
#include <QtMath>

namespace toolkit {

namespace {

// All shapes stand in a square of one by one.
const QColor kInk(0x0b, 0x4f, 0x8a);

QPolygonF Arrow(bool up) {
    const QPolygonF pointingUp({{0.5, 0.25}, {0.9, 0.72}, {0.1, 0.72}});
    return up ? pointingUp : QTransform(1, 0, 0, -1, 0, 1).map(pointingUp);
}

QPolygonF Star() {
    constexpr int kPoints = 5;
    constexpr double kOuter = 0.48, kInner = 0.21;
    QPolygonF star;
    for (int corner = 0; corner < 2 * kPoints; ++corner) {
        const double radius = corner % 2 ? kInner : kOuter;
        const double angle = M_PI * corner / kPoints;
        star << QPointF(0.5 + radius * qSin(angle), 0.53 - radius * qCos(angle));
    }
    return star;
}

void DrawShape(QPainter& painter, const QPolygonF& shape, const QColor& fill, const QPen& pen) {
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawPolygon(shape);
}

void DrawSheet(QPainter& painter) {
    const QPolygonF sheet({{0.16, 0.06}, {0.58, 0.06}, {0.8, 0.28}, {0.8, 0.94}, {0.16, 0.94}});
    DrawShape(painter, sheet, Qt::white, QPen(kInk, 0.05));
    painter.setPen(QPen(QColor(0x9a, 0xa7, 0xb4), 0.05));
    for (const double line : {0.36, 0.5, 0.64})
        painter.drawLine(QPointF(0.27, line), QPointF(0.66, line));
}

void DrawNewSheet(QPainter& painter) {
    DrawSheet(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1e, 0x8e, 0x3e));
    painter.drawEllipse(QPointF(0.74, 0.74), 0.24, 0.24);
    painter.setPen(QPen(Qt::white, 0.08));
    painter.drawLine(QPointF(0.62, 0.74), QPointF(0.86, 0.74));
    painter.drawLine(QPointF(0.74, 0.62), QPointF(0.74, 0.86));
}

void DrawAssessment(QPainter& painter) {
    DrawSheet(painter);
    painter.setPen(QPen(QColor(0x1e, 0x8e, 0x3e), 0.12, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{0.46, 0.72}, {0.62, 0.88}, {0.94, 0.5}}));
}

// The three states differ in shape, not in colour alone.
void DrawState(QPainter& painter, const QColor& fill, const QList<QPolygonF>& strokes) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawEllipse(QPointF(0.5, 0.5), 0.44, 0.44);
    painter.setPen(QPen(Qt::white, 0.12, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    for (const QPolygonF& stroke : strokes)
        painter.drawPolyline(stroke);
}

void DrawCalendar(QPainter& painter) {
    DrawShape(painter, QPolygonF(QRectF(0.12, 0.18, 0.76, 0.72)), Qt::white, QPen(kInk, 0.06));
    DrawShape(painter, QPolygonF(QRectF(0.12, 0.18, 0.76, 0.2)), kInk, QPen(kInk, 0.06));
    painter.setPen(QPen(kInk, 0.09));
    for (const double row : {0.56, 0.74})
        for (const double column : {0.3, 0.5, 0.7})
            painter.drawPoint(QPointF(column, row));
}

void Draw(QPainter& painter, Image image) {
    switch (image) {
        case Image::Blank:
            break;
        case Image::ArrowUp:
        case Image::ArrowDown:
            DrawShape(painter, Arrow(image == Image::ArrowUp), kInk, Qt::NoPen);
            break;
        case Image::Star:
            DrawShape(painter, Star(), QColor(0xff, 0xb9, 0x00),
                      QPen(QColor(0x8a, 0x5a, 0x00), 0.06));
            break;
        case Image::NewSheet:
            DrawNewSheet(painter);
            break;
        case Image::Assessment:
            DrawAssessment(painter);
            break;
        case Image::Paid:
            DrawState(painter, QColor(0x1e, 0x8e, 0x3e),
                      {{{0.28, 0.52}, {0.44, 0.68}, {0.72, 0.34}}});
            break;
        case Image::Pending:
            DrawState(painter, QColor(0xb2, 0x6a, 0x00),
                      {{{0.5, 0.24}, {0.5, 0.52}, {0.68, 0.62}}});
            break;
        case Image::Revoked:
            DrawState(painter, QColor(0xb3, 0x26, 0x1e),
                      {{{0.34, 0.34}, {0.66, 0.66}}, {{0.66, 0.34}, {0.34, 0.66}}});
            break;
        case Image::Calendar:
            DrawCalendar(painter);
            break;
    }
}

class Drawing final : public QIconEngine {
public:
    explicit Drawing(Image image) : m_image(image) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        const double side = qMin(place.width(), place.height());
        const QPointF corner = QRectF(place).center() - QPointF(side / 2, side / 2);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(corner);
        painter->scale(side, side);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        Draw(*painter, m_image);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new Drawing(m_image); }

private:
    Image m_image;
};

}  // namespace

QIcon Images::Icon(Image image) {
    return QIcon(new Drawing(image));
}

}  // namespace toolkit
