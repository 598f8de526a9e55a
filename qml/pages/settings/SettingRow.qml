import QtQuick
import QtQuick.Layouts
import Tidewell

// A setting: its name, what it does, and at the right what is declared in it.
RowLayout {
    id: row

    property Theme theme: Fallback.theme
    property string title: ""
    property string line: ""

    spacing: theme.spaceLg

    ColumnLayout {
        spacing: 2
        Layout.fillWidth: true

        Text {
            text: row.title
            textFormat: Text.PlainText
            color: row.theme.text
            font.pixelSize: Fallback.type.bodyMd
            font.weight: Fallback.type.weightMedium
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        Text {
            text: row.line
            textFormat: Text.PlainText
            color: row.theme.textMuted
            font.pixelSize: Fallback.type.labelMd
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
    }
}
