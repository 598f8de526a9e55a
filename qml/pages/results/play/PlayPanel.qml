import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../../logic/played_hand.mjs" as PlayedHand

// Training against the solution: the table and the hands that were played on it. The keys are those of
// PlayScope.
FocusScope {
    id: panel

    required property PlayScope page
    required property Theme theme

    readonly property Trainer trainer: page.trainer
    readonly property var _session: PlayedHand.sessionFigures(trainer.hands, trainer.mistakes,
                                                              trainer.evLost, trainer.startingPot)
    // What the table and the details share; they keep their heights whatever is played.
    readonly property real _height: height - head.height - 2 * column.spacing
    readonly property real _detailsHeight: Math.max(118, Math.min(240, 0.28 * _height))

    function _figure(value: real, digits: int): string {
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", digits) : qsTr("—");
    }

    function _sessionLine(): string {
        if (trainer.hands === 0 || !trainer.started) {
            return qsTr("Keys: 1 to 9 choose, Space deals the next hand, D drills, Escape leaves");
        }
        const hands = trainer.hands === 1 ? qsTr("1 hand") : qsTr("%1 hands").arg(trainer.hands);
        //: %1 is "12 hands", %2 a share in percent, %3 chips for each hand, %4 the same in percent of
        //: the pot
        return qsTr("%1 · without a mistake %2% · EV lost per hand %3 chips (%4% of the pot)")
            .arg(hands).arg(_figure(_session.withoutMistake, 0))
            .arg(_figure(_session.lostPerHand, 3)).arg(_figure(_session.lostOfPot, 2));
    }

    function _role(): string {
        switch (trainer.role) {
        case "":
            return qsTr("Choose a role to start");
        case "BOTH":
            return qsTr("Role: %1").arg(qsTr("both"));
        default:
            return qsTr("Role: %1").arg(trainer.role);
        }
    }

    implicitWidth: 300
    implicitHeight: 200

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: panel.theme.spaceSm

        RowLayout {
            id: head

            spacing: panel.theme.spaceMd

            ColumnLayout {
                spacing: 0
                Layout.fillWidth: true

                AppLabel {
                    theme: panel.theme
                    text: qsTr("Play vs. Solution")
                    font.pixelSize: Fallback.type.bodyLg
                    font.weight: Fallback.type.weightSemibold
                    Accessible.role: Accessible.Heading
                }
                AppLabel {
                    objectName: "sessionLine"
                    theme: panel.theme
                    text: logFile.error || panel._sessionLine()
                    muted: logFile.error === ""
                    font.pixelSize: Fallback.type.labelMd
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
            }
            AppLabel {
                theme: panel.theme
                //: Followed by a choice
                text: qsTr("Opponent plays")
                muted: true
                font.pixelSize: Fallback.type.labelMd
            }
            AppComboBox {
                theme: panel.theme
                //: How the opponent plays
                model: [qsTr("average of its range"), qsTr("its own hand")]
                font.pixelSize: Fallback.type.labelMd
                implicitHeight: 30
                focusPolicy: Qt.TabFocus
                currentIndex: panel.trainer.opponentPlaysOwnHand ? 1 : 0
                tip: qsTr("As its whole range does on average, or as the solution does with the hand that it holds")
                Accessible.name: qsTr("Opponent plays: %1").arg(displayText)
                onActivated: index => panel.trainer.opponentPlaysOwnHand = index === 1
            }
            AppLabel {
                theme: panel.theme
                text: panel._role()
                font.weight: Fallback.type.weightSemibold
                font.pixelSize: Fallback.type.bodySm
            }
        }
        RowLayout {
            spacing: panel.theme.spaceMd
            Layout.fillHeight: true

            PlayTable {
                page: panel.page
                theme: panel.theme
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            HandLogPanel {
                theme: panel.theme
                log: panel.trainer.log
                Layout.preferredWidth: Math.max(240, Math.round(340 * panel.page.uiScale))
                Layout.fillHeight: true
                onSaveRequested: logFile.choose()
            }
        }
        PlayedHandDetails {
            theme: panel.theme
            hand: panel.page.playSelectedLog
            details: panel.page.playSelectedDetails
            Layout.fillWidth: true
            Layout.preferredHeight: panel._detailsHeight
        }
    }

    LogFile {
        id: logFile

        log: panel.trainer.log
        controller: panel.page.controller
    }
}
