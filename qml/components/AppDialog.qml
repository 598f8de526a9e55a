pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// A titled panel over the window, in its middle unless placed. Its content is what is declared in
// it, as large as its implicit size; `buttons` stand in a row at the bottom right. Escape closes
// it.
T.Dialog {
    id: dialog

    property Theme theme: Fallback.theme
    property alias buttons: row.data

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    implicitWidth: Math.max(300, Math.ceil(contentWidth) + leftPadding + rightPadding,
                            Math.ceil(implicitHeaderWidth), Math.ceil(implicitFooterWidth))
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
                    + Math.ceil(implicitHeaderHeight) + Math.ceil(implicitFooterHeight)
    margins: 12
    padding: theme.spaceXl
    topPadding: title === "" ? theme.spaceXl : theme.spaceMd
    bottomPadding: buttons.length > 0 ? theme.spaceLg + 4 : theme.spaceXl
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    font.pixelSize: Fallback.type.bodyMd

    header: Text {
        leftPadding: dialog.theme.spaceXl
        rightPadding: dialog.theme.spaceXl
        topPadding: dialog.theme.spaceLg + 4
        text: dialog.title
        textFormat: Text.PlainText
        color: dialog.theme.text
        font.pixelSize: Fallback.type.headingSm
        font.weight: Fallback.type.weightSemibold
        elide: Text.ElideRight
        visible: dialog.title !== ""
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    footer: Item {
        implicitWidth: Math.ceil(row.implicitWidth) + 2 * dialog.theme.spaceXl
        implicitHeight: Math.ceil(row.implicitHeight) + dialog.theme.spaceXl
        visible: dialog.buttons.length > 0

        RowLayout {
            id: row

            anchors.right: parent.right
            anchors.rightMargin: dialog.theme.spaceXl
            spacing: dialog.theme.spaceSm
        }
    }
    background: Item {
        SoftShadow {
            anchors.fill: parent
            theme: dialog.theme
            cornerRadius: dialog.theme.radiusMd
            reach: 24
            offset: 8
        }
        Rectangle {
            anchors.fill: parent
            radius: dialog.theme.radiusMd
            color: dialog.theme.surface
            border.width: 1
            border.color: dialog.theme.stroke
            Accessible.role: Accessible.Dialog
            Accessible.name: dialog.title
        }
    }
    T.Overlay.modal: Rectangle {
        objectName: "dimmer"  // see ShellShortcuts
        color: Qt.rgba(0, 0, 0, dialog.theme.dark ? 0.6 : 0.35)

        Behavior on opacity { NumberAnimation { duration: dialog.theme.durationFast } }
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 120 }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 120 }
    }
}
