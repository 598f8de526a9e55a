import QtQuick
import QtQuick.Layouts
import Tidewell

import "../../logic/home_statistics.mjs" as HomeStatistics

// What has been solved, and what there is to solve with.
Card {
    id: card

    property var controller: null
    // As AppController.solveActivityGridLastSixMonths() gives it.
    property var activityGrid: []
    property int solvesToday: 0

    readonly property var _summary: HomeStatistics.calendarSummary(activityGrid)

    function durationText(seconds: real): string {
        const parts = HomeStatistics.durationParts(seconds);
        if (!parts) {
            return "—";
        }
        if (parts.minutes === 0) {
            //: A duration in seconds: "4.2s"
            return qsTr("%1s").arg(parts.seconds.toLocaleString(Qt.locale(), "f", 1));
        }
        const minutes = parts.minutes.toLocaleString(Qt.locale(), "f", 0);
        //: A duration in minutes: "3m"
        return parts.seconds === 0 ? qsTr("%1m").arg(minutes)
                                   //: A duration in minutes and seconds: "3m 20s"
                                   : qsTr("%1m %2s").arg(minutes).arg(parts.seconds);
    }

    function _count(number: real): string {
        return number.toLocaleString(Qt.locale(), "f", 0);
    }

    RowLayout {
        anchors.fill: parent
        spacing: card.theme.spaceXl

        FactList {
            theme: card.theme
            iconName: "clock"
            title: qsTr("Solve history")
            caption: qsTr("%1 today").arg(card._count(card.solvesToday))
            facts: [
                {label: qsTr("Total solves"), value: card._count(card._summary.totalSolves)},
                {
                    label: qsTr("Solves this week"),
                    value: card._count(card._summary.solvesThisWeek)
                },
                {
                    label: qsTr("Average run time"),
                    value: card.durationText(card._summary.averageSeconds)
                }
            ]
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
        }
        Rectangle {
            implicitWidth: 1
            color: card.theme.stroke
            Layout.fillHeight: true
        }
        FactList {
            theme: card.theme
            iconName: "monitor"
            title: qsTr("System")
            facts: [
                {label: qsTr("Engine"), value: qsTr("Tidewell Core")},
                {
                    label: qsTr("Threads"),
                    value: card.controller?.systemThreadCount > 0
                        ? qsTr("%1 available").arg(card._count(card.controller.systemThreadCount))
                        : "—"
                },
                {
                    label: qsTr("Memory"),
                    //: How much the machine has, and how much of it nobody uses
                    value: qsTr("%1 (%2 free)").arg(card.controller?.systemMemoryText ?? "—")
                        .arg(card.controller?.systemAvailableMemoryText ?? "—")
                }
            ]
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
        }
    }
}
