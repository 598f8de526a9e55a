import QtQuick
import Tidewell

// Asks what is to become of work that is in no file before it goes.
AppDialog {
    id: dialog

    property string text: ""
    property string discardText: ""
    property string saveText: ""
    property var _proceed: null

    // `then` is called when the work is saved.
    signal saveRequested(var then)

    // `question` has the four texts. A question that still stands is no longer asked: nothing has
    // been lost by it.
    function ask(question: var, proceed: var): void {
        title = question.title;
        text = question.text;
        discardText = question.discardText;
        saveText = question.saveText;
        _proceed = proceed;
        open();
    }

    // The answer is taken once, however often the button is pressed.
    function _take(): var {
        const proceed = _proceed;
        _proceed = null;
        close();
        return proceed ?? (() => {});
    }

    contentWidth: 420
    onRejected: _proceed = null

    buttons: [
        SecondaryButton {
            theme: dialog.theme
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        },
        SecondaryButton {
            theme: dialog.theme
            text: dialog.discardText
            danger: true
            onClicked: {
                const goOn = dialog._take();
                goOn();
            }
        },
        PrimaryButton {
            theme: dialog.theme
            text: dialog.saveText
            focus: true
            onClicked: dialog.saveRequested(dialog._take())
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
