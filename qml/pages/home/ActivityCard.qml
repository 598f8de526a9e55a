pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

Card {
    id: card

    property alias cells: grid.cells

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceMd

        CardHeading {
            theme: card.theme
            iconName: "calendar"
            title: qsTr("Solve Activity")
            caption: qsTr("Last 6 months")
            Layout.fillWidth: true
        }
        ActivityGrid {
            id: grid

            theme: card.theme
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: card.theme.spaceXs
            Layout.alignment: Qt.AlignRight

            Text {
                text: qsTr("Solves a day:")
                textFormat: Text.PlainText
                color: card.theme.textMuted
                font.pixelSize: Fallback.type.labelSm
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Repeater {
                model: 4

                Row {
                    id: step

                    required property int index

                    spacing: 3
                    leftPadding: card.theme.spaceXs

                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 10
                        height: 10
                        radius: 3
                        color: grid.fillOf({solves: step.index})
                        border.width: 1
                        border.color: grid.borderOf({solves: step.index})
                    }
                    Text {
                        text: step.index < 3 ? step.index.toLocaleString(Qt.locale(), "f", 0)
                                             : qsTr("3+")
                        textFormat: Text.PlainText
                        color: card.theme.textMuted
                        font.pixelSize: Fallback.type.labelSm
                        Accessible.ignored: true
                    }
                }
            }
        }
        Item {
            Layout.fillHeight: true
        }
    }
}
