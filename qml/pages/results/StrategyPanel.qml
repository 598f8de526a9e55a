import QtQuick
import QtQuick.Layouts
import Tidewell

// The right panel: the head and what is played at the current node.
Card {
    id: panel

    required property NodeReader nodes
    required property TreeWalk walk
    required property StrategyData strategy
    // Of the current node, and the same with values against folding.
    required property var actions
    required property var barActions
    required property real rakePercent
    required property real rakeCap
    required property real uiScale
    required property HandList hands
    required property var buckets
    // Gives the entries of an ActionBar for a list of probabilities.
    required property var actionsFor
    required property string selectedHand
    // Hands are being played: the head alone is left.
    required property bool playMode
    required property string playBoardText
    property bool setupChanged: false

    // At the right of the node's money, and below it.
    property alias nodeButtons: view.nodeButtons
    property alias nodeTools: view.nodeTools

    signal handClicked(hand: string)
    signal bucketClicked(name: string)
    signal whyRequested(c1: string, c2: string, actionIndex: int)

    function copyMatrix(): void {
        view.copyMatrix();
    }

    // By a part of the height.
    function scrollBy(part: real): void {
        view.scrollBy(part);
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceMd

        StrategyHeader {
            theme: panel.theme
            controller: panel.nodes.controller
            boardText: panel.playMode ? panel.playBoardText : panel.walk.boardWithDeals
            player: panel.walk.selectedPlayer
            meta: panel.nodes.meta(panel.walk.currentNodeIndex)
            ending: panel.walk.ending
            setupChanged: panel.setupChanged
            Layout.fillWidth: true
        }
        StrategyView {
            id: view

            theme: panel.theme
            nodes: panel.nodes
            strategy: panel.strategy
            nodeIndex: panel.walk.currentNodeIndex
            player: panel.walk.selectedPlayer
            actions: panel.actions
            barActions: panel.barActions
            rakePercent: panel.rakePercent
            rakeCap: panel.rakeCap
            uiScale: panel.uiScale
            hands: panel.hands
            buckets: panel.buckets
            actionsFor: panel.actionsFor
            selectedHand: panel.selectedHand
            visible: !panel.playMode
            onHandClicked: hand => panel.handClicked(hand)
            onBucketClicked: name => panel.bucketClicked(name)
            onWhyRequested: (c1, c2, action) => panel.whyRequested(c1, c2, action)
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        Item {
            visible: panel.playMode
            Layout.fillHeight: true
        }
    }
}
