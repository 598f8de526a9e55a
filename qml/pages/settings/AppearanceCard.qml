pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

Card {
    id: card

    property bool darkMode: true

    signal darkModeToggled(bool on)
    // "" for the theme's own accent.
    signal accentChosen(string accent)

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
    }
}
