pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell
import "../../logic/hand_summary.mjs" as HandSummary

// What a hand of the matrix does: how much of it comes, how often it takes each action and what that is
// worth. It stands beside the matrix and takes no press.
T.Popup {
    id: tip

    required property Theme theme
    required property StrategyData strategy
    required property HandList hands
    // With `name`, `actionType` and `chips`, in the node's order.
    required property var actions
    // Why the values are not known; empty where they are.
    required property string unknownEv
    // Label of the hand, empty for none.
    required property string hand

    readonly property real _weight: strategy.weights[hand] ?? 0
    readonly property var _probs: strategy.actionProbs[hand] ?? []
    readonly property bool _isLoaded: !hands.loading && hands.loaded.length > 0
    readonly property var _summary: visible && _isLoaded
        ? HandSummary.summaryOf(hand, hands.loaded, hands.definitions) : null

    function _figure(value: real, digits: int): string {
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", digits) : qsTr("—");
    }

    function _ev(action: int): string {
        return _figure(_summary && unknownEv === "" ? _summary.evs[action] ?? NaN : NaN, 2);
    }

    function _share(action: int): string {
        return _weight > 0 ? qsTr("%1%").arg(_figure(100 * (_probs[action] ?? NaN), 1)) : qsTr("—");
    }

    function _combos(): string {
        if (!(_weight > 0)) {
            return qsTr("Does not come here");
        }
        const most = HandRanges.sizeOf(hand);
        return _summary
            //: How many combos of a starting hand come, of those that there are: "3.5 of 4 combos"
            ? qsTr("%1 of %2 combos").arg(ActionText.chips(_summary.combos)).arg(most)
            : qsTr("%1%").arg(_figure(100 * _weight, 1));
    }

    objectName: "handTip"
    enabled: false
    closePolicy: T.Popup.NoAutoClose
    margins: 6
    padding: theme.spaceSm
    implicitWidth: Math.ceil(implicitContentWidth) + 2 * padding
    implicitHeight: Math.ceil(implicitContentHeight) + 2 * padding

    background: Rectangle {
        radius: tip.theme.radiusSm
        color: tip.theme.surface3
        border.width: 1
        border.color: tip.theme.stroke
    }
    contentItem: ColumnLayout {
        spacing: tip.theme.spaceXs

        RowLayout {
            spacing: tip.theme.spaceMd

            AppLabel {
                theme: tip.theme
                text: tip.hand
                font.weight: Fallback.type.weightBold
            }
            AppLabel {
                theme: tip.theme
                text: tip._combos()
                font.pixelSize: Fallback.type.labelMd
                horizontalAlignment: Text.AlignRight
                Layout.fillWidth: true
            }
        }
        GridLayout {
            columns: 4
            columnSpacing: tip.theme.spaceSm
            rowSpacing: 2
            visible: tip._weight > 0

            Repeater {
                model: tip.actions

                ActionSwatch {
                    required property int index
                    required property var modelData

                    theme: tip.theme
                    actionType: modelData.actionType
                    Layout.row: index
                    Layout.column: 0
                }
            }
            Repeater {
                model: tip.actions

                Figure {
                    required property int index
                    required property var modelData

                    text: ActionText.shown(modelData)
                    Layout.row: index
                    Layout.column: 1
                    Layout.fillWidth: true
                }
            }
            Repeater {
                model: tip.actions.length

                Figure {
                    required property int index

                    text: tip._share(index)
                    horizontalAlignment: Text.AlignRight
                    Layout.row: index
                    Layout.column: 2
                    Layout.leftMargin: tip.theme.spaceSm
                    Layout.fillWidth: true
                }
            }
            Repeater {
                model: tip.actions.length

                Figure {
                    required property int index

                    //: Expected value, in chips
                    text: qsTr("%1 EV").arg(tip._ev(index))
                    horizontalAlignment: Text.AlignRight
                    Layout.row: index
                    Layout.column: 3
                    Layout.leftMargin: tip.theme.spaceSm
                    Layout.fillWidth: true
                }
            }
        }
    }

    component Figure: AppLabel {
        theme: tip.theme
        font.pixelSize: Fallback.type.labelMd
    }
}
