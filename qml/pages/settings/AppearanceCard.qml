pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

Card {
    id: card

    property bool darkMode: true

    // What a node may have to choose from.
    readonly property var _exampleTypes:
        ["fold", "check", "call", "bet 33%", "bet 75%", "bet 120%", "allin"]

    signal darkModeToggled(bool on)
    // "" for the theme's own accent.
    signal accentChosen(string accent)
    signal distinctActionsChosen(bool on)

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceLg

        CardHeading {
            theme: card.theme
            iconName: "palette"
            title: qsTr("Appearance")
            Layout.fillWidth: true
        }
        SettingRow {
            theme: card.theme
            title: qsTr("Dark Mode")
            line: qsTr("Use dark color scheme throughout the interface")
            Layout.fillWidth: true

            ToggleSwitch {
                theme: card.theme
                checked: card.darkMode
                Accessible.name: qsTr("Dark Mode")
                onToggled: card.darkModeToggled(checked)
            }
        }
        Rectangle {
            implicitHeight: 1
            color: card.theme.stroke
            Layout.fillWidth: true
        }
        SettingRow {
            theme: card.theme
            title: qsTr("Accent Color")
            line: qsTr("Customize the app highlight color (buttons, accents, clubs/check).")
            Layout.fillWidth: true

            Repeater {
                model: [
                    {name: qsTr("Green"), hex: "#3FB950"},
                    {name: qsTr("Blue"), hex: "#58A6FF"},
                    {name: qsTr("Purple"), hex: "#A371F7"},
                    {name: qsTr("Gold"), hex: "#F0B429"},
                    {name: qsTr("Orange"), hex: "#F0883E"},
                    {name: qsTr("Red"), hex: "#F85149"}
                ]

                AccentSwatch {
                    required property var modelData

                    theme: card.theme
                    text: modelData.name
                    hex: modelData.hex
                    onClicked: card.accentChosen(hex)
                }
            }
            SecondaryButton {
                theme: card.theme
                text: qsTr("Reset")
                compact: true
                enabled: card.theme.useAccentOverride
                onClicked: card.accentChosen("")
            }
        }
        Rectangle {
            implicitHeight: 1
            color: card.theme.stroke
            Layout.fillWidth: true
        }
        SettingRow {
            theme: card.theme
            title: qsTr("Action Colors")
            line: qsTr("Standard: the same color for the same size everywhere. Distinct: colors that are "
                       + "told apart with any color vision, spread over the sizes at a node.")
            Layout.fillWidth: true

            Repeater {
                model: [
                    //: How actions are coloured
                    {name: qsTr("Standard"), distinct: false},
                    //: How actions are coloured
                    {name: qsTr("Distinct"), distinct: true}
                ]

                SecondaryButton {
                    required property var modelData

                    objectName: "actionColors" + modelData.name
                    theme: card.theme
                    text: modelData.name
                    compact: true
                    checked: card.theme.distinctActions === modelData.distinct
                    Accessible.role: Accessible.RadioButton
                    onClicked: card.distinctActionsChosen(modelData.distinct)
                }
            }
        }
        Flow {
            spacing: card.theme.spaceLg
            Layout.fillWidth: true

            Repeater {
                model: card._exampleTypes

                Row {
                    id: example

                    required property string modelData

                    spacing: 6

                    ActionSwatch {
                        anchors.verticalCenter: parent.verticalCenter
                        theme: card.theme
                        actionType: example.modelData
                        actions: card._exampleTypes
                    }
                    AppLabel {
                        theme: card.theme
                        text: ActionText.label("", example.modelData)
                        font.pixelSize: Fallback.type.labelMd
                    }
                }
            }
        }
    }
}
