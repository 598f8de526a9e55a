import QtQuick

// Puts texts on the clipboard.
Item {
    function put(text: string): void {
        carrier.text = text;
        carrier.selectAll();
        carrier.copy();
        carrier.clear();
    }

    visible: false
    Accessible.ignored: true

    TextEdit {
        id: carrier

        textFormat: TextEdit.PlainText
        Accessible.ignored: true
    }
}
