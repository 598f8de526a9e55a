pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tidewell

// One combo of a hand: its two cards and its weight, which a click sets or takes away, the wheel and
// plus and minus change. It shows `weight` and never writes it.
T.AbstractButton {
    id: tile

    property Theme theme: Fallback.theme
    // "AhKh".
    required property string cards
    // From 0 to 1.
    required property real weight
    // The board has one of the cards.
    required property bool blocked

    readonly property string _percent:
        qsTr("%1%").arg((100 * weight).toLocaleString(Qt.locale(), "f", -128))
    readonly property string _spoken: CardText.spoken(cards[0], cards[1]) + ", "
        + CardText.spoken(cards[2], cards[3])

    signal shifted(difference: real)

    padding: 5
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: blocked ? 0.45 : 1
    Accessible.role: Accessible.Button
    Accessible.name: blocked
        //: A combo, its weight, and that it is not possible
        ? qsTr("%1, %2, on the board").arg(_spoken).arg(_percent)
        : qsTr("%1, %2").arg(_spoken).arg(_percent)

    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) clicked(); }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) clicked(); }
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Plus || event.key === Qt.Key_Minus) {
            event.accepted = true;
            tile.shifted(event.key === Qt.Key_Plus ? 0.05 : -0.05);
        }
    }

    contentItem: Column {
        spacing: 3

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 2

            Repeater {
                model: 2

                PlayingCard {
                    required property int modelData

                    theme: tile.theme
                    mini: true
                    sizeScale: 0.8
                    hoverable: false
                    rank: tile.cards[2 * modelData]
                    suit: tile.cards[2 * modelData + 1]
                    Accessible.ignored: true
                }
            }
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: tile._percent
            color: tile.weight > 0 ? tile.theme.text : tile.theme.textMuted
            font.pixelSize: Fallback.type.labelSm
            font.weight: tile.weight > 0 ? Fallback.type.weightSemibold
                                         : Fallback.type.weightRegular
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: tile.theme.radiusSm
        color: tile.hovered ? tile.theme.surfaceHover : tile.theme.surface2
        border.width: 1
        border.color: tile.weight > 0 ? tile.theme.accent : tile.theme.stroke

        Rectangle {
            anchors.left: parent.left
            anchors.bottom: parent.bottom
            anchors.margins: 1
            width: (parent.width - 2) * tile.weight
            height: 3
            color: tile.theme.accent
        }
    }

    FocusRing {
        theme: tile.theme
        cornerRadius: tile.theme.radiusSm
        shown: tile.visualFocus
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => tile.shifted(event.angleDelta.y > 0 ? 0.05 : -0.05)
    }
}
