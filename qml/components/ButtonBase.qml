import QtQuick
import QtQuick.Templates as T
import Tidewell

// What all buttons have in common: role and name, keys, focus ring and tooltip. Each has colours and
// content of its own.
T.Button {
    id: button

    property Theme theme: Fallback.theme
    // A glyph before the text, or an icon, which wins over it.
    property string iconText: ""
    property string iconName: ""
    // For rows of small buttons.
    property bool compact: false
    // Shown while the pointer rests on the button; its name where it has no text.
    property string tip: ""
    // From its edge to the ring around it, in pixels.
    property real focusGap: 2

    function _pressBy(key: KeyEvent): void {
        if (key.isAutoRepeat) {
            return;
        }
        if (checkable) {
            toggle();
        }
        clicked();
    }

    horizontalPadding: compact ? theme.spaceMd : theme.spaceLg
    verticalPadding: compact ? 4 : 8
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(compact ? 28 : 40,
                             implicitContentHeight + topPadding + bottomPadding)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    font.pixelSize: compact ? Fallback.type.labelMd : Fallback.type.bodyMd
    scale: enabled && hovered ? 1.02 : 1
    Accessible.role: Accessible.Button
    Accessible.name: text || tip
    Accessible.description: text === "" ? "" : tip
    Accessible.checkable: checkable
    Accessible.checked: checked

    // A key that is held presses once: the keyboard may be on another button by then.
    Keys.onReturnPressed: event => button._pressBy(event)
    Keys.onEnterPressed: event => button._pressBy(event)

    Behavior on scale { NumberAnimation { duration: button.theme.durationFast } }

    FocusRing {
        theme: button.theme
        cornerRadius: (button.background as Rectangle)?.radius ?? 0
        gap: button.focusGap
        shown: button.visualFocus
    }
    Tip {
        theme: button.theme
        text: button.tip
        // Where nothing else says what the button does, whoever comes by keyboard sees it too.
        shown: button.hovered || button.visualFocus && button.text === ""
    }
}
