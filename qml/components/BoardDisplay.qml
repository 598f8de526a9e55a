pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../logic/card_text.mjs" as Cards

// A board of up to five cards. An editable one tells which slot was pressed.
Item {
    id: board

    property Theme theme: Fallback.theme
    // Cards without separators; any pair that is no card is an empty slot.
    property string boardText: ""
    property bool editable: false
    // The slots that can be pressed when editable; null for all.
    property var clickableIndices: null
    property bool compact: false
    property bool showStreet: !compact
    property real cardScale: 1
    property real horizontalPadding: compact ? 0 : 10

    readonly property var _slots: Cards.boardSlots(boardText)
    readonly property string _street: {
        const filled = _slots.filter(card => card !== "").length;
        if (filled >= 5) {
            return qsTr("River");
        }
        if (filled === 4) {
            return qsTr("Turn");
        }
        if (filled === 3) {
            return qsTr("Flop");
        }
        return filled === 0 ? qsTr("No board yet") : qsTr("Flop incomplete");
    }
    readonly property real _gap: (compact ? 3 : 6) * Math.max(0.1, cardScale)

    signal cardClicked(index: int)

    // The river cannot come first.
    function _isBlocked(slot: int): bool {
        return editable && slot === 4 && _slots[3] === "" && _slots[4] === "";
    }

    function _isClickable(slot: int): bool {
        return editable && !_isBlocked(slot)
            && (clickableIndices === null || clickableIndices.includes(slot));
    }

    // The flop stands or falls together; of turn and river a small read-only board shows what there is.
    function _isShown(slot: int): bool {
        return slot < 3 || editable || !compact || _slots[slot] !== "";
    }

    implicitWidth: Math.ceil(column.implicitWidth) + 2 * horizontalPadding
    implicitHeight: Math.ceil(column.implicitHeight)
    Accessible.role: Accessible.Grouping
    //: The cards on the table
    Accessible.name: qsTr("Board")

    Column {
        id: column

        x: board.horizontalPadding
        spacing: board.theme.spaceSm

        Text {
            text: board._street
            textFormat: Text.PlainText
            color: board.theme.textMuted
            font.pixelSize: Fallback.type.labelSm
            font.weight: Fallback.type.weightSemibold
            font.capitalization: Font.AllUppercase
            font.letterSpacing: 1
            visible: board.showStreet
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            spacing: 2 * board._gap

            Rectangle {
                implicitWidth: flop.implicitWidth + 2 * board._gap
                implicitHeight: flop.implicitHeight + 2 * board._gap
                radius: board.theme.radiusMd
                color: board.theme.surface2
                visible: board.editable || board._slots[0] !== ""

                Row {
                    id: flop

                    anchors.centerIn: parent
                    spacing: board._gap

                    Repeater {
                        model: [0, 1, 2]
                        delegate: slotDelegate
                    }
                }
            }
            Row {
                anchors.verticalCenter: parent.verticalCenter
                spacing: parent.spacing

                Repeater {
                    model: [3, 4]
                    delegate: slotDelegate
                }
            }
        }
    }

    Component {
        id: slotDelegate

        PlayingCard {
            required property int modelData

            theme: board.theme
            rank: board._slots[modelData].charAt(0)
            suit: board._slots[modelData].charAt(1)
            mini: board.compact
            sizeScale: board.cardScale
            disabled: board._isBlocked(modelData)
            interactive: board._isClickable(modelData)
            hoverable: interactive
            enableHoverScale: true
            visible: board._isShown(modelData)
            onClicked: board.cardClicked(modelData)
        }
    }
}
