pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// How the user fared against the solution, today and in all.
Card {
    id: card

    // As AppController.playVsSolutionStats() gives it.
    property var stats: ({})

    readonly property int _todayHands: stats.todayHands ?? 0
    readonly property int _totalHands: stats.totalHands ?? 0

    signal clearConfirmed

    // "today / total", with a dash for a side on which nothing was played.
    function _pair(today: string, total: string): string {
        //: Two figures, today's and in total: "12 / 340"
        return qsTr("%1 / %2").arg(today).arg(total);
    }

    function _figure(hands: int, value: real, decimals: int): string {
        return hands > 0 ? value.toLocaleString(Qt.locale(), "f", decimals) : "—";
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceMd

        CardHeading {
            theme: card.theme
            iconName: "gamepad"
            title: qsTr("Play vs. Solution")
            Layout.fillWidth: true

            SecondaryButton {
                theme: card.theme
                text: qsTr("Clear")
                compact: true
                danger: enabled
                enabled: card._totalHands > 0
                onClicked: (question.get() as ConfirmDialog).open()
            }
        }
        GridLayout {
            columns: width < 3 * 200 ? 1 : 3
            columnSpacing: card.theme.spaceMd
            rowSpacing: card.theme.spaceSm
            Layout.fillWidth: true

            StatCard {
                theme: card.theme
                label: qsTr("Hands (Today / Total)")
                value: card._pair(card._todayHands.toLocaleString(Qt.locale(), "f", 0),
                                  card._totalHands.toLocaleString(Qt.locale(), "f", 0))
                Layout.fillWidth: true
                Layout.preferredWidth: 1
            }
            StatCard {
                theme: card.theme
                label: qsTr("Accuracy (Today / Total)")
                value: card._pair(
                    card._figure(card._todayHands, card.stats.todayAccuracyPct ?? 0, 0),
                    card._figure(card._totalHands, card.stats.totalAccuracyPct ?? 0, 0))
                unit: qsTr("%")
                Layout.fillWidth: true
                Layout.preferredWidth: 1
            }
            StatCard {
                theme: card.theme
                label: qsTr("Avg EV Loss (Today / Total)")
                value: card._pair(
                    card._figure(card._todayHands, card.stats.todayAvgEvLoss ?? 0, 3),
                    card._figure(card._totalHands, card.stats.totalAvgEvLoss ?? 0, 3))
                //: Expected value
                unit: qsTr("EV")
                Layout.fillWidth: true
                Layout.preferredWidth: 1
            }
        }
    }

    OnDemand {
        id: question

        ConfirmDialog {
            theme: card.theme
            title: qsTr("Clear Play vs. Solution Stats")
            text: qsTr("Clear all Play vs. Solution statistics (today + total)?")
            danger: true
            onAccepted: card.clearConfirmed()
        }
    }
}
