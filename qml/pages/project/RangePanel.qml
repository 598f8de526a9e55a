pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The range of one seat, as a matrix to paint and as text.
Card {
    id: panel

    required property string title
    property color markColor: theme.accent
    property real uiScale: 1
    // Of a cell of the matrix, in pixels.
    property real mostCellSize: Math.round(36 * uiScale)

    // Range grammar, or a percentage of all hands.
    property string rangeText: ""
    property string boardText: ""
    // Whose range can be taken over, in a word.
    property string otherSeat: ""
    property bool hasOther: false
    // What a painted hand gets.
    property real clickWeightPct: 100
    property SetupHistory history: null
    // It is what keeps the spot from being solved.
    property bool marked: false

    // Stands at the right of the matrix.
    property Component browser: null

    // What stands around the matrix, in pixels.
    readonly property real surroundings: heading.implicitHeight + summary.implicitHeight
        + brush.implicitHeight + field.implicitHeight + 4 * theme.spaceSm + 2 * padding
    readonly property alias field: field

    readonly property var _range: HandRanges.read(rangeText, boardText)

    signal copyRequested
    signal swapRequested

    function _set(text: string): void {
        rangeText = text;
    }

    function _paint(hand: string, on: bool): void {
        _set(HandRanges.painted(rangeText, hand, on ? clickWeightPct / 100 : 0));
    }

    // One step of the history.
    function _do(text: string): void {
        history?.begin();
        _set(text);
        history?.end();
    }

    // Clear goes off by its own doing: the keyboard goes on to what is next.
    function _clear(): void {
        _do("");
        matrix.forceActiveFocus(clearButton.focusReason);
    }

    function _openCombos(hand: string): void {
        const cell = matrix.cellOf(hand);
        const dialog = combos.get() as ComboDialog;
        dialog.openAt(hand, matrix.mapToItem(dialog.parent, cell.right + 6, cell.y));
    }

    padding: theme.spaceMd
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        RowLayout {
            id: heading

            spacing: panel.theme.spaceSm
            Layout.fillWidth: true

            Rectangle {
                implicitWidth: 10
                implicitHeight: 10
                radius: 5
                color: panel.markColor
            }
            CardHeading {
                theme: panel.theme
                title: panel.title
                spacing: panel.theme.spaceXs
                Layout.fillWidth: true

                Tool {
                    objectName: "copyRange"
                    //: On a button that takes over the range of a seat: "Copy IP"
                    text: qsTr("Copy %1").arg(panel.otherSeat)
                    tip: qsTr("Take over the range of %1").arg(panel.otherSeat)
                    visible: panel.otherSeat !== ""
                    enabled: panel.hasOther
                    onClicked: panel.copyRequested()
                }
                Tool {
                    objectName: "swapRanges"
                    text: qsTr("Swap")
                    tip: qsTr("Exchange the ranges of the seats")
                    visible: panel.otherSeat !== ""
                    enabled: panel.hasOther || panel.rangeText !== ""
                    onClicked: panel.swapRequested()
                }
                Tool {
                    objectName: "invertRange"
                    text: qsTr("Invert")
                    tip: qsTr("Give each combo the weight that it lacks")
                    onClicked: panel._do(HandRanges.inverted(panel.rangeText))
                }
                Tool {
                    id: clearButton

                    objectName: "clearRange"
                    text: qsTr("Clear")
                    enabled: panel.rangeText !== ""
                    onClicked: panel._clear()
                }
            }
        }
        RowLayout {
            spacing: panel.theme.spaceMd
            Layout.fillWidth: true

            ColumnLayout {
                spacing: panel.theme.spaceSm
                Layout.fillWidth: panel.browser === null
                Layout.maximumWidth: matrix.implicitWidth
                Layout.alignment: Qt.AlignTop | Qt.AlignHCenter

                HandMatrix {
                    id: matrix

                    objectName: "matrix"
                    title: panel.title
                    theme: panel.theme
                    weights: panel._range.weights
                    parts: panel._range.parts
                    editable: true
                    brush: panel.clickWeightPct / 100
                    autoFitToWidth: true
                    cellSize: Math.max(28, panel.mostCellSize)
                    onStrokeStarted: panel.history?.begin()
                    onStrokeEnded: panel.history?.end()
                    onHandPainted: (hand, on) => panel._paint(hand, on)
                    onHandWeighed: (hand, difference) =>
                        panel._set(HandRanges.shifted(panel.rangeText, hand, difference))
                    onHandOpened: hand => panel._openCombos(hand)
                    Layout.fillWidth: true
                    Layout.maximumWidth: implicitWidth
                }
                RangeSummary {
                    id: summary

                    theme: panel.theme
                    range: panel._range
                    hand: matrix.hoveredHand || (matrix.activeFocus ? matrix.currentHand : "")
                    Layout.preferredWidth: matrix.implicitWidth
                    Layout.maximumWidth: matrix.implicitWidth
                }
                BrushRow {
                    id: brush

                    theme: panel.theme
                    percent: panel.clickWeightPct
                    onChosen: percent => panel.clickWeightPct = percent
                    Layout.preferredWidth: matrix.implicitWidth
                    Layout.maximumWidth: matrix.implicitWidth
                }
                RangeField {
                    id: field

                    objectName: "rangeText"
                    theme: panel.theme
                    history: panel.history
                    rangeText: panel.rangeText
                    boardText: panel.boardText
                    marked: panel.marked
                    Accessible.name: panel.title
                    onEdited: text => panel._set(text)
                    Layout.preferredWidth: matrix.implicitWidth
                    Layout.maximumWidth: matrix.implicitWidth
                }
            }
            Loader {
                active: panel.browser !== null
                visible: active
                sourceComponent: panel.browser
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.minimumWidth: Math.max(150, Math.round(180 * panel.uiScale))
            }
        }
    }
    OnDemand {
        id: combos

        ComboDialog {
            theme: panel.theme
            rangeText: panel.rangeText
            boardText: panel.boardText
            brush: panel.clickWeightPct > 0 ? panel.clickWeightPct / 100 : 1
            onChanged: text => panel._do(text)
        }
    }

    component Tool: SecondaryButton {
        theme: panel.theme
        compact: true
        horizontalPadding: panel.theme.spaceSm
    }
}
