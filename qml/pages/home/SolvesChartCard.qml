import QtQuick
import QtQuick.Layouts
import Tidewell

Card {
    id: card

    property alias history: chart.history

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceMd

        CardHeading {
            theme: card.theme
            iconName: "trend-up"
            title: qsTr("Solves over time")
            caption: qsTr("Daily")
            Layout.fillWidth: true

            ChartLegend {
                theme: card.theme
                color: card.theme.accent
                text: qsTr("Solves")
            }
            ChartLegend {
                theme: card.theme
                color: card.theme.accentMuted
                dashed: true
                text: qsTr("Average run time")
            }
        }
        SolvesChart {
            id: chart

            theme: card.theme
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 280
        }
    }
}
