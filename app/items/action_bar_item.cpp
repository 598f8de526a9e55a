#include "app/items/action_bar_item.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QVariantMap>
#include <algorithm>
#include <cmath>

namespace tidewell {
namespace {

const QFont& textFont() {
    static const QFont font = [] {
        QFont small(QStringLiteral("sans-serif"));
        small.setPixelSize(10);
        small.setBold(true);
        return small;
    }();
    return font;
}

/// With a radius of its own at either end.
QPainterPath roundedAtEnds(const QRectF& area, double left, double right) {
    QPainterPath path;
    path.moveTo(area.left() + left, area.top());
    path.lineTo(area.right() - right, area.top());
    path.arcTo(area.right() - 2 * right, area.top(), 2 * right, 2 * right, 90, -90);
    path.lineTo(area.right(), area.bottom() - right);
    path.arcTo(area.right() - 2 * right, area.bottom() - 2 * right, 2 * right, 2 * right, 0, -90);
    path.lineTo(area.left() + left, area.bottom());
    path.arcTo(area.left(), area.bottom() - 2 * left, 2 * left, 2 * left, 270, -90);
    path.lineTo(area.left(), area.top() + left);
    path.arcTo(area.left(), area.top(), 2 * left, 2 * left, 180, -90);
    path.closeSubpath();
    return path;
}

void paintHatch(QPainter& painter, const QPainterPath& area, const QColor& color) {
    constexpr double distance = 7.0;
    constexpr double thickness = 1.8;
    const QRectF around = area.boundingRect();
    painter.save();
    painter.setClipPath(area);
    painter.setPen(QPen(color, thickness));
    for (double x = around.left(); x < around.right() + around.height(); x += distance) {
        painter.drawLine(QPointF(x, around.top()), QPointF(x - around.height(), around.bottom()));
    }
    painter.restore();
}

}  // namespace

ActionBarItem::ActionBarItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &ActionBarItem::lookChanged, this, [this] { update(); });
}

void ActionBarItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ground_);
    const double end = std::min({radius_, width() / 2, height() / 2});
    painter->drawRoundedRect(QRectF(0, 0, width(), height()), end, end);
    for (const QVariant& entry : segments_) {
        const QVariantMap segment = entry.toMap();
        const QRectF area(segment.value("x").toDouble(), 0, segment.value("width").toDouble(),
                          height());
        if (!(area.width() > 0)) {
            continue;
        }
        const QPainterPath outline = roundedAtEnds(area, segment.value("leftRadius").toDouble(),
                                                   segment.value("rightRadius").toDouble());
        painter->fillPath(outline, segment.value("color").value<QColor>());
        const QColor hatch(segment.value("hatch").value<QColor>());
        if (hatch.alpha() > 0) {
            paintHatch(*painter, outline, hatch);
        }
        if (segment.value("parted").toBool()) {
            painter->fillRect(QRectF(area.left(), 0, 1, height()), ground_);
        }
        if (segment.value("framed").toBool()) {
            painter->strokePath(outline, QPen(frame_, 2));
        }
        paintText(*painter, area.x(), area.width(), segment.value("text").toString());
    }
}

void ActionBarItem::paintText(QPainter& painter, double x, double width,
                              const QString& text) const {
    if (text.isEmpty()) {
        return;
    }
    constexpr double to_spare = 8.0;
    constexpr double plate_height = 16.0;
    constexpr double plate_radius = 4.0;
    const double least = std::ceil(QFontMetricsF(textFont()).horizontalAdvance(text)) + to_spare;
    if (least > width) {
        return;
    }
    const double high = std::min(height(), plate_height);
    const QRectF plate(x + (width - least) / 2, (height() - high) / 2, least, high);
    painter.setPen(Qt::NoPen);
    painter.setBrush(plate_);
    painter.drawRoundedRect(plate, plate_radius, plate_radius);
    painter.setPen(textColor_);
    painter.setFont(textFont());
    painter.drawText(plate, Qt::AlignCenter, text);
}

}  // namespace tidewell
