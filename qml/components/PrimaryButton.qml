import QtQuick
import Tidewell

// The one action of a page or dialog that leads on.
ButtonBase {
    id: button

    property bool loading: false
    // Another one leads on now; this one steps back.
    property bool quiet: false

    readonly property color _top: !enabled ? theme.surface3 : quiet ? theme.surface : theme.accent
    readonly property color _bottom: !enabled ? theme.surface2
                                              : quiet ? theme.surface : theme.accentMuted

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
        color: {
            if (!button.enabled) {
                return button.theme.textMuted;
            }
            return button.quiet ? button.theme.text : "white";
        }
        font: button.font
    }
    background: Rectangle {
        radius: button.theme.radiusSm
        // Without it the light theme's disabled button has no edge.
        border.width: button.enabled && !button.quiet ? 0 : 1
        border.color: button.theme.stroke
        gradient: Gradient {
            GradientStop {
                position: 0
                color: button._shade(button._top)
            }
            GradientStop {
                position: 1
                color: button._shade(button._bottom)
            }
        }
    }
}
