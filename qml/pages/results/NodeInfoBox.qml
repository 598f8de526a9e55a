pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/tree_money.mjs" as Money

// The money at the current node.
Rectangle {
    id: box

    required property Theme theme
    // Of the node, as the controller tells it.
    required property var meta
    // Who acts there or, where nobody does, who acted last.
    required property string player
    required property real rakePercent
    // 0 for none.
    required property real rakeCap
    // Two entries to a line; otherwise each has a line of its own.
    property bool wide: true
    // Hands whose play is fixed; not told where it is negative.
    property int lockedHands: -1

    // Of either form, whichever is shown.
    readonly property real wideHeight: _heightOf(lockedHands >= 0 ? 4 : 3)
    readonly property real narrowHeight: _heightOf(lockedHands >= 0 ? 7 : 6)
    readonly property real leastWideWidth: 310
    readonly property var _money: Money.nodeMoney(meta, rakePercent, rakeCap)

    function _figure(value: real, digits: int): string {
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", digits) : qsTr("—");
    }

    function _heightOf(lines: int): real {
        return lines * Math.ceil(line.implicitHeight) + (lines - 1) * grid.rowSpacing
            + 2 * theme.spaceMd;
    }

    implicitWidth: Math.ceil(grid.implicitWidth) + 2 * theme.spaceMd
    implicitHeight: wide ? wideHeight : narrowHeight
    radius: theme.radiusSm
    color: theme.surface2
    border.width: 1
    border.color: theme.stroke
    Accessible.role: Accessible.Grouping
    //: The money at a node of the game tree
    Accessible.name: qsTr("Node")

    GridLayout {
        id: grid

        anchors.fill: parent
        anchors.margins: box.theme.spaceMd
        columns: box.wide ? 2 : 1
        columnSpacing: box.theme.spaceXl
        rowSpacing: 6

        Entry {
            id: line

            label: qsTr("Pot")
            value: box._figure(box._money.pot, 2)
        }
        Entry {
            //: %1 is the seat, "OOP" or "IP"
            label: qsTr("Stack (%1)").arg(box.player)
            value: box._figure(box._money.stack, 2)
        }
        Entry {
            label: qsTr("To call")
            value: box._figure(box._money.toCall, 2)
        }
        Entry {
            label: qsTr("Rake taken")
            value: box._figure(box._money.rake, 2)
        }
        Entry {
            //: Stack-to-pot ratio
            label: qsTr("SPR")
            value: box._figure(box._money.spr, 2)
        }
        Entry {
            label: qsTr("Pot odds")
            value: Number.isFinite(box._money.potOdds)
                ? qsTr("%1%").arg(box._figure(100 * box._money.potOdds, 1)) : qsTr("—")
        }
        Entry {
            iconName: "lock"
            label: qsTr("Locked hands")
            value: box.lockedHands.toLocaleString(Qt.locale(), "f", 0)
            visible: box.lockedHands >= 0
            Layout.columnSpan: box.wide ? 2 : 1
        }
    }

    component Entry: RowLayout {
        id: entry

        property string label: ""
        property string value: ""
        property string iconName: ""

        spacing: box.theme.spaceSm
        Layout.fillWidth: true

        Icon {
            name: entry.iconName
            size: 14
            color: box.theme.gold
            visible: name !== ""
        }
        AppLabel {
            theme: box.theme
            text: entry.label
            color: box.theme.legible(box.theme.textMuted, box.color)
            font.pixelSize: Fallback.type.labelMd
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        AppLabel {
            theme: box.theme
            mono: true
            text: entry.value
            font.weight: Fallback.type.weightMedium
        }
    }
}
