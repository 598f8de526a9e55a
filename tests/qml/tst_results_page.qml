pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

import "result_spots.mjs" as Spots

// The page on the program's own controller, used by mouse and keys.
DocumentCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
        page.visible = true;
        page.playMode = false;
        page.rakePercent = 0;
        page.rakeCap = 0;
        page.nodeLocksByNode = {};
        page.handsHere = true;
        tryVerify(() => !pickerCard("As"), 5000, "the picker of the last test is gone");
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

    // The boxes of the tree, from top to bottom.
    function boxes(): var {
        return every(TreeNode);
    }

    function boxTexts(): var {
        return boxes().map(box => box._displayActionLabel);
    }

    function clickBox(index: int): void {
        waitForRendering(page, 100);
        mouseClick(boxes()[index], 100, 24);
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
        page.resetTreeToRoot();
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

    function openPickerByKey(): void {
        every(GameTreePanel)[0].forceActiveFocus();
        keyClick(Qt.Key_Return);
        tryVerify(() => pickerCard("As")?.activeFocus);
    }

    function test_walkByMouse(): void {
        solve(Spots.river);
        const facing = [[0, 1], [childOf(0, 1), -1]];
        for (const [box, expectedPath, player, texts] of [
            [1, facing, "IP", ["Bet 50%", "Fold", "Call"]],
            // A hand that ends adds no level, and the page stays on its last decision; another action
            // can be taken instead.
            [1, [[0, 1], [childOf(0, 1), 0]], "IP", ["Bet 50%", "Fold", "Call"]],
            [2, [[0, 1], [childOf(0, 1), 1]], "IP", ["Bet 50%", "Fold", "Call"]],
            [1, [[0, 1], [childOf(0, 1), 0]], "IP", ["Bet 50%", "Fold", "Call"]],
            [1, facing, "IP", ["Bet 50%", "Fold", "Call"]],
            [0, [[0, -1]], "OOP", ["Check", "Bet 50%"]]]) {
            clickBox(box);
            compare([path(), page.selectedPlayer, boxTexts().slice(0, 3), page.currentNodeIndex],
                    [expectedPath, player, texts, expectedPath[expectedPath.length - 1][0]]);
        }
        choose([1]);
        for (const [level, action] of [[0, 0], [1, -1], [1, 99], [2, 0], [-1, 0]]) {
            page.selectActionAtLevel(level, action);
            page.navigateToBreadcrumb(level > 0 ? 2 : -1);
            compare(path(), facing, "no choice that can be made");
        }
    }

    function test_walkByKeys(): void {
        solve(Spots.river);
        const start = [[0, -1]];
        const checked = [[0, 0], [childOf(0, 0), -1]];
        const facing = [[0, 1], [childOf(0, 1), -1]];
        const folded = [[0, 1], [childOf(0, 1), 0]];
        for (const [pressed, expected] of [
            [[Qt.Key_Left, Qt.Key_Up], start], [[Qt.Key_Right], checked], [[Qt.Key_Left], start],
            [[Qt.Key_Down, Qt.Key_Down, Qt.Key_Return], facing],
            [[Qt.Key_Right, Qt.Key_Right], folded],
            [[Qt.Key_Down, Qt.Key_Return], [[0, 1], [childOf(0, 1), 1]]], [[Qt.Key_Left], facing],
            [[Qt.Key_Up, Qt.Key_Right], folded], [[Qt.Key_Left], facing],
            // The keyboard is back on what was chosen there.
            [[Qt.Key_Left, Qt.Key_Right], facing], [[Qt.Key_Home], start]]) {
            keys(pressed);
            compare(path(), expected);
        }
        verify(boxes().some(box => box.current), "one box shows the keyboard");
    }

    function test_figures(): void {
        solve(Spots.river);
        const [oop, ip, exploitability] = every(StatCard);
        compare([oop.value, ip.value], [figure(controller.resultEvOop + 5, 3),
                                        figure(controller.resultEvIp + 5, 3)]);
        compare([exploitability.value, exploitability.unit],
                [figure(10 * controller.resultExploitability, 3) + "%",
                 figure(controller.resultExploitability, 4) + " chips"]);
        page.rakePercent = 5;
        page.rakeCap = 0.6;
        choose([1]);
        compare(texts(every(NodeInfoBox)[0]), [
            "Pot", figure(15, 2), "Stack (IP)", figure(40, 2), "To call", figure(5, 2),
            "Rake taken", figure(0.6, 2), "SPR", figure(40 / 15, 2), "Pot odds",
            figure(25, 1) + "%"]);
        choose([]);
        compare(texts(every(NodeInfoBox)[0])[11], "—", "nothing to call");
    }

    // Bar, matrix and legend show the current node, its own actions and its own player's hands.
    function test_strategy(): void {
        solve(Spots.river);
        for (const [way, button] of [[[], "Hands here"], [[0], "Whole range"], [[1], "Whole range"],
                                     [[1], "Hands here"]]) {
            choose(way);
            mouseClick(all(page, item => item instanceof SecondaryButton && item.text === button)[0]);
            const here = button === "Hands here";
            compare([page.handsHere, all(page, item => item.objectName === "figuresCaption")[0].text],
                    [here, here ? "of the hands that come here" : "of the whole starting range"]);
            tryVerify(() => !page.currentActions[0].pending);
            const node = page.currentNodeIndex;
            const stats = Array.from(here ? controller.nodeActionStatsHere(node)
                                          : controller.nodeActionStats(node));
            const options = boxes().filter(box => box.depth === way.length);
            compare(options.map(box => box.frequency), stats.map(entry => entry.frequency));
            const strategy = controller.nodeHandStrategyReach169(page.currentNodeIndex, "");
            compare([page.handWeights, page.handActionProbs, page.handActionTypeList],
                    [strategy.weights, strategy.actionProbs, stats.map(entry => entry.actionType)]);
            const fold = stats.find(entry => entry.actionType === "fold");
            compare(every(ActionBar)[0].actions.map(entry => entry.ev),
                    stats.map(entry => entry.ev - (fold ? fold.ev : 0)));
            const shown = {"Bet 50%": "Bet 50% · 5", Call: "Call · 5", "Raise 113%": "Raise to 17"};
            compare(texts(every(StrategyLegend)[0]),
                    stats.filter(entry => entry.frequency > 0.05)
                        .map(entry => shown[entry.name] ?? entry.name));
        }
        for (const chosen of ["AA", "", "AA"]) {
            mouseClick(every(HandMatrix)[0], 5, 5);
            compare(page.selectedHandClass, chosen);
        }
        page.selectedBucket = "flush";
        choose([0]);
        compare([page.selectedHandClass, page.selectedBucket], ["", ""], "of another node");
    }

    function test_stateOfTheNode(): void {
        const state = () => findChild(page, "nodeState").text;
        solve(Spots.river);
        for (const [way, text] of [
            [[], "OOP to act"], [[1], "IP to act"], [[1, 0], "IP folds, the hand is over"],
            [[0, 0], "Showdown"]]) {
            choose(way);
            compare(state(), text);
        }
        solve(Spots.flop);
        for (const [way, text] of [
            [[0, 0], "Turn to be dealt"], [[1, 1], "All-in, the board runs out"]]) {
            choose(way);
            compare(state(), text);
        }
    }

    function pasted(): string {
        paste.clear();
        paste.paste();
        return paste.text;
    }

    // The range of the node, of an action of the bar, and of the one that ended the hand.
    function test_copying(): void {
        solve(Spots.river);
        tryVerify(() => !page._handCombosLoading);
        keyClick(Qt.Key_C, Qt.ControlModifier);
        compare(pasted(), "TT, KQo, 87s");
        const bar = every(ActionBar)[0];
        mouseClick(bar, bar.width - 2, 2);
        const combos = Array.from(controller.nodeHandCombos(0));
        for (const focus of [every(GameTreePanel)[0], every(HandMatrix)[0]]) {
            focus.forceActiveFocus();
            keyClick(Qt.Key_C, Qt.ControlModifier);
            for (const hand of ["KQo", "87s"]) {
                const bets = combos.filter(combo => page._handClassFromCards(combo.c1, combo.c2) === hand)
                    .map(combo => combo.actionProbs[1]);
                const mean = bets.reduce((sum, bet) => sum + bet, 0) / bets.length;
                fuzzyCompare(HandRanges.weightsOf(pasted())[hand] ?? 0, mean, 0.001, hand);
            }
            keyClick(Qt.Key_C, Qt.ControlModifier | Qt.ShiftModifier);
            verify(pasted().startsWith("AA\tAKs"), "the table");
        }
        choose([1, 0]);
        tryVerify(() => !page._handCombosLoading);
        keyClick(Qt.Key_C, Qt.ControlModifier);
        const folds = Array.from(controller.nodeHandCombos(page.currentNodeIndex), combo => combo.actionProbs[0]);
        compare(HandRanges.read(pasted(), page.boardText).combos > 0, folds.some(fold => fold > 0.001));
    }

    // What a hand does, by pointer and by keys.
    function test_handTip(): void {
        solve(Spots.river);
        choose([1]);
        tryVerify(() => !page._handCombosLoading);
        const matrix = every(HandMatrix)[0];
        const tip = () => findChild(page, "handTip");
        const cell = matrix.cellOf("99");
        mouseMove(matrix, cell.x + 5, cell.y + 5);
        tryVerify(() => tip()?.visible);
        const combos = Array.from(controller.nodeHandCombos(page.currentNodeIndex))
            .filter(combo => combo.c1[0] === "9" && combo.c2[0] === "9");
        const gains = combos.map(combo => combo.actionEvs[1] - combo.actionEvs[0]);
        const shown = texts(tip().contentItem);
        compare(shown.slice(0, 4), ["99", "3 of 6 combos", "Fold", "Call · 5"]);
        verify(shown.includes(figure(gains.reduce((a, b) => a + b, 0) / 3, 2) + " EV"), shown);
        mouseMove(matrix, -5, -5);
        tryVerify(() => !tip().visible);
        matrix.forceActiveFocus(Qt.TabFocusReason);
        tryVerify(() => tip().visible);
        compare(texts(tip().contentItem).slice(0, 2), ["AA", "Does not come here"]);
    }

    // Chips count from the beginning of the street.
    function test_chips(): void {
        solve(Spots.turn);
        choose([1, 1]);
        page.openChancePicker(2, page.currentNodeIndex);
        page.chooseChanceCard(page.chancePickerAvailableCardIndices[0], "");
        page.selectActionAtLevel(3, 1);
        compare(boxes().map(box => box._chipLabel).slice(3),
                ["Bet 50% · 10", "Fold", "Call · 10", "Raise to 34"]);
    }

    // What the bar tells of an action behind its name, from the figures of the terminal program.
    function toldOf(actions: var): var {
        const total = actions.reduce((sum, entry) => sum + entry.frequency, 0);
        const fold = actions.find(entry => entry.name === "Fold");
        const offset = fold && fold.ev !== null ? fold.ev : 0;
        return actions.map(entry => {
            const rounded = Math.round(entry.combos);
            const whole = Math.abs(entry.combos - rounded) < 1e-6;
            const taken = entry.combos >= 1e-6;
            const count = whole && rounded === 1 ? "1 combo"
                                                 : figure(entry.combos, whole ? 0 : 1) + " combos";
            return [Math.round(100 * entry.frequency / total) + "%", count,
                    entry.equity === null || !taken ? "—" : figure(100 * entry.equity, 1) + "% equity",
                    entry.ev === null || !taken ? "—" : figure(entry.ev - offset, 2) + " EV"];
        });
    }

    // The ways to the first decisions of the tree.
    function waysToDecisions(count: int): var {
        const ways = [];
        const open = [[0, []]];
        while (open.length > 0 && ways.length < count) {
            const [node, way] = open.shift();
            if (controller.nodeMeta(node).nodeType === "decision") {
                ways.push(way);
            }
            Array.from(controller.nodeActions(node)).forEach((action, index) => {
                open.push([action.childIndex, way.concat(index)]);
            });
        }
        return ways;
    }

    function test_figuresAreThoseOfTheTerminalProgram(): void {
        solve(Spots.turn);
        const ways = waysToDecisions(20);
        compare(ways.length, 20);
        for (const way of ways) {
            const line = way.map(action => "#" + (action + 1)).join("/");
            const result = terminal.solve(Spots.turn, line);
            choose(way);
            compare(result.node.index, page.currentNodeIndex, line);
            for (const here of [true, false]) {
                page.handsHere = here;
                tryVerify(() => !page.currentActions[0].pending);
                const shown = every(ActionBarLabel).map(label => texts(label).slice(1));
                const known = controller.nodeOpponentComes(page.currentNodeIndex);
                const told = result.node.actions.map(action => Object.assign(
                    {}, here ? action.here : action, {name: action.name}, known ? {} : {ev: null}));
                compare(shown, toldOf(told), line);
            }
            compare(every(StatCard)[0].value, figure(result.ev_oop + 5, 3));
        }
    }

    // A lock keeps the opponent away from a node; a project without the figures of its hands.
    function test_unreachedAndUnknown(): void {
        solve(Spots.river);
        Array.of("TT", "87s", "KQo").forEach(hand => controller.setNodeLockProbs(0, hand, [1, 0]));
        controller.reSolveWithNodeLocks();
        tryVerify(() => !controller.running && controller.resultIterations > 0, 60000);
        choose([1]);
        tryVerify(() => !page.currentActions[0].pending);
        const told = () => all(page, item => item.objectName === "unreached").length;
        compare([told(), texts(every(ActionBarLabel)[1]).slice(3)], [1, ["—", "—"]]);
        const window = page.Window.window.contentItem;
        tryVerify(() => {
            mouseMove(every(ActionBarLabel)[1].children[5], 4, 4);
            return all(window, item => item.Accessible.role === Accessible.ToolTip && item.text
                               === "The other player never comes here").length === 1;
        });
        choose([0]);
        compare(told(), 0);

        const file = temporaryFolder + "/older.tidewellproj";
        verify(controller.saveProject(file, {}));
        verify(controller.loadProject(file).ok);
        verify(all(page, item => item instanceof SecondaryButton && item.text === "Hands here")[0]
               .checked, "the root is always kept");
        choose([1]);
        verify(controller.nodeActionStatsHere(page.currentNodeIndex).length > 0, "looked at before");
        compare(told(), 1);

        const text = controller.readTextFile(file).text;
        controller.saveTextFile(file, text.replace("actionStatsHereByNode", "another"));
        verify(controller.loadProject(file).ok);
        const [here, whole] = all(page, item => item instanceof SecondaryButton && item.compact
                                                && item.text.match(/Hands here|Whole range/));
        compare([here.enabled, here.checked, whole.checked, page.handsHere],
                [false, false, true, true], "of an older program");
        compare(page.currentActions[0].combos, controller.nodeActionStats(0)[0].combos);
    }

    function test_bucketAndLocks(): void {
        solve(Spots.river);
        page.selectedBucket = "full house";
        compare(Object.keys(page.handWeights), ["TT"]);
        const stored = page.handActionProbs.TT;
        page.nodeLocksByNode = {0: {TT: {actionProbs: [0, 4]}, "87s": {actionProbs: [1, 0, 0]}}};
        page.refreshHandMatrix();
        // A list of another length counts nothing.
        compare([page.handActionProbs.TT, page.handActionProbs["87s"], boxes()[0].locked],
                [[0, 1], undefined, true]);
        verify(Qt.colorEqual(page.handColors.TT, page.theme.actionColor("bet 50%")));
        page.nodeLocksByNode = {};
        page.refreshHandMatrix();
        compare([page.handActionProbs.TT, boxes()[0].locked], [stored, false]);
    }

    // At the least size of a screen bar, matrix and legend can be seen whole, whatever there is to
    // choose from, and the money of the node is on the same screen or the next one.
    function test_oneScreen(): void {
        solve(Object.assign({}, Spots.river, {oop_river_bet_sizes: "10,30,50,75,100,150"}));
        for (const [width, height] of [[1280, 664], [1920, 1024]]) {
            page.width = width;
            page.height = height;
            waitForRendering(page);
            const bottomOf = item => item.mapToItem(page, 0, item.height).y;
            tryVerify(() => bottomOf(every(StrategyLegend)[0]) < height - 24, 2000, "the legend");
            const view = every(StrategyView)[0];
            const screens = view.contentHeight / view.height;
            verify(screens <= (width > 1280 ? 1 : 2), `the money of the node: ${screens}`);
            const matrix = every(HandMatrix)[0];
            verify(matrix.effectiveCellSize >= 20
                   && width - matrix.mapToItem(page, matrix.width, 0).x > 340);
        }
        page.width = Qt.binding(() => test.width);
        page.height = Qt.binding(() => test.height);
    }

    // Suits that the tree does not keep can be chosen, and are shown as chosen.
    function test_deal(): void {
        solve(Spots.turn);
        choose([0, 0]);
        const deal = page.currentNodeIndex;
        compare([page.currentActions.map(entry => entry.name), page.handWeights, page.selectedPlayer],
                [["Random river card"], {}, "IP"], "nobody acts here");
        openPickerByKey();
        compare([page.chancePickerTitle, page.chancePickerBoardText],
                ["Choose River Card", "AhQh7h2h"]);
        verify(Array.of("Ah", "Qh", "7h", "2h").every(card => pickerCard(card).disabled));
        keys(["k", "s"]);
        tryVerify(() => !pickerCard("As"));
        compare([page.treeBoardText, page._boardFromTreeSelectionsUpTo(2), page.selectedPlayer],
                ["AhQh7h2hKs", "AhQh7h2h", "OOP"]);
        compare([controller.nodeActions(deal)[path()[2][1]].name, boxTexts()[2]], ["Kc", "Ks"]);

        // Another card instead, then back to the deal; each is one press.
        const strip = every(DealStrip)[0];
        const clickCard = (column, row) => mouseClick(strip, 20 + (column + 0.5) * strip._pitch,
                                                      (row + 0.5) * 20);
        clickCard(5, 3);
        compare([page.treeBoardText, boxTexts()[2]], ["AhQh7h2h9c", "9c"]);
        clickCard(2, 1);
        compare(page.treeBoardText, "AhQh7h2h9c", "a card of the board");
        clickBox(2);
        compare([page.currentNodeIndex, page.treeBoardText], [deal, "AhQh7h2h"]);
        tryVerify(() => pickerCard("As")?.activeFocus);
        mouseClick(pickerCard("Ah"));
        compare(page.chancePickerLevelIndex, 2, "a card of the board is not dealt");
        mouseClick(pickerCard("9d"));
        compare([page.treeBoardText, page.chancePickerLevelIndex, page.chancePickerActions.length],
                ["AhQh7h2h9d", -1, 0]);
    }

    // From the ace of spades past that of hearts, which lies on the board; keys count while the picker
    // opens.
    function test_pickerByKeysAndAtRandom(): void {
        solve(Spots.turn);
        choose([0, 0]);
        openPickerByKey();
        keyClick(Qt.Key_Escape);
        tryVerify(() => !pickerCard("As"));
        openPickerByKey();
        keys([Qt.Key_Down, Qt.Key_Right, Qt.Key_Return]);
        compare(page.treeBoardText, "AhQh7h2hKd");
        page.navigateToBreadcrumb(2);
        openPickerByKey();
        const available = Object.keys(page.chancePickerIndexByCard);
        mouseClick(all(page.Window.window.contentItem, item => item instanceof SecondaryButton
                                                               && item.text === "Random")[0]);
        verify(available.includes(page.treeBoardText.slice(8)), page.treeBoardText);
    }

    // A turn shown as 2s is kept as 2c: what the tree calls clubs are spades from then on.
    function test_twoDeals(): void {
        solve(Spots.flop);
        choose([0, 0]);
        page.openChancePicker(2, page.currentNodeIndex);
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
        compare([page.treeBoardText, boxTexts().filter(text => text.length === 2)],
                ["AhQh7h2sKs", ["2s", "Ks"]]);
        // Nobody holds a card that is seen on the board.
        tryVerify(() => !page._handCombosLoading);
        const hands = Array.from(page.visibleHandCombos, combo => combo.c1 + combo.c2);
        compare([hands.filter(hand => hand.includes("Ks")), hands.filter(hand => hand === "KdKc").length],
                [[], 1], hands.join(" "));
    }

    function test_loadedProject(): void {
        solve(Spots.river);
        choose([1]);
        const weights = page.handWeights;
        const file = temporaryFolder + "/results_page_test.tidewellproj";
        verify(controller.saveProject(file, {}));
        controller.clearResults();
        compare([page.handWeights, boxes().length], [{}, 0]);
        verify(controller.loadProject(file).ok);
        compare([path(), Object.keys(page.handWeights).length > 0], [[[0, -1]], true]);
        choose([1]);
        compare(page.handWeights, weights);
        // A node that nobody looked at before the project was saved.
        choose([0]);
        compare([page.handWeights, page.currentActions.length > 0], [{}, true]);
        verify(texts(page).includes("Nothing is known of the hands at this node."));
    }

    // In a low window the view follows the keyboard down the matrix.
    function test_keysOfTheRightPanel(): void {
        solve(Spots.river);
        const tree = every(GameTreePanel)[0];
        const width = tree.width;
        every(SplitGrip)[0].forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        tryVerify(() => tree.width > width);
        page.height = 400;
        waitForRendering(page);
        const matrix = every(HandMatrix)[0];
        matrix.forceActiveFocus(Qt.TabFocusReason);
        keys(Array(12).fill(Qt.Key_Down));
        tryVerify(() => matrix.mapToItem(page, 0, matrix.markedCell.bottom).y < page.height);
        page.height = Qt.binding(() => test.height);
    }

    function test_newSolve(): void {
        solve(Spots.river);
        choose([1]);
        page.playMode = true;
        clickBox(0);
        keyClick(Qt.Key_Left);
        compare(path(), [[0, -1]], "the tree is frozen while hands are played");
        page.nodeLocksByNode = {0: {TT: {actionProbs: [1, 0]}}};
        page.visible = false;
        solve(Spots.turn);
        // A hidden page does not hold up the end of a solve.
        compare([path(), page.playMode, page.nodeLocksByNode, page.treeBoardText, page.currentActions],
                [[[0, -1]], false, {}, "AhQh7h2h", []]);
        page.visible = true;
        compare(page.handWeights, controller.nodeHandStrategyReach169(0, "").weights);
        verify(texts(boxes()[0]).includes("Pot: 10"), "boxes that were made unseen are whole");
    }

    TextEdit {
        id: paste
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
