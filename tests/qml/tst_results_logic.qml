import QtTest
import "../../qml/logic/action_bar.mjs" as Bar
import "../../qml/logic/action_list.mjs" as ActionList
import "../../qml/logic/hand_strategy.mjs" as HandStrategy
import "../../qml/logic/suit_map.mjs" as Suits
import "../../qml/logic/tree_money.mjs" as Money

// The text and number work behind the results page.
TestCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
    }

    function test_shares_data(): var {
        return [
            {tag: "whole", raw: [0.25, 0.75], shares: [0.25, 0.75]},
            {tag: "not adding up to 1", raw: [1, 3], shares: [0.25, 0.75]},
            {tag: "nothing", raw: [0, 0], shares: [0, 0]},
            {tag: "odd values", raw: [-1, NaN, undefined, Infinity, 2], shares: [0, 0, 0, 0, 1]},
            {tag: "no action", raw: [], shares: []}
        ];
    }

    function test_shares(data: var): void {
        compare(Bar.shares(data.raw.map(frequency => ({frequency: frequency}))), data.shares);
    }

    // The round ends go to the outermost segments that can be seen.
    function test_segments_data(): var {
        return [
            {tag: "two", shares: [0.5, 0.5], width: 100, left: [8, 0], right: [0, 8]},
            {tag: "slivers", shares: [0.004, 0.992, 0.004], width: 100, left: [0, 8, 0],
             right: [0, 8, 0]},
            {tag: "nothing played at the ends", shares: [0, 1, 0], width: 100, left: [0, 8, 0],
             right: [0, 8, 0]},
            {tag: "narrow", shares: [0.06, 0.94], width: 100, left: [3, 0], right: [0, 8]},
            {tag: "below a pixel", shares: [0, 0.4, 0.6], width: 1, left: [0, 0.2, 0],
             right: [0, 0, 0.3]},
            {tag: "empty", shares: [0, 0], width: 100, left: [0, 0], right: [0, 0]}
        ];
    }

    function test_segments(data: var): void {
        const segments = Bar.segments(data.shares, data.width, 24, 8);
        compare(segments.map(segment => segment.leftRadius), data.left);
        compare(segments.map(segment => segment.rightRadius), data.right);
        let end = 0;
        segments.forEach((segment, index) => {
            fuzzyCompare(segment.x, end, 1e-9);
            fuzzyCompare(segment.width, data.shares[index] * data.width, 1e-9);
            end = segment.x + segment.width;
        });
        compare(Bar.segments([1], 100, 10, 8)[0].leftRadius, 5, "half of a low bar");
    }

    function test_indexAt_data(): var {
        return [
            {tag: "first", shares: [0.25, 0.75], place: 0.2, index: 0},
            {tag: "edge", shares: [0.25, 0.75], place: 0.25, index: 1},
            {tag: "beyond the end", shares: [0.25, 0.75], place: 1.2, index: 1},
            {tag: "nothing played", shares: [0, 0], place: 0.1, index: 1},
            {tag: "empty", shares: [], place: 0.1, index: -1}
        ];
    }

    function test_indexAt(data: var): void {
        compare(Bar.indexAt(data.shares, data.place), data.index);
    }

    function test_evsAgainstFold_data(): var {
        return [
            {tag: "no fold", actions: [["Check", "check", 3], ["Bet 50%", "bet 50%", 5]],
             evs: [3, 5]},
            {tag: "by type", actions: [["F", "fold", -2], ["Call", "call", 1]], evs: [0, 3]},
            {tag: "by name", actions: [["Call", "call", 1], ["FOLD now", "none", 4]],
             evs: [-3, 0]},
            {tag: "fold unknown", actions: [["Fold", "fold", NaN], ["Call", "call", 1]],
             evs: [NaN, 1]},
            {tag: "other unknown", actions: [["Fold", "fold", 1], ["Call", "call", NaN]],
             evs: [0, NaN]}
        ];
    }

    function test_evsAgainstFold(data: var): void {
        const actions = data.actions.map(([name, actionType, ev]) =>
            ({name: name, actionType: actionType, ev: ev, frequency: 0.5}));
        const shown = ActionList.withEvsAgainstFold(actions);
        compare(shown.map(action => action.ev), data.evs);
        compare(shown.map(action => action.frequency), actions.map(() => 0.5));
        compare(actions.map(action => action.ev), data.actions.map(action => action[2]),
                "the list itself is left alone");
    }

    function test_comboDigits(): void {
        for (const [combos, digits] of [[12, 0], [12.0000005, 0], [11.9999999, 0], [12.01, 1]]) {
            compare(ActionList.comboDigits(combos), digits, combos);
        }
    }

    function test_actionCount(): void {
        const definitions = [{name: "Check"}, {name: "Bet"}];
        compare(HandStrategy.actionCount(definitions, {AA: [1, 0, 0]}, []), 2);
        compare(HandStrategy.actionCount([], {AA: [1, 0, 0]}, ["check"]), 3);
        compare(HandStrategy.actionCount([], {}, ["check"]), 1);
        compare(HandStrategy.actionCount([], {}, []), 0);
    }

    function test_locks_data(): var {
        return [
            {tag: "scaled", lock: [1, 3], shown: [0.25, 0.75]},
            {tag: "odd entries", lock: [-1, 2], shown: [0, 1]},
            {tag: "nothing", lock: [0, 0], shown: [0.5, 0.5]},
            {tag: "other length", lock: [1, 0, 0], shown: [0.9, 0.1]}
        ];
    }

    function test_locks(data: var): void {
        const probs = {AA: [0.9, 0.1], KK: [0.2, 0.8]};
        const shown = HandStrategy.withLocks(probs, {AA: {actionProbs: data.lock}}, 2);
        compare(shown, {AA: data.shown, KK: [0.2, 0.8]});
        compare(probs.AA, [0.9, 0.1], "the stored map is left alone");
    }

    function test_colorKeys(): void {
        const definitions = [{name: "Check", actionType: "check"}, {name: "Bet 33%"}];
        compare(HandStrategy.colorKeys(definitions, ["a", "b", "call"], 4),
                ["check", "Bet 33%", "call", "none"]);
        compare(HandStrategy.colorKeys(definitions, [], 1), ["check"]);
    }

    function test_handColors_data(): var {
        return [
            {tag: "likeliest", probs: [0.2, 0.8], color: "of Bet 33%"},
            {tag: "first of equals", probs: [0.5, 0.5], color: "of Check"},
            {tag: "more than there are actions", probs: [0.1, 0.2, 0.7], color: "of Bet 33%"},
            {tag: "known by its type alone", probs: undefined, color: "of call"}
        ];
    }

    function test_handColors(data: var): void {
        const definitions = [{name: "Check", actionType: "check"},
                             {name: "Bet 33%", actionType: "bet 33%"}];
        const colors = HandStrategy.handColors({AA: 1, KK: 0.5}, {AA: data.probs}, definitions,
                                               {AA: "call", KK: ""}, key => "of " + key, "muted");
        compare(colors, {AA: data.color, KK: "muted"});
    }

    function test_suitMap_data(): var {
        return [
            {tag: "nothing dealt", deals: [], shown: {Kh: "Kh", Kc: "Kc"}},
            {tag: "as kept", deals: [["2c", "2c"]], shown: {Kh: "Kh", Kc: "Kc"}},
            {tag: "traded", deals: [["2c", "2h"]], shown: {Kh: "Kc", Kc: "Kh", Kd: "Kd"}},
            {tag: "another rank", deals: [["2c", "3h"]], shown: {Kh: "Kh", Kc: "Kc"}},
            {tag: "two deals", deals: [["2c", "2h"], ["9c", "9d"]],
             shown: {Kc: "Kd", Kd: "Kh", Kh: "Kc", Ks: "Ks"}}
        ];
    }

    function test_suitMap(data: var): void {
        const map = Suits.suitMap(data.deals.map(([kept, shown]) => ({kept: kept, shown: shown})));
        for (const card of Object.keys(data.shown)) {
            compare(Suits.shownCard(card, map), data.shown[card]);
        }
    }

    // After a flop in hearts and a turn kept as 2c and shown as 2s, the tree keeps clubs, diamonds and
    // hearts.
    function test_chosenCards_data(): var {
        return [
            {tag: "another suit of the board", card: "Kh", action: "Kh"},
            {tag: "the turn's suit", card: "Ks", action: "Kc"},
            {tag: "kept", card: "Kd", action: "Kd"},
            {tag: "dropped", card: "Kc", action: "Kd"},
            {tag: "on the board as shown", card: "2s", action: ""},
            {tag: "on the flop", card: "Qh", action: ""},
            {tag: "no action for it", card: "7c", action: ""}
        ];
    }

    function test_chosenCards(data: var): void {
        const names = ["2d", "2h", "Kc", "Kd", "Kh", "Qc", "Qd"];
        const board = "AhQh7h2s";
        const map = Suits.suitMap([{kept: "2c", shown: "2s"}]);
        const cards = Suits.dealableCards(names, map, board);
        const index = Suits.indexForCard(data.card, cards, board);
        compare(index < 0 ? "" : names[index], data.action);
    }

    // A single absent suit is like no other.
    function test_chosenCards_oneAbsentSuit(): void {
        const cards = Suits.dealableCards(["Kc", "Kd", "Kh"], Suits.suitMap([]), "AhQd7c");
        compare(Object.keys(cards).sort(), ["Kc", "Kd", "Kh"]);
        compare(Suits.indexForCard("Ks", cards, "AhQd7c"), -1);
        compare(Suits.indexForCard("Kd", cards, "AhQd7c"), 1);
    }

    function test_rake_data(): var {
        return [
            {tag: "capped", pot: 100, percent: 5, cap: 3, rake: 3},
            {tag: "below the cap", pot: 40, percent: 5, cap: 3, rake: 2},
            {tag: "no cap", pot: 100, percent: 5, cap: 0, rake: 5},
            {tag: "no pot", pot: 0, percent: 5, cap: 3, rake: 0},
            {tag: "unknown pot", pot: undefined, percent: 5, cap: 3, rake: 0},
            {tag: "no rake", pot: 100, percent: -1, cap: 3, rake: 0}
        ];
    }

    function test_rake(data: var): void {
        compare(Money.rakeOf(data.pot, data.percent, data.cap), data.rake);
    }

    function test_money_data(): var {
        const bet = {pot: 30, effectiveStack: 100, investedOop: 20, investedIp: 10};
        return [
            {tag: "facing a bet", meta: Object.assign({player: "IP"}, bet), stack: 90, toCall: 10,
             spr: 3, potOdds: 0.25},
            {tag: "ahead", meta: Object.assign({player: "OOP"}, bet), stack: 80, toCall: 0,
             spr: 80 / 30, potOdds: NaN},
            {tag: "nobody to act", meta: Object.assign({player: ""}, bet), stack: 0, toCall: 0,
             spr: 0, potOdds: NaN},
            {tag: "no pot",
             meta: {player: "IP", pot: 0, effectiveStack: 5, investedOop: 9, investedIp: 8},
             stack: 0, toCall: 1, spr: NaN, potOdds: NaN},
            {tag: "no node", meta: {}, stack: 0, toCall: 0, spr: NaN, potOdds: NaN}
        ];
    }

    function test_money(data: var): void {
        const money = Money.nodeMoney(data.meta, 0, 0);
        for (const figure of ["stack", "toCall", "spr", "potOdds"]) {
            compare(money[figure], data[figure], figure);
        }
        compare(money.pot, data.meta.pot ?? NaN);
    }

    name: "ResultsLogic"
}
