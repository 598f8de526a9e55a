import QtQuick
import Tidewell

// The one action of a page or dialog that leads on.
ButtonBase {
    id: button

    property bool loading: false

    function _shade(base: color): color {
        if (!enabled) {
            return base;
        }
        if (down) {
            return Qt.darker(base, 1.1);
        }
        return hovered ? Qt.lighter(base, 1.1) : base;
    }

    font.weight: Fallback.type.weightSemibold

    contentItem: ButtonContent {
        text: button.text
        iconName: button.iconName
        iconText: button.iconText
        loading: button.loading
        // White is lost on the light theme's disabled grey.
        color: button.enabled ? "white" : button.theme.textMuted
        font: button.font
    }
    background: Rectangle {
        radius: button.theme.radiusSm
        // Without it the light theme's disabled button has no edge.
        border.width: button.enabled ? 0 : 1
        border.color: button.theme.stroke
        gradient: Gradient {
            GradientStop {
                position: 0
                color: button._shade(button.enabled ? button.theme.accent : button.theme.surface3)
            }
            GradientStop {
                position: 1
                color: button._shade(button.enabled ? button.theme.accentMuted
                                                    : button.theme.surface2)
            }
        }
    }
}
