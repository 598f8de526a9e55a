pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// Whether a click on a hand looks at it or locks it.
ColumnLayout {
    id: buttons

    required property Theme theme
    required property NodeLockState locks

    spacing: theme.spaceSm
    Accessible.role: Accessible.Grouping
    //: What a click on a hand of the matrix does
    Accessible.name: qsTr("Mode")

    ModeButton {
        objectName: "standardMode"
        text: qsTr("Standard mode")
        checked: !buttons.locks.mode
        tip: buttons.locks.mode ? qsTr("Discards the locks of this node, and ends node-locking.")
                                : qsTr("A click on a hand looks at it.")
        onClicked: buttons.locks.leaveMode()
    }
    ModeButton {
        objectName: "lockMode"
        text: qsTr("Node-lock mode")
        checked: buttons.locks.mode
        tip: qsTr("Fix how hands play at this node, and solve again.")
        onClicked: buttons.locks.enterMode()
    }

    component ModeButton: SecondaryButton {
        theme: buttons.theme
        compact: true
        iconText: checked ? "✓" : ""
        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true
        Layout.fillWidth: true
    }
}
