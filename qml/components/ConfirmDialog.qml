import QtQuick
import Tidewell

// A question before something that cannot be undone. `accepted` is the yes.
AppDialog {
    id: dialog

    property string text: ""
    property string confirmText: qsTr("OK")
    property string cancelText: qsTr("Cancel")
    // A way out between the two; none where it is empty.
    property string otherText: ""
    // The yes deletes something.
    property bool danger: false

    signal otherChosen

    contentWidth: 400

    buttons: [
        SecondaryButton {
            theme: dialog.theme
            text: dialog.cancelText
            focus: true
            onClicked: dialog.reject()
        },
        SecondaryButton {
            theme: dialog.theme
            text: dialog.otherText
            visible: text !== ""
            onClicked: {
                dialog.close();
                dialog.otherChosen();
            }
        },
        SecondaryButton {
            theme: dialog.theme
            text: dialog.confirmText
            danger: true
            visible: dialog.danger
            onClicked: dialog.accept()
        },
        PrimaryButton {
            theme: dialog.theme
            text: dialog.confirmText
            visible: !dialog.danger
            onClicked: dialog.accept()
        }
    ]

    Text {
        width: parent.width
        text: dialog.text
        textFormat: Text.PlainText
        color: dialog.theme.text
        font.pixelSize: Fallback.type.bodyMd
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
