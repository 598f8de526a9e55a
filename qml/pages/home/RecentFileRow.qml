import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// A project file of the list, `highlighted` when the keyboard stands on it. The cross takes it off
// the list, not off the disk.
T.ItemDelegate {
    id: row

    required property url url
    required property string name
    required property string folder
    required property string board
    required property date saved
    required property bool missing
    property Theme theme: Fallback.theme

    signal removeRequested

    implicitHeight: Math.max(40, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    leftPadding: theme.spaceSm
    rightPadding: theme.spaceXs
    verticalPadding: 3
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: missing ? qsTr("Missing") : `${board}, ${_when}, ${folder}`

    readonly property string _when: missing ? "" : saved.toLocaleString(Qt.locale(),
                                                                        Locale.ShortFormat)

    contentItem: RowLayout {
        spacing: row.theme.spaceSm

        Icon {
            name: "file-text"
            size: 18
            color: row.missing ? row.theme.textFaint : row.theme.textMuted
        }
        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true

            Text {
                text: row.name
                textFormat: Text.PlainText
                color: row.missing ? row.theme.textFaint : row.theme.text
                font.pixelSize: Fallback.type.bodySm
                font.strikeout: row.missing
                elide: Text.ElideMiddle
                Accessible.ignored: true
                Layout.fillWidth: true
            }
            Text {
                text: row.missing ? qsTr("Missing: %1").arg(row.folder) : row.folder
                textFormat: Text.PlainText
                color: row.missing ? row.theme.warn : row.theme.textMuted
                font.pixelSize: Fallback.type.labelSm
                elide: Text.ElideMiddle
                Accessible.ignored: true
                Layout.fillWidth: true
            }
        }
        BoardText {
            theme: row.theme
            board: row.board
        }
        Text {
            text: row._when
            textFormat: Text.PlainText
            color: row.theme.textMuted
            font.pixelSize: Fallback.type.labelMd
            horizontalAlignment: Text.AlignRight
            visible: text !== ""
            Accessible.ignored: true
            Layout.minimumWidth: 120
        }
        IconButton {
            theme: row.theme
            tip: qsTr("Remove %1 from the list").arg(row.name)
            iconText: "×"
            focusPolicy: Qt.NoFocus
            opacity: row.hovered || row.missing || row.highlighted ? 1 : 0
            onClicked: row.removeRequested()
        }
    }
    AppToolTip {
        theme: row.theme
        text: row.name + "\n" + row.folder
        visible: row.hovered
    }
    background: Rectangle {
        radius: row.theme.radiusXs
        color: {
            if (row.down) {
                return row.theme.surface3;
            }
            return row.hovered ? row.theme.surfaceHover : "transparent";
        }
        border.width: row.highlighted ? 2 : 0
        border.color: row.theme.strokeFocus
    }
}
