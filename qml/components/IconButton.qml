import QtQuick
import QtQuick.Templates as T
import Tidewell

// An icon or a single glyph as a button. `tip` says what it does, as its tooltip and its accessible
// name.
T.AbstractButton {
    id: button

    required property string tip
    property Theme theme: Fallback.theme
    property string iconName: ""
    property string iconText: ""
    property real iconSize: 18
    property color color: theme.textMuted

    function _press(): void {
        if (checkable) {
            toggle();
        }
        clicked();
    }

    implicitWidth: Math.max(28, Math.ceil(iconSize) + 10)
    implicitHeight: implicitWidth
    padding: 0
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.Button
    Accessible.name: tip

    Keys.onReturnPressed: button._press()
    Keys.onEnterPressed: button._press()

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: button.iconName
            size: button.iconSize
            color: button.enabled && button.hovered ? button.theme.text : button.color
            visible: button.iconName !== ""
        }
        Text {
            anchors.centerIn: parent
            text: button.iconText
            textFormat: Text.PlainText
            color: button.enabled && button.hovered ? button.theme.text : button.color
            font.pixelSize: Math.round(button.iconSize)
            visible: button.iconName === ""
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: button.theme.radiusXs + 2
        color: {
            if (button.down) {
                return button.theme.surface3;
            }
            return button.enabled && button.hovered ? button.theme.surfaceHover : "transparent";
        }

        FocusRing {
            theme: button.theme
            cornerRadius: parent.radius
            gap: 0
            shown: button.visualFocus
        }
    }

    AppToolTip {
        theme: button.theme
        text: button.tip
        visible: button.hovered || button.visualFocus
    }
}
