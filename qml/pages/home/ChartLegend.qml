pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Tells what a line of a chart stands for.
Row {
    id: legend

    property Theme theme: Fallback.theme
    property color color: theme.accent
    property bool dashed: false
    property string text: ""

    spacing: 6

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Repeater {
            model: legend.dashed ? 3 : 1

            Rectangle {
                width: legend.dashed ? 4 : 18
                height: 2
                color: legend.color
            }
        }
    }
    Text {
        text: legend.text
        textFormat: Text.PlainText
        color: legend.theme.textMuted
        font.pixelSize: Fallback.type.labelSm
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
