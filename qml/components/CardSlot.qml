import QtQuick
import Tidewell

// The place of a card that is not there.
Item {
    id: slot

    required property Theme theme
    required property bool mini
    // Scale of a card of base size.
    required property real unit
    required property real cornerRadius
    required property bool selected

    Rectangle {
        anchors.fill: parent
        radius: slot.cornerRadius
        color: "transparent"
        border.width: 2
        border.color: slot.selected ? slot.theme.accent : slot.theme.stroke
        opacity: slot.selected ? 1 : 0.5
    }
    Text {
        anchors.centerIn: parent
        text: "?"
        color: slot.theme.textFaint
        font.pixelSize: Math.round(20 * slot.unit)
        visible: !slot.mini
        Accessible.ignored: true
    }
}
