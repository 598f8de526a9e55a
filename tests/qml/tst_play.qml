import QtQuick
import Tidewell

import "result_spots.mjs" as Spots
import "../../qml/logic/played_hand.mjs" as PlayedHand

// Hands of small spots, played on the page by keys as a person would.
DocumentCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
        page.playMode = false;
        page.playStepDelayMs = 1;
        page.playStopOnSuboptimalAction = true;
        page.trainer.seed(1);
        keyboard();
    }

    function keyboard(): void {
        every(GameTreePanel)[0].forceActiveFocus();
    }

    function solve(spot: var): void {
        page.boardText = spot.board;
        controller.startSolveWithConfig(spot);
        tryVerify(() => !controller.running && controller.resultIterations > 0, 60000);
    }

    function every(type: var): var {
        return all(page, item => item instanceof type);
    }

    function begin(role: string): void {
        mouseClick(findChild(page, "play"));
        keyClick(Qt.Key_1 + page.playRoles.indexOf(role));
        compare(page.playRole, role);
        awaitTurn();
    }

    function awaitTurn(): void {
        tryVerify(() => page.playAwaitingUserAction || page.playHandComplete);
    }

    function player(): string {
        return controller.nodeMeta(page.playNodeIndex).player;
    }

    // The action that loses least, or most, as Hand Details tells it.
    function choice(best: bool): int {
        const hand = player() === "IP" ? [page.ipCard1, page.ipCard2] : [page.oopCard1, page.oopCard2];
        const combo = Array.from(controller.nodeHandCombos(page.playNodeIndex))
            .find(entry => hand.includes(entry.c1) && hand.includes(entry.c2));
        const evs = Array.from(combo.actionEvs);
        return evs.indexOf(best ? Math.max(...evs) : Math.min(...evs));
    }

    function press(best: bool): void {
        keyClick(Qt.Key_1 + choice(best));
    }

    function playOn(): void {
        while (!page.playHandComplete) {
            press(true);
            awaitTurn();
        }
    }

    function test_byKeysAlone(): void {
        solve(Spots.turn);
        const before = controller.playVsSolutionStats();
        begin("BOTH");
        verify(every(KeyButton).some(button => button.keyText === "1" && button.text === "Check"));
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_9);
        verify(page.playAwaitingUserAction, "there is no such action, and the hand is not over");
        playOn();
        const hand = page.playSelectedLog;
        compare([hand.endedReason, hand.isMistake, page.playSelectedLogIndex], ["terminal", false, 0]);
        compare([page.treeBoardText, page.treeLevels.get(page.treeLevels.count - 1).nodeIndex],
                [hand.board, page.playNodeIndex], "the tree has followed to the end");
        verify(texts(every(HandLogPanel)[0]).includes("Perfect"));
        keyClick(Qt.Key_Return);
        awaitTurn();
        compare([page.playActionLine, page.treeLevels.count, page.playHandComplete], ["", 1, false]);
        page.playSuboptimalRelativeTol = -1;
        page.playSuboptimalEpsilon = -1;  // whatever is done is wrong
        press(false);
        tryVerify(() => page.playHandComplete);
        compare([page.playSelectedLog.endedReason, page.treeLevels.count], ["suboptimal", 1]);
        page.playSuboptimalRelativeTol = 0.01;
        page.playSuboptimalEpsilon = 1e-6;
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Space);
        awaitTurn();
        playOn();
        compare([page.playSelectedLogIndex, page.playSelectedLog.line], [2, hand.line], "pinned");
        compare(controller.playVsSolutionStats().totalHands, before.totalHands + 3);
        keyClick(Qt.Key_Escape);
        compare([page.playMode, page.playRole, page.trainer.log.count], [false, "", 3]);
        verify(page.currentActions.length > 0, "the range is seen again");
    }

    // The tree keeps the clubs for spades: what is shown are the spades that were chosen, and the hand
    // is judged by the clubs.
    function test_anotherCard(): void {
        solve(Spots.turn);
        page.trainer.seed(2);
        page.playStopOnSuboptimalAction = false;
        begin("BOTH");
        page.redeal(4);
        compare(page.chancePickerLevelIndex, -1, "no river yet");
        while (page.playBoardText.length < 10) {
            keyClick(Qt.Key_1);
            awaitTurn();
        }
        for (const [card, kept] of [["Ks", "Kc"], ["9d", "9c"]]) {
            page.redeal(4);
            tryVerify(() => !page.activeFocus);  // the picker has the keyboard
            keys([...card.toLowerCase()]);
            tryVerify(() => page.activeFocus);
            awaitTurn();
            compare([page.playBoardText, page.treeBoardText], ["AhQh7h2h" + card, "AhQh7h2h" + card]);
            const deal = page.treeLevels.get(page.treeLevels.count - 2);
            compare(controller.nodeActions(deal.nodeIndex)[deal.selectedActionIndex].name, kept);
        }
        const suits = {s: "s", h: "h", d: "c", c: "d"};
        const shown = [page.oopCard1, page.oopCard2];
        const kept = shown.map(text => text[0] + suits[text[1]]);
        verify(shown.join() !== kept.join());
        const info = page._suboptimalEvInfoAtNode(page.playNodeIndex, "OOP", 0);
        const evs = controller.nodePocketActionEvs(page.playNodeIndex, "OOP", kept[0], kept[1]);
        verify(info.ok && Math.abs(info.chosenEv - evs[0]) < 1e-9);

        // A choice that is given up lets the hand go on.
        page.playStepDelayMs = 100000;
        keyClick(Qt.Key_1 + info.bestIndex);
        tryVerify(() => !page.playAwaitingUserAction);
        page.redeal(4);
        tryVerify(() => !page.activeFocus);
        keyClick(Qt.Key_Escape);
        awaitTurn();
    }

    function test_drill(): void {
        solve(Spots.river);
        const before = controller.playVsSolutionStats().totalHands;
        begin("IP");
        const [node, levels] = [page.playNodeIndex, page.treeLevels.count];
        keyClick(Qt.Key_D);
        compare([page.playDrillMode, page.playDrillNodeIndex, page.playDrillActor], [true, node, "IP"]);
        verify(texts(page).some(text => text.startsWith("OOP action: ")));
        for (const best of [true, false, true]) {
            tryVerify(() => page.playAwaitingUserAction);
            press(best);
            tryVerify(() => page.playDrillFeedbackText !== "");
            verify(page.playDrillFeedbackWrong === page.playDrillFeedbackText.startsWith("Wrong — best: "));
            verify(!best || page.playDrillFeedbackText === "Correct");
        }
        keyClick(Qt.Key_Escape);
        compare([page.playMode, page.playDrillMode, page.playNodeIndex, page.treeLevels.count],
                [true, false, node, levels]);
        awaitTurn();
        compare(controller.playVsSolutionStats().totalHands, before);
    }

    function test_leavingWhileSomethingIsDue(): void {
        solve(Spots.turn);
        begin("OOP");
        keyClick(Qt.Key_1);
        page.playMode = false;
        wait(50);
        compare([page.playSessionStarted, page.treeLevels.count, page.playBoardText], [false, 1, ""]);
        begin("BOTH");
        controller.clearResults();
        compare(page.playSessionStarted, false, "nothing is left to play");
    }

    function test_playedHand_data(): var {
        const line = "OOP: Check → IP: Bet 50% → OOP: Call → Chance: Kh → OOP: Bet 50% → IP: Fold";
        return [
            {tag: "turn", hand: {board: "AhQh7h2hKh", line: line}, winner: "OOP",
             steps: [[], ["OOP: Check", "IP: Bet 50%", "OOP: Call"], ["OOP: Bet 50%", "IP: Fold"]]},
            {tag: "flop", hand: {board: "AhQh7h", line: "OOP: Bet 50%", oop: "KsKd", ip: "9c9d"},
             winner: "", steps: [["OOP: Bet 50%"], [], []]},
            {tag: "shown", hand: {board: "AhQh7h2h2c", line: "", oop: "KsKd", ip: "9c9d"},
             winner: "OOP", steps: [[], [], []]}];
    }

    function test_playedHand(row): void {
        compare(PlayedHand.stepsByStreet(row.hand), row.steps);
        const hand = Object.assign({pot: 30, investedOop: 5, investedIp: 15}, row.hand);
        const winner = PlayedHand.winnerOf(hand, controller.showdownWinner);
        const money = PlayedHand.moneyOf(hand, winner, 5, 1);
        compare([winner, money.won, money.rake], [row.winner, row.winner === "" ? NaN : 25, 1]);
    }

    name: "Play"
    width: 1280
    height: 656

    ResultsPage {
        id: page

        width: test.width
        height: test.height
        controller: test.controller
    }
}
