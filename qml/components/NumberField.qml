import QtQuick
import Tidewell

// A number within bounds, with a point before its fraction whatever the language; a comma typed
// becomes one. The field shows `value` and never writes it: what was typed leaves by `committed`
// when editing ends, and while typing by `edited`; the owner then sets the model that `value` is
// bound to. Text that is no number within the bounds leaves by neither: it stays, and the field is
// marked, until it is mended, emptied, or the value changes.
AppTextField {
    id: field

    property real value: 0
    property real from: 0
    property real to: 1000000
    // Digits after the point; 0 takes whole numbers only.
    property int decimals: 2

    readonly property var _form:
        new RegExp(`^-?(?=.?\\d)\\d*${decimals > 0 ? `(\\.\\d{0,${decimals}})?` : ""}$`)
    // Whether the text is the user's, not the value's.
    property bool _touched: false

    signal committed(number: real)
    signal edited(number: real)

    // Shows the value, whatever has been typed.
    function restore(): void {
        text = Number(value).toString();
        _touched = false;
    }

    // NaN for what is no number within the bounds.
    function _read(entry: string): real {
        const number = _form.test(entry) ? Number(entry) : NaN;
        return number >= from && number <= to ? number : NaN;
    }

    function _edit(): void {
        _touched = true;
        const number = _read(text);
        if (!isNaN(number)) {
            edited(number);
        }
    }

    function _commit(): void {
        const number = _read(text);
        if (!isNaN(number)) {
            committed(number);
            restore();
        }
    }

    function _spoken(number: real): string {
        return number.toLocaleString(Qt.locale(), "f", Math.min(decimals, number % 1 ? 3 : 0));
    }

    implicitWidth: 96
    mono: true
    pending: _touched
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    error: _touched && text !== "" && isNaN(_read(text))
        //: Bounds of a number field
        ? qsTr("Enter a number from %1 to %2").arg(_spoken(from)).arg(_spoken(to))
        : ""
    // Whatever may stand in a number can be typed: a character that is swallowed makes another number
    // of what was meant.
    validator: RegularExpressionValidator {
        regularExpression: /[-0-9.e]*/
    }

    onValueChanged: if (!activeFocus) restore()
    onActiveFocusChanged: if (!activeFocus && (!_touched || error === "")) restore()
    onTextEdited: _edit()
    onEditingFinished: _commit()
    Component.onCompleted: restore()

    Connections {
        target: field.history

        function onForgotten(): void {
            field.restore();
        }
    }

    Keys.onPressed: event => {
        if (event.text === ",") {
            event.accepted = true;
            field.remove(field.selectionStart, field.selectionEnd);
            field.insert(field.cursorPosition, ".");
            field._edit();
        }
    }
}
