import QtQuick
import QtQuick.Templates as T
import Tidewell

// An open ring that turns while it is visible.
T.BusyIndicator {
    id: spinner

    property color color: Fallback.theme.text
    property real strokeWidth: 2

    implicitWidth: 16
    implicitHeight: 16
    Accessible.ignored: true

    contentItem: RingArc {
        strokeWidth: spinner.strokeWidth
        trackColor: Qt.rgba(spinner.color.r, spinner.color.g, spinner.color.b, 0.25)
        color: spinner.color
        share: 0.3

        RotationAnimator on rotation {
            from: 0
            to: 360
            duration: 1000
            loops: Animation.Infinite
            running: spinner.running && spinner.visible
        }
    }
}
