#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QVariantList>
#include <QtQmlIntegration>

namespace tidewell {

/// Paints the segments of a bar from left to right on a rounded ground. Lists of hands hold dozens
/// of these: it paints what it is told, and nothing is worked out here.
class ActionBarItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// Maps of `x`, `width`, `leftRadius`, `rightRadius` (pixels), `color`, `hatch` (the colour of
    /// its stripes, transparent for none), `parted` (by a line from the one before), `framed`, and
    /// `text` (in its middle where there is room, none if empty).
    Q_PROPERTY(QVariantList segments MEMBER segments_ NOTIFY lookChanged)
    /// Pixels.
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY lookChanged)
    Q_PROPERTY(QColor ground MEMBER ground_ NOTIFY lookChanged)
    Q_PROPERTY(QColor frame MEMBER frame_ NOTIFY lookChanged)
    /// What lies under a text makes it legible on any colour.
    Q_PROPERTY(QColor plate MEMBER plate_ NOTIFY lookChanged)
    Q_PROPERTY(QColor textColor MEMBER textColor_ NOTIFY lookChanged)

  public:
    explicit ActionBarItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  signals:
    void lookChanged();

  private:
    void paintText(QPainter& painter, double x, double width, const QString& text) const;

    QVariantList segments_;
    double radius_ = 0.0;
    QColor ground_;
    QColor frame_;
    QColor plate_;
    QColor textColor_;
};

}  // namespace tidewell
