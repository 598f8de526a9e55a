#include "app/matrix/hand_matrix_item.h"

#include <QAbstractAnimation>
#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHoverEvent>
#include <QJSValue>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickWindow>
#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <utility>

#include "app/matrix/hand_matrix_node.h"

namespace tidewell {
namespace {

constexpr int raiseMs = 80;
constexpr double weightStep = 0.05;    // of the wheel and the keys
constexpr double pixelsPerStep = 6.0;  // of a drag that changes weights
constexpr double degreesPerStep = 120.0;
constexpr int wheelPauseMs = 600;  // after which another turn of the wheel is another change

// Up to three decimals, without zeros at the end.
QString plainNumber(double value) {
    return QString::number(std::round(value * 1000.0) / 1000.0, 'g', 6);
}

// Numbers of a list, which inside a script's object is a value of the script.
std::vector<double> numbers(QVariant list) {
    if (list.metaType() == QMetaType::fromType<QJSValue>()) {
        list = list.value<QJSValue>().toVariant();
    }
    std::vector<double> result;
    for (const QVariant& number : list.toList()) {
        result.push_back(number.toDouble());
    }
    return result;
}

// Tells the milliseconds between its steps, until the receiver has nothing left to move.
class StepAnimation : public QAbstractAnimation {
  public:
    explicit StepAnimation(std::function<bool(int)> step) : step_(std::move(step)) {}

    int duration() const override { return -1; }

  protected:
    void updateCurrentTime(int now) override {
        const int passed = now - last_;
        last_ = now;
        if (passed > 0 && !step_(passed)) {
            stop();
        }
    }

    void updateState(State state, State /*before*/) override {
        if (state == Running) {
            last_ = 0;
        }
    }

