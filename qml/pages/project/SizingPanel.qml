pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// Which sizes one seat may bet and raise, street by street.
Card {
    id: panel

    required property string title
    // The seat out of position can be kept from betting into the aggressor; the other one copies
    // its sizing.
    required property bool outOfPosition
    property real streetColumnWidth: 70

    property string flopBetSizes: ""
    property string turnBetSizes: ""
    property string riverBetSizes: ""
    property string flopRaiseSizes: ""
    property string turnRaiseSizes: ""
    property string riverRaiseSizes: ""
    property bool flopAddAllIn: false
    property bool turnAddAllIn: false
    property bool riverAddAllIn: false
    property bool flopDontDonk: false
    property bool turnDontDonk: false
    property bool riverDontDonk: false
    property bool jamEnabled: false
    // Percent of the pot.
    property real jamPercent: 0
    property SetupHistory history: null
    // Labels stand above the fields, which then have the width.
    property bool narrow: false
    // The name of the field that is to be filled in, empty for none.
    property string marked: ""
    readonly property var refused: jam.refused

    signal copyRequested

    padding: theme.spaceMd
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        CardHeading {
            theme: panel.theme
            title: panel.title
            Layout.fillWidth: true
        }
        GridLayout {
            columns: panel.narrow ? 3 : 4
            columnSpacing: panel.theme.spaceXs + 2
            rowSpacing: panel.theme.spaceSm
            Layout.fillWidth: true

            Item {
                implicitWidth: 1
                implicitHeight: 1
                visible: !panel.narrow
            }
            StreetHead { text: qsTr("Flop") }
            StreetHead { text: qsTr("Turn") }
            StreetHead { text: qsTr("River") }

            RowLabel { text: qsTr("Bet sizes (%)") }
            BetSizes {
                objectName: "flopBetSizes"
                label: qsTr("Bet sizes on the flop")
                value: panel.flopBetSizes
                onCommitted: sizes => panel.flopBetSizes = sizes
            }
            BetSizes {
                objectName: "turnBetSizes"
                label: qsTr("Bet sizes on the turn")
                value: panel.turnBetSizes
                onCommitted: sizes => panel.turnBetSizes = sizes
            }
            BetSizes {
                objectName: "riverBetSizes"
                label: qsTr("Bet sizes on the river")
                value: panel.riverBetSizes
                onCommitted: sizes => panel.riverBetSizes = sizes
            }

            RowLabel { text: qsTr("Raise sizes (%)") }
            RaiseSizes {
                objectName: "flopRaiseSizes"
                label: qsTr("Raise sizes on the flop")
                value: panel.flopRaiseSizes
                onCommitted: sizes => panel.flopRaiseSizes = sizes
            }
            RaiseSizes {
                objectName: "turnRaiseSizes"
                label: qsTr("Raise sizes on the turn")
                value: panel.turnRaiseSizes
                onCommitted: sizes => panel.turnRaiseSizes = sizes
            }
            RaiseSizes {
                objectName: "riverRaiseSizes"
                label: qsTr("Raise sizes on the river")
                value: panel.riverRaiseSizes
                onCommitted: sizes => panel.riverRaiseSizes = sizes
            }

            RowLabel { text: qsTr("Add all-in") }
            StreetToggle {
                objectName: "flopAddAllIn"
                Accessible.name: qsTr("Add all-in on the flop")
                checked: panel.flopAddAllIn
                onToggled: panel.flopAddAllIn = checked
            }
            StreetToggle {
                objectName: "turnAddAllIn"
                Accessible.name: qsTr("Add all-in on the turn")
                checked: panel.turnAddAllIn
                onToggled: panel.turnAddAllIn = checked
            }
            StreetToggle {
                objectName: "riverAddAllIn"
                Accessible.name: qsTr("Add all-in on the river")
                checked: panel.riverAddAllIn
                onToggled: panel.riverAddAllIn = checked
            }

            RowLabel {
                text: qsTr("Don't donk")
                visible: panel.outOfPosition
            }
            StreetToggle {
                objectName: "flopDontDonk"
                Accessible.name: qsTr("Don't donk on the flop")
                visible: panel.outOfPosition
                checked: panel.flopDontDonk
                onToggled: panel.flopDontDonk = checked
            }
            StreetToggle {
                objectName: "turnDontDonk"
                Accessible.name: qsTr("Don't donk on the turn")
                visible: panel.outOfPosition
                checked: panel.turnDontDonk
                onToggled: panel.turnDontDonk = checked
            }
            StreetToggle {
                objectName: "riverDontDonk"
                Accessible.name: qsTr("Don't donk on the river")
                visible: panel.outOfPosition
                checked: panel.riverDontDonk
                onToggled: panel.riverDontDonk = checked
            }

            Item {
                implicitWidth: 1
                implicitHeight: 1
                visible: !panel.outOfPosition && !panel.narrow
            }
            SecondaryButton {
                objectName: "copySizing"
                theme: panel.theme
                compact: true
                text: qsTr("Copy OOP settings")
                tip: qsTr("Take over all sizes of the player out of position")
                visible: !panel.outOfPosition
                onClicked: panel.copyRequested()
                Layout.columnSpan: 3
                Layout.fillWidth: true
            }
        }
        JamRow {
            id: jam

            theme: panel.theme
            history: panel.history
            active: panel.jamEnabled
            percent: panel.jamPercent
            onSwitched: active => panel.jamEnabled = active
            onCommitted: percent => panel.jamPercent = percent
            Layout.fillWidth: true
            Layout.topMargin: panel.theme.spaceXs
        }
        HintLine {
            id: hintLine

            theme: panel.theme
            objectName: "sizingHint"
            Layout.fillWidth: true
            Layout.fillHeight: true
            // What it says asks for no width.
            Layout.preferredWidth: 1
            // Three lines, so that nothing moves when there is something to say.
            Layout.preferredHeight: 44
        }
    }

    component StreetHead: AppLabel {
        theme: panel.theme
        muted: true
        font.pixelSize: Fallback.type.labelMd
        font.weight: Fallback.type.weightMedium
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    // In two lines where that lets both seats fit on a small screen.
    component RowLabel: AppLabel {
        theme: panel.theme
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Layout.preferredWidth: Math.min(Math.ceil(implicitWidth), 66)
        Layout.fillWidth: true
        Layout.columnSpan: panel.narrow ? 3 : 1
    }
    component BetSizes: SizesField {
        id: sizes

        theme: panel.theme
        history: panel.history
        placeholderText: "33, 75, 125"
        tip: qsTr("Percent of the pot, such as 33, 75. Also 500c for 5 chips, 2e for all chips in "
                  + "over 2 streets, a for all-in, - for none.")
        leftPadding: panel.narrow ? 3 : 6
        rightPadding: leftPadding
        font.pixelSize: panel.narrow ? Fallback.type.labelMd : Fallback.type.mono
        marked: panel.marked === objectName
        onHoveredChanged: hintLine.note(sizes)
        onActiveFocusChanged: hintLine.note(sizes)
        // Fourteen characters: "33, 75, 125, a".
        Layout.minimumWidth: Math.max(panel.streetColumnWidth, panel.narrow ? 109 : 0)
        Layout.preferredWidth: panel.streetColumnWidth
        Layout.fillWidth: true
    }
    component RaiseSizes: BetSizes {
        raises: true
        placeholderText: "75, 125, 200"
        tip: qsTr("Percent of the pot, such as 75, 125. Also 2.5x for a multiple of the bet, "
                  + "500c for 5 chips more, 2e for all chips in over 2 streets, a for all-in, "
                  + "- for none.")
    }
    component StreetToggle: ToggleSwitch {
        theme: panel.theme
        Layout.alignment: Qt.AlignHCenter
    }
}
