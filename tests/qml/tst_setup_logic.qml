import QtTest
import Tidewell

import "../../qml/logic/board_text.mjs" as Board
import "../../qml/logic/presets.mjs" as Presets
import "../../qml/logic/settings_profiles.mjs" as Profiles
import "../../qml/logic/solve_config.mjs" as SolveConfig
import "../../qml/logic/solve_status.mjs" as Status

// The text and number work behind the setup and solve pages.
TestCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
    }

    function test_boards(): void {
        compare(Board.withCard("", 2, "Ah"), "____Ah");
        compare(Board.withCard(" Ad Jd\t8s\n", 3, "2c"), "AdJd8s2c");
        compare([Board.clearedFrom("AdJd8s2cTh", 1), Board.clearedFrom("Ad__8s", 2)], ["Ad", "Ad"]);
        compare(Board.cardsOf("aD__xx2C"), ["Ad", "2c"]);
        compare(Board.writtenSlots("AdJ?__"), ["Ad", "J?", "", "", ""]);
        for (const [text, street, complete, twice] of [
            ["____Ah", "flop", false, ""], ["adjd8S", "flop", true, ""],
            ["AdJd8", "flop", false, ""], ["Ad Jd 8s 2c", "turn", true, ""],
            ["AdJd8s2cJD", "river", true, "Jd"], ["AdJd8s2cTh9h", "river", false, ""]]) {
            compare([Board.streetOf(text), Board.isComplete(text), Board.cardTwice(text)],
                    [street, complete, twice], text);
        }
    }

    function test_profileComesBack(): void {
        const state = Object.assign(Presets.quickSpot(2), {
            ipRiverAddAllIn: true, oopTurnDontDonk: true, ipAddAllInIfJamLtPct: 12.5,
            exactAllIn: true});
        const data = JSON.parse(JSON.stringify(Profiles.snapshotOf(state)));
        compare([data.target_exploitability_pct, data.oop_turn_dont_donk, data.exact_all_in],
                [0.5, true, true]);
        const settings = Profiles.settingsOf(data, 1);
        for (const [property, value] of Object.entries(settings)) {
            compare(value, state[property], property);
        }
        const kept = ["boardText", "oopRangeText", "ipRangeText", "betSizesText", "threadCount"];
        compare(Presets.PROJECT_KEYS.filter(key => !(key in settings)).sort(), kept.sort());
    }

    // Older ones lack things, have the target in chips, of the pot that they set or the present one,
    // and one jam threshold for both seats.
    function test_olderProfiles(): void {
        const bare = Profiles.settingsOf({oop_flop_bet_sizes: 33}, 10);
        compare(Object.keys(bare).filter(key => /starting|Pot|Pct$|target/.test(key)), []);
        compare([bare.oopFlopBetSizesText, bare.ipRiverRaiseSizesText, bare.oopRiverDontDonk,
                 bare.ipAddAllInIfJamLtEnabled, bare.exactAllIn], ["33", "", false, false, false]);
        for (const [data, pot, expected] of [
            [{target_exploitability_pct: 0.25, target_exploitability: 9}, 10, 0.25],
            [{target_exploitability: 1.8, starting_pot: 180}, 10, 1],
            [{target_exploitability: 1.8}, 90, 2], [{target_exploitability: 1.8}, 0, 1.8]]) {
            fuzzyCompare(Profiles.settingsOf(data, pot).targetExploitability, expected, 1e-12);
        }
        const jam = Profiles.settingsOf({
            add_all_in_jam_threshold_enabled: true, add_all_in_jam_threshold_pct: 40,
            ip_add_all_in_jam_threshold_enabled: false, ip_add_all_in_jam_threshold_pct: 7}, 10);
        compare([jam.ipAddAllInIfJamLtEnabled, jam.ipAddAllInIfJamLtPct], [true, 40]);
    }

    function test_storedProfiles(): void {
        for (const [json, names] of [
            ["[{", null], ['{"name": "A"}', null], ["[]", []],
            ['[null, 3, {"id": "x"}, {"name": " "}, {"name": "A"}]', ["A"]]]) {
            const profiles = Profiles.parsedProfiles(json);
            compare(profiles && profiles.map(profile => profile.name), names);
        }
        const [{id, createdAt, data}] = Profiles.parsedProfiles('[{"name": "A"}]');
        verify(/^n_[0-9a-z]+_[0-9a-z]{6}$/.test(id) && createdAt === "");
        compare(data, {});
        const whole = [{id: "7", name: "B", createdAt: "then", data: {rake_cap: 2}}];
        compare(Profiles.parsedProfiles(JSON.stringify(whole)), whole);
        const taken = ["A", "A (2)"].map(name => ({name}));
        compare([" A ", "A (2)", "B"].map(name => Profiles.uniqueName(name, taken)),
                ["A (3)", "A (2) (2)", "B"]);
    }

    function test_status(): void {
        for (const [text, phase, iteration, exploitability] of [
            ["Starting...", "starting", 0, NaN], ["Init: tree", "initializing", 0, NaN],
            ["Iter 51 | exploitability≈12.3456", "", 51, 12.3456],
            ["Finalizing: x", "finalizing", 0, NaN], ["Iter 3 | exploitability≈nan", "", 3, NaN]]) {
            compare([Status.phaseOf(text), Status.iterationOf(text), Status.exploitabilityOf(text)],
                    [phase, iteration, exploitability], text);
        }
        compare([NaN, 0, 0.05, 0.1, 0.5, 1].map(target => Status.expectedIterations(target, 400)),
                [400, 400, 400, 300, 200, 150]);
        compare([Status.expectedIterations(1, 60), Status.expectedIterations(0, 0)], [60, 1]);
        compare([0, 1, 10, 11, 20].map(Status.windowPosition), [0, 1, 10, 1, 10]);
        compare([0, 59.9, 60, 6001].map(Status.minutesText), ["00:00", "00:59", "01:00", "100:01"]);
    }

    function test_threads(): void {
        compare([Status.threadCounts(1), Status.threadCounts(12)], [[1], [1, 2, 4, 8, 12]]);
        const state = count => Object.assign(Presets.quickSpot(count),
                                             {controller: {systemThreadCount: 4}});
        compare([3, 4, 64, -1].map(count => SolveConfig.solveConfig(state(count)).thread_count),
                [3, 4, 4, 4]);
        // A result from before there was the option is one without it.
        const exact = Object.assign(state(4), {exactAllIn: true});
        const [config, old] = [exact, state(4)].map(SolveConfig.solveConfig);
        delete old.exact_all_in;
        verify(!SolveConfig.isSameSpot(config, old) && SolveConfig.isSameSpot(config, {}));
    }

    // The piece that is wrong is named.
    function test_rangeChecks(): void {
        for (const [text, board, message] of [
            ["", "AhKd2c", ""], ["QQ+, A5s-A2s:0.5 ,AhKh,", "AhKd", ""], [" 50% ", "", ""],
            ["AA, K As", "", "“K As”: the higher rank comes first"],
            ["KK:1.5", "", "“KK:1.5”: a weight lies between 0 and 1, a percentage up to 100"],
            ["150%", "", "“150%”: a weight lies between 0 and 1, a percentage up to 100"],
            ["AA, ZZ", "", "“ZZ”: not a hand: ranks are A, K, Q, J, T and 9 to 2"],
            ["AA, " + "K".repeat(99), "",
             `“${"K".repeat(31)}…”: not a hand such as AA, AKs or AhKh`],
            ["AA,AA:0", "", "no hand has a weight above 0"],
            ["AhKd, AKs:0", "Ah7c2d", "every hand holds a card of the board"]]) {
            compare(TextChecks.checkRange(text, board), message, text);
        }
    }

    function test_sizeChecks(): void {
        const relative = "a multiple of the bet is a size for raises only";
        const stray = "not a size such as 33, 75%, 2e or a";
        for (const [text, piece, bet, raise] of [
            ["", "", "", ""], ["33, 75%, 2e, 500c, a", "", "", ""], [" - ", "", "", ""],
            ["50, 2.5x", "2.5x", relative, ""], ["33, x ", "x", stray, stray],
            ["1x", "1x", relative, "a raise is more than 1x the bet"],
            ["33 75", "33 75", stray, stray], ["-50", "-50", stray, stray]]) {
            const expected = [bet, raise].map(why => why && `“${piece}”: ${why}`);
            compare([TextChecks.checkBetSizes(text), TextChecks.checkRaiseSizes(text)], expected);
        }
    }

    name: "SetupLogic"
}
