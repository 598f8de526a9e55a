pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../qml/logic/why_rows.mjs" as WhyRows

import "result_spots.mjs" as Spots

// What an action's EV is made of, on the program's own controller.
DocumentCase {
    id: test

    function solve(spot: var): void {
        controller.startSolveWithConfig(spot);
        tryVerify(() => !controller.running && controller.resultIterations > 0, 60000);
    }

    function ask(node: int, combo: var, index: int): void {
        popup.ask(node, combo.c2, combo.c1, index, controller.nodeActions(node)[index]);
        tryVerify(() => popup.opened && popup._breakdown.ok);
    }

    function figure(value: real): string {
        return value.toLocaleString(Qt.locale(), "f", 2);
    }

    function test_addsUpToTheHandsEv(): void {
        solve(Spots.turn);
        const checked = controller.nodeActions(0)[0].childIndex;
        for (const [node, index, told] of [[0, 0, "Check"], [0, 1, "Fold"],
                                           [checked, 0, "40 more cards"]]) {
            const combo = controller.nodeHandCombos(node)[0];
            ask(node, combo, index);
            const panel = all(popup.contentItem, item => item instanceof WhyPanel)[0];
            const total = all(panel, item => item.objectName === "whyTotal")[0];
            compare(total.text, figure(combo.actionEvs[index]));
            compare(figure(WhyRows.sumOf(Array.from(popup._breakdown.parts))), total.text);
            verify(texts(panel).includes(told), texts(panel));
            keyClick(Qt.Key_Escape);
            tryVerify(() => !popup.visible);
        }
    }

    function test_whatCannotBeTold(): void {
        solve(Spots.river);
        const combo = controller.nodeHandCombos(0)[0];
        ask(0, combo, 0);
        controller.clearResults();
        tryVerify(() => !popup.visible);
        popup.ask(0, combo.c1, combo.c2, 0, {name: "Check", actionType: "check"});
        tryVerify(() => texts(popup.contentItem)
            .includes("Only a solve at hand can tell. Solve the spot again."));
        popup.close();
    }

    function test_rows(): void {
        const cards = Array.from({length: 9}, (_, i) => ({name: "c" + i, probability: 0.1, ev: -i}));
        const told = WhyRows.rows({follows: "answers", parts: [
            {name: "Fold", probability: 0.5, ev: 3, follows: "nothing", parts: []},
            {name: "Call", probability: 0.5, ev: 1, follows: "deal", parts: cards}]});
        compare(told.map(row => [row.kind, row.depth, row.name ?? row.count]), [
            ["action", 0, "Fold"], ["action", 0, "Call"], ["card", 1, "c0"], ["card", 1, "c1"],
            ["card", 1, "c2"], ["more", 1, 3], ["card", 1, "c6"], ["card", 1, "c7"],
            ["card", 1, "c8"]]);
        compare(WhyRows.rows({follows: "nothing", parts: []}), []);
        compare(WhyRows.sumOf([{probability: 0, ev: NaN}, {probability: 1, ev: 2}]), 2);
    }

    name: "Why"
    width: 800
    height: 600

    WhyPopup {
        id: popup

        parent: test
        theme: Fallback.theme
        controller: test.controller
        suits: ({s: "s", h: "h", d: "d", c: "c"})
    }
}
