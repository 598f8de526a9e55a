import QtQuick
import QtQuick.Controls.Basic as Basic
import Tidewell

// One line of text. A non-empty `error` marks the field and is shown while it has the pointer or
// the keyboard. Where the label stands apart from the field, set Accessible.name.
Basic.TextField {
    id: field

    property Theme theme: Fallback.theme
    property string error: ""
    // Help, shown while the pointer rests on the field.
    property string tip: ""
    property bool mono: false
    // Drawn as what has to be filled in.
    property bool marked: false
    // Help and errors are told by someone else, by `hint`.
    property bool tipElsewhere: false
    readonly property bool _cut: contentWidth > width - leftPadding - rightPadding
    readonly property string hint: {
        if (error !== "") {
            return error;
        }
        return _cut && !activeFocus ? text : tip;
    }
    // A SetupHistory whose steps the keys of undoing take instead of the field's own, unless what
    // stands in the field is typed and not taken over.
    property var history: null
    property bool pending: false

    implicitWidth: 160
    implicitHeight: Math.max(34, Math.ceil(contentHeight) + topPadding + bottomPadding)
    leftPadding: 10
    rightPadding: 10
    topPadding: 6
    bottomPadding: 6
    hoverEnabled: true
    selectByMouse: true
    color: theme.text
    placeholderTextColor: theme.placeholder
    selectionColor: theme.withOpacity(theme.strokeFocus, 0.4)
    selectedTextColor: theme.text
    font.pixelSize: mono ? Fallback.type.mono : Fallback.type.bodyMd
    font.family: mono ? theme.monoFamily : theme.uiFamily
    verticalAlignment: TextInput.AlignVCenter
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.description: error !== "" ? error : tip

    // Who comes by Tab types anew. Without the keyboard the start of the text is seen.
    onActiveFocusChanged: {
        if (activeFocus && (focusReason === Qt.TabFocusReason
                            || focusReason === Qt.BacktabFocusReason)) {
            selectAll();
        } else if (!activeFocus) {
            cursorPosition = 0;
        }
    }

    Keys.onPressed: event => {
        // The linter does not know StandardKey.
        // qmllint disable unqualified
        const undo = event.matches(StandardKey.Undo);
        if (field.history && !field.pending && (undo || event.matches(StandardKey.Redo))) {
            event.accepted = true;
            undo ? field.history.undo() : field.history.redo();
        }
        // qmllint enable unqualified
    }

    background: FieldFrame {
        theme: field.theme
        focused: field.activeFocus
        hovered: field.enabled && field.hovered
        faulty: field.error !== ""
        marked: field.marked
    }

    Tip {
        theme: field.theme
        text: field.tipElsewhere ? "" : field.hint
        shown: field.hovered || field.error !== "" && field.activeFocus
    }
}
