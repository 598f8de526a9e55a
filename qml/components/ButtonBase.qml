import QtQuick
import QtQuick.Templates as T
import Tidewell

// What primary and secondary buttons have in common: all but their colours.
T.Button {
    id: button

    property Theme theme: Fallback.theme
    // A glyph before the text, or an icon, which wins over it.
    property string iconText: ""
    property string iconName: ""
    // For rows of small buttons.
    property bool compact: false
    // Shown while the pointer rests on the button.
    property string tip: ""

    function _press(): void {
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
    Accessible.name: text
    Accessible.description: tip
    Accessible.checkable: checkable
    Accessible.checked: checked

    Keys.onReturnPressed: button._press()
    Keys.onEnterPressed: button._press()

    Behavior on scale { NumberAnimation { duration: button.theme.durationFast } }

    FocusRing {
        theme: button.theme
        shown: button.visualFocus
    }
    AppToolTip {
        theme: button.theme
        text: button.tip
        visible: button.hovered && button.tip !== ""
    }
}
