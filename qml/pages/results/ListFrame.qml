import QtQuick
import QtQuick.Layouts
import Tidewell

// A panel beside the matrix: a title, at its right what `note` says, and below what is declared in it.
Rectangle {
    id: frame

    required property Theme theme
    property string title: ""
    property string note: ""
    default property alias content: column.data

    radius: theme.radiusSm
    color: theme.surface2
    border.width: 1
    border.color: theme.stroke
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: frame.theme.spaceMd
        spacing: frame.theme.spaceSm

        RowLayout {
            spacing: frame.theme.spaceSm
            Layout.fillWidth: true

            PanelTitle {
                theme: frame.theme
                text: frame.title
                Layout.fillWidth: true
            }
            AppLabel {
                theme: frame.theme
                text: frame.note
                color: frame.theme.legible(frame.theme.textMuted, frame.color)
                font.pixelSize: Fallback.type.labelMd
                visible: text !== ""
            }
        }
    }
}
