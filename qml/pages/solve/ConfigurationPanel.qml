pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What is about to be solved, and the buttons that start and stop it.
Card {
    id: panel

    // The spot, with the properties of the project state.
    required property var spot
    // Of the target, in chips.
    property real targetAmount: 0
    property bool running: false
    property bool canStart: false
    // Why it cannot be started; empty when it can.
    property string obstacle: ""
    property bool cancelling: false
    property bool complete: false

    signal started
    signal cancelled
    signal resultsRequested

    // The button that the keyboard was on may have been switched off by the start or the end of a
    // run: it goes to the one that is wanted next. Whoever has gone elsewhere stays there.
    function _keepKeyboard(): void {
        if (!visible || !_isWithin(Window.activeFocusItem)) {
            return;
        }
        if (running) {
            cancelButton.forceActiveFocus(Qt.TabFocusReason);
        } else {
            (complete ? resultsButton : startButton.button).forceActiveFocus(Qt.TabFocusReason);
        }
    }

    // Whether the panel lies within an item that has the keyboard for want of any other.
    function _isWithin(item: Item): bool {
        for (let outer = panel; outer; outer = outer.parent) {
            if (outer === item) {
                return true;
            }
        }
        return item === null;
    }

    function _street(): string {
        switch (spot.startingStreet) {
        case "turn":
            return qsTr("TURN");
        case "river":
            return qsTr("RIVER");
        default:
            return qsTr("FLOP");
        }
    }

    function _number(value: real): string {
        return value.toLocaleString(Qt.locale(), "f", -128);
    }

    function _sizes(property: string): string {
        return spot[property].trim() || "—";
    }

    function _betSizes(): string {
        //: Bet sizes on flop, turn and river, each of the player out of and in position
        return qsTr("F %1/%2 • T %3/%4 • R %5/%6")
            .arg(_sizes("oopFlopBetSizesText")).arg(_sizes("ipFlopBetSizesText"))
            .arg(_sizes("oopTurnBetSizesText")).arg(_sizes("ipTurnBetSizesText"))
            .arg(_sizes("oopRiverBetSizesText")).arg(_sizes("ipRiverBetSizesText"));
    }

    function _options(): var {
        const all = [
            [spot.oopFlopDontDonk, qsTr("OOP: don't donk on flop")],
            [spot.oopTurnDontDonk, qsTr("OOP: don't donk on turn")],
            [spot.oopRiverDontDonk, qsTr("OOP: don't donk on river")],
            [spot.oopFlopAddAllIn, qsTr("OOP: add all-in on flop")],
            [spot.oopTurnAddAllIn, qsTr("OOP: add all-in on turn")],
            [spot.oopRiverAddAllIn, qsTr("OOP: add all-in on river")],
            [spot.ipFlopAddAllIn, qsTr("IP: add all-in on flop")],
            [spot.ipTurnAddAllIn, qsTr("IP: add all-in on turn")],
            [spot.ipRiverAddAllIn, qsTr("IP: add all-in on river")],
            [spot.oopAddAllInIfJamLtEnabled,
             qsTr("OOP: add all-in if jam < %1% pot").arg(_number(spot.oopAddAllInIfJamLtPct))],
            [spot.ipAddAllInIfJamLtEnabled,
             qsTr("IP: add all-in if jam < %1% pot").arg(_number(spot.ipAddAllInIfJamLtPct))],
            [spot.exactAllIn, qsTr("Exact all-in odds")]
        ];
        return all.filter(([enabled]) => enabled).map(([, line]) => line);
    }

    onRunningChanged: keyboard.restart()

    // Once the buttons know of it, too.
    Timer {
        id: keyboard

        interval: 0
        onTriggered: panel._keepKeyboard()
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceMd

        CardHeading {
            theme: panel.theme
            iconName: "sliders"
            title: qsTr("Configuration")
            Layout.fillWidth: true
        }
        BoardDisplay {
            objectName: "board"
            theme: panel.theme
            boardText: panel.spot.boardText
            compact: true
            cardScale: 1.8
        }
        GridLayout {
            columns: 2
            columnSpacing: panel.theme.spaceLg
            rowSpacing: panel.theme.spaceXs + 2
            Layout.fillWidth: true

            Name { text: qsTr("Street") }
            Value {
                objectName: "street"
                text: panel._street()
            }
            Name { text: qsTr("Pot / Stack") }
            Value {
                objectName: "money"
                text: qsTr("%1 / %2").arg(panel._number(panel.spot.startingPot))
                    .arg(panel._number(panel.spot.effectiveStack))
            }
            Name { text: qsTr("Target") }
            Value {
                objectName: "target"
                //: The target in percent of the pot, and in chips
                text: qsTr("%1% (= %2)").arg(panel._number(panel.spot.targetExploitability))
                    .arg(panel.targetAmount.toLocaleString(Qt.locale(), "f", 2))
            }
            Name { text: qsTr("Rake") }
            Value {
                objectName: "rake"
                text: qsTr("%1% (cap %2)").arg(panel._number(panel.spot.rakePercent))
                    .arg(panel._number(panel.spot.rakeCap))
            }
            Name { text: qsTr("Bet sizes") }
            Value {
                objectName: "betSizes"
                text: panel._betSizes()
            }
        }
        Rectangle {
            implicitWidth: options.implicitWidth + 2 * panel.theme.spaceMd
            implicitHeight: options.implicitHeight + 2 * panel.theme.spaceMd
            radius: panel.theme.radiusSm
            color: panel.theme.surface2
            border.width: 1
            border.color: panel.theme.stroke
            Layout.fillWidth: true

            ColumnLayout {
                id: options

                readonly property var lines: panel._options()

                anchors.fill: parent
                anchors.margins: panel.theme.spaceMd
                spacing: panel.theme.spaceXs

                AppLabel {
                    theme: panel.theme
                    text: qsTr("Options enabled")
                    muted: true
                    font.pixelSize: Fallback.type.labelMd
                    font.weight: Fallback.type.weightSemibold
                    Layout.fillWidth: true
                }
                AppLabel {
                    objectName: "options"
                    theme: panel.theme
                    text: options.lines.length > 0
                        ? options.lines.map(line => "• " + line).join("\n") : qsTr("None")
                    font.pixelSize: Fallback.type.bodySm
                    lineHeight: Fallback.type.lineHeightTight
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
            }
        }
        CardHeading {
            theme: panel.theme
            title: qsTr("Controls")
            Layout.fillWidth: true
            Layout.topMargin: panel.theme.spaceXs
        }
        RowLayout {
            spacing: panel.theme.spaceSm
            Layout.fillWidth: true

            ObstacleButton {
                id: startButton

                theme: panel.theme
                buttonName: "start"
                text: panel.running ? qsTr("Solving...") : qsTr("Start Solve")
                iconText: panel.running ? "" : "▶"
                loading: panel.running
                quiet: panel.complete
                active: panel.canStart
                obstacle: panel.running ? "" : panel.obstacle
                onClicked: panel.started()
                Layout.fillWidth: true
            }
            SecondaryButton {
                id: cancelButton

                objectName: "cancel"
                theme: panel.theme
                text: qsTr("Cancel")
                iconName: "stop"
                enabled: panel.running && !panel.cancelling
                danger: enabled
                onClicked: panel.cancelled()
            }
        }
        PrimaryButton {
            id: resultsButton

            objectName: "viewResults"
            theme: panel.theme
            text: qsTr("View Results →")
            iconName: "trend-up"
            enabled: panel.complete
            onClicked: panel.resultsRequested()
            Layout.fillWidth: true
        }
    }

    component Name: AppLabel {
        theme: panel.theme
        muted: true
        font.pixelSize: Fallback.type.bodySm
        Layout.alignment: Qt.AlignTop
    }
    component Value: AppLabel {
        theme: panel.theme
        font.pixelSize: Fallback.type.bodySm
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
