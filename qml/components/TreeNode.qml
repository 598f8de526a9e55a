pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// One box of the game tree: a decision with one of its actions, a deal, or the end of a hand.
Item {
    id: node

    property Theme theme: Fallback.theme
    // "decision", "chance" or "terminal".
    property string nodeType: "decision"
    // Of a decision the seat, "OOP" or "IP"; of a deal what is dealt.
    property string player: ""
    property string action: ""
    property string actionType: ""
    // The type words of its node; null for the node that is looked at.
    property var siblingTypes: null
    // What the action takes; NaN if that is not known.
    property real chips: NaN
    // Chips; not shown unless above 0.
    property real pot: 0
    // Chips; 0 is not shown.
    property real ev: 0
    // 0 to 1; negative is not shown.
    property real frequency: -1
    property bool locked: false
    property bool selected: false
    property bool expanded: false
    property bool hasChildren: false
    // Decisions and deals above this one.
    property int depth: 0
    // The keyboard stands on this box.
    property bool current: false

    readonly property string _displayActionLabel: ActionText.label(action, actionType)
    readonly property string _chipLabel:
        ActionText.shown({name: action, actionType: actionType, chips: chips})
    readonly property color _actionColor: siblingTypes
        ? theme.actionColorAmong(actionType, siblingTypes) : theme.actionColor(actionType)
    readonly property color _fill: {
        switch (nodeType) {
        case "terminal":
            return theme.surface3;
        case "chance":
            return theme.mixed(theme.surface2, theme.gold, 0.22);
        default:
            return theme.mixed(theme.surface2, _actionColor, 0.28);
        }
    }
    // Text has to be read on any action's colour.
    readonly property bool _bright: _luminance(_fill) >= 0.62
    readonly property color _textColor: _bright ? "#0B0F14" : theme.text
    readonly property color _mutedColor:
        theme.legible(_bright ? "#2D333B" : theme.textMuted, _fill)
    // The action's colour at 0.8 over the box. Its text is not faded with it: in the light theme it is
    // white, which takes some colours darker.
    readonly property color _chipColor: {
        if (nodeType !== "decision") {
            return theme.mixed(_fill, theme.surface3, 0.8);
        }
        const faded = theme.mixed(_fill, _actionColor, 0.8);
        return theme.dark ? faded : theme.legible(faded, "white");
    }
    readonly property string _title: {
        switch (nodeType) {
        case "terminal":
            return qsTr("Terminal");
        case "chance":
            return player || qsTr("Deal");
        default:
            return player;
        }
    }
    readonly property bool _foldable: nodeType === "decision" && hasChildren

    signal clicked
    signal toggleExpand

    // What assistive programs call when they press the box.
    function accessiblePressAction(): void {
        clicked();
    }

    function _luminance(tint: color): real {
        return 0.2126 * tint.r + 0.7152 * tint.g + 0.0722 * tint.b;
    }

    function _figure(value: real, digits: int): string {
        return value.toLocaleString(Qt.locale(), "f", digits);
    }

    implicitWidth: 200
    implicitHeight: 48
    scale: enabled && hover.hovered ? 1.02 : 1
    Accessible.role: Accessible.TreeItem
    Accessible.name: {
        const figures = [potText.text, frequencyText.text, evText.text];
        return [_title, _chipLabel].concat(figures).filter(text => text !== "").join(", ");
    }
    //: Place of a box in the game tree, from 1 at the root
    Accessible.description: (locked ? qsTr("Level %1, locked") : qsTr("Level %1")).arg(depth + 1)
    Accessible.focusable: true
    Accessible.focused: current
    Accessible.selectable: true
    Accessible.selected: selected

    Behavior on scale { NumberAnimation { duration: node.theme.durationFast } }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        radius: frame.radius + 2
        color: "transparent"
        border.width: 2
        border.color: node.theme.accent
        opacity: 0.5
        visible: node.selected
    }
    Rectangle {
        id: frame

        anchors.fill: parent
        radius: node.theme.radiusSm
        color: node._fill
        border.width: node.selected ? 2 : 1
        border.color: {
            if (node.selected) {
                return node.theme.accent;
            }
            return node.enabled && hover.hovered ? node.theme.strokeFocus : node.theme.stroke;
        }
    }
    FocusRing {
        theme: node.theme
        cornerRadius: frame.radius
        shown: node.current
    }

    HoverHandler {
        id: hover

        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: node.clicked()
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: node.theme.spaceSm + 2
        anchors.rightMargin: node.theme.spaceSm + 2
        spacing: node.theme.spaceSm

        TreeNodeMark {
            theme: node.theme
            foldable: node._foldable
            expanded: node.expanded
            textColor: node._textColor
            dotColor: {
                if (node.nodeType === "terminal") {
                    return node.theme.textFaint;
                }
                if (node.nodeType === "chance") {
                    return node.theme.gold;
                }
                return node.player === "IP" ? node.theme.info : node.theme.actionBet;
            }
            onToggled: node.toggleExpand()
        }
        ColumnLayout {
            spacing: 2

            RowLayout {
                spacing: node.theme.spaceSm

                Rectangle {
                    implicitWidth: Math.ceil(chipText.implicitWidth) + 12
                    implicitHeight: Math.ceil(chipText.implicitHeight) + 2
                    radius: height / 2
                    color: node._chipColor
                    visible: chipText.text !== ""
                    Layout.maximumWidth: Math.ceil(chipText.implicitWidth) + 12
                    Layout.fillWidth: true

                    Text {
                        id: chipText

                        anchors.fill: parent
                        text: node._chipLabel
                        textFormat: Text.PlainText
                        color: node.theme.dark || node.nodeType !== "decision"
                            ? node.theme.inkOn(node._chipColor) : "white"
                        font.pixelSize: Fallback.type.labelMd
                        font.weight: Fallback.type.weightSemibold
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        elide: Text.ElideRight
                        Accessible.ignored: true
                    }
                }
                Text {
                    text: node._title
                    textFormat: Text.PlainText
                    color: node._textColor
                    font.pixelSize: Fallback.type.bodySm
                    font.weight: Fallback.type.weightMedium
                    elide: Text.ElideRight
                    Accessible.ignored: true
                    Layout.fillWidth: true
                }
                Icon {
                    name: "lock"
                    size: 14
                    color: node.theme.gold
                    visible: node.locked
                }
            }
            RowLayout {
                spacing: node.theme.spaceMd
                // Asked by text: while the page is hidden none of them is visible.
                visible: potText.text !== "" || frequencyText.text !== "" || evText.text !== ""

                Figure {
                    id: potText

                    text: node.pot > 0 ? qsTr("Pot: %1").arg(ActionText.chips(node.pot)) : ""
                }
                Figure {
                    id: frequencyText

                    //: How often an action is taken
                    text: node.frequency >= 0
                        ? qsTr("Freq: %1%").arg(Math.round(100 * Math.min(1, node.frequency))) : ""
                }
                Figure {
                    id: evText

                    //: Expected value: %1 is the sign, %2 the amount
                    text: node.ev !== 0
                        ? qsTr("EV: %1%2").arg(node.ev >= 0 ? "+" : "").arg(node._figure(node.ev, 2))
                        : ""
                    color: node.theme.legible(node.ev >= 0 ? node.theme.success
                                                           : node.theme.danger, node._fill)
                }
                Item {
                    Layout.fillWidth: true
                }
            }
        }
    }

    component Figure: Text {
        textFormat: Text.PlainText
        color: node._mutedColor
        font.pixelSize: Fallback.type.labelSm
        visible: text !== ""
        Accessible.ignored: true
    }
}
