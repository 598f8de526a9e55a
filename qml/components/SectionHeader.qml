import QtQuick
import QtQuick.Layouts
import Tidewell

// The head of a page or panel.
ColumnLayout {
    id: header

    property Theme theme: Fallback.theme
    property string title: ""
    property string subtitle: ""
    property string badge: ""
    property color badgeColor: theme.accent

    spacing: theme.spaceXs

    RowLayout {
        spacing: header.theme.spaceMd
        Layout.fillWidth: true

        Text {
            text: header.title
            textFormat: Text.PlainText
            color: header.theme.text
            font.pixelSize: Fallback.type.headingLg
            font.weight: Fallback.type.weightBold
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
        }
        Rectangle {
            implicitWidth: Math.ceil(badgeText.implicitWidth) + 2 * header.theme.spaceSm + 4
            implicitHeight: Math.ceil(badgeText.implicitHeight) + 6
            radius: height / 2
            color: header.theme.withOpacity(header.badgeColor, 0.15)
            visible: header.badge !== ""

            Text {
                id: badgeText

                anchors.centerIn: parent
                text: header.badge
                textFormat: Text.PlainText
                color: header.badgeColor
                font.pixelSize: Fallback.type.labelSm
                font.weight: Fallback.type.weightSemibold
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    Text {
        text: header.subtitle
        textFormat: Text.PlainText
        color: header.theme.textMuted
        font.pixelSize: Fallback.type.bodySm
        wrapMode: Text.Wrap
        visible: header.subtitle !== ""
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Layout.fillWidth: true
    }
}
