import QtQuick
import Tidewell

// Any other action. When checkable, the checked one stands out in the accent.
ButtonBase {
    id: button

    // For what deletes or stops something.
    property bool danger: false

    readonly property color _contentColor: {
        if (danger) {
            return theme.danger;
        }
        return checked ? theme.accent : theme.text;
    }
    readonly property color _fill: {
        if (down) {
            return theme.surface3;
        }
        return enabled && hovered ? theme.surfaceHover : theme.surface;
    }
    readonly property color _borderColor: {
        if (danger) {
            return theme.danger;
        }
        if (enabled && hovered) {
            return theme.strokeFocus;
        }
        return checked ? theme.accent : theme.stroke;
    }

    font.weight: Fallback.type.weightMedium

    contentItem: ButtonContent {
        text: button.text
        iconName: button.iconName
        iconText: button.iconText
        color: button._contentColor
        font: button.font
        opacity: button.enabled ? 1 : 0.5
    }
    background: Rectangle {
        radius: button.theme.radiusSm
        color: button._fill
        border.width: 1
        border.color: button._borderColor
        opacity: button.enabled ? 1 : 0.7

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.theme.withOpacity(button.theme.accent, 0.15)
            visible: button.checked
        }
    }
}
