import QtQuick
import Tidewell

// An icon or a single glyph as a button; its tip says what it does.
ButtonBase {
    id: button

    required tip
    property real iconSize: 18
    property color color: theme.textMuted

    implicitWidth: Math.max(28, Math.ceil(iconSize) + 10)
    implicitHeight: implicitWidth
    padding: 0
    focusGap: 0
    font.pixelSize: Math.round(iconSize)
    opacity: enabled ? 1 : 0.5
    scale: 1

    contentItem: ButtonContent {
        iconName: button.iconName
        iconText: button.iconText
        iconSize: button.iconSize
        color: button.enabled && button.hovered ? button.theme.text : button.color
        font: button.font
    }
    background: Rectangle {
        radius: button.theme.radiusXs + 2
        color: {
            if (button.down) {
                return button.theme.surface3;
            }
            return button.enabled && button.hovered ? button.theme.surfaceHover : "transparent";
        }
    }
}
