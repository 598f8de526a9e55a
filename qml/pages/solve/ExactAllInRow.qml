pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The switch that weighs all-ins before the river by the boards that two hands can really meet. It
// shows `active` and never writes it.
ColumnLayout {
    id: row

    property Theme theme: Fallback.theme
    property bool active: false
    // An AppController, or null.
    property var controller: null

    signal switched(active: bool)

    spacing: theme.spaceXs

    RowLayout {
        spacing: row.theme.spaceMd
        Layout.fillWidth: true

        ToggleSwitch {
            objectName: "exactAllIn"
            theme: row.theme
            text: qsTr("Exact all-in odds")
            checked: row.active
            Accessible.description: help.text
            onToggled: row.switched(checked)
            Layout.fillWidth: true
        }
        SecondaryButton {
            id: moreButton

            objectName: "aboutAllIns"
            theme: row.theme
            compact: true
            text: qsTr("More...")
            Accessible.name: qsTr("More about exact all-in odds")
            onClicked: (explanation.get() as AllInDialog).open()
        }
    }
    AppLabel {
        id: help

        theme: row.theme
        //: The percentages are how much of its real worth an all-in counts for
        text: qsTr("Weighs an all-in before the river by the boards that the two hands can meet. "
                   + "Without it an all-in counts for 84% on the flop and 92% on the turn.")
        muted: true
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
    OnDemand {
        id: explanation

        visible: false

        AllInDialog {
            theme: row.theme
            document: row.controller?.readTextResource(
                "qrc:/Tidewell/docs/all-ins-before-the-river.md") ?? help.text
            onClosed: moreButton.forceActiveFocus(Qt.PopupFocusReason)
        }
    }
}
