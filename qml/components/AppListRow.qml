import QtQuick
import QtQuick.Templates as T
import Tidewell

// A line of a list that can be pressed. `current` is the chosen one, `highlighted` the one that the
// keyboard stands on.
T.ItemDelegate {
    id: row

    property Theme theme: Fallback.theme
    property bool current: false
    property string iconName: ""
    property real iconOpacity: 1

    readonly property color _contentColor: current ? theme.accent : theme.text

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(26, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    horizontalPadding: 10
    verticalPadding: 5
    spacing: 8
    hoverEnabled: true
    font.pixelSize: Fallback.type.bodySm
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: current

    contentItem: Text {
        leftPadding: row.iconName === "" ? 0 : 16 + row.spacing
        text: row.text
        textFormat: Text.PlainText
        color: row._contentColor
        font: row.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: row.theme.radiusXs
        color: {
            if (row.down) {
                return row.theme.surface3;
            }
            if (row.hovered || row.highlighted) {
                return row.theme.surfaceHover;
            }
            return row.current ? row.theme.withOpacity(row.theme.accent, 0.12) : "transparent";
        }
        border.width: row.visualFocus ? 2 : 0
        border.color: row.theme.strokeFocus
    }

    Icon {
        x: row.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        name: row.iconName
        size: 16
        color: row._contentColor
        iconOpacity: row.iconOpacity
        visible: row.iconName !== ""
    }
}
