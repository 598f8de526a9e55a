import QtQuick
import Tidewell

// A key as it looks on a keyboard.
Rectangle {
    id: cap

    required property Theme theme
    property string text: ""

    implicitWidth: Math.max(18, Math.ceil(letters.implicitWidth) + 8)
    implicitHeight: Math.ceil(letters.implicitHeight) + 2
    radius: theme.radiusXs
    color: theme.surface3
    border.width: 1
    border.color: theme.stroke

    Text {
        id: letters

        anchors.centerIn: parent
        text: cap.text
        textFormat: Text.PlainText
        color: cap.theme.text
        font.pixelSize: Fallback.type.labelSm
        font.family: cap.theme.monoFamily
        Accessible.ignored: true
    }
}
