import QtQuick
import QtQuick.Templates as T
import Tidewell

// How far something is, as a line. Set Accessible.name.
T.ProgressBar {
    id: bar

    property Theme theme: Fallback.theme

    // Where the wandering piece of an indeterminate bar is, in widths.
    property real _shift

    implicitWidth: 200
    implicitHeight: 8
    Accessible.role: Accessible.ProgressBar

    background: Rectangle {
        radius: height / 2
        color: bar.theme.surface3
    }
    contentItem: Item {
        clip: true

        Rectangle {
            x: bar.indeterminate ? bar._shift * bar.width : 0
            width: (bar.indeterminate ? 0.3 : bar.visualPosition) * parent.width
            height: parent.height
            radius: height / 2
            color: bar.theme.accent
        }
    }

    NumberAnimation on _shift {
        from: -0.3
        to: 1
        duration: 1500
        loops: Animation.Infinite
        running: bar.indeterminate && bar.visible
    }
}
