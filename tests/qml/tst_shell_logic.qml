import QtQuick
import QtTest

import "../../qml/logic/accent.mjs" as Accent
import "../../qml/logic/home_statistics.mjs" as HomeStatistics
import "../../qml/logic/presets.mjs" as Presets
import "../../qml/logic/solve_config.mjs" as SolveConfig
import "../../qml/logic/solve_gate.mjs" as SolveGate

TestCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
    }

    // A day of the history or cell of the calendar.
    function day(date: string, solves: int, runtimeMsSum: real): var {
        return {isPadding: false, isFuture: false, date: date, solves: solves,
            runtimeMsSum: runtimeMsSum};
    }

    function test_presets(): void {
        const blank = Presets.startupBlank(6);
        compare(Presets.PROJECT_KEYS.length, 37);
        compare(Presets.SIZING_KEYS.length, 12);
        for (const preset of [Presets.referenceSpot(6), Presets.quickSpot(6),
                              Presets.newProject(6, false)]) {
            compare(Object.keys(preset), Object.keys(blank));
        }
        compare([blank.boardText, blank.maxIterations, blank.threadCount, blank.startingStreet],
                ["", 0, 6, "flop"]);
        compare(Presets.startupBlank(0).threadCount, 1);
        compare(Presets.referenceSpot(0).threadCount, 12);
    }

    function test_presets_money_data(): var {
        return [
            {tag: "reference", preset: Presets.referenceSpot(2), money: [180, 910, 30],
             board: "QsJh2h", bets: ["52", "55", "70"], raises: ["45", "45", "45"]},
            {tag: "quick", preset: Presets.quickSpot(2), money: [18, 91, 3],
             board: "AdJd8s", bets: ["50", "75", "75"], raises: ["50", "50", "75"]},
            {tag: "new", preset: Presets.newProject(2, false), money: [18, 91, 3],
             board: "", bets: ["", "", ""], raises: ["", "", ""]},
            {tag: "new of a developer", preset: Presets.newProject(2, true), money: [180, 910, 30],
             board: "", bets: ["", "", ""], raises: ["", "", ""]}
        ];
    }

    function test_presets_money(row: var): void {
        const p = row.preset;
        compare([p.startingPot, p.effectiveStack, p.rakeCap], row.money);
        compare([p.maxIterations, p.targetExploitability, p.rakePercent], [400, 0.5, 5]);
        compare(p.boardText, row.board);
        for (const seat of ["oop", "ip"]) {
            const sizes = kind => ["Flop", "Turn", "River"].map(
                street => p[`${seat}${street}${kind}SizesText`]);
            compare(sizes("Bet"), row.bets);
            compare(sizes("Raise"), row.raises);
        }
        compare(SolveGate.isProjectComplete(p), row.board !== "");
    }

    function test_config(): void {
        const state = Object.assign(Presets.quickSpot(3), {
            oopTurnDontDonk: true, ipRiverAddAllIn: true, oopFlopRaiseSizesText: "3x",
            ipAddAllInIfJamLtEnabled: true, ipAddAllInIfJamLtPct: 40, startingPot: 180
        });
        const config = SolveConfig.solveConfig(state);
        compare(Object.keys(config).length, 11 + 2 * 11 + 3);
        fuzzyCompare(config.target_exploitability, 0.9, 1e-12);
        compare([config.board, config.thread_count, config.starting_street, config.rake_cap],
                ["AdJd8s", 3, "flop", 3]);
        compare([config.oop_turn_dont_donk, config.oop_flop_dont_donk], [true, false]);
        compare([config.ip_river_add_all_in, config.oop_river_add_all_in], [true, false]);
        compare([config.oop_flop_raise_sizes, config.ip_flop_raise_sizes], ["3x", "50"]);
        compare([config.ip_add_all_in_jam_threshold_enabled,
                 config.ip_add_all_in_jam_threshold_pct,
                 config.oop_add_all_in_jam_threshold_enabled], [true, 40, false]);
    }

    function test_target_data(): var {
        return [
            {pot: 180, percent: 1, chips: 1.8},
            {pot: 0, percent: 1, chips: 0},
            {pot: -5, percent: 1, chips: 0},
            {pot: Infinity, percent: 1, chips: 0},
            {pot: 10, percent: NaN, chips: 0}
        ];
    }

    function test_target(row: var): void {
        compare(SolveConfig.targetAmount(row.pot, row.percent), row.chips);
    }

    function test_gate_data(): var {
        const change = (key, value) => ({[key]: value});
        return [
            {tag: "whole", change: {}, complete: true},
            {tag: "lower case", change: change("boardText", "adjd8s"), complete: true},
            {tag: "spaces", change: change("boardText", " Ad Jd 8s "), complete: true},
            {tag: "gap", change: change("boardText", "AdJd__2c"), complete: false},
            {tag: "seven characters", change: change("boardText", "AdJd8s2"), complete: false},
            {tag: "no card", change: change("boardText", "AdJd8x"), complete: false},
            {tag: "percentage", change: change("oopRangeText", "100%"), complete: true},
            {tag: "words", change: change("ipRangeText", "no hands"), complete: false},
            {tag: "no range", change: change("ipRangeText", "  "), complete: false},
            {tag: "street not played", change: {boardText: "AdJd8s2c", ipFlopBetSizesText: " "},
             complete: false}
        ];
    }

    function test_gate(row: var): void {
        const state = Object.assign(Presets.quickSpot(2), row.change);
        compare(SolveGate.isProjectComplete(state), row.complete);
    }

    function test_memory_data(): var {
        const amounts = (required, available, reclaimable) => ({
            solveRequiredMemoryBytes: required, systemAvailableMemoryBytes: available,
            resultsReclaimableMemoryBytes: reclaimable});
        return [
            {tag: "no controller", controller: null, enough: false},
            {tag: "no estimate", controller: amounts(0, 1000, 0), enough: false},
            {tag: "nothing known", controller: amounts(10, NaN, 0), enough: false},
            {tag: "just not", controller: amounts(1000, 1000, 0), enough: false},
            {tag: "just", controller: amounts(999, 1000, 0), enough: true},
            {tag: "with the last result's", controller: amounts(1000, 900, 101), enough: true}
        ];
    }

    function test_memory(row: var): void {
        compare(SolveGate.hasEnoughMemory(row.controller), row.enough);
    }

    function test_accent_data(): var {
        return [
            {text: " #3fb950 ", hex: "#3fb950"},
            {text: "#803FB950", hex: "#803FB950"},
            {text: "#3FB", hex: ""},
            {text: "red", hex: ""},
            {text: "", hex: ""}
        ];
    }

    function test_accent(row: var): void {
        compare(Accent.accentHex(row.text), row.hex);
    }

    function test_history(): void {
        const history = HomeStatistics.cumulativeHistory([
            day("2026-01-01", 1, 0), day("2026-01-02", 1, 8000), day("2026-01-03", 2, 0)]);
        compare(history.map(entry => entry.totalSolves), [1, 2, 4]);
        compare(history.map(entry => entry.averageSeconds), [NaN, 4, 2]);
        const lines = HomeStatistics.chartLines(history);
        compare(lines.map(line => line.solves), [0.25, 0.5, 1]);
        compare(lines.map(line => line.seconds), [NaN, 1, 0.5]);
        // Nothing was solved: a flat line, and no second one.
        const idle = HomeStatistics.chartLines(
            HomeStatistics.cumulativeHistory([day("2026-01-01", 0, 0)]));
        compare(idle, [{solves: 0, seconds: NaN}]);
        compare(HomeStatistics.chartLines([]), []);
    }

    function test_calendar(): void {
        // Two weeks from Monday, 23 February 2026; today is the Wednesday of the second.
        const cells = [];
        for (let i = 0; i < 14; ++i) {
            const date = new Date(2026, 1, 23 + i, 12).toISOString().slice(0, 10);
            cells.push(Object.assign(day(date, i, 1000 * (i % 2)), {isFuture: i > 9}));
        }
        cells[0] = {isPadding: true};
        const summary = HomeStatistics.calendarSummary(cells);
        compare(summary.totalSolves, 45);
        compare(summary.solvesThisWeek, 7 + 8 + 9);
        // Of the odd days alone, since the others took no time: five seconds for 1+3+5+7+9 solves.
        fuzzyCompare(summary.averageSeconds, 5 / 25, 1e-12);
        compare(HomeStatistics.monthStarts(cells), [2, -1]);
        compare(HomeStatistics.monthStarts([]), [-1]);
        verify(isNaN(HomeStatistics.calendarSummary([]).averageSeconds));
    }

    function test_duration_data(): var {
        return [
            {seconds: 0, parts: null},
            {seconds: -1, parts: null},
            {seconds: NaN, parts: null},
            {seconds: 59.96, parts: {minutes: 0, seconds: 59.96}},
            {seconds: 60, parts: {minutes: 1, seconds: 0}},
            {seconds: 119.7, parts: {minutes: 2, seconds: 0}},
            {seconds: 125, parts: {minutes: 2, seconds: 5}}
        ];
    }

    function test_duration(row: var): void {
        compare(HomeStatistics.durationParts(row.seconds), row.parts);
    }

    name: "ShellLogic"
}
