pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// Money, rake and how exact the solution has to be.
Card {
    id: panel

    property real inputColumnWidth: 60
    property SetupHistory history: null

    // Chips.
    property real startingPot: 0
    property real effectiveStack: 0
    property int rakeCap: 0
    // Percent.
    property real rakePercent: 0
    // Percent of the starting pot.
    property real targetExploitability: 0

    // The first that a field has refused and still shows, as in SpotCheck but for the panel.
    readonly property var refused: {
        const field = [pot, stack, rake, cap, target].find(entry => entry.error !== "");
        return field === undefined ? null
            //: A field and what is wrong with what was typed there
            : {field: field.objectName, text: qsTr("%1: %2").arg(field.Accessible.name).arg(field.error)};
    }

    padding: theme.spaceMd
    Accessible.role: Accessible.Grouping
    Accessible.name: title.title

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        CardHeading {
            id: title

            theme: panel.theme
            title: qsTr("Game Settings")
            Layout.fillWidth: true
        }
        GridLayout {
            columns: 2
            columnSpacing: panel.theme.spaceXs + 2
            rowSpacing: panel.theme.spaceSm
            Layout.fillWidth: true

            FieldLabel { text: qsTr("Starting Pot") }
            Field {
                id: pot

                objectName: "startingPot"
                placeholderText: qsTr("e.g., 100.0")
                value: panel.startingPot
                from: 0.01
                to: 100000
                Accessible.name: qsTr("Starting Pot")
                onCommitted: number => panel.startingPot = number
            }

            FieldLabel { text: qsTr("Effective Stack") }
            Field {
                id: stack

                objectName: "effectiveStack"
                placeholderText: qsTr("e.g., 100.0")
                value: panel.effectiveStack
                from: 0.01
                to: 100000
                Accessible.name: qsTr("Effective Stack")
                onCommitted: number => panel.effectiveStack = number
            }

            FieldLabel { text: qsTr("Rake (%)") }
            Field {
                id: rake

                objectName: "rakePercent"
                placeholderText: qsTr("e.g., 5.0")
                value: panel.rakePercent
                to: 100
                decimals: 3
                Accessible.name: qsTr("Rake (%)")
                onCommitted: number => panel.rakePercent = number
            }

            FieldLabel { text: qsTr("Rake Cap") }
            Field {
                id: cap

                objectName: "rakeCap"
                placeholderText: qsTr("e.g., 0")
                value: panel.rakeCap
                decimals: 0
                Accessible.name: qsTr("Rake Cap")
                onCommitted: number => panel.rakeCap = number
            }

            FieldLabel { text: qsTr("Target Exploitability (%)") }
            Field {
                id: target

                objectName: "targetExploitability"
                placeholderText: qsTr("e.g., 0.10")
                value: panel.targetExploitability
                to: 100
                decimals: 6
                Accessible.name: qsTr("Target Exploitability (%)")
                onCommitted: number => panel.targetExploitability = number
            }
        }
        RowLayout {
            spacing: panel.theme.spaceSm
            Layout.fillWidth: true

            Repeater {
                model: [1, 0.5, 0.1]

                SecondaryButton {
                    required property real modelData
                    readonly property string _percent:
                        modelData.toLocaleString(Qt.locale(), "f", -128)

                    theme: panel.theme
                    compact: true
                    horizontalPadding: panel.theme.spaceXs
                    //: On a button that sets the target of the solve
                    text: qsTr("%1%").arg(_percent)
                    tip: qsTr("Solve to %1% of the pot").arg(_percent)
                    onClicked: panel.targetExploitability = modelData
                    Layout.fillWidth: true
                }
            }
        }
        Item {
            Layout.fillHeight: true
        }
    }

    component FieldLabel: AppLabel {
        theme: panel.theme
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Accessible.ignored: true
        Layout.fillWidth: true
        Layout.preferredWidth: 105
        Layout.maximumWidth: Math.ceil(implicitWidth)
    }
    component Field: NumberField {
        theme: panel.theme
        history: panel.history
        leftPadding: 6
        rightPadding: 6
        // The head of the page says what is wrong.
        tipElsewhere: true
        Layout.preferredWidth: panel.inputColumnWidth
        // Room for "12.555".
        Layout.minimumWidth: Math.max(64, panel.inputColumnWidth)
        Layout.fillWidth: true
    }
}
