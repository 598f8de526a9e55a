import QtQuick
import Tidewell

// What an action of a hand is worth. Press it to learn why.
Text {
    id: line

    required property Theme theme
    required property int action
    // NaN where it is not known; the reason in `unknownEv`.
    required property real ev
    required property string unknownEv
    // The action as it is read; empty for the hand as a whole.
    required property string actionName
    required property color tint
    // Under the pointer, or the one that the keyboard stands on.
    required property bool lit
    required property bool focusShown

    signal pressed

    text: unknownEv === "" && Number.isFinite(ev) ? ev.toLocaleString(Qt.locale(), "f", 2)
                                                  : qsTr("—")
    textFormat: Text.PlainText
    color: tint
    font.pixelSize: Fallback.type.labelMd
    font.family: theme.monoFamily
    font.underline: lit
    horizontalAlignment: Text.AlignRight
    verticalAlignment: Text.AlignVCenter
    Accessible.role: action >= 0 ? Accessible.Button : Accessible.StaticText
    //: What an action of a hand is worth: "Bet 33%: EV 12.50"
    Accessible.name: qsTr("%1: EV %2").arg(actionName).arg(text)
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
