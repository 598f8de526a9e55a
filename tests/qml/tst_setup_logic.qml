import QtQuick
import QtTest
import Tidewell

import "../../qml/logic/board_text.mjs" as Board
import "../../qml/logic/node_id.mjs" as NodeId
import "../../qml/logic/presets.mjs" as Presets
import "../../qml/logic/settings_profiles.mjs" as Profiles
import "../../qml/logic/solve_status.mjs" as Status

TestCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
    }

    // Rows named by one of their values.
    function tagged(rows: var, key: string): var {
        return rows.map(row => Object.assign({tag: row[key] || "empty"}, row));
    }

    function test_board_withCard_data(): var {
        return [
            {tag: "first", text: "", slot: 0, card: "Ah", expected: "Ah"},
            {tag: "third first", text: "", slot: 2, card: "Ah", expected: "____Ah"},
            {tag: "into the gap", text: "____Ah", slot: 0, card: "Kd", expected: "Kd__Ah"},
            {tag: "replaces", text: "AdJd8s", slot: 1, card: "2c", expected: "Ad2c8s"},
            {tag: "white space", text: " Ad Jd\t8s\n", slot: 3, card: "2c", expected: "AdJd8s2c"},
            {tag: "odd character", text: "AdJ", slot: 1, card: "2c", expected: "Ad2c"}
        ];
    }

    function test_board_withCard(row: var): void {
        compare(Board.withCard(row.text, row.slot, row.card), row.expected);
    }

    function test_board_clearedFrom_data(): var {
        return [
            {tag: "last", text: "AdJd8s", slot: 2, expected: "AdJd"},
            {tag: "and all behind", text: "AdJd8s2cTh", slot: 1, expected: "Ad"},
            {tag: "leaves no gap at the end", text: "Ad__8s", slot: 2, expected: "Ad"},
            {tag: "all", text: "AdJd8s2cTh", slot: 0, expected: ""}
        ];
    }

    function test_board_clearedFrom(row: var): void {
        compare(Board.clearedFrom(row.text, row.slot), row.expected);
    }

    function test_board_streetAndCompleteness_data(): var {
        return tagged([
            {text: "", street: "flop", complete: false},
            {text: "AdJd", street: "flop", complete: false},
            {text: "____Ah", street: "flop", complete: false},
            {text: "adjd8S", street: "flop", complete: true},
            {text: "AdJd8", street: "flop", complete: false},
            {text: "AdJdxx", street: "flop", complete: false},
            {text: "Ad Jd 8s 2c", street: "turn", complete: true},
            {text: "AdJd8s__2c", street: "turn", complete: false},
            {text: "AdJd8s2cTh", street: "river", complete: true},
            {text: "AdJd8s2cTh9h", street: "river", complete: false}
        ], "text");
    }

    function test_board_streetAndCompleteness(row: var): void {
        compare(Board.streetOf(row.text), row.street);
        compare(Board.isComplete(row.text), row.complete);
    }

    function test_board_cards(): void {
        compare(Board.cardsOf("aD__xx2C"), ["Ad", "2c"]);
        compare(Board.writtenSlots("AdJ?__"), ["Ad", "J?", "", "", ""]);
    }

    function test_nodeIds(): void {
        const ids = new Set();
        for (let i = 0; i < 1000; ++i) {
            const id = NodeId.newNodeId();
            verify(/^n_[0-9a-z]+_[0-9a-z]{6}$/.test(id), id);
            ids.add(id);
        }
        compare(ids.size, 1000);
    }

    function test_profiles_snapshotComesBack(): void {
        const state = Presets.quickSpot(2);
        state.ipRiverAddAllIn = true;
        state.oopTurnDontDonk = true;
        state.ipAddAllInIfJamLtPct = 12.5;
        const data = JSON.parse(JSON.stringify(Profiles.snapshotOf(state)));
        compare(Object.keys(data).length, 32);
        compare(data.target_exploitability_pct, 0.5);
        compare(data.oop_turn_dont_donk, true);
        const settings = Profiles.settingsOf(data, 1);
        for (const [property, value] of Object.entries(settings)) {
            compare(value, state[property], property);
        }
        const kept = ["boardText", "oopRangeText", "ipRangeText", "betSizesText", "threadCount"];
        compare(Presets.PROJECT_KEYS.filter(key => !(key in settings)).sort(), kept.sort());
    }

    function test_profiles_whatIsMissing(): void {
        const settings = Profiles.settingsOf({oop_flop_bet_sizes: 33}, 10);
        for (const property of ["startingPot", "maxIterations", "startingStreet",
                                "targetExploitability", "oopAddAllInIfJamLtPct"]) {
            verify(!(property in settings), property);
        }
        compare(settings.oopFlopBetSizesText, "33");
        compare(settings.ipRiverRaiseSizesText, "");
        compare(settings.oopRiverDontDonk, false);
        compare(settings.ipAddAllInIfJamLtEnabled, false);
    }

    function test_profiles_target_data(): var {
        return [
            {tag: "percent", data: {target_exploitability_pct: 0.25, target_exploitability: 9},
             pot: 10, expected: 0.25},
            {tag: "chips of the pot just set",
             data: {target_exploitability: 1.8, starting_pot: 180}, pot: 10, expected: 1},
            {tag: "chips of the present pot", data: {target_exploitability: 1.8}, pot: 90,
             expected: 2},
            {tag: "chips without a pot", data: {target_exploitability: 1.8}, pot: 0, expected: 1.8},
            {tag: "chips of a pot that is none", data: {target_exploitability: 1.8}, pot: NaN,
             expected: 1.8}
        ];
    }

    function test_profiles_target(row: var): void {
        fuzzyCompare(Profiles.settingsOf(row.data, row.pot).targetExploitability, row.expected,
                     1e-12);
    }

    function test_profiles_olderJam(): void {
        const settings = Profiles.settingsOf({
            add_all_in_jam_threshold_enabled: true,
            add_all_in_jam_threshold_pct: 40,
            ip_add_all_in_jam_threshold_enabled: false,
            ip_add_all_in_jam_threshold_pct: 7
        }, 10);
        compare([settings.oopAddAllInIfJamLtEnabled, settings.ipAddAllInIfJamLtEnabled],
                [true, true]);
        compare([settings.oopAddAllInIfJamLtPct, settings.ipAddAllInIfJamLtPct], [40, 40]);
    }

    function test_profiles_stored_data(): var {
        return [
            {tag: "no JSON", json: "[{", names: null},
            {tag: "no list", json: '{"name": "A"}', names: null},
            {tag: "empty", json: "[]", names: []},
            {tag: "without names", json: '[null, 3, {"id": "x"}, {"name": " "}, {"name": "A"}]',
             names: ["A"]}
        ];
    }

    function test_profiles_stored(row: var): void {
        const profiles = Profiles.parsedProfiles(row.json);
        compare(profiles && profiles.map(profile => profile.name), row.names);
    }

    function test_profiles_mended(): void {
        const [profile] = Profiles.parsedProfiles('[{"name": "A"}]');
        verify(profile.id.startsWith("n_"));
        compare([profile.createdAt, profile.data], ["", {}]);
        const whole = [{id: "7", name: "B", createdAt: "then", data: {rake_cap: 2}}];
        compare(Profiles.parsedProfiles(JSON.stringify(whole)), whole);
    }

    function test_profiles_names(): void {
        const profiles = [];
        for (const name of ["A", " A ", "A", "A (2)", "B"]) {
            profiles.push({name: Profiles.uniqueName(name, profiles)});
        }
        compare(profiles.map(profile => profile.name), ["A", "A (2)", "A (3)", "A (2) (2)", "B"]);
    }

    function test_status_data(): var {
        return tagged([
            {text: "Starting...", phase: "starting", iteration: 0, exploitability: NaN},
            {text: "Init: building game object...", phase: "initializing", iteration: 0,
             exploitability: NaN},
            {text: "Iter 51 | exploitability≈12.3456", phase: "", iteration: 51,
             exploitability: 12.3456},
            {text: "Iter 7 | exploitability≈0", phase: "", iteration: 7, exploitability: 0},
            {text: "Finalizing: computing results...", phase: "finalizing", iteration: 0,
             exploitability: NaN},
            {text: "Cancelling...", phase: "", iteration: 0, exploitability: NaN},
            {text: "Iter 3 | exploitability≈nan", phase: "", iteration: 3, exploitability: NaN}
        ], "text");
    }

    function test_status(row: var): void {
        compare(Status.phaseOf(row.text), row.phase);
        compare(Status.iterationOf(row.text), row.iteration);
        compare(Status.exploitabilityOf(row.text), row.exploitability);
    }

    function test_status_wholeWay_data(): var {
        const rows = [
            {target: NaN, most: 400, expected: 400},
            {target: 0, most: 400, expected: 400},
            {target: -1, most: 400, expected: 400},
            {target: 0.05, most: 400, expected: 400},
            {target: 0.1, most: 400, expected: 300},
            {target: 0.5, most: 400, expected: 200},
            {target: 1, most: 400, expected: 150},
            {target: 1, most: 60, expected: 60},
            {target: 0, most: 0, expected: 1}
        ];
        for (const row of rows) {
            row.tag = `${row.target} in ${row.most}`;
        }
        return rows;
    }

    function test_status_wholeWay(row: var): void {
        compare(Status.expectedIterations(row.target, row.most), row.expected);
    }

    function test_status_windows(): void {
        const positions = [[0, 0], [1, 1], [9, 9], [10, 10], [11, 1], [20, 10], [21, 1]];
        for (const [iteration, position] of positions) {
            compare(Status.windowPosition(iteration), position);
        }
        for (const [iteration, settling] of [[0, false], [1, true], [50, true], [51, false]]) {
            compare(Status.isSettling(iteration), settling);
        }
        const times = [[0, "00:00"], [59.9, "00:59"], [60, "01:00"], [6001, "100:01"]];
        for (const [seconds, text] of times) {
            compare(Status.minutesText(seconds), text);
        }
    }

    function test_status_threads_data(): var {
        return [
            {tag: "1", counts: [1]},
            {tag: "2", counts: [1, 2]},
            {tag: "12", counts: [1, 2, 4, 8, 12]},
            {tag: "128", counts: [1, 2, 4, 8, 16, 32, 64, 128]},
            {tag: "192", counts: [1, 2, 4, 8, 16, 32, 64, 128, 192]}
        ];
    }

    function test_status_threads(row: var): void {
        compare(Status.threadCounts(Number(row.tag)), row.counts);
    }

    function test_checks_range_data(): var {
        return tagged([
            {text: "", message: ""},
            {text: "QQ+, A5s-A2s:0.5 ,AhKh", message: ""},
            {text: " 50% ", message: ""},
            {text: "KAs", message: "First rank must be >= second rank"},
            {text: "AA, KK:1.5", message: "Weight must be within [0, 1]"},
            {text: "150%", message: "Weight must be within [0, 1]"},
            {text: "AKß", message: "Invalid combo pattern length"}
        ], "text");
    }

    function test_checks_range(row: var): void {
        compare(TextChecks.checkRange(row.text), row.message);
    }

    function test_checks_sizes_data(): var {
        return tagged([
            {text: "", bet: "", raise: ""},
            {text: "33, 75%, 2e, 500c, a", bet: "", raise: ""},
            {text: "2.5x", bet: "Relative raise (x) is not allowed in this context", raise: ""},
            {text: "33, x", bet: "Sizing: invalid token 'x'", raise: "Sizing: invalid token 'x'"},
            {text: "1x", bet: "Relative raise (x) is not allowed in this context",
             raise: "Relative raise must exceed 1.0x"},
            {text: "1.2.3", bet: "Failed to parse floating-point number from '1.2.3' "
                                 + "(hex=312e322e33)",
             raise: "Failed to parse floating-point number from '1.2.3' (hex=312e322e33)"}
        ], "text");
    }

    function test_checks_sizes(row: var): void {
        for (const addAllIn of [false, true]) {
            compare(TextChecks.checkBetSizes(row.text, addAllIn), row.bet);
            compare(TextChecks.checkRaiseSizes(row.text, addAllIn), row.raise);
        }
    }

    name: "SetupLogic"
}
