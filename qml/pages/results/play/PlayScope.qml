import QtQuick
import Tidewell
import "../../../logic/played_hand.mjs" as PlayedHand

// A page on which hands of the solve can be played. Trainer says what comes next, and the tree follows
// it.
NodeTools {
    id: scope

    // The program's AppController; null for none.
    property var controller: null
    // Of the solve, before any card is dealt in the tree.
    property string boardText: ""
    required property ChanceChoice choice
    property real rakePercent: 0
    // In chips, 0 for none.
    property real rakeCap: 0
    readonly property real uiScale: Math.max(0.75, Math.min(1, width / 1540))

    readonly property alias trainer: trainer

    property alias playRole: trainer.role
    property alias playSessionStarted: trainer.started
    property alias playBoardText: trainer.board
    property alias playAwaitingUserAction: trainer.awaitsUser
    property alias playNodeIndex: trainer.node
    property alias playHandComplete: trainer.complete
    property alias playStepDelayMs: trainer.stepDelayMs
    property alias playActionLine: trainer.line
    property alias oopCard1: trainer.oopCard1
    property alias oopCard2: trainer.oopCard2
    property alias ipCard1: trainer.ipCard1
    property alias ipCard2: trainer.ipCard2
    property alias playLastActionActor: trainer.lastActor
    property alias playLastActionText: trainer.lastAction
    property alias playStopOnSuboptimalAction: trainer.stopOnMistakes
    property alias playSuboptimalEpsilon: trainer.absoluteTolerance
    property alias playSuboptimalRelativeTol: trainer.relativeTolerance
    property alias playDrillMode: trainer.drilling
    property alias playDrillNodeIndex: trainer.drillNode
    property alias playDrillActor: trainer.drillActor
    readonly property bool playDrillFeedbackWrong: _isWrong(trainer.verdict)
    readonly property string playDrillFeedbackText: _feedback(trainer.verdict)
    readonly property bool playFollowLatestHandDetails: trainer.log.following
    readonly property int playSelectedLogIndex: trainer.log.selectedIndex
    readonly property var playSelectedLog: trainer.log.selected
    readonly property var playSelectedDetails:
        playSelectedLogIndex >= 0 ? _buildPlayHandDetails(playSelectedLog) : ({})

    // The roles in the order of their keys.
    readonly property var playRoles: ["OOP", "BOTH", "IP"]

    function startPlaySession(role: string): void {
        trainer.start(role);
    }

    function resetPlaySession(): void {
        trainer.reset();
    }

    function playTick(): void {
        trainer.tick();
    }

    function startDrillSpot(): void {
        trainer.startDrill();
    }

    function stopDrillSpot(): void {
        trainer.stopDrill();
    }

    function _resetToRootAndRestartHand(): void {
        trainer.nextHand();
    }

    // `ok`, and then `chosenEv`, `bestEv`, `evLoss` (chips) and `bestIndex`.
    function _suboptimalEvInfoAtNode(node: int, actor: string, action: int): var {
        return trainer.evInfo(node, actor, action);
    }

    // Of a hand of the log: `boards` and `steps` of flop, turn and river, `winner`, `won`, `rake`.
    function _buildPlayHandDetails(hand: var): var {
        const winner = PlayedHand.winnerOf(hand, (board, oop, ip) =>
            controller.showdownWinner(board, oop, ip));
        const money = PlayedHand.moneyOf(hand, winner, rakePercent, rakeCap);
        return Object.assign({boards: PlayedHand.boardByStreet(hand.board),
                              steps: PlayedHand.stepsByStreet(hand), winner: winner}, money);
    }

    // Asks for another card in place of the turn (3) or river (4) of the hand that runs.
    function redeal(slot: int): void {
        const street = slot === 4 ? "river" : "turn";
        const running = trainer.started && !trainer.complete && !trainer.drilling;
        if (!running || slot === 4 && playBoardText.length < 8) {
            return;
        }
        for (let level = 0; level < walk.levels.count; ++level) {
            const node = walk.levels.get(level).nodeIndex;
            if (nodes.meta(node).chanceDeal === street) {
                trainer.pause();
                choice.open(level, node);
                return;
            }
        }
    }

    // Whether the key was one of the table's. One that is held counts once: another decision may be on
    // by then.
    function handlePlayKey(event: var): bool {
        const number = event.key - Qt.Key_0;
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier)) {
            return false;
        }
        if (event.key === Qt.Key_Up || event.key === Qt.Key_Down) {
            trainer.log.select(playSelectedLogIndex + (event.key === Qt.Key_Up ? -1 : 1));
            return true;
        }
        if (event.isAutoRepeat) {
            return true;
        }
        if (number >= 1 && number <= 9) {
            if (trainer.started) {
                trainer.act(number - 1);
            } else {
                trainer.start(playRoles[number - 1] ?? "");
            }
            return true;
        }
        switch (event.key) {
        case Qt.Key_Space:
        case Qt.Key_Return:
        case Qt.Key_Enter:
            trainer.nextHand();
            return true;
        case Qt.Key_D:
            toggleDrill();
            return true;
        case Qt.Key_Escape:
            if (trainer.drilling) {
                trainer.stopDrill();
            } else {
                playMode = false;
            }
            return true;
        default:
            return false;
        }
    }

    function toggleDrill(): void {
        if (trainer.drilling) {
            trainer.stopDrill();
        } else {
            trainer.startDrill();
        }
    }

    function _isWrong(verdict: var): bool {
        return verdict.wrong ?? false;
    }

    function _feedback(verdict: var): string {
        if (verdict.wrong === undefined) {
            return "";
        }
        //: An action's name, and how many chips less another one is worth
        return verdict.wrong ? qsTr("Wrong — best: %1 (EV -%2)").arg(verdict.best)
                                   .arg(verdict.evLoss.toLocaleString(Qt.locale(), "f", 3))
                             : qsTr("Correct");
    }

    onPlayModeChanged: {
        trainer.reset();
        walk.reset();
    }

    Connections {
        target: scope.walk

        function onCurrentNodeIndexChanged(): void {
            trainer.walkTo(scope.walk.currentNodeIndex);
        }
    }
    Connections {
        target: scope.controller

        function onResultsChanged(): void {
            trainer.reset();
        }
    }
    Connections {
        target: scope.choice

        function onReplaced(): void {
            const walk = scope.walk;
            const images = walk.suits;
            trainer.setBoard(walk.boardWithDeals, [..."cdhs"].map(suit => images[suit]).join(""));
        }
        function onLevelIndexChanged(): void {
            if (scope.choice.levelIndex < 0 && scope.playMode) {
                scope.forceActiveFocus();  // the table's keys go on working
                trainer.resume();
            }
        }
    }

    Trainer {
        id: trainer

        source: scope.controller?.playSource ?? null
        solvedBoard: scope.boardText
        onAdvanced: (action, card) => {
            if (card !== "") {
                scope.walk.showCard(scope.walk.currentNodeIndex, card);
            }
            scope.walk.follow(action);
        }
        onRootWanted: scope.walk.reset()
        onHandLogged: (isMistake, evLoss) =>
            scope.controller.recordPlayVsSolutionHand(isMistake, evLoss)
    }
}
