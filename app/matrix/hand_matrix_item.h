#pragma once

#include <QBasicTimer>
#include <QPointF>
#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <QtQmlIntegration>
#include <memory>

#include "app/matrix/hand_matrix_picture.h"

class QAbstractAnimation;

namespace tidewell {

/// The 13 by 13 grid of starting hands: draws it and turns pointer and keys into hands. It holds no
/// weights of its own: a painted hand changes when its owner sets `weights` anew. Hands go in and
/// out as labels, "AA", "AKs", "AKo"; labels that are none are ignored.
class HandMatrixItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

    /// Label to weight. Drawn within [0, 1]; a hand above 0 is on.
    Q_PROPERTY(QVariantMap weights READ weights WRITE setWeights NOTIFY contentChanged)
    /// Label to the colour of its fill; the accent for the others.
    Q_PROPERTY(QVariantMap colors READ colors WRITE setColors NOTIFY contentChanged)
    /// Label to how many of the combos are in, for hands whose combos differ.
    Q_PROPERTY(QVariantMap parts READ parts WRITE setParts NOTIFY contentChanged)
    /// Type words of the actions, for the text of the matrix and for the marks of all-ins and
    /// sizes.
    Q_PROPERTY(QStringList actionTypes MEMBER actionTypes_ NOTIFY contentChanged)
    Q_PROPERTY(
        QVariantList actionColors READ actionColors WRITE setActionColors NOTIFY contentChanged)
    /// Label to a probability for each action. Lists of another length than `actionColors` are not
    /// shown.
    Q_PROPERTY(QVariantMap actionProbs READ actionProbs WRITE setActionProbs NOTIFY contentChanged)

    /// Whether the shortcut that copies puts the text of the matrix on the clipboard; with the
    /// shift key it does so in any case.
    Q_PROPERTY(bool copiesItself MEMBER copiesItself_ NOTIFY modeChanged)
    Q_PROPERTY(bool editable READ isEditable WRITE setEditable NOTIFY modeChanged)
    Q_PROPERTY(bool selectable READ isSelectable WRITE setSelectable NOTIFY modeChanged)
    Q_PROPERTY(bool dragSelectable MEMBER dragSelectable_ NOTIFY modeChanged)

    /// The weight that an editable matrix is painted with: a stroke that begins on a hand of this
    /// weight clears, any other one paints all hands of another weight. Below 0 a hand is on or off
    /// and its weight of no concern.
    Q_PROPERTY(qreal brush MEMBER brush_ NOTIFY modeChanged)

    Q_PROPERTY(bool fillFromBottom MEMBER fillFromBottom_ NOTIFY contentChanged)
    Q_PROPERTY(bool showLabels MEMBER showLabels_ NOTIFY contentChanged)
    Q_PROPERTY(qreal cellSize MEMBER cellSize_ NOTIFY lookChanged)
    Q_PROPERTY(qreal cellSpacing MEMBER cellSpacing_ NOTIFY lookChanged)
    Q_PROPERTY(QFont labelFont MEMBER labelFont_ NOTIFY lookChanged)
    Q_PROPERTY(QColor pairColor MEMBER pairColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor suitedColor MEMBER suitedColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor offsuitColor MEMBER offsuitColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor borderColor MEMBER borderColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor focusColor MEMBER focusColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor selectionColor MEMBER selectionColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor accentColor MEMBER accentColor_ NOTIFY lookChanged)
    Q_PROPERTY(QColor labelColor MEMBER labelColor_ NOTIFY lookChanged)
    /// A faint line around the glyphs of the labels.
    Q_PROPERTY(QColor haloColor MEMBER haloColor_ NOTIFY lookChanged)
    /// In the corner of a hand whose combos differ.
    Q_PROPERTY(QColor markColor MEMBER markColor_ NOTIFY lookChanged)
    /// Label of the hand framed as chosen, empty for none.
    Q_PROPERTY(QString selectedHand MEMBER selectedHand_ NOTIFY contentChanged)
    /// Labels of the hands that carry a padlock.
    Q_PROPERTY(QStringList lockedHands MEMBER lockedHands_ NOTIFY contentChanged)

    /// Label under the pointer, empty for none.
    Q_PROPERTY(QString hoveredHand READ hoveredHand NOTIFY hoveredHandChanged)
    /// Label that the keyboard acts on; a press moves it too. Its weight, and the probabilities it
    /// is drawn with, empty unless it is a mix of actions.
    Q_PROPERTY(QString currentHand READ currentHand NOTIFY currentChanged)
    Q_PROPERTY(qreal currentWeight READ currentWeight NOTIFY currentChanged)
    Q_PROPERTY(QVariantList currentShares READ currentShares NOTIFY currentChanged)
    /// Whether the current hand is marked: keys are in use, not the pointer.
    Q_PROPERTY(bool focusVisible READ isFocusVisible NOTIFY focusVisibleChanged)

  public:
    explicit HandMatrixItem(QQuickItem* parent = nullptr);
    ~HandMatrixItem() override;

