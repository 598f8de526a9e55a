pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

import "../../qml/logic/hand_filter.mjs" as HandFilter
import "../../qml/logic/hand_rows.mjs" as HandRows
import "result_spots.mjs" as Spots

// The lists of hands and of their classes: what is shown of them without a page, and on the page.
DocumentCase {
    id: test

    function every(type: var): var {
        return all(page, item => item instanceof type);
    }

    // The first row of the list; rows are given other hands as it scrolls.
    function firstRow(): HandRow {
        return all(page, item => item instanceof HandRow && item.index === 0)[0];
    }

    function test_search(): void {
        for (const [token, found, missed] of [
            ["JcJd", ["JcJd", "JdJc"], ["JcJh"]], ["jdJC", ["JcJd"], []], ["JJ", ["JcJd"], ["JcTd"]],
            ["AK", ["AhKd", "AhKh", "KcAd"], ["AhAd"]], ["ka", ["AhKd", "AhKh"], []],
            ["AKs", ["KhAh"], ["AhKd"]], ["65S", ["5c6c"], ["5c6d"]], ["56o", ["6d5c"], ["5c6c"]],
            ["", ["AhKd"], []],
            ...Array.from("A 1J AKQ JJo JcJc JcJx AhKdQ AX".split(" "),
                          bad => [bad, [], ["AhKd", "JcJd"]])]) {
            for (const [hands, expected] of [[found, true], [missed, false]]) {
                hands.forEach(hand => compare(page._matchSearchTokenToCombo(
                    token, hand.slice(0, 2), hand.slice(2)), expected, `${token} and ${hand}`));
            }
        }
        for (const [hand, label] of [["2hAh", "A2s"], ["Td9c", "T9o"], ["7c7d", "77"]]) {
            compare(page._handClassFromCards(hand.slice(0, 2), hand.slice(2)), label);
        }
    }

    function test_filter(): void {
        const combos = Array.from([["JcJd", 1, ["set"]], ["6h5h", 0.2, ["air"]],
                                   ["AhKd", 1e-12, ["air"]], ["AcKc", NaN, []]],
            ([cards, weight, buckets]) =>
                ({c1: cards.slice(0, 2), c2: cards.slice(2), weight: weight, buckets: buckets}));
        for (const [handClass, bucket, search, boardCards, shown] of [
            ["", "", " ,, ", 3, combos], ["", "", "", 4, combos.slice(0, 2)],
            ["", "", "JJ, 56s", 3, combos.slice(0, 2)], ["", "", "AKo", 5, []],
            ["AKo", "", "", 3, combos.slice(2, 3)], ["", "air", "", 3, combos.slice(1, 3)],
            ["65s", "air", "A 65", 4, combos.slice(1, 2)], ["65s", "set", "", 3, []]]) {
            compare(HandFilter.filtered(combos, handClass, bucket, search, boardCards), shown);
        }
        compare(HandFilter.filtered([], "", "", "", 5), []);
    }

    function test_rows(): void {
        const fold = {name: "Fold", actionType: "fold"};
        const call = {name: "Call", actionType: "call"};
        for (const [evs, actions, expected] of [
            [[-2, 1], [fold, call], [0, 3]], [[NaN, 1], [fold, call], [0, 1]],
            [[1, NaN], [call, call], [1, NaN]], [[1, 3], [call], [1, 3]], [[], [call], [7]]]) {
            compare(HandRows.evLines({ev: 7, actionEvs: evs}, actions).map(line => line.ev), expected);
        }
        const combos = [{c1: "Ah", c2: "Kd", ev: 3, weight: 0.5, actionEvs: [1, 2.5], actionProbs: [1, 0]},
                        {c1: "2c", c2: "2d", ev: 1, weight: 1, actionEvs: [0, 1], actionProbs: [0, 1]},
                        {c1: "3c", c2: "3d", ev: NaN, weight: 0.5}];
        let order = {key: "", rising: false};
        for (const [key, places] of [["weight", [1, 0, 2]], ["weight", [0, 2, 1]], ["weight", [0, 1, 2]],
                                     ["ev", [0, 1, 2]], [1, [1, 0, 2]], [1, [2, 0, 1]]]) {
            order = HandRows.nextOrder(order, key);
            compare(HandRows.sorted(combos, order.key, order.rising)
                            .map(combo => combos.indexOf(combo)), places);
        }
        const heads = {hand: "Hand", weight: "Weight", ev: action => "EV " + action.name,
                       frequency: action => action.name};
        compare(HandRows.asText(combos.slice(0, 1), [fold, call], heads, true),
                "Hand\tWeight\tEV Fold\tEV Call\tFold\tCall\nAhKd\t0.5\t0\t1.5\t1\t0\n");
        verify(HandRows.asText(combos, [fold, call], heads, false).includes("\n3c3d\t0.5\t\t\t\t\n"));
    }

    function solve(): void {
        page.boardText = Spots.river.board;
        controller.startSolveWithConfig(Spots.river);
        tryVerify(() => !controller.running && controller.resultIterations > 0, 60000);
        tryVerify(() => !page._handCombosLoading);
    }

    // Only the list of the node where the walk ends is made, and it is that of the controller.
    function test_page(): void {
        solve();
        page.selectActionAtLevel(0, 1);
        page.resetTreeToRoot();
        page.selectActionAtLevel(0, 1);
        verify(page._handCombosLoading);
        verify(texts(every(HandDetails)[0]).includes("Loading hand combos…"));
        tryVerify(() => !page._handCombosLoading);
        const combos = Array.from(controller.nodeHandCombos(page.currentNodeIndex));
        compare(page.currentHandCombos, combos);
        compare(page.visibleHandCombos, combos.filter(combo => combo.weight > 1e-6));
        const first = page.visibleHandCombos[0];
        compare(texts(firstRow()).filter(text => /^-?\d+\.\d\d$/.test(text)),
                first.actionEvs.map(ev => (ev - first.actionEvs[0]).toFixed(2)));

        // Classes: a press filters both lists and the matrix, and a chip takes it back.
        const buckets = Array.from(page.currentHandBuckets);
        compare(texts(every(BucketsPanel)[0]).slice(0, 2), ["Buckets", `${buckets.length} shown`]);
        mouseClick(every(BucketRow)[1]);
        compare(page.selectedBucket, buckets[1].name);
        verify(page.visibleHandCombos.length < combos.length
               && page.visibleHandCombos.every(combo => combo.buckets.includes(buckets[1].name)));
        verify(Object.keys(page.handWeights).length < 13);
        const chip = every(FilterChips)[0];
        mouseClick(all(chip, item => item instanceof IconButton)[0]);
        compare([page.selectedBucket, page.visibleHandCombos.length], ["", combos.length]);

        type(every(AppTextField)[0], "a");
        compare(page.visibleHandCombos, []);
        verify(texts(every(HandDetails)[0]).includes("No combos match the current filters."));
        keyClick(Qt.Key_Escape);
        compare(page.visibleHandCombos.length, combos.length);
        page.toggleHandFilter("99");
        verify(texts(every(HandDetails)[0]).includes("Filter: 99"));
        page.toggleHandFilter("99");
    }

    function test_keysAndWhy(): void {
        solve();
        const list = every(HandListView)[0];
        const why = spyOn(page, "whyRequested");
        list.forceActiveFocus();
        keys([Qt.Key_End, Qt.Key_Up, Qt.Key_Right, Qt.Key_Right, Qt.Key_Return]);
        const combo = page.visibleHandCombos[page.visibleHandCombos.length - 2];
        compare(Array.from(why.signalArguments[0]), [combo.c1, combo.c2, 1]);
        compare(every(HandMatrix)[0].litHand, page._handClassFromCards(combo.c1, combo.c2));
        const sheets = () => all(page.Window.window.contentItem,
                                 item => item.objectName === "whyTitle");
        tryVerify(() => sheets().length === 1);
        keyClick(Qt.Key_Escape);
        tryVerify(() => sheets().length === 0);
        list.forceActiveFocus();
        keyClick(Qt.Key_Home);
        const line = all(firstRow(), item => item instanceof EvLine)[0];
        mouseClick(line);
        const first = page.visibleHandCombos[0];
        compare(Array.from(why.signalArguments[1]), [first.c1, first.c2, 0]);

        // What is copied is what is shown.
        const head = all(page, item => item instanceof SortHead)[0];
        mouseClick(head);
        list.forceActiveFocus();
        keyClick(Qt.Key_C, Qt.ControlModifier);
        paper.paste();
        const lines = paper.text.trim().split("\n").map(text => text.split("\t"));
        compare(lines.length, page.visibleHandCombos.length + 1);
        compare(lines.slice(1).map(cells => Number(cells[1])),
                page.visibleHandCombos.map(entry => Number(entry.weight.toFixed(6)))
                                      .sort((a, b) => b - a));
    }

    width: 1280
    height: 656

    ResultsPage {
        id: page

        width: test.width
        height: test.height
        controller: test.controller
    }
    TextEdit {
        id: paper

        visible: false
    }
}
