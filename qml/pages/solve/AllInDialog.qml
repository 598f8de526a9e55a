import QtQuick
import QtQuick.Templates as T
import Tidewell

// The page of the documents about all-ins before the river. The program carries it in itself, so
// that it can be read wherever the program is.
AppDialog {
    id: dialog

    // Markdown.
    property string document: ""

    readonly property real _room: parent ? parent.height - 2 * margins : 600

    title: qsTr("All-ins before the river")
    buttons: [
        PrimaryButton {
            theme: dialog.theme
            text: qsTr("Close")
            focus: true
            Keys.onUpPressed: view.T.ScrollBar.vertical.decrease()
            Keys.onDownPressed: view.T.ScrollBar.vertical.increase()
            onClicked: dialog.close()
        }
    ]

    AppScrollView {
        id: view

        theme: dialog.theme
        implicitWidth: Math.min(680, dialog.parent ? dialog.parent.width - 120 : 680)
        implicitHeight: Math.min(page.implicitHeight, dialog._room - 160)
        contentWidth: availableWidth
        contentHeight: page.implicitHeight

        Text {
            id: page

            width: view.availableWidth - 16
            // Without its head, which the dialog has already.
            text: dialog.document.replace(/^# .*\n/, "")
            textFormat: Text.MarkdownText
            color: dialog.theme.text
            font.pixelSize: Fallback.type.bodySm
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
