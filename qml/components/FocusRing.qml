import QtQuick
import Tidewell

// The outline around the control that has the keyboard. It lies outside its parent.
Rectangle {
    id: ring

    property Theme theme: Fallback.theme
    property bool shown: false
    // Of the control's own corners, in pixels.
    property real cornerRadius: theme.radiusSm
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -(gap + border.width)
    radius: Math.min(cornerRadius + gap + border.width, height / 2)
    color: "transparent"
    border.width: 2
    border.color: theme.strokeFocus
    visible: shown
}
