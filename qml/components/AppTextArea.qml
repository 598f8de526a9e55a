import QtQuick
import QtQuick.Controls.Basic as Basic
import Tidewell

// Several lines of text, scrolling within the box.
Basic.ScrollView {
    id: area

    property Theme theme: Fallback.theme
    property string error: ""
    property bool mono: false
    property alias text: edit.text
    property alias placeholderText: edit.placeholderText
    property alias readOnly: edit.readOnly
    property alias wrapMode: edit.wrapMode
    readonly property alias editor: edit

    implicitWidth: 320
    implicitHeight: 120
    padding: 2
    opacity: enabled ? 1 : 0.5
    Basic.ScrollBar.vertical: AppScrollBar {
        parent: area
        theme: area.theme
        x: area.width - width - 2
        y: 2
        height: area.height - 4
    }
    background: FieldFrame {
        theme: area.theme
        focused: edit.activeFocus
        hovered: area.enabled && area.hovered
        faulty: area.error !== ""
    }

    Basic.TextArea {
        id: edit

        selectByMouse: true
        wrapMode: TextEdit.Wrap
        textFormat: TextEdit.PlainText
        color: area.theme.text
        placeholderTextColor: area.theme.placeholder
        selectionColor: area.theme.withOpacity(area.theme.strokeFocus, 0.4)
        selectedTextColor: area.theme.text
        font.pixelSize: area.mono ? Fallback.type.mono : Fallback.type.bodyMd
        font.family: area.mono ? area.theme.monoFamily : area.theme.uiFamily
        background: null
        Accessible.role: Accessible.EditableText
        Accessible.multiLine: true
        Accessible.name: placeholderText
        Accessible.description: area.error

        // A tab has no place in what is typed here, but the keyboard must get out.
        Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    }
}
