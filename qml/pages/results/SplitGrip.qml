import QtQuick
import QtQuick.Templates as T
import Tidewell

// Where the panels of a split view are drawn apart.
Item {
    id: grip

    required property Theme theme

    readonly property int _step: 16

    // An arrow key wants it moved, by pixels.
    signal nudged(by: int)

    implicitWidth: 8
    implicitHeight: 8
    activeFocusOnTab: true
    Accessible.role: Accessible.Splitter
    Accessible.name: qsTr("Border between the panels")
    Accessible.focusable: true

    Keys.onLeftPressed: nudged(-_step)
    Keys.onRightPressed: nudged(_step)

    Rectangle {
        anchors.centerIn: parent
        width: 4
        height: 40
        radius: 2
        color: grip.T.SplitHandle.pressed || grip.T.SplitHandle.hovered
            ? grip.theme.strokeFocus : grip.theme.stroke

        FocusRing {
            theme: grip.theme
            gap: 0
            shown: grip.activeFocus
        }
    }
}