  private:
    std::function<bool(int)> step_;
    int last_ = 0;
};

}  // namespace

HandMatrixItem::HandMatrixItem(QQuickItem* parent)
    : QQuickItem(parent),
      lifting_(std::make_unique<StepAnimation>([this](int ms) { return advanceLift(ms); })) {
    setFlag(ItemHasContents);
    setAcceptHoverEvents(true);
    connect(this, &HandMatrixItem::contentChanged, this, &QQuickItem::update);
    connect(this, &HandMatrixItem::contentChanged, this, &HandMatrixItem::currentChanged);
    connect(this, &HandMatrixItem::lookChanged, this, [this] {
        sheetStale_ = true;
        update();
    });
}

HandMatrixItem::~HandMatrixItem() = default;

void HandMatrixItem::setWeights(const QVariantMap& weights) {
    weights_ = weights;
    for (int cell = 0; cell < handCount; ++cell) {
        picture_.cells[static_cast<std::size_t>(cell)].weight =
            weights.value(handLabel(cell)).toDouble();
    }
    emit contentChanged();
}

void HandMatrixItem::setParts(const QVariantMap& parts) {
    parts_ = parts;
    for (int cell = 0; cell < handCount; ++cell) {
        picture_.cells[static_cast<std::size_t>(cell)].divided = parts.contains(handLabel(cell));
    }
    emit contentChanged();
}

void HandMatrixItem::setColors(const QVariantMap& colors) {
    colors_ = colors;
    for (int cell = 0; cell < handCount; ++cell) {
        picture_.cells[static_cast<std::size_t>(cell)].color =
            colors.value(handLabel(cell)).value<QColor>();
    }
    emit contentChanged();
}

void HandMatrixItem::setActionColors(const QVariantList& colors) {
    actionColors_ = colors;
    picture_.actionColors.clear();
    for (const QVariant& color : colors) {
        picture_.actionColors.push_back(color.value<QColor>());
    }
    emit contentChanged();
}

void HandMatrixItem::setActionProbs(const QVariantMap& probs) {
    actionProbs_ = probs;
    for (int cell = 0; cell < handCount; ++cell) {
        picture_.cells[static_cast<std::size_t>(cell)].shares =
            numbers(probs.value(handLabel(cell)));
    }
    emit contentChanged();
}

void HandMatrixItem::setEditable(bool editable) {
    if (editable_ != editable) {
        editable_ = editable;
        updateMode();
    }
}

void HandMatrixItem::setSelectable(bool selectable) {
    if (selectable_ != selectable) {
        selectable_ = selectable;
        updateMode();
    }
}

void HandMatrixItem::updateMode() {
    endGesture();
    endWheel();
    const bool operable = editable_ || selectable_;
    Qt::MouseButtons buttons = operable ? Qt::LeftButton : Qt::NoButton;
    buttons.setFlag(Qt::RightButton, editable_);
    setAcceptedMouseButtons(buttons);
    setActiveFocusOnTab(operable);
    emit modeChanged();
}

QString HandMatrixItem::hoveredHand() const {
    return hovered_ < 0 ? QString() : handLabel(hovered_);
}

QString HandMatrixItem::currentHand() const {
    return handLabel(current_);
}

qreal HandMatrixItem::currentWeight() const {
    return weightAt(current_);
}

QVariantList HandMatrixItem::currentShares() const {
    QVariantList shares;
    if (isOn(current_) && picture_.isMixed(current_)) {
        for (const double share : picture_.cells[static_cast<std::size_t>(current_)].shares) {
            shares.push_back(share);
        }
    }
    return shares;
}

QString HandMatrixItem::cellText(int cell) const {
    QString text = handLabel(cell);
    if (!isOn(cell)) {
        return text;
    }
    text += ' ' + plainNumber(weightAt(cell));
    const auto& shares = picture_.cells[static_cast<std::size_t>(cell)].shares;
    if (!picture_.isMixed(cell) || actionTypes_.size() != static_cast<int>(shares.size())) {
        return text;
    }
    QStringList actions;
    for (int i = 0; i < actionTypes_.size(); ++i) {
        actions += actionTypes_[i] + ": " + plainNumber(shares[static_cast<std::size_t>(i)]);
    }
    return text + " (" + actions.join(QStringLiteral(", ")) + ')';
}

QString HandMatrixItem::toText() const {
    QString text;
    for (int cell = 0; cell < handCount; ++cell) {
        const bool endOfLine = cell % handGridSide == handGridSide - 1;
        text += cellText(cell) + (endOfLine ? '\n' : '\t');
    }
    return text;
}

void HandMatrixItem::copy() const {
    QGuiApplication::clipboard()->setText(toText());
}

void HandMatrixItem::setHovered(int cell) {
    if (cell == hovered_) {
        return;
    }
    hovered_ = cell;
    if (lifting_->state() != QAbstractAnimation::Running) {
        lifting_->start();
    }
    update();
    emit hoveredHandChanged();
    emit handHovered(hoveredHand(), cell < 0 ? 0.0 : weightAt(cell));
}

void HandMatrixItem::setCurrent(int cell) {
    if (cell != current_) {
        current_ = cell;
        update();
        emit currentChanged();
    }
}

void HandMatrixItem::setFocusVisible(bool visible) {
    if (visible != focusVisible_) {
        focusVisible_ = visible;
        update();
        emit focusVisibleChanged();
    }
}

bool HandMatrixItem::advanceLift(int passedMs) {
    const double step = static_cast<double>(passedMs) / raiseMs;
    bool moving = false;
    for (int cell = 0; cell < handCount; ++cell) {
        double& lift = picture_.lift[static_cast<std::size_t>(cell)];
        const double target = cell == hovered_ ? 1.0 : 0.0;
        lift = std::clamp(target, lift - step, lift + step);
        moving = moving || lift != target;
    }
    update();
    return moving;
}

void HandMatrixItem::hoverEnterEvent(QHoverEvent* event) {
    setHovered(grid().indexAt(event->position()));
}

void HandMatrixItem::hoverMoveEvent(QHoverEvent* event) {
    setHovered(grid().indexAt(event->position()));
}

void HandMatrixItem::hoverLeaveEvent(QHoverEvent* /*event*/) {
    setHovered(-1);
}

void HandMatrixItem::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    setFocusVisible(false);
    setKeepMouseGrab(true);
    const int cell = grid().indexAt(event->position());
    setHovered(cell);
    if (cell < 0) {
        return;
    }
    setCurrent(cell);
    gesturePoint_ = event->position();
    endWheel();
    if (event->button() == Qt::RightButton) {
        setKeepMouseGrab(false);
        emit handOpened(handLabel(cell));
        return;
    }
    if (editable_ && event->modifiers().testFlag(Qt::AltModifier)) {
        gesture_ = Gesture::Weigh;
    } else if (editable_) {
        gesture_ = Gesture::Paint;
        desiredOn_ = !isPainted(cell);
    } else {
        gesture_ = dragSelectable_ ? Gesture::Drag : Gesture::Press;
    }
    if (isStroking()) {
        emit strokeStarted();
    }
    applyGesture(cell);
}

