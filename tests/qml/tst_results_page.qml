pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

import "result_spots.mjs" as Spots

// The page on the program's own controller, used by mouse and keys.
DocumentCase {
    id: test

    readonly property Component legends: StrategyLegend {}
    readonly property Component readers: NodeReader {}

    function init(): void {
        failOnWarning(/.?/);
        page.visible = true;
        page.playMode = false;
        page.rakePercent = 0;
        page.rakeCap = 0;
        page.nodeLocksByNode = {};
        page.forceActiveFocus();
    }

    function solve(spot: var): void {
        page.boardText = spot.board;
        controller.startSolveWithConfig(spot);
        tryVerify(() => !controller.running && controller.resultIterations > 0, 60000);
    }

    function every(type: var): var {
        return all(page, item => item instanceof type);
    }

    // Boxes of the tree, from top to bottom.
    function boxes(): var {
        return every(TreeNode);
    }

    function boxTexts(): var {
        return boxes().map(box => box._displayActionLabel);
    }

    function clickBox(index: int): void {
        waitForRendering(page, 100);
        const box = boxes()[index];
        mouseClick(box, box.width / 2, box.height / 2);
    }

    // The steps of the path: node and chosen action.
    function path(): var {
        return Array.from({length: page.treeLevels.count}, (_, level) => {
            const step = page.treeLevels.get(level);
            return [step.nodeIndex, step.selectedActionIndex];
        });
    }

    // From the root on, an action at each level.
    function choose(actions: var): void {
        actions.forEach((action, level) => page.selectActionAtLevel(level, action));
    }

    function childOf(node: int, action: int): int {
        return controller.nodeActions(node)[action].childIndex;
    }

    function figure(value: real, digits: int): string {
        return value.toLocaleString(Qt.locale(), "f", digits);
    }

    // The card of the open picker.
    function pickerCard(card: string): PlayingCard {
        return all(page.Window.window.contentItem, item => item instanceof PlayingCard
            && item.interactive && item.rank + item.suit === card)[0];
    }

    function waitForPicker(): void {
        tryVerify(() => pickerCard("As") && pickerCard("As").Window.activeFocusItem
                        instanceof PlayingCard);
    }

    function test_walkByMouse(): void {
        solve(Spots.river);
        compare([boxTexts(), path(), page.selectedPlayer],
                [["Check", "Bet 50%"], [[0, -1]], "OOP"]);
        const facing = childOf(0, 1);
        clickBox(1);
        compare(path(), [[0, 1], [facing, -1]]);
        compare(boxTexts().slice(0, 3), ["Bet 50%", "Fold", "Call"]);
        compare([page.currentNodeIndex, page.selectedPlayer], [facing, "IP"]);

        // A hand that ends adds no level, and the page stays on its last decision.
        const weights = page.handWeights;
        clickBox(1);
        compare([path(), boxTexts()], [[[0, 1], [facing, 0]], ["Bet 50%", "Fold"]]);
        compare([page.currentNodeIndex, page.handWeights], [facing, weights]);
        clickBox(1);
        compare(path(), [[0, 1], [facing, -1]]);

        for (const [level, action] of [[0, 0], [1, -1], [1, 99], [2, 0], [-1, 0]]) {
            page.selectActionAtLevel(level, action);
            compare(path(), [[0, 1], [facing, -1]], "no choice that can be made");
        }
        for (const level of [-1, 2]) {
            page.navigateToBreadcrumb(level);
            compare(path(), [[0, 1], [facing, -1]]);
        }
        clickBox(0);
        compare([path(), boxTexts()], [[[0, -1]], ["Check", "Bet 50%"]]);
    }

    function test_walkByKeys(): void {
        solve(Spots.river);
        const start = [[0, -1]];
        const checked = [[0, 0], [childOf(0, 0), -1]];
        const facing = [[0, 1], [childOf(0, 1), -1]];
        const folded = [[0, 1], [childOf(0, 1), 0]];
        for (const [key, expected] of [
            [Qt.Key_Left, start], [Qt.Key_Up, start], [Qt.Key_Right, checked], [Qt.Key_Left, start],
            [Qt.Key_Down, start], [Qt.Key_Down, start], [Qt.Key_Return, facing],
            [Qt.Key_Right, folded], [Qt.Key_Right, folded], [Qt.Key_Left, facing],
            [Qt.Key_Left, start],
            // The keyboard is back on what was chosen there.
            [Qt.Key_Right, facing], [Qt.Key_Home, start]]) {
            keyClick(key);
            compare(path(), expected);
        }
        verify(boxes().some(box => box.current), "one box shows the keyboard");
    }

    function test_figures(): void {
        solve(Spots.river);
        compare(every(StatCard).map(card => card.value), [
            figure(controller.resultEvOop + 5, 3), figure(controller.resultEvIp + 5, 3),
            figure(10 * controller.resultExploitability, 3) + "%"]);
        compare(every(StatCard)[2].unit, figure(controller.resultExploitability, 4) + " chips");
        page.rakePercent = 5;
        page.rakeCap = 0.6;
        for (const [seat, pot, toCall, rake, spr, odds] of [
            ["OOP", 10, 0, 0.5, 4, "—"], ["IP", 15, 5, 0.6, 40 / 15, figure(25, 1) + "%"]]) {
            compare(texts(every(NodeInfoBox)[0]), [
                "Pot", figure(pot, 2), `Stack (${seat})`, figure(40, 2), "To call",
                figure(toCall, 2), "Rake taken", figure(rake, 2), "SPR", figure(spr, 2),
                "Pot odds", odds]);
            page.selectActionAtLevel(0, 1);
        }
    }

    // Bar, matrix and legend show the current node, its own actions and its own player's hands.
    function test_strategy(): void {
        solve(Spots.river);
        for (const action of [-1, 0, 1]) {
            page.navigateToBreadcrumb(0);
            page.selectActionAtLevel(0, action);
            const node = page.currentNodeIndex;
            const stats = controller.nodeActionStats(node);
            const strategy = controller.nodeHandStrategyReach169(node, "");
            compare(page.currentActions.map(entry => entry.ev),
                    Array.from(stats, entry => entry.ev));
            compare([page.handWeights, page.handActionProbs],
                    [strategy.weights, strategy.actionProbs]);
            compare(page.handActionTypeList, Array.from(stats, entry => entry.actionType));
            const fold = page.currentActions.find(entry => entry.actionType === "fold");
            compare(every(ActionBar)[0].actions.map(entry => entry.ev),
                    page.currentActions.map(entry => entry.ev - (fold ? fold.ev : 0)));
        }
    }

    function test_bucketAndLocks(): void {
        solve(Spots.river);
        page.selectedBucket = "full house";
        compare(Object.keys(page.handWeights), ["TT"]);
        const stored = page.handActionProbs.TT;
        page.nodeLocksByNode = {0: {TT: {actionProbs: [0, 4]}, "87s": {actionProbs: [1, 0, 0]}}};
        page.refreshHandMatrix();
        compare(page.handActionProbs.TT, [0, 1]);
        compare(page.handActionProbs["87s"], undefined, "a list of another length counts nothing");
        verify(Qt.colorEqual(page.handColors.TT, page.theme.actionColor("bet 50%")));
        verify(boxes()[0].locked);
        page.nodeLocksByNode = {};
        page.refreshHandMatrix();
        compare([page.handActionProbs.TT, boxes()[0].locked], [stored, false]);
        page.selectActionAtLevel(0, 0);
        compare(page.selectedBucket, "", "another node, another filter");
    }

    function test_legend(): void {
        const legend = make(legends, {theme: page.theme, actions: [
            {name: "Check", frequency: 0.91}, {name: "Bet 33%", frequency: 0.04},
            {name: "All-In", frequency: 0.051}]});
        compare(texts(legend), ["Check", "All-In"]);
    }

    function test_matrixClick(): void {
        solve(Spots.river);
        for (const chosen of ["AA", "", "AA"]) {
            mouseClick(every(HandMatrix)[0], 5, 5);
            compare(page.selectedHandClass, chosen);
        }
        page.selectActionAtLevel(0, 0);
        compare(page.selectedHandClass, "");
    }

    // Suits that the tree does not keep can be chosen, and are shown as chosen.
    function test_deal(): void {
        solve(Spots.turn);
        choose([0, 0]);
        const deal = page.currentNodeIndex;
        compare(page.currentActions.map(entry => [entry.name, entry.frequency]),
                [["Random river card", 1]]);
        compare([page.handWeights, page.selectedPlayer], [{}, "IP"], "nobody acts here");

        keyClick(Qt.Key_Return);
        waitForPicker();
        compare([page.chancePickerTitle, page.chancePickerBoardText],
                ["Choose River Card", "AhQh7h2h"]);
        for (const card of ["Ah", "Qh", "7h", "2h"]) {
            verify(pickerCard(card).disabled, card);
        }
        keys(["k", "s"]);
        tryVerify(() => !pickerCard("As"));
        compare([page.treeBoardText, page._boardFromTreeSelectionsUpTo(2)],
                ["AhQh7h2hKs", "AhQh7h2h"]);
        compare([controller.nodeActions(deal)[path()[2][1]].name,
                 page.chanceCardDisplayOverrideByNode[deal]], ["Kc", "Ks"]);
        verify(boxTexts().includes("Ks"));
        compare(page.selectedPlayer, "OOP");

        // Back to the deal, and another card by mouse.
        clickBox(2);
        compare([page.currentNodeIndex, page.treeBoardText], [deal, "AhQh7h2h"]);
        clickBox(2);
        tryVerify(() => page.chancePickerLevelIndex === 2 && pickerCard("9d").visible);
        tryCompare(pickerCard("9d").Window.window, "activeFocusItem", pickerCard("As"));
        mouseClick(pickerCard("Ah"));
        compare(page.chancePickerLevelIndex, 2, "a card of the board is not dealt");
        mouseClick(pickerCard("9d"));
        compare([page.treeBoardText, page.chancePickerLevelIndex, page.chancePickerActions.length],
                ["AhQh7h2h9d", -1, 0]);
    }

    function test_pickerByKeysAndAtRandom(): void {
        solve(Spots.turn);
        choose([0, 0]);
        keyClick(Qt.Key_Return);
        waitForPicker();
        keyClick(Qt.Key_Escape);
        tryVerify(() => !pickerCard("As"));
        compare([page.chancePickerLevelIndex, path().length], [-1, 3]);
        page.forceActiveFocus();
        keyClick(Qt.Key_Return);
        waitForPicker();
        // From the ace of spades past that of hearts, which lies on the board.
        keys([Qt.Key_Down, Qt.Key_Right, Qt.Key_Return]);
        compare(page.treeBoardText, "AhQh7h2hKd");
        tryVerify(() => !pickerCard("As"));

        page.navigateToBreadcrumb(2);
        page.openChancePicker(2, page.currentNodeIndex);
        const available = Object.keys(page.chancePickerIndexByCard);
        compare(available.length, page.chancePickerAvailableCardIndices.length);
        waitForPicker();
        mouseClick(all(page.Window.window.contentItem, item => item instanceof SecondaryButton
                                                               && item.text === "Random")[0]);
        compare(path().length, 4);
        verify(available.includes(page.treeBoardText.slice(8)));
    }

    // A turn shown as 2s is kept as 2c: what the tree calls clubs are spades from then on.
    function test_twoDeals(): void {
        solve(Spots.flop);
        choose([0, 0]);
        page.openChancePicker(2, page.currentNodeIndex);
        compare(page.chancePickerTitle, "Choose Turn Card");
        page.chooseChanceCard(page._chanceCardIndexForSelection("2s"), "2s");
        page.selectActionAtLevel(3, 0);
        page.selectActionAtLevel(4, 0);
        const deal = page.currentNodeIndex;
        page.openChancePicker(5, deal);
        compare(page.chancePickerBoardText, "AhQh7h2s");
        const indexOf = name => Array.from(controller.nodeActions(deal), entry => entry.name)
            .indexOf(name);
        for (const [card, kept] of [["Ks", "Kc"], ["Kc", "Kd"], ["2s", undefined]]) {
            compare(page._chanceCardIndexForSelection(card), indexOf(kept), card);
        }
        page.chooseChanceCard(indexOf("Kc"), "");
        compare(page.treeBoardText, "AhQh7h2sKs");
        compare(boxTexts().filter(text => text.length === 2), ["2s", "Ks"]);
    }

    function test_loadedProject(): void {
        solve(Spots.river);
        page.selectActionAtLevel(0, 1);
        const weights = page.handWeights;
        const file = "file://" + controller.appDir + "/results_page_test.tidewellproj";
        verify(controller.saveProject(file, {}));
        controller.clearResults();
        compare([page.handWeights, boxes().length], [{}, 0]);

        verify(controller.loadProject(file).ok);
        compare(path(), [[0, -1]]);
        verify(Object.keys(page.handWeights).length > 0);
        page.selectActionAtLevel(0, 1);
        compare(page.handWeights, weights);
        // A node that nobody looked at before the project was saved.
        page.navigateToBreadcrumb(0);
        page.selectActionAtLevel(0, 0);
        compare(page.handWeights, {});
        verify(page.currentActions.length > 0, "the actions are known");
        verify(texts(page).includes("Nothing is known of the hands at this node."));
    }

    // A hidden page does not hold up the end of a solve.
    function test_hiddenPage(): void {
        page.visible = false;
        solve(Spots.river);
        compare(page.currentActions, []);
        page.visible = true;
        compare(page.currentActions.length, 2);
        compare(page.handWeights, controller.nodeHandStrategyReach169(0, "").weights);
        verify(texts(boxes()[0]).includes("Pot: 10"), "boxes that were made unseen are whole");
    }

    function test_keysOfTheRightPanel(): void {
        solve(Spots.river);
        const grip = every(SplitGrip)[0];
        const tree = every(GameTreePanel)[0];
        const width = tree.width;
        grip.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        tryVerify(() => tree.width > width);
        keyClick(Qt.Key_Left);
        tryCompare(tree, "width", width);

        // In a low window the view follows the keyboard down the matrix.
        page.height = 400;
        waitForRendering(page);
        const matrix = every(HandMatrix)[0];
        const bottom = () => matrix.mapToItem(page, 0, matrix.markedCell.y).y
            + matrix.markedCell.height;
        matrix.forceActiveFocus(Qt.TabFocusReason);
        keys(Array(12).fill(Qt.Key_Down));
        compare(matrix.currentHand, "A2o");
        tryVerify(() => bottom() < page.height);
        page.height = Qt.binding(() => test.height);
    }

    function test_newSolve(): void {
        solve(Spots.river);
        page.selectActionAtLevel(0, 1);
        page.playMode = true;
        clickBox(0);
        keyClick(Qt.Key_Left);
        compare(path().length, 2, "the tree is frozen while hands are played");
        page.nodeLocksByNode = {0: {TT: {actionProbs: [1, 0]}}};
        solve(Spots.turn);
        compare([path(), page.playMode, page.nodeLocksByNode, page.treeBoardText],
                [[[0, -1]], false, {}, "AhQh7h2h"]);
    }

    // Each question once, however many ask it, until the result is another one.
    function test_reader(): void {
        const asked = [];
        const answer = (question, value) => (...args) => {
            asked.push([question].concat(args).join(" "));
            return value;
        };
        const reader = make(readers, {controller: {
            treeNodeCount: answer("count", 5),
            nodeMeta: answer("meta", {player: "OOP"}),
            nodeActions: answer("actions", [{name: "Check"}]),
            nodeActionStats: answer("stats", []),
            nodeHandStrategyReach169: answer("strategy", {})
        }});
        for (let i = 0; i < 2; ++i) {
            compare(reader.meta(3).player, "OOP");
            compare(reader.knownActions(3)[0].name, "Check");
            reader.handStrategy(3, "");
        }
        compare(asked, ["count", "meta 3", "stats 3", "actions 3", "strategy 3 "]);
        reader.forget();
        reader.meta(3);
        compare(asked.slice(5), ["count", "meta 3"]);
        reader.controller = null;
        reader.forget();
        compare([reader.meta(3), reader.actions(3), reader.handStrategy(3, "")], [{}, [], {}]);
    }

    name: "ResultsPage"
    width: 1280
    height: 656

    ResultsPage {
        id: page

        width: test.width
        height: test.height
        controller: test.controller
    }
}
