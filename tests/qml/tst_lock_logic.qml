import QtTest

import "../../qml/logic/distribution_series.mjs" as Series
import "../../qml/logic/lock_mix.mjs" as Mix

// The number work behind locks and distributions.
TestCase {
    function test_editedMix(): void {
        for (const [texts, edited, text, expected] of [
            [["0.50", "0.50"], 0, "0.30", ["0.30", "0.70"]],
            [["0.50", "0.50"], 1, "0.30", ["0.70", "0.30"]],
            [["0.34", "0.33", "0.33"], 0, "0.50", ["0.50", "0.33", "0.17"]],
            [["0.34", "0.33", "0.33"], 0, "0.90", ["0.67", "0.33", "0.00"]],
            [["0.34", "0.33", "0.33"], 2, "5", ["0.34", "0.00", "0.66"]],
            [["0.34", "0.33", "0.33"], 1, ",125", ["0.34", "0.13", "0.53"]],
            [["0.34", "junk", "-2"], 0, "-1", ["0.00", "0.00", "1.00"]],
            [["1.00"], 0, "0.2", ["1.00"]], [["0.50", "0.50"], 2, "1", ["0.50", "0.50"]]]) {
            compare(Mix.withEdit(texts, edited, text), expected, `${text} into ${edited}`);
        }
        for (const junk of ["abc", "", "0.5x", "1e9", "Infinity", null]) {
            compare(Mix.withEdit(["0.2", "0.8"], 0, junk), ["0.2", "0.8"]);
        }
        compare(Mix.evenTexts(3), ["0.33", "0.33", "0.33"]);
        for (const [texts, count, probs] of [
            [["0.25", "0.25"], 2, [0.5, 0.5]], [["0.00", "junk"], 2, [0.5, 0.5]],
            [["-1", "0.5", "0.5"], 3, [0, 0.5, 0.5]], [["1"], 2, [1, 0]]]) {
            compare(Mix.probabilities(texts, count), probs, texts);
        }
    }

    function test_series(): void {
        const points = Series.series(["3c3d", "2c2d", "", "4c4d", "5c5d", "6c6d"],
                                     [0.5, 0.5, 1, NaN, 0.9]);
        compare(points.map(point => point.hand), ["5c5d", "2c2d", "3c3d"]);
        const payload = {ok: true, pending: false, oopHands: ["AcAd", "2c2d"], equityOop: [0.9, 0.1],
                         evOop: [5, -5], ipHands: ["KcKd"], equityIp: [0.4], evIp: [2]};
        const evs = Series.bothSeats(payload, false);
        const equities = Series.bothSeats(payload, true);
        compare(Series.bothSeats(Object.assign({}, payload, {pending: true}), true).oop, []);
        for (const [both, isEquity, low, high] of [
            [equities, true, 0, 1], [evs, false, -5.8, 5.8], [{oop: [], ip: []}, false, 0, 1],
            [{oop: evs.ip, ip: []}, false, 0, 1]]) {
            compare(Series.scale(both, isEquity), {low: low, high: high});
        }
        compare(Series.ticks({low: 0, high: 1}, 5), [1, 0.75, 0.5, 0.25, 0]);
        compare(Series.tabSeparated(equities, ["#", "a", "b", "c", "d"]),
                "#\ta\tb\tc\td\n1\tAcAd\t0.9\tKcKd\t0.4\n2\t2c2d\t0.1\t\t\n");
    }

    function test_hover(): void {
        const hands = count => Array(count).fill({hand: "AcAd", value: 1});
        compare([Series.pointAt([], 0.5), Series.pointAt([1, 2, 3], 0.3), Series.pointAt([1], 1)],
                [null, 2, 1]);
        const both = {oop: hands(3), ip: hands(21)};
        for (const [t, ranks, expected] of [
            [-1, 1, 0], [-1, -1, 1], [0, 1, 0.05], [0.5, -10, 0], [0.52, 10, 1], [1, 10, 1]]) {
            compare(Series.moved(t, ranks, both), expected);
        }
        compare(Series.moved(0, 1, {oop: hands(1), ip: []}), -1, "nothing is drawn");
    }

    name: "LockLogic"
}
