import QtQuick
import QtQuick.Layouts
import Tidewell

// The head of a card. What is declared in it stands at its right end.
RowLayout {
    id: heading

    property Theme theme: Fallback.theme
    property string iconName: ""
    property string title: ""
    // Smaller, after the title.
    property string caption: ""

    spacing: theme.spaceSm

    Icon {
        name: heading.iconName
        size: 18
        color: heading.theme.accent
        visible: heading.iconName !== ""
    }
    Text {
        text: heading.title
        textFormat: Text.PlainText
        color: heading.theme.text
        font.pixelSize: Fallback.type.headingSm
        font.weight: Fallback.type.weightSemibold
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
        Accessible.name: text
        Layout.fillWidth: true
        Layout.maximumWidth: Math.ceil(implicitWidth)
    }
    Text {
        text: heading.caption
        textFormat: Text.PlainText
        color: heading.theme.textMuted
        font.pixelSize: Fallback.type.labelMd
        visible: heading.caption !== ""
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Layout.alignment: Qt.AlignBaseline
    }
    Item {
        Layout.fillWidth: true
    }
}