// A fast pointer leaps over cells between two events.
void HandMatrixItem::mouseMoveEvent(QMouseEvent* event) {
    const QPointF point = event->position();
    const int cell = grid().indexAt(point);
    setHovered(cell);
    if (gesture_ == Gesture::Weigh) {
        weighByDrag(point);
        return;
    }
    if (!isStroking()) {
        return;
    }
    std::vector<int> cells = grid().cellsBetween(std::exchange(gesturePoint_, point), point);
    if (cell >= 0) {
        cells.push_back(cell);
    }
    for (const int crossed : cells) {
        applyGesture(crossed);
    }
}

// Whoever hears of a hand may end the gesture.
void HandMatrixItem::applyGesture(int cell) {
    if (gesture_ == Gesture::None || cell == gestureCell_) {
        return;
    }
    gestureCell_ = cell;
    const double weight = weightAt(cell);
    if (gesture_ == Gesture::Drag) {
        emit handDragged(handLabel(cell), weight);
    } else if (gesture_ == Gesture::Paint && (desiredOn_ ? !isPainted(cell) : isOn(cell))) {
        emit handPainted(handLabel(cell), desiredOn_, weight);
    }
}

bool HandMatrixItem::isPainted(int cell) const {
    if (brush_ < 0.0) {
        return isOn(cell);
    }
    constexpr double indistinct = 5e-4;
    return isOn(cell) && !picture_.cells[static_cast<std::size_t>(cell)].divided &&
           std::abs(weightAt(cell) - brush_) < indistinct;
}

// Of the hand that the drag began on, whatever it has come to since.
void HandMatrixItem::weighByDrag(QPointF point) {
    const double drawn = std::trunc((gesturePoint_.y() - point.y()) / pixelsPerStep);
    if (drawn != 0.0) {
        gesturePoint_.ry() -= drawn * pixelsPerStep;
        emit handWeighed(handLabel(gestureCell_), drawn * weightStep);
    }
}

// Without the keyboard the wheel is the page's: whoever scrolls past changes nothing.
void HandMatrixItem::wheelEvent(QWheelEvent* event) {
    const bool alt = event->modifiers().testFlag(Qt::AltModifier);
    const int cell = grid().indexAt(event->position());
    const bool other = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    if (!editable_ || cell < 0 || other || !(alt || hasActiveFocus()) ||
        gesture_ != Gesture::None) {
        event->ignore();
        return;
    }
    event->accept();
    if (wheelEnd_.isActive() && cell != current_) {
        endWheel();
    }
    setCurrent(cell);
    // With Alt a wheel turns sideways.
    const QPoint angle = event->angleDelta();
    turned_ += (angle.y() != 0 ? angle.y() : angle.x()) / degreesPerStep;
    const double whole = std::trunc(turned_);
    if (whole == 0.0) {
        return;
    }
    turned_ -= whole;
    if (!wheelEnd_.isActive()) {
        emit strokeStarted();
    }
    wheelEnd_.start(wheelPauseMs, this);
    emit handWeighed(handLabel(cell), whole * weightStep);
}

void HandMatrixItem::timerEvent(QTimerEvent* event) {
    if (event->timerId() == wheelEnd_.timerId()) {
        endWheel();
    } else {
        QQuickItem::timerEvent(event);
    }
}

void HandMatrixItem::endWheel() {
    turned_ = 0.0;
    if (wheelEnd_.isActive()) {
        wheelEnd_.stop();
        emit strokeEnded();
    }
}

void HandMatrixItem::weighOnce(double difference) {
    endWheel();
    emit strokeStarted();
    emit handWeighed(handLabel(current_), difference);
    emit strokeEnded();
}

void HandMatrixItem::mouseReleaseEvent(QMouseEvent* event) {
    const int cell = grid().indexAt(event->position());
    const bool clicked = gesture_ == Gesture::Press && cell == gestureCell_;
    endGesture();
    if (clicked) {
        click(cell);
    }
}

void HandMatrixItem::mouseUngrabEvent() {
    endGesture();
}

void HandMatrixItem::endGesture() {
    const bool stroked = isStroking();
    gesture_ = Gesture::None;
    gestureCell_ = -1;
    setKeepMouseGrab(false);
    if (stroked) {
        emit strokeEnded();
    }
}

