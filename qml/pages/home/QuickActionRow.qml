import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// One way to begin, as a row that can be pressed.
T.AbstractButton {
    id: row

    required property string line
    required property string iconName
    property Theme theme: Fallback.theme

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(56, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    horizontalPadding: theme.spaceMd
    verticalPadding: 6
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: line

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    contentItem: RowLayout {
        spacing: row.theme.spaceMd

        Rectangle {
            implicitWidth: 36
            implicitHeight: 36
            radius: row.theme.radiusSm
            color: row.theme.withOpacity(row.theme.accent, 0.15)

            Icon {
                anchors.centerIn: parent
                name: row.iconName
                size: 20
                color: row.theme.accent
            }
        }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true

            Text {
                text: row.text
                textFormat: Text.PlainText
                color: row.theme.text
                font.pixelSize: Fallback.type.bodyMd
                font.weight: Fallback.type.weightSemibold
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
            }
            Text {
                text: row.line
                textFormat: Text.PlainText
                color: row.theme.textMuted
                font.pixelSize: Fallback.type.labelMd
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
            }
        }
        Text {
            text: "→"
            textFormat: Text.PlainText
            color: row.hovered ? row.theme.accent : row.theme.textMuted
            font.pixelSize: Fallback.type.headingSm
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: row.theme.radiusSm
        color: {
            if (row.down) {
                return row.theme.surface3;
            }
            return row.hovered ? row.theme.surfaceHover : row.theme.surface2;
        }
        border.width: 1
        border.color: row.hovered ? row.theme.strokeFocus : row.theme.stroke

        FocusRing {
            theme: row.theme
            shown: row.visualFocus
        }
    }
}