    const QVariantMap& weights() const { return weights_; }
    void setWeights(const QVariantMap& weights);
    const QVariantMap& parts() const { return parts_; }
    void setParts(const QVariantMap& parts);
    const QVariantMap& colors() const { return colors_; }
    void setColors(const QVariantMap& colors);
    const QVariantList& actionColors() const { return actionColors_; }
    void setActionColors(const QVariantList& colors);
    const QVariantMap& actionProbs() const { return actionProbs_; }
    void setActionProbs(const QVariantMap& probs);
    bool isEditable() const { return editable_; }
    void setEditable(bool editable);
    bool isSelectable() const { return selectable_; }
    void setSelectable(bool selectable);
    QString hoveredHand() const;
    QString currentHand() const;
    qreal currentWeight() const;
    QVariantList currentShares() const;
    bool isFocusVisible() const { return focusVisible_; }

    /// Does what a click on the current hand would do.
    Q_INVOKABLE void activateCurrent();

    /// 13 lines of 13 cells with tabs between them. A cell is the label and, where the hand is on,
    /// its weight and the probability of each action: "AKs 0.5 (bet 33%: 0.4, check: 0.6)".
    Q_INVOKABLE QString toText() const;

    /// Puts the text on the clipboard.
    Q_INVOKABLE void copy() const;

  signals:
    void contentChanged();
    void modeChanged();
    void lookChanged();
    void hoveredHandChanged();
    void currentChanged();
    void focusVisibleChanged();

    /// A click on a hand of a selectable matrix that is not editable.
    void handClicked(const QString& hand, double currentWeight);
    /// Around all that one stroke paints or one drag enters, which may be a single hand: a change
    /// that is undone as one. A press of a key that paints is a stroke of its own.
    void strokeStarted();
    void strokeEnded();
    /// A stroke over an editable matrix wants this hand on or off.
    void handPainted(const QString& hand, bool desiredOn, double currentWeight);
    /// The weight of a hand of an editable matrix is to change by so much: by the wheel, by a drag
    /// with Alt held, up for more, or by the keys plus and minus.
    void handWeighed(const QString& hand, double difference);
    /// The combos of a hand of an editable matrix are wanted, by the right button or the menu key.
    void handOpened(const QString& hand);
    /// A drag over a selectable matrix entered a hand; the hand it began on counts.
    void handDragged(const QString& hand, double currentWeight);
    /// The pointer came to a hand; an empty label and 0 where it left the last one.
    void handHovered(const QString& hand, double weight);

  protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void wheelEvent(QWheelEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    enum class Gesture { None, Press, Paint, Drag, Weigh };

    HandGrid grid() const { return {cellSize_, cellSpacing_}; }
    double weightAt(int cell) const {
        return picture_.cells[static_cast<std::size_t>(cell)].weight;
    }
    bool isOn(int cell) const { return weightAt(cell) > 0.0; }
    bool isPainted(int cell) const;
    bool isStroking() const { return gesture_ != Gesture::None && gesture_ != Gesture::Press; }
    void updateMode();
    void setHovered(int cell);
    void setCurrent(int cell);
    void setFocusVisible(bool visible);
    void applyGesture(int cell);
    void endGesture();
    void weighByDrag(QPointF point);
    void endWheel();
    void weighOnce(double difference);
    void click(int cell);
    bool moveCurrent(int key);
    bool advanceLift(int passedMs);
    void updatePicture();
    void updateSheet();
    QString cellText(int cell) const;

    QVariantMap weights_;
    QVariantMap parts_;
    QVariantMap colors_;
    QStringList actionTypes_;
    QVariantList actionColors_;
    QVariantMap actionProbs_;
    bool copiesItself_ = true;
    bool editable_ = false;
    bool selectable_ = false;
    bool dragSelectable_ = false;
    double brush_ = -1.0;
    bool fillFromBottom_ = false;
    bool showLabels_ = true;
    double cellSize_ = 32.0;
    double cellSpacing_ = 2.0;
    QFont labelFont_;
    QColor pairColor_;
    QColor suitedColor_;
    QColor offsuitColor_;
    QColor borderColor_;
    QColor focusColor_;
    QColor selectionColor_;
    QColor accentColor_;
    QColor labelColor_;
    QColor haloColor_;
    QColor markColor_;
    QString selectedHand_;
    QStringList lockedHands_;

    int hovered_ = -1;
    int current_ = 0;
    bool focusVisible_ = false;
    Gesture gesture_ = Gesture::None;
    int gestureCell_ = -1;   // The last one that the gesture was applied to.
    QPointF gesturePoint_;   // Where the pointer was then, or later.
    bool desiredOn_ = true;  // What a stroke turns its hands into.
    QBasicTimer wheelEnd_;   // Runs while turns of the wheel belong together.
    double turned_ = 0.0;    // Of the wheel, in steps that are not done yet.

    HandMatrixPicture picture_;
    LabelSheet sheet_;
    bool sheetStale_ = true;
    std::unique_ptr<QAbstractAnimation> lifting_;  // Runs while cells rise or sink.
};

}  // namespace tidewell
