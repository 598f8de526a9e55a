import QtQuick
import Tidewell

// What an action of a hand is worth. Press it to learn why.
Text {
    id: line

    required property Theme theme
    // Of the action, -1 for the hand as a whole.
    required property int action
    // The action and its value as they are read.
    required property string spoken
    // Why the value is not known; empty where it is.
    required property string unknownEv
    // Under the pointer, or the one that the keyboard stands on.
    required property bool lit
    required property bool focusShown

    signal pressed

    textFormat: Text.PlainText
    font.pixelSize: Fallback.type.labelMd
    font.family: theme.monoFamily
    font.underline: lit
    horizontalAlignment: Text.AlignRight
    verticalAlignment: Text.AlignVCenter
    Accessible.role: action >= 0 ? Accessible.Button : Accessible.StaticText
    Accessible.name: spoken
    Accessible.description: unknownEv !== "" ? unknownEv : qsTr("Shows why")
    Accessible.focusable: true
    Accessible.onPressAction: line.pressed()

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -3
        anchors.rightMargin: -3
        radius: 3
        color: "transparent"
        border.width: 1
        border.color: line.theme.strokeFocus
        visible: line.focusShown
    }
}
