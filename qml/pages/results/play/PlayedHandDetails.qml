pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// A hand of the log in five columns: what was done on each street, both hands, and how it ended.
AppScrollView {
    id: view

    required property Theme theme
    // As HandLog keeps it, and what PlayScope makes of it; empty for none.
    required property var hand
    required property var details

    readonly property bool _any: hand.board !== undefined && details.boards !== undefined
    readonly property var _streets: [qsTr("Flop"), qsTr("Turn"), qsTr("River")]

    function _chips(value: real, digits: int): string {
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", digits) : qsTr("—");
    }

    function _winner(): string {
        //: Both hands are as good
        return details.winner === "TIE" ? qsTr("Tie") : details.winner || qsTr("—");
    }

    // "OOP: Bet 33%" in the user's language.
    function _step(step: string): string {
        const [actor, name] = step.split(": ");
        return `${actor}: ${ActionText.label(name ?? "", "")}`;
    }

    contentWidth: Math.max(availableWidth, 5 * 170 + 4 * theme.spaceSm)
    contentHeight: availableHeight
    activeFocusOnTab: false

    RowLayout {
        width: view.contentWidth
        height: view.availableHeight
        spacing: view.theme.spaceSm

        Repeater {
            model: view._streets

            DetailColumn {
                id: street

                required property int index
                required property string modelData

                theme: view.theme
                title: modelData

                MiniHand {
                    theme: view.theme
                    cards: view._any ? view.details.boards[street.index] : ""
                    cardScale: 0.7
                    visible: cards !== ""
                }
                AppScrollView {
                    id: steps

                    theme: view.theme
                    contentWidth: availableWidth
                    activeFocusOnTab: false
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.maximumHeight: Math.min(120, lines.implicitHeight)

                    Column {
                        id: lines

                        width: steps.availableWidth

                        Repeater {
                            model: view._any ? view.details.steps[street.index] : []

                            DetailText {
                                required property string modelData

                                width: steps.availableWidth
                                text: view._step(modelData)
                            }
                        }
                    }
                }
                Item {
                    Layout.fillHeight: true
                }
            }
        }
        DetailColumn {
            theme: view.theme
            title: qsTr("Hands")

            Repeater {
                model: view._any ? [["IP", view.hand.ip], ["OOP", view.hand.oop]] : []

                RowLayout {
                    required property var modelData

                    spacing: view.theme.spaceSm

                    DetailText {
                        text: parent.modelData[0]
                        muted: true
                        Layout.fillWidth: false
                        Layout.preferredWidth: 32
                    }
                    MiniHand {
                        theme: view.theme
                        cards: parent.modelData[1]
                        cardScale: 0.7
                    }
                    DetailText {
                        text: qsTr("—")
                        visible: parent.modelData[1] === ""
                    }
                }
            }
            Item {
                Layout.fillHeight: true
            }
        }
        DetailColumn {
            theme: view.theme
            title: qsTr("Summary")

            DetailText {
                text: view._any ? qsTr("Winner: %1").arg(view._winner())
                                : qsTr("A hand that has ended is shown here.")
                wrapMode: Text.Wrap
            }
            DetailText {
                text: qsTr("Won: %1   Rake: %2").arg(view._chips(view.details.won ?? NaN, 0))
                    .arg(view._chips(view.details.rake ?? NaN, 0))
                visible: view._any
            }
            DetailText {
                text: qsTr("EV lost: %1").arg(view._chips(view.hand.evLoss ?? NaN, 3))
                color: theme.legible(theme.danger, theme.surface2)
                font.weight: Fallback.type.weightSemibold
                visible: view.hand.isMistake ?? false
            }
            DetailText {
                text: qsTr("Incorrect: %1").arg(ActionText.label(view.hand.mistakeAction ?? "", ""))
                visible: view.hand.isMistake ?? false
            }
            DetailText {
                text: qsTr("Correct: %1").arg(ActionText.label(view.hand.correctAction ?? "", ""))
                visible: (view.hand.correctAction ?? "") !== ""
            }
            Item {
                Layout.fillHeight: true
            }
        }
    }

    component DetailText: AppLabel {
        theme: view.theme
        font.pixelSize: Fallback.type.labelMd
        elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
        Layout.fillWidth: true
    }
}
