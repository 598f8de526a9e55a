import QtQuick
import Tidewell

// The box of everything that is typed or chosen in.
Rectangle {
    id: frame

    property Theme theme: Fallback.theme
    property bool focused: false
    property bool hovered: false
    property bool faulty: false
    property bool marked: false

    implicitHeight: 34
    radius: theme.radiusSm
    color: theme.surface2
    border.width: focused ? 2 : 1
    border.color: {
        if (faulty) {
            return theme.danger;
        }
        if (focused) {
            return theme.strokeFocus;
        }
        if (marked) {
            return theme.warn;
        }
        return hovered ? theme.textFaint : theme.stroke;
    }
}