void HandMatrixItem::click(int cell) {
    emit handClicked(handLabel(cell), weightAt(cell));
}

void HandMatrixItem::activateCurrent() {
    if (editable_) {
        endWheel();
        emit strokeStarted();
        emit handPainted(handLabel(current_), !isPainted(current_), weightAt(current_));
        emit strokeEnded();
    } else if (selectable_) {
        click(current_);
    }
}

bool HandMatrixItem::moveCurrent(int key) {
    const int row = current_ / handGridSide;
    const int column = current_ % handGridSide;
    const auto to = [this](int newRow, int newColumn) {
        setCurrent(std::clamp(newRow, 0, handGridSide - 1) * handGridSide +
                   std::clamp(newColumn, 0, handGridSide - 1));
        return true;
    };
    switch (key) {
        case Qt::Key_Left:
            return to(row, column - 1);
        case Qt::Key_Right:
            return to(row, column + 1);
        case Qt::Key_Up:
            return to(row - 1, column);
        case Qt::Key_Down:
            return to(row + 1, column);
        case Qt::Key_Home:
            return to(row, 0);
        case Qt::Key_End:
            return to(row, handGridSide - 1);
        default:
            return false;
    }
}

void HandMatrixItem::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool activates = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool copiesTable =
        key == Qt::Key_C && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    if (copiesTable || (copiesItself_ && event->matches(QKeySequence::Copy))) {
        copy();
    } else if (!(editable_ || selectable_)) {
        event->ignore();
    } else if (activates) {
        setFocusVisible(true);
        if (!event->isAutoRepeat()) {
            activateCurrent();
        }
    } else if (moveCurrent(key)) {
        setFocusVisible(true);
    } else if (editable_ && (key == Qt::Key_Plus || key == Qt::Key_Minus)) {
        setFocusVisible(true);
        weighOnce(key == Qt::Key_Plus ? weightStep : -weightStep);
    } else if (editable_ && (key == Qt::Key_Menu ||
                             (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier))) {
        setFocusVisible(true);
        endWheel();
        emit handOpened(handLabel(current_));
    } else {
        event->ignore();
    }
}

void HandMatrixItem::focusInEvent(QFocusEvent* event) {
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    setFocusVisible(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                    reason == Qt::ShortcutFocusReason);
}

void HandMatrixItem::focusOutEvent(QFocusEvent* event) {
    QQuickItem::focusOutEvent(event);
    setFocusVisible(false);
}

void HandMatrixItem::itemChange(ItemChange change, const ItemChangeData& value) {
    if (change == ItemDevicePixelRatioHasChanged) {
        sheetStale_ = true;
        update();
    }
    QQuickItem::itemChange(change, value);
}

void HandMatrixItem::updatePicture() {
    picture_.grid = grid();
    picture_.palette = {.pair = pairColor_,
                        .suited = suitedColor_,
                        .offsuit = offsuitColor_,
                        .border = borderColor_,
                        .focus = focusColor_,
                        .selection = selectionColor_,
                        .accent = accentColor_,
                        .mark = markColor_};
    picture_.actionMarks.clear();
    std::ranges::transform(actionTypes_, std::back_inserter(picture_.actionMarks), actionMark);
    picture_.fillFromBottom = fillFromBottom_;
    picture_.showEmptyLabels = showLabels_;
    picture_.hovered = hovered_;
    picture_.selected = handOfLabel(selectedHand_);
    picture_.locked.reset();
    for (const QString& label : lockedHands_) {
        if (const int hand = handOfLabel(label); hand >= 0) {
            picture_.locked.set(static_cast<std::size_t>(hand));
        }
    }
    picture_.current = focusVisible_ && hasActiveFocus() ? current_ : -1;
}

// Drawing the texts takes milliseconds, so it is done only when what they look like may have
// changed.
void HandMatrixItem::updateSheet() {
    if (sheetStale_) {
        sheetStale_ = false;
        sheet_ = drawLabels(cellSize_, window()->effectiveDevicePixelRatio(), labelFont_,
                            labelColor_, haloColor_);
    }
}

QSGNode* HandMatrixItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) {
    if (cellSize_ <= 0.0) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<HandMatrixNode*>(old);
    if (node == nullptr) {
        node = HandMatrixNode::create(window()).release();
    }
    updatePicture();
    updateSheet();
    node->show(picture_, sheet_);
    return node;
}

}  // namespace tidewell
