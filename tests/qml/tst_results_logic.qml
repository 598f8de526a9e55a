import QtTest

import "../../qml/logic/action_bar.mjs" as Bar
import "../../qml/logic/action_list.mjs" as ActionList
import "../../qml/logic/hand_strategy.mjs" as HandStrategy
import "../../qml/logic/suit_map.mjs" as Suits
import "../../qml/logic/tree_money.mjs" as Money

// The text and number work behind the results page.
TestCase {
    function test_barShares(): void {
        for (const [raw, shares, place, index] of [
            [[1, 3], [0.25, 0.75], 0.2, 0], [[0.25, 0.75], [0.25, 0.75], 0.25, 1],
            [[1, 3], [0.25, 0.75], 1.2, 1], [[0, 0], [0, 0], 0.1, 1], [[], [], 0.1, -1],
            [[-1, NaN, undefined, null, Infinity, 2], [0, 0, 0, 0, 0, 1], 0, 5]]) {
            compare(Bar.shares(raw.map(frequency => ({frequency: frequency}))), shares);
            compare(Bar.indexAt(shares, place), index);
        }
    }

    // The round ends go to the outermost segments that can be seen.
    function test_barSegments(): void {
        for (const [shares, width, left, right] of [
            [[0.5, 0.5], 100, [8, 0], [0, 8]],
            [[0.004, 0.992, 0.004], 100, [0, 8, 0], [0, 8, 0]],
            [[0.06, 0.94], 100, [3, 0], [0, 8]],
            [[0, 0.4, 0.6], 1, [0, 0.2, 0], [0, 0, 0.3]],
            [[0, 0], 100, [0, 0], [0, 0]]]) {
            const segments = Bar.segments(shares, width, 24, 8);
            compare(segments.map(segment => segment.leftRadius), left, shares);
            compare(segments.map(segment => segment.rightRadius), right, shares);
            segments.reduce((end, segment, index) => {
                fuzzyCompare(segment.x, end, 1e-9);
                return end + shares[index] * width;
            }, 0);
        }
        compare(Bar.segments([1], 100, 10, 8)[0].leftRadius, 5, "half of a low bar");
    }

    function test_evsAgainstFold(): void {
        for (const [rows, evs] of [
            [[["Check", "check", 3], ["Bet 50%", "bet 50%", 5]], [3, 5]],
            [[["F", "fold", -2], ["Call", "call", 1]], [0, 3]],
            [[["Call", "call", 1], ["FOLD now", "none", 4]], [-3, 0]],
            [[["Fold", "fold", null], ["Call", "call", 1]], [null, 1]],
            [[["Fold", "fold", 1], ["Call", "call", null]], [0, null]]]) {
            const actions = rows.map(([name, actionType, ev]) =>
                ({name: name, actionType: actionType, ev: ev, frequency: 0.5}));
            compare(ActionList.withEvsAgainstFold(actions).map(action => [action.ev, action.frequency]),
                    evs.map(ev => [ev, 0.5]));
            compare(actions[0].ev, rows[0][2], "the list itself is left alone");
        }
    }

    function test_handActions(): void {
        const definitions = [{name: "Check", actionType: "check"}, {name: "Bet 33%"}];
        for (const [known, probs, types, count] of [
            [definitions, {AA: [1, 0, 0]}, [], 2], [[], {AA: [1, 0, 0]}, ["check"], 3],
            [[], {}, ["check"], 1], [[], {}, [], 0]]) {
            compare(HandStrategy.actionCount(known, probs, types), count);
        }
        compare(HandStrategy.colorKeys(definitions, ["a", "b", "call"], 4),
                ["check", "Bet 33%", "call", "none"]);
        for (const [probs, color] of [
            [[0.2, 0.8], "of Bet 33%"], [[0.5, 0.5], "of Check"], [[0.1, 0.2, 0.7], "of Bet 33%"],
            [undefined, "of call"]]) {
            compare(HandStrategy.handColors({AA: 1, KK: 0.5}, {AA: probs}, definitions,
                                            {AA: "call", KK: ""}, key => "of " + key, "muted"),
                    {AA: color, KK: "muted"});
        }
        for (const [lock, shownProbs] of [
            [[1, 3], [0.25, 0.75]], [[-1, 2], [0, 1]], [[0, 0], [0.5, 0.5]],
            [[1, 0, 0], [0.9, 0.1]]]) {
            compare(HandStrategy.withLocks({AA: [0.9, 0.1], KK: [0.2, 0.8]},
                                           {AA: {actionProbs: lock}}, 2),
                    {AA: shownProbs, KK: [0.2, 0.8]});
        }
    }

    function test_chosenCards(): void {
        const manySuits = ["2d", "2h", "Kc", "Kd", "Kh", "Qc", "Qd"];
        for (const [names, deals, board, choices] of [
            // A turn kept as 2c and shown as 2s: the tree keeps clubs, diamonds and hearts.
            [manySuits, [{kept: "2c", shown: "2s"}], "AhQh7h2s",
             {Kh: "Kh", Ks: "Kc", Kd: "Kd", Kc: "Kd", "2s": undefined, Qh: undefined,
              "7c": undefined}],
            // Two deals, and a card that is no twin of the one that was kept.
            [manySuits, [{kept: "2c", shown: "2h"}, {kept: "9c", shown: "9d"}], "AsQs7s2h9d",
             {Kd: "Kc", Kh: "Kd", Kc: "Kh"}],
            [manySuits, [{kept: "2c", shown: "3h"}], "AsQs7s", {Kc: "Kc", Kh: "Kh"}],
            // A single absent suit is like no other.
            [["Kc", "Kd", "Kh"], [], "AhQd7c", {Ks: undefined, Kd: "Kd"}]]) {
            const cards = Suits.dealableCards(names, Suits.suitMap(deals), board);
            for (const [card, action] of Object.entries(choices)) {
                compare(names[Suits.indexForCard(card, cards, board)], action, card);
            }
        }
    }

    function test_money(): void {
        for (const [pot, percent, cap, rake] of [
            [100, 5, 3, 3], [40, 5, 3, 2], [100, 5, 0, 5], [undefined, 5, 3, 0], [100, -1, 3, 0]]) {
            compare(Money.rakeOf(pot, percent, cap), rake, `${percent}% of ${pot} up to ${cap}`);
        }
        const bet = {pot: 30, effectiveStack: 100, investedOop: 20, investedIp: 10};
        const over = {pot: 0, effectiveStack: 5, investedOop: 9, investedIp: 8};
        for (const [player, node, stack, toCall, spr, potOdds] of [
            ["IP", bet, 90, 10, 3, 0.25], ["OOP", bet, 80, 0, 80 / 30, NaN],
            ["", bet, 0, 0, 0, NaN], ["IP", over, 0, 1, NaN, NaN],
            [undefined, {}, 0, 0, NaN, NaN]]) {
            const money = Money.nodeMoney(Object.assign({player: player}, node), 0, 0);
            compare([money.stack, money.toCall, money.spr, money.potOdds, money.pot],
                    [stack, toCall, spr, potOdds, node.pot ?? NaN], player);
        }
    }

    name: "ResultsLogic"
}
