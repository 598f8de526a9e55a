import QtQuick
import QtQuick.Layouts
import Tidewell

// A titled column of the details of a hand.
Rectangle {
    id: column

    required property Theme theme
    required property string title
    default property alias content: body.data

    implicitWidth: 170
    implicitHeight: body.implicitHeight + 2 * theme.spaceSm
    radius: theme.radiusSm
    color: theme.surface2
    border.width: 1
    border.color: theme.stroke
    clip: true
    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.preferredWidth: 1
    Layout.minimumWidth: 170

    ColumnLayout {
        id: body

        anchors.fill: parent
        anchors.margins: column.theme.spaceSm
        anchors.leftMargin: column.theme.spaceMd
        spacing: 3

        AppLabel {
            theme: column.theme
            text: column.title
            font.pixelSize: Fallback.type.labelMd
            font.weight: Fallback.type.weightSemibold
            Accessible.role: Accessible.Heading
        }
    }
}
