import QtQuick
import QtQuick.Templates as T
import Tidewell

// A value on a line, by drag or arrow keys. Set Accessible.name.
T.Slider {
    id: slider

    property Theme theme: Fallback.theme

    implicitWidth: 160
    implicitHeight: 24
    padding: 3
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.Slider

    background: Rectangle {
        x: slider.leftPadding
        y: slider.topPadding + (slider.availableHeight - height) / 2
        width: slider.availableWidth
        height: 4
        radius: 2
        color: slider.theme.surface3

        Rectangle {
            width: slider.handle.x + slider.handle.width / 2 - slider.leftPadding
            height: parent.height
            radius: parent.radius
            color: slider.theme.accent
        }
    }
    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: slider.topPadding + (slider.availableHeight - height) / 2
        width: 16
        height: 16
        radius: 8
        color: slider.pressed ? slider.theme.accentHover : slider.theme.accent
        border.width: 2
        border.color: slider.theme.surface

        FocusRing {
            theme: slider.theme
            cornerRadius: parent.radius
            gap: 0
            shown: slider.visualFocus
        }
    }
}
