import QtQuick
import QtQuick.Layouts
import Tidewell

Card {
    id: card

    property bool canImportRange: true

    signal newRequested
    signal quickRequested
    signal importRequested

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceSm

        CardHeading {
            theme: card.theme
            title: qsTr("Quick Actions")
            Layout.fillWidth: true
            Layout.bottomMargin: card.theme.spaceXs
        }
        QuickActionRow {
            theme: card.theme
            text: qsTr("New Solve")
            line: qsTr("Configure board, ranges, tree")
            iconName: "target"
            onClicked: card.newRequested()
            Layout.fillWidth: true
        }
        QuickActionRow {
            theme: card.theme
            text: qsTr("Quick Solve")
            line: qsTr("Use default settings")
            iconName: "bolt"
            onClicked: card.quickRequested()
            Layout.fillWidth: true
        }
        QuickActionRow {
            theme: card.theme
            text: qsTr("Import Range")
            line: qsTr("Load from file")
            iconName: "chart"
            visible: card.canImportRange
            onClicked: card.importRequested()
            Layout.fillWidth: true
        }
    }
}
