import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/range_text.mjs" as RangeText

// The range of one seat, as a matrix to paint and as text.
Card {
    id: panel

    required property string title
    property color markColor: theme.accent
    property real uiScale: 1

    // Range grammar, or a percentage of all hands.
    property string rangeText: ""
    property string boardText: ""
    // What a painted hand gets.
    property real clickWeightPct: 100

    // Stands at the right of the matrix.
    property Component browser: null

    // The text before each change by the matrix or the button, oldest first: a click on a hand takes
    // the whole token away that it stands in.
    property var _former: []
    property bool _isChanging: false

    function _paint(hand: string, weight: real): void {
        _set(RangeText.toggleHand(rangeText, hand, weight, clickWeightPct / 100));
    }

    // Clear goes off and Undo goes away by their own doing: the keyboard goes on to what is next.
    function _clear(): void {
        _keep();
        _set("");
        undoButton.forceActiveFocus(clearButton.focusReason);
    }

    function _keep(): void {
        _former = [..._former, rangeText];
    }

    // A stroke that has painted nothing leaves nothing to undo.
    function _endStroke(): void {
        if (_former[_former.length - 1] === rangeText) {
            _former = _former.slice(0, -1);
        }
    }

    function _undo(): void {
        const text = _former[_former.length - 1];
        const reason = undoButton.focusReason;
        _former = _former.slice(0, -1);
        _set(text);
        if (_former.length === 0) {
            matrix.forceActiveFocus(reason);
        }
    }

    function _set(text: string): void {
        _isChanging = true;
        rangeText = text;
        _isChanging = false;
    }

    padding: theme.spaceMd
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    onRangeTextChanged: if (!_isChanging) _former = []

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        RowLayout {
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
                Layout.fillWidth: true

                SecondaryButton {
                    id: undoButton

                    objectName: "undoChange"
                    theme: panel.theme
                    compact: true
                    text: qsTr("Undo")
                    tip: qsTr("Take the last change of the matrix back")
                    visible: panel._former.length > 0
                    onClicked: panel._undo()
                }
                SecondaryButton {
                    id: clearButton

                    objectName: "clearRange"
                    theme: panel.theme
                    compact: true
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
                spacing: panel.theme.spaceMd
                Layout.fillWidth: panel.browser === null
                Layout.maximumWidth: matrix.implicitWidth
                Layout.alignment: Qt.AlignTop | Qt.AlignHCenter

                HandMatrix {
                    id: matrix

                    objectName: "matrix"
                    title: panel.title
                    theme: panel.theme
                    weights: RangeText.parseRangeWeights(panel.rangeText)
                    editable: true
                    autoFitToWidth: true
                    cellSize: Math.max(28, Math.round(36 * panel.uiScale))
                    onStrokeStarted: panel._keep()
                    onStrokeEnded: panel._endStroke()
                    onHandPainted: (hand, desiredOn, weight) => {
                        if (desiredOn !== (weight > 0)) {
                            panel._paint(hand, weight);
                        }
                    }
                    Layout.fillWidth: true
                    Layout.maximumWidth: implicitWidth
                }
                RowLayout {
                    spacing: panel.theme.spaceSm
                    Layout.preferredWidth: matrix.implicitWidth
                    Layout.maximumWidth: matrix.implicitWidth

                    AppLabel {
                        id: weightLabel

                        theme: panel.theme
                        text: qsTr("Weight")
                        font.pixelSize: Fallback.type.labelMd
                        Accessible.ignored: true
                    }
                    NumberField {
                        objectName: "clickWeight"
                        theme: panel.theme
                        placeholderText: "100"
                        value: panel.clickWeightPct
                        from: 0
                        to: 100
                        decimals: 3
                        Accessible.name: qsTr("Weight of painted hands in percent")
                        onEdited: number => panel.clickWeightPct = number
                        onCommitted: number => panel.clickWeightPct = number
                        Layout.preferredWidth: 64
                    }
                    AppLabel {
                        theme: panel.theme
                        //: Stands behind a field for a percentage
                        text: qsTr("%")
                        muted: true
                    }
                    RangeField {
                        objectName: "rangeText"
                        theme: panel.theme
                        rangeText: panel.rangeText
                        boardText: panel.boardText
                        Accessible.name: panel.title
                        onEdited: text => panel.rangeText = text
                        Layout.fillWidth: true
                    }
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
}
