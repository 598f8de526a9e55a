import QtQuick
import Tidewell

// What is to be said of the field of a panel that has the pointer or the keyboard, at a place of its
// own: nothing is covered by it. Fields report by `note`.
AppLabel {
    id: line

    property AppTextField _hovered: null
    property AppTextField _focused: null
    readonly property AppTextField _told:
        _focused && _focused.error !== "" ? _focused : _hovered ?? _focused
    // What is said otherwise.
    property string otherwise: ""

    function note(field: AppTextField): void {
        _hovered = field.hovered ? field : _hovered === field ? null : _hovered;
        _focused = field.activeFocus ? field : _focused === field ? null : _focused;
    }

    text: _told ? _told.hint : otherwise
    color: _told && _told.error !== "" ? theme.danger : theme.textMuted
    font.pixelSize: Fallback.type.labelSm
    wrapMode: Text.Wrap
    maximumLineCount: 3
    elide: Text.ElideRight
    verticalAlignment: Text.AlignTop
    Accessible.ignored: true
}
