pragma ComponentBehavior: Bound

import QtQuick
import QtTest
import Tidewell
import "result_spots.mjs" as Spots

// The page on the program's own controller, used by mouse and keys.
TestCase {
    id: test

    // Set by the program that runs the tests.
    readonly property var controller: appController // qmllint disable unqualified

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

    function collect(item: Item, matches: var): var {
        let found = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            if (child.visible) {
                found = found.concat(matches(child) ? [child] : [], collect(child, matches));
            }
        }
        return found;
    }

    // Boxes of the tree, from top to bottom.
    function boxes(): var {
        return collect(page, item => item instanceof TreeNode);
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
        const rows = [];
        for (let i = 0; i < page.treeLevels.count; ++i) {
            const row = page.treeLevels.get(i);
            rows.push([row.nodeIndex, row.selectedActionIndex]);
        }
        return rows;
    }

    function childOf(node: int, action: int): int {
        return controller.nodeActions(node)[action].childIndex;
    }

    function figure(value: real, digits: int): string {
        return value.toLocaleString(Qt.locale(), "f", digits);
    }

    function shownTexts(item: Item): var {
        return collect(item, child => child instanceof Text).map(text => text.text);
    }

    function infoTexts(): var {
        return shownTexts(collect(page, item => item instanceof NodeInfoBox)[0]);
    }

    // The card of the open picker.
    function pickerCard(card: string): PlayingCard {
        const all = collect(page.Window.window.contentItem,
                            item => item instanceof PlayingCard && item.interactive
                                    && item.rank + item.suit === card);
        return all[0];
    }

    function openPicker(): void {
        keyClick(Qt.Key_Return);
        tryVerify(() => pickerCard("As") && pickerCard("As").Window.activeFocusItem
                        instanceof PlayingCard);
    }

    function test_walkByMouse(): void {
        solve(Spots.river);
        compare(boxTexts(), ["Check", "Bet 50%"]);
        compare(path(), [[0, -1]]);
        compare(page.selectedPlayer, "OOP");

        const facing = childOf(0, 1);
        clickBox(1);
        compare(path(), [[0, 1], [facing, -1]]);
        compare(boxTexts().slice(0, 3), ["Bet 50%", "Fold", "Call"]);
        compare(page.currentNodeIndex, facing);
        compare(page.selectedPlayer, "IP");

        // A hand that ends adds no level, and the page stays on its last decision.
        const weights = page.handWeights;
        clickBox(1);
        compare(path(), [[0, 1], [facing, 0]]);
        compare(boxTexts(), ["Bet 50%", "Fold"]);
        compare(page.currentNodeIndex, facing);
        compare(page.handWeights, weights);

        clickBox(1);
        compare(path(), [[0, 1], [facing, -1]]);
        clickBox(0);
        compare(path(), [[0, -1]]);
        compare(boxTexts(), ["Check", "Bet 50%"]);
    }

    function test_walkByKeys(): void {
        solve(Spots.river);
        const checked = childOf(0, 0);
        const facing = childOf(0, 1);
        for (const [key, expected] of [
            [Qt.Key_Left, [[0, -1]]],
            [Qt.Key_Up, [[0, -1]]],
            [Qt.Key_Right, [[0, 0], [checked, -1]]],
            [Qt.Key_Left, [[0, -1]]],
            [Qt.Key_Down, [[0, -1]]],
            [Qt.Key_Down, [[0, -1]]],
            [Qt.Key_Return, [[0, 1], [facing, -1]]],
            [Qt.Key_Right, [[0, 1], [facing, 0]]],
            [Qt.Key_Right, [[0, 1], [facing, 0]]],
            [Qt.Key_Left, [[0, 1], [facing, -1]]],
            [Qt.Key_Left, [[0, -1]]],
            // The keyboard is back on what was chosen there.
            [Qt.Key_Right, [[0, 1], [facing, -1]]],
            [Qt.Key_Home, [[0, -1]]]]) {
            keyClick(key);
            compare(path(), expected);
        }
        verify(boxes().some(box => box.current), "one box shows the keyboard");
    }

    function test_badChoicesChangeNothing(): void {
        solve(Spots.river);
        page.selectActionAtLevel(0, 1);
        const before = path();
        for (const [level, action] of [[0, 0], [1, -1], [1, 99], [2, 0], [-1, 0]]) {
            page.selectActionAtLevel(level, action);
            compare(path(), before);
        }
        for (const level of [-1, 2]) {
            page.navigateToBreadcrumb(level);
            compare(path(), before);
        }
    }

    function test_figures(): void {
        solve(Spots.river);
        const values = collect(page, item => item instanceof StatCard).map(card => card.value);
        compare(values, [figure(controller.resultEvOop + 5, 3), figure(controller.resultEvIp + 5, 3),
                         figure(controller.resultExploitability, 4)]);
        page.rakePercent = 5;
        page.rakeCap = 0.6;
        compare(infoTexts(), ["Pot", figure(10, 2), "Stack (OOP)", figure(40, 2), "To call",
                              figure(0, 2), "Rake taken", figure(0.5, 2), "SPR", figure(4, 2),
                              "Pot odds", "—"]);
        page.selectActionAtLevel(0, 1);
        compare(infoTexts(), ["Pot", figure(15, 2), "Stack (IP)", figure(40, 2), "To call",
                              figure(5, 2), "Rake taken", figure(0.6, 2), "SPR",
                              figure(40 / 15, 2), "Pot odds", figure(25, 1) + "%"]);
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
            compare(page.currentActions.map(entry => entry.ev), Array.from(stats, entry => entry.ev));
            compare(page.handWeights, strategy.weights);
            compare(page.handActionProbs, strategy.actionProbs);
            compare(page.handActionTypeList, Array.from(stats, entry => entry.actionType));
            for (const hand of Object.keys(strategy.weights)) {
                const probs = Array.from(strategy.actionProbs[hand]);
                const most = probs.indexOf(Math.max(...probs));
                verify(Qt.colorEqual(page.handColors[hand],
                                     page.theme.actionColor(stats[most].actionType)), hand);
            }
            const fold = page.currentActions.find(entry => entry.actionType === "fold");
            const shift = fold ? fold.ev : 0;
            compare(page.actionFrequenciesActions.map(entry => entry.ev),
                    page.currentActions.map(entry => entry.ev - shift));
            const bar = collect(page, item => item instanceof ActionBar)[0];
            compare(bar.actions, page.actionFrequenciesActions);
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
        compare(page.handActionProbs.TT, stored);
        verify(!boxes()[0].locked);
        page.selectActionAtLevel(0, 0);
        compare(page.selectedBucket, "", "another node, another filter");
    }

    function test_legend(): void {
        const legend = createTemporaryObject(legends, test, {
            actions: [{name: "Check", actionType: "check", frequency: 0.91},
                      {name: "Bet 33%", actionType: "bet 33%", frequency: 0.04},
                      {name: "All-In", actionType: "allin", frequency: 0.051}]
        });
        compare(shownTexts(legend), ["Check", "All-In"]);
    }

    function test_matrixClick(): void {
        solve(Spots.river);
        const matrix = collect(page, item => item instanceof HandMatrix)[0];
        mouseClick(matrix, 5, 5);
        compare(page.selectedHandClass, "AA");
        mouseClick(matrix, 5, 5);
        compare(page.selectedHandClass, "");
        mouseClick(matrix, 5, 5);
        page.selectActionAtLevel(0, 0);
        compare(page.selectedHandClass, "");
    }

    // Suits that the tree does not keep can be chosen, and are shown as chosen.
    function test_deal(): void {
        solve(Spots.turn);
        page.selectActionAtLevel(0, 0);
        page.selectActionAtLevel(1, 0);
        const deal = page.currentNodeIndex;
        compare(page.currentActions.map(entry => [entry.name, entry.frequency]),
                [["Random river card", 1]]);
        compare(page.handWeights, {});
        compare(page.selectedPlayer, "IP", "nobody acts here");

        openPicker();
        compare(page.chancePickerTitle, "Choose River Card");
        compare(page.chancePickerBoardText, "AhQh7h2h");
        for (const card of ["Ah", "Qh", "7h", "2h"]) {
            verify(pickerCard(card).disabled, card);
        }
        keyClick(Qt.Key_K);
        keyClick(Qt.Key_S);
        tryVerify(() => !pickerCard("As"));
        compare(page.treeBoardText, "AhQh7h2hKs");
        compare(page._boardFromTreeSelectionsUpTo(2), "AhQh7h2h");
        const chosen = path()[2];
        compare(controller.nodeActions(deal)[chosen[1]].name, "Kc");
        compare(page.chanceCardDisplayOverrideByNode[deal], "Ks");
        verify(boxTexts().includes("Ks"));
        compare(page.selectedPlayer, "OOP");

        // Back to the deal, and another card by mouse.
        clickBox(2);
        compare(page.currentNodeIndex, deal);
        compare(page.treeBoardText, "AhQh7h2h");
        clickBox(2);
        tryVerify(() => page.chancePickerLevelIndex === 2 && pickerCard("9d").visible);
        tryCompare(pickerCard("9d").Window.window, "activeFocusItem", pickerCard("As"));
        mouseClick(pickerCard("Ah"));
        compare(page.chancePickerLevelIndex, 2, "a card of the board is not dealt");
        mouseClick(pickerCard("9d"));
        compare(page.treeBoardText, "AhQh7h2h9d");
        compare(page.chancePickerLevelIndex, -1);
        compare(page.chancePickerActions.length, 0);
    }

    function test_pickerKeys(): void {
        solve(Spots.turn);
        page.selectActionAtLevel(0, 0);
        page.selectActionAtLevel(1, 0);
        openPicker();
        keyClick(Qt.Key_Escape);
        tryVerify(() => !pickerCard("As"));
        compare(page.chancePickerLevelIndex, -1);
        compare(path().length, 3);
        page.forceActiveFocus();
        openPicker();
        // From the ace of spades past that of hearts, which lies on the board.
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Return);
        compare(page.treeBoardText, "AhQh7h2hKd");
    }

    function test_randomCard(): void {
        solve(Spots.turn);
        page.selectActionAtLevel(0, 0);
        page.selectActionAtLevel(1, 0);
        page.openChancePicker(2, page.currentNodeIndex);
        const available = Object.keys(page.chancePickerIndexByCard);
        compare(available.length, page.chancePickerAvailableCardIndices.length);
        const root = page.Window.window.contentItem;
        const button = () => collect(root, item => item instanceof SecondaryButton
                                                   && item.text === "Random")[0];
        tryVerify(() => button() && button().Window.activeFocusItem instanceof PlayingCard);
        mouseClick(button());
        compare(path().length, 4);
        verify(available.includes(page.treeBoardText.slice(8)));
    }

    // A turn shown as 2s is kept as 2c: what the tree calls clubs are spades from then on.
    function test_twoDeals(): void {
        solve(Spots.flop);
        page.selectActionAtLevel(0, 0);
        page.selectActionAtLevel(1, 0);
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
        for (const [card, kept] of [["Ks", "Kc"], ["Kd", "Kd"], ["Kc", "Kd"], ["2c", "2d"],
                                    ["2s", undefined], ["Ah", undefined]]) {
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
        compare(page.handWeights, {});
        compare(boxes().length, 0);

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
        verify(shownTexts(page).includes("Nothing is known of the hands at this node."));
    }

    // A hidden page does not hold up the end of a solve.
    function test_hiddenPage(): void {
        page.visible = false;
        solve(Spots.river);
        compare(page.currentActions, []);
        page.visible = true;
        compare(page.currentActions.length, 2);
        compare(page.handWeights, controller.nodeHandStrategyReach169(0, "").weights);
        verify(shownTexts(boxes()[0]).includes("Pot: 10"), "boxes that were made unseen are whole");
    }

    function test_keysOfTheRightPanel(): void {
        solve(Spots.river);
        const grip = collect(page, item => item instanceof SplitGrip)[0];
        const tree = collect(page, item => item instanceof GameTreePanel)[0];
        const width = tree.width;
        grip.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        tryVerify(() => tree.width > width);
        keyClick(Qt.Key_Left);
        tryCompare(tree, "width", width);

        // In a low window the view follows the keyboard down the matrix.
        page.height = 400;
        waitForRendering(page);
        const matrix = collect(page, item => item instanceof HandMatrix)[0];
        const bottom = () => matrix.mapToItem(page, 0, matrix.markedCell.y).y
            + matrix.markedCell.height;
        matrix.forceActiveFocus(Qt.TabFocusReason);
        for (let i = 0; i < 12; ++i) {
            keyClick(Qt.Key_Down);
        }
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
        compare(path(), [[0, -1]]);
        compare(page.playMode, false);
        compare(page.nodeLocksByNode, {});
        compare(page.treeBoardText, "AhQh7h2h");
    }

    // Each question once, however many ask it, until the result is another one.
    function test_reader(): void {
        const asked = [];
        const answer = (question, value) => (...args) => {
            asked.push([question].concat(args).join(" "));
            return value;
        };
        const reader = createTemporaryObject(readers, test, {controller: {
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
    when: windowShown
    visible: true
    width: 1280
    height: 656

    ResultsPage {
        id: page

        width: test.width
        height: test.height
        controller: test.controller
    }
    Component {
        id: legends

        StrategyLegend {
            theme: page.theme
        }
    }
    Component {
        id: readers

        NodeReader {}
    }
}
