import QtQuick
import Tidewell

// Asks what is to become of changes that are in no file before the project leaves the screen.
AppDialog {
    id: dialog

    // A solve would be cancelled, too.
    property bool solveRuns: false
    // Of the project's file, "" when it has none.
    property string fileName: ""
    property var _proceed: null

    // `then` is called when the changes are saved.
    signal saveRequested(var then)

    function ask(proceed: var): void {
        _proceed = proceed;
        open();
    }

    function _text(): string {
        const changes = fileName === ""
            ? qsTr("This project has changes that are not saved.")
            : qsTr("%1 has changes that are not saved.").arg(fileName);
        return solveRuns ? changes + "\n\n" + qsTr("The solve that is running will be cancelled.")
                         : changes;
    }

    title: qsTr("Unsaved changes")
    contentWidth: 400

    buttons: [
        SecondaryButton {
            theme: dialog.theme
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        },
        SecondaryButton {
            theme: dialog.theme
            text: qsTr("Don't Save")
            danger: true
            onClicked: {
                dialog.close();
                const goOn = dialog._proceed;
                goOn();
            }
        },
        PrimaryButton {
            theme: dialog.theme
            text: qsTr("Save")
            focus: true
            onClicked: {
                dialog.close();
                dialog.saveRequested(dialog._proceed);
            }
        }
    ]

    Text {
        width: parent.width
        text: dialog._text()
        textFormat: Text.PlainText
        color: dialog.theme.text
        font.pixelSize: Fallback.type.bodyMd
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
