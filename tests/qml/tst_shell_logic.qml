import QtTest

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
        compare([blank.boardText, blank.maxIterations, blank.threadCount, blank.startingStreet],
                ["", 0, 6, "flop"]);
        const small = [18, 91, 3];
        const large = [180, 910, 30];
        for (const [preset, money, board] of [
            [Presets.referenceSpot(2), large, "QsJh2h"], [Presets.quickSpot(2), small, "AdJd8s"],
            [Presets.newProject(2, false), small, ""], [Presets.newProject(2, true), large, ""]]) {
            compare(Object.keys(preset), Object.keys(blank));
            compare([preset.startingPot, preset.effectiveStack, preset.rakeCap], money);
            compare([preset.boardText, SolveGate.isProjectComplete(preset)], [board, board !== ""]);
        }
        compare([Presets.startupBlank(0).threadCount, Presets.referenceSpot(0).threadCount],
                [1, 12]);
    }

    function test_config(): void {
        const state = Object.assign(Presets.quickSpot(3), {
            oopTurnDontDonk: true, ipRiverAddAllIn: true, oopFlopRaiseSizesText: "3x",
            ipAddAllInIfJamLtEnabled: true, ipAddAllInIfJamLtPct: 40, startingPot: 180
        });
        const config = SolveConfig.solveConfig(state);
        compare(Object.keys(config).length, 12 + 2 * 11 + 3);
        fuzzyCompare(config.target_exploitability, 0.9, 1e-12);
        for (const [pot, percent, chips] of [[180, 1, 1.8], [0, 1, 0], [-5, 1, 0],
                                             [Infinity, 1, 0], [10, NaN, 0]]) {
            compare(SolveConfig.targetAmount(pot, percent), chips);
        }
        for (const [key, value] of Object.entries({
            board: "AdJd8s", thread_count: 3, starting_street: "flop", rake_cap: 3,
            oop_turn_dont_donk: true, oop_flop_dont_donk: false, ip_river_add_all_in: true,
            oop_river_add_all_in: false, oop_flop_raise_sizes: "3x", ip_flop_raise_sizes: "50",
            ip_add_all_in_jam_threshold_pct: 40, oop_add_all_in_jam_threshold_enabled: false})) {
            compare(config[key], value, key);
        }
    }

    function test_gate(): void {
        for (const [change, complete] of [
            [{}, true], [{boardText: "adjd8s"}, true], [{boardText: " Ad Jd 8s "}, true],
            [{boardText: "AdJd__2c"}, false], [{boardText: "AdJd8s2"}, false],
            [{boardText: "AdJd8x"}, false], [{oopRangeText: "100%"}, true],
            [{ipRangeText: "no hands"}, false], [{ipRangeText: "  "}, false],
            // Of a street that is over.
            [{boardText: "AdJd8s2c", ipFlopBetSizesText: " "}, false]]) {
            compare(SolveGate.isProjectComplete(Object.assign(Presets.quickSpot(2), change)),
                    complete, JSON.stringify(change));
        }
    }

    function test_memory(): void {
        compare(SolveGate.hasEnoughMemory(null), false);
        for (const [required, available, reclaimable, enough] of [
            [0, 1000, 0, false], [10, NaN, 0, false], [1000, 1000, 0, false], [999, 1000, 0, true],
            [1000, 900, 101, true]]) {
            compare(SolveGate.hasEnoughMemory({
                solveRequiredMemoryBytes: required, systemAvailableMemoryBytes: available,
                resultsReclaimableMemoryBytes: reclaimable}), enough, required);
        }
    }

    function test_history(): void {
        const history = HomeStatistics.cumulativeHistory([
            day("2026-01-01", 1, 0), day("2026-01-02", 1, 8000), day("2026-01-03", 2, 0)]);
        compare(history.map(entry => entry.totalSolves), [1, 2, 4]);
        compare(history.map(entry => entry.averageSeconds), [NaN, 4, 2]);
        const lines = HomeStatistics.chartLines(history);
        compare(lines.map(line => line.solves), [0.25, 0.5, 1]);
        compare(lines.map(line => line.seconds), [NaN, 1, 0.5]);
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
    }

    function test_duration(): void {
        for (const [seconds, parts] of [
            [0, null], [-1, null], [NaN, null], [59.96, {minutes: 0, seconds: 59.96}],
            [60, {minutes: 1, seconds: 0}], [119.7, {minutes: 2, seconds: 0}],
            [125, {minutes: 2, seconds: 5}]]) {
            compare(HomeStatistics.durationParts(seconds), parts);
        }
    }

    name: "ShellLogic"
}
