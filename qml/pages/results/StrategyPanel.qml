import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/hand_summary.mjs" as HandSummary

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
    required property NodeLockState locks
    // What takes the place of the strategy then.
    default property alias playContent: playPlace.data

    property alias headerActions: header.actions
    // At the right of the node's money, and below it.
    property alias nodeButtons: view.nodeButtons
    property alias nodeTools: view.nodeTools

    signal handClicked(hand: string)
    signal bucketClicked(name: string)
    signal whyRequested(c1: string, c2: string, actionIndex: int)
    signal handDragged(hand: string)
    signal handsHereChosen(handsHere: bool)

    function copyMatrix(): void {
        view.copyMatrix();
    }

    // Puts the range of the node on the clipboard, or that of the action that was chosen in the bar or
    // that the hand ended with.
    function copyRange(): void {
        if (playMode || nodes.meta(walk.currentNodeIndex).nodeType !== "decision") {
            return;
        }
        const actions = nodes.actions(walk.currentNodeIndex);
        const ended = actions.findIndex(action => action === walk.ending);
        const chosen = view.chosenAction >= 0 ? view.chosenAction : ended;
        clipboard.put(HandRanges.written(_weights(chosen), walk.boardWithDeals));
        //: %1 is an action
        copied.show(chosen < 0 ? qsTr("The range is on the clipboard")
                               : qsTr("The range of “%1” is on the clipboard")
                                     .arg(ActionText.shown(actions[chosen])), 2500);
    }

    function _weights(action: int): var {
        if (hands.loading || hands.loaded.length === 0) {
            return HandSummary.handWeights(strategy.weights, strategy.actionProbs, action);
        }
        return HandSummary.comboWeights(hands.loaded, action, walk.suits);
    }

    // By a part of the height.
    function scrollBy(part: real): void {
        view.scrollBy(part);
    }

    Clipboard {
        id: clipboard
    }
    AppToolTip {
        id: copied

        theme: panel.theme
        delay: 0
        y: panel.height - implicitHeight - panel.theme.spaceLg
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceMd

        StrategyHeader {
            id: header

            theme: panel.theme
            controller: panel.nodes.controller
            boardText: panel.playMode && panel.playBoardText || panel.walk.boardWithDeals
            player: panel.walk.selectedPlayer
            meta: panel.nodes.meta(panel.walk.currentNodeIndex)
            ending: panel.walk.ending
            setupChanged: panel.setupChanged
            before: panel.locks.before
            unreached: !panel.playMode && !panel.nodes.opponentComes(panel.walk.currentNodeIndex)
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
            painting: panel.locks.mode
            onHandClicked: hand => panel.handClicked(hand)
            onBucketClicked: name => panel.bucketClicked(name)
            onWhyRequested: (c1, c2, action) => panel.whyRequested(c1, c2, action)
            onHandDragged: hand => panel.handDragged(hand)
            onHandsHereChosen: handsHere => panel.handsHereChosen(handsHere)
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        Item {
            id: playPlace

            visible: panel.playMode
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
