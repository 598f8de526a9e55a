import QtQuick
import Tidewell
import "../logic/hand_labels.mjs" as Hands

// The 13 by 13 grid of starting hands, for painting a range and for showing a strategy. It changes no
// weights by itself: a signal tells what the user wants, the owner sets `weights` anew.
FocusScope {
    id: matrix

    property Theme theme: Fallback.theme
    // What the grid shows, for those who cannot see it.
    property string title: qsTr("Starting hands")

    // Maps from labels ("AA", "AKs", "AKo") to a weight from 0 to 1, to the colour of a hand without
    // probabilities, and to a list of probabilities in the order of actionTypes, which are what
    // Theme.actionColorAmong takes.
    property var weights: ({})
    // From the labels of hands whose combos differ to how many of these are in.
    property var parts: ({})
    property var colors: ({})
    property var actionTypes: []
    property var actionProbs: ({})
    // Weights fill cells from the left, or from the bottom with "verticalFill".
    property string weightDisplayMode: "horizontalSpan"

    // Whether the shortcut that copies takes the grid; otherwise it goes on to whoever is around it.
    property bool copiesItself: true
    property bool editable: false
    // The weight that hands are painted with; below 0 they are just on or off.
    property real brush: -1
    property bool selectable: false
    property bool dragSelectable: false
    // Whether hands of weight 0 carry their label too.
    property bool showLabels: true
    // Framed as chosen; empty for none.
    property string selectedHand: ""
    // Marked as what is looked at elsewhere; empty for none.
    property string litHand: ""
    // Labels of hands that carry a padlock.
    property var lockedHands: []

    property real cellSize: 32
    property real cellSpacing: 2
    // Cells as large as the width allows, between these sizes, instead of cellSize.
    property bool autoFitToWidth: false
    property real minCellSize: 28
    property real maxCellSize: 64

    readonly property real effectiveCellSize: {
        if (!autoFitToWidth) {
            return cellSize;
        }
        const fitting = Math.floor((width - 12 * cellSpacing) / 13);
        return Math.max(minCellSize, Math.min(fitting, maxCellSize));
    }
    readonly property real effectiveMatrixSize: 13 * effectiveCellSize + 12 * cellSpacing
    readonly property alias currentHand: grid.currentHand
    readonly property alias hoveredHand: grid.hoveredHand
    // Where the hand that the keyboard stands on is marked; empty where it is not.
    readonly property rect markedCell:
        grid.focusVisible ? cellOf(grid.currentHand) : Qt.rect(0, 0, 0, 0)

    readonly property string _currentText: {
        const part = parts[grid.currentHand];
        const text = part === undefined
            //: A starting hand of a range and how often it is held: "AKs, 50%"
            ? qsTr("%1, %2%").arg(grid.currentHand).arg(_percent(grid.currentWeight))
            //: A starting hand of which a range has a part: "AKs, 2 of 4 combos"
            : qsTr("%1, %2 of %3 combos").arg(grid.currentHand).arg(part)
                                         .arg(HandRanges.sizeOf(grid.currentHand));
        const shares = grid.currentShares;
        const actions = [];
        // On the way from one node to the next the types may be there before the shares.
        for (let i = 0; i < Math.min(shares.length, actionTypes.length); ++i) {
            //: An action and how often it is taken: "Bet 33%: 40%"
            actions.push(qsTr("%1: %2%").arg(ActionText.label(actionTypes[i], actionTypes[i]))
                                        .arg(_percent(shares[i])));
        }
        const locks = lockedHands.includes(grid.currentHand) ? [qsTr("locked")] : [];
        return [text].concat(actions, locks).join(", ");
    }

    signal handClicked(hand: string, currentWeight: real)
    // Around all that one stroke or one key paints, or one drag enters: one change to undo.
    signal strokeStarted
    signal strokeEnded
    signal handPainted(hand: string, desiredOn: bool, currentWeight: real)
    // The weight of a hand is to change by so much.
    signal handWeighed(hand: string, difference: real)
    // The single combos of a hand are wanted.
    signal handOpened(hand: string)
    signal handDragged(hand: string, currentWeight: real)
    signal handHovered(hand: string, weight: real)

    // Where a hand stands.
    function cellOf(hand: string): rect {
        const cell = Hands.allHands().indexOf(hand);
        const step = effectiveCellSize + cellSpacing;
        return Qt.rect(cell % 13 * step, Math.floor(cell / 13) * step,
                       effectiveCellSize, effectiveCellSize);
    }

    // Puts the whole grid on the clipboard, as lines with tabs.
    function copy() {
        grid.copy();
    }

    function _percent(share: real): string {
        return Math.round(100 * share).toLocaleString(Qt.locale(), "f", 0);
    }

    function _actionColors(types: var): var {
        const colors = [];
        for (let i = 0; i < types.length; ++i) {
            colors.push(theme.actionColorAmong(types[i], types));
        }
        return colors;
    }

    // From the plain size, so that layouts cannot go round in a circle.
    implicitWidth: 13 * (cellSize + cellSpacing) - cellSpacing
    implicitHeight: autoFitToWidth ? effectiveMatrixSize : implicitWidth

    HandMatrixItem {
        id: grid

        width: matrix.effectiveMatrixSize
        height: matrix.effectiveMatrixSize
        focus: true
        weights: matrix.weights
        parts: matrix.parts
        colors: matrix.colors
        actionTypes: matrix.actionTypes
        actionColors: matrix._actionColors(matrix.actionTypes)
        actionProbs: matrix.actionProbs
        fillFromBottom: matrix.weightDisplayMode === "verticalFill"
        copiesItself: matrix.copiesItself
        editable: matrix.editable
        brush: matrix.brush
        selectable: matrix.selectable
        dragSelectable: matrix.dragSelectable
        showLabels: matrix.showLabels
        selectedHand: matrix.selectedHand
        lockedHands: matrix.lockedHands
        cellSize: matrix.effectiveCellSize
        cellSpacing: matrix.cellSpacing
        labelFont.family: matrix.theme.monoFamily
        labelFont.pointSize: 1.25 * (matrix.effectiveCellSize <= 28 ? 8 : 9)
        pairColor: matrix.theme.surface3
        suitedColor: matrix.theme.surface2
        offsuitColor: matrix.theme.surface
        borderColor: matrix.theme.strokeLight
        focusColor: matrix.theme.strokeFocus
        selectionColor: matrix.theme.text
        accentColor: matrix.theme.accent
        labelColor: matrix.theme.text
        haloColor: matrix.theme.surface
        markColor: matrix.theme.text
        Accessible.role: Accessible.Table
        //: What a grid of hands is of, and the hand that the keyboard stands on
        Accessible.name: qsTr("%1: %2").arg(matrix.title).arg(matrix._currentText)
        Accessible.focusable: activeFocusOnTab
        Accessible.onPressAction: activateCurrent()

        onHandClicked: (hand, weight) => matrix.handClicked(hand, weight)
        onStrokeStarted: matrix.strokeStarted()
        onStrokeEnded: matrix.strokeEnded()
        onHandPainted: (hand, on, weight) => matrix.handPainted(hand, on, weight)
        onHandWeighed: (hand, difference) => matrix.handWeighed(hand, difference)
        onHandOpened: hand => matrix.handOpened(hand)
        onHandDragged: (hand, weight) => matrix.handDragged(hand, weight)
        onHandHovered: (hand, weight) => matrix.handHovered(hand, weight)
    }
    Rectangle {
        readonly property rect cell: matrix.cellOf(matrix.litHand)

        x: cell.x - 2
        y: cell.y - 2
        width: cell.width + 4
        height: cell.height + 4
        radius: 3
        color: "transparent"
        border.width: 2
        border.color: matrix.theme.text
        visible: matrix.litHand !== ""
    }
}
