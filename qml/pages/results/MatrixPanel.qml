pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The strategy hand by hand, with its legend. As wide as it is told, and as high as that makes it.
ColumnLayout {
    id: panel

    required property Theme theme
    required property NodeReader nodes
    required property StrategyData strategy
    required property int nodeIndex
    // Of the node, for the legend.
    required property var actions
    required property HandList hands
    // Of the node, as the controller tells them.
    required property var buckets
    property string selectedHand: ""
    // Marked as what is looked at elsewhere, empty for none.
    property string litHand: ""
    // Why the values of hands are not known; empty where they are.
    property string unknownEv: ""
    // A click or a drag over the matrix locks hands.
    property bool painting: false

    readonly property alias matrix: matrix
    readonly property alias legend: legend
    readonly property real titleHeight: title.Layout.preferredHeight
    readonly property var _meta: nodes.meta(nodeIndex)
    readonly property bool _empty: Object.keys(strategy.weights).length === 0

    signal handClicked(hand: string)
    signal handDragged(hand: string)

    function _hint(): string {
        if (_meta.nodeType === "chance") {
            return _meta.chanceDeal === "river"
                ? qsTr("Click “Deal River” in the game tree to choose the card.")
                : qsTr("Click “Deal Turn” in the game tree to choose the card.");
        }
        return nodes.nodeCount() > 0 ? qsTr("Nothing is known of the hands at this node.")
                                     : qsTr("There are no results yet.");
    }

    spacing: theme.spaceSm

    RowLayout {
        id: title

        spacing: panel.theme.spaceSm
        Layout.preferredHeight: 24

        PanelTitle {
            theme: panel.theme
            text: qsTr("Strategy by Hand")
            Layout.fillWidth: true
            Layout.minimumWidth: 0
        }
        FilterChips {
            theme: panel.theme
            hands: panel.hands
            buckets: panel.buckets
            Layout.maximumWidth: 0.75 * panel.width
        }
    }
    HandMatrix {
        id: matrix

        theme: panel.theme
        weights: panel.strategy.weights
        colors: panel.strategy.colors
        actionTypes: panel.strategy.actionTypes
        actionProbs: panel.strategy.actionProbs
        weightDisplayMode: "verticalFill"
        cellSize: 34
        autoFitToWidth: true
        minCellSize: 20
        showLabels: true
        selectable: true
        dragSelectable: panel.painting
        selectedHand: panel.selectedHand
        litHand: panel.litHand
        copiesItself: false
        lockedHands: panel.strategy.lockedHands
        onHandClicked: hand => panel.handClicked(hand)
        onHandDragged: hand => panel.handDragged(hand)
        Layout.fillWidth: true

        OnDemand {
            id: tipPlace

            // The hand under the pointer, or else the one that the keyboard is on; empty for none.
            readonly property string hand: {
                if (!panel.visible || panel._empty) {
                    return "";
                }
                return matrix.hoveredHand || (matrix.markedCell.height > 0 ? matrix.currentHand : "");
            }

            wanted: rested.ready && hand !== ""
            onHandChanged: rested.heed()

            HandTip {
                parent: matrix
                theme: panel.theme
                strategy: panel.strategy
                hands: panel.hands
                actions: panel.actions
                unknownEv: panel.unknownEv
                hand: tipPlace.hand
                visible: tipPlace.wanted
                x: matrix.effectiveMatrixSize + panel.theme.spaceSm
                y: matrix.cellOf(hand).y
            }
        }
        // A pointer on its way across the matrix asks for nothing.
        Timer {
            id: rested

            property bool ready: false

            function heed(): void {
                if (tipPlace.hand === "") {
                    stop();
                    ready = false;
                } else if (!ready) {
                    start();
                }
            }

            interval: 250
            onTriggered: ready = true
        }
        // Over the grid, which keeps its size whatever there is to say.
        Rectangle {
            anchors.centerIn: parent
            width: Math.min(Math.ceil(hint.implicitWidth), parent.width)
            height: Math.ceil(hint.implicitHeight)
            radius: panel.theme.radiusSm
            color: panel.theme.surface2
            border.width: 1
            border.color: panel.theme.stroke
            visible: panel._empty

            AppLabel {
                id: hint

                width: parent.width
                theme: panel.theme
                text: panel._hint()
                font.pixelSize: Fallback.type.bodySm
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                padding: panel.theme.spaceMd
            }
        }
    }
    StrategyLegend {
        id: legend

        theme: panel.theme
        actions: panel.actions
        Layout.fillWidth: true
    }
}
