import QtQuick
import Tidewell

// A list of bet or raise sizes. The field shows `value` and never writes it: what was typed leaves
// by `committed` when editing ends, as it was typed.
AppTextField {
    id: field

    required property string label
    property string value: ""
    // A list of raises, in which multiples and caps are sizes too.
    property bool raises: false

    signal committed(sizes: string)

    function _check(sizes: string): string {
        return raises ? TextChecks.checkRaiseSizes(sizes) : TextChecks.checkBetSizes(sizes);
    }

    implicitWidth: 70
    leftPadding: 6
    rightPadding: 6
    mono: true
    // Nothing is marked before it is finished; what is marked is so until it is mended.
    pending: text !== value
    error: _check(value) === "" ? "" : _check(text)
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.name: label

    tipElsewhere: true

    Connections {
        target: field.history

        function onForgotten(): void {
            field.text = field.value;
        }
    }

    onValueChanged: text = value
    onEditingFinished: if (text !== value) committed(text)
    Component.onCompleted: text = value
}
