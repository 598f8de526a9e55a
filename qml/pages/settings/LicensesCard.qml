pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What the program is made with, and where the terms stand.
Card {
    id: card

    signal folderRequested
    signal noticesRequested

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceLg

        CardHeading {
            theme: card.theme
            iconName: "scroll"
            title: qsTr("Licenses")
            Layout.fillWidth: true
        }
        SettingRow {
            theme: card.theme
            title: qsTr("Qt Framework")
            line: qsTr("Runtime (dynamic linking)")
            Layout.fillWidth: true

            Chip {
                theme: card.theme
                text: qsTr("LGPL v3")
            }
        }
        AppLabel {
            theme: card.theme
            text: qsTr("Third-party notices and license texts are included in the 'licenses' folder next to the executable.")
            muted: true
            font.pixelSize: Fallback.type.labelMd
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: card.theme.spaceSm

            SecondaryButton {
                theme: card.theme
                text: qsTr("Open licenses folder")
                onClicked: card.folderRequested()
            }
            SecondaryButton {
                theme: card.theme
                text: qsTr("Open notices")
                onClicked: card.noticesRequested()
            }
        }
    }
}
