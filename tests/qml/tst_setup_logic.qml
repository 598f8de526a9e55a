import QtTest
import Tidewell

import "../../qml/logic/board_text.mjs" as Board
import "../../qml/logic/node_id.mjs" as NodeId
import "../../qml/logic/presets.mjs" as Presets
import "../../qml/logic/settings_profiles.mjs" as Profiles
import "../../qml/logic/solve_status.mjs" as Status

// The text and number work behind the setup and solve pages.
TestCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
    }

    function test_boardEdits(): void {
        for (const [text, slot, card, expected] of [
            ["", 0, "Ah", "Ah"], ["", 2, "Ah", "____Ah"], ["____Ah", 0, "Kd", "Kd__Ah"],
            ["AdJd8s", 1, "2c", "Ad2c8s"], [" Ad Jd\t8s\n", 3, "2c", "AdJd8s2c"],
            ["AdJ", 1, "2c", "Ad2c"]]) {
            compare(Board.withCard(text, slot, card), expected);
        }
        for (const [text, slot, expected] of [
            ["AdJd8s", 2, "AdJd"], ["AdJd8s2cTh", 1, "Ad"], ["Ad__8s", 2, "Ad"],
            ["AdJd8s2cTh", 0, ""]]) {
            compare(Board.clearedFrom(text, slot), expected);
        }
        compare(Board.cardsOf("aD__xx2C"), ["Ad", "2c"]);
        compare(Board.writtenSlots("AdJ?__"), ["Ad", "J?", "", "", ""]);
    }

    function test_boardStreetAndCompleteness(): void {
        for (const [text, street, complete] of [
            ["", "flop", false], ["AdJd", "flop", false], ["____Ah", "flop", false],
            ["adjd8S", "flop", true], ["AdJd8", "flop", false], ["AdJdxx", "flop", false],
            ["Ad Jd 8s 2c", "turn", true], ["AdJd8s__2c", "turn", false],
            ["AdJd8s2cTh", "river", true], ["AdJd8s2cTh9h", "river", false]]) {
            compare([Board.streetOf(text), Board.isComplete(text)], [street, complete], text);
        }
    }

    function test_nodeIds(): void {
        const ids = Array.from({length: 1000}, () => NodeId.newNodeId());
        compare(ids.find(id => !/^n_[0-9a-z]+_[0-9a-z]{6}$/.test(id)), undefined);
        compare(new Set(ids).size, 1000);
    }

    function test_profileComesBack(): void {
        const state = Object.assign(Presets.quickSpot(2), {
            ipRiverAddAllIn: true, oopTurnDontDonk: true, ipAddAllInIfJamLtPct: 12.5});
        const data = JSON.parse(JSON.stringify(Profiles.snapshotOf(state)));
        compare([data.target_exploitability_pct, data.oop_turn_dont_donk], [0.5, true]);
        const settings = Profiles.settingsOf(data, 1);
        for (const [property, value] of Object.entries(settings)) {
            compare(value, state[property], property);
        }
        const kept = ["boardText", "oopRangeText", "ipRangeText", "betSizesText", "threadCount"];
        compare(Presets.PROJECT_KEYS.filter(key => !(key in settings)).sort(), kept.sort());
    }

    function test_profileLacksThings(): void {
        const settings = Profiles.settingsOf({oop_flop_bet_sizes: 33}, 10);
        for (const property of ["startingPot", "maxIterations", "startingStreet",
                                "targetExploitability", "oopAddAllInIfJamLtPct"]) {
            verify(!(property in settings), property);
        }
        compare([settings.oopFlopBetSizesText, settings.ipRiverRaiseSizesText], ["33", ""]);
        compare([settings.oopRiverDontDonk, settings.ipAddAllInIfJamLtEnabled], [false, false]);
    }

    // Older ones have the target in chips, of the pot that they set or the present one, and one jam
    // threshold for both seats.
    function test_olderProfiles(): void {
        for (const [data, pot, expected] of [
            [{target_exploitability_pct: 0.25, target_exploitability: 9}, 10, 0.25],
            [{target_exploitability: 1.8, starting_pot: 180}, 10, 1],
            [{target_exploitability: 1.8}, 90, 2], [{target_exploitability: 1.8}, 0, 1.8],
            [{target_exploitability: 1.8}, NaN, 1.8]]) {
            fuzzyCompare(Profiles.settingsOf(data, pot).targetExploitability, expected, 1e-12);
        }
        const settings = Profiles.settingsOf({
            add_all_in_jam_threshold_enabled: true, add_all_in_jam_threshold_pct: 40,
            ip_add_all_in_jam_threshold_enabled: false, ip_add_all_in_jam_threshold_pct: 7}, 10);
        compare([settings.oopAddAllInIfJamLtEnabled, settings.ipAddAllInIfJamLtEnabled],
                [true, true]);
        compare([settings.oopAddAllInIfJamLtPct, settings.ipAddAllInIfJamLtPct], [40, 40]);
    }

    function test_storedProfiles(): void {
        for (const [json, names] of [
            ["[{", null], ['{"name": "A"}', null], ["[]", []],
            ['[null, 3, {"id": "x"}, {"name": " "}, {"name": "A"}]', ["A"]]]) {
            const profiles = Profiles.parsedProfiles(json);
            compare(profiles && profiles.map(profile => profile.name), names);
        }
        const [mended] = Profiles.parsedProfiles('[{"name": "A"}]');
        verify(mended.id.startsWith("n_"));
        compare([mended.createdAt, mended.data], ["", {}]);
        const whole = [{id: "7", name: "B", createdAt: "then", data: {rake_cap: 2}}];
        compare(Profiles.parsedProfiles(JSON.stringify(whole)), whole);
        const profiles = [];
        for (const name of ["A", " A ", "A", "A (2)", "B"]) {
            profiles.push({name: Profiles.uniqueName(name, profiles)});
        }
        compare(profiles.map(profile => profile.name), ["A", "A (2)", "A (3)", "A (2) (2)", "B"]);
    }

    function test_status(): void {
        for (const [text, phase, iteration, exploitability] of [
            ["Starting...", "starting", 0, NaN],
            ["Init: building game object...", "initializing", 0, NaN],
            ["Iter 51 | exploitability≈12.3456", "", 51, 12.3456],
            ["Iter 7 | exploitability≈0", "", 7, 0],
            ["Finalizing: computing results...", "finalizing", 0, NaN],
            ["Cancelling...", "", 0, NaN],
            ["Iter 3 | exploitability≈nan", "", 3, NaN]]) {
            compare([Status.phaseOf(text), Status.iterationOf(text), Status.exploitabilityOf(text)],
                    [phase, iteration, exploitability], text);
        }
    }

    function test_statusFigures(): void {
        for (const [target, most, expected] of [
            [NaN, 400, 400], [0, 400, 400], [-1, 400, 400], [0.05, 400, 400], [0.1, 400, 300],
            [0.5, 400, 200], [1, 400, 150], [1, 60, 60], [0, 0, 1]]) {
            compare(Status.expectedIterations(target, most), expected, `${target} in ${most}`);
        }
        for (const [iteration, position] of [
            [0, 0], [1, 1], [9, 9], [10, 10], [11, 1], [20, 10], [21, 1]]) {
            compare(Status.windowPosition(iteration), position);
        }
        for (const [iteration, settling] of [[0, false], [1, true], [50, true], [51, false]]) {
            compare(Status.isSettling(iteration), settling);
        }
        for (const [seconds, text] of [[0, "00:00"], [59.9, "00:59"], [60, "01:00"],
                                       [6001, "100:01"]]) {
            compare(Status.minutesText(seconds), text);
        }
        for (const counts of [[1], [1, 2], [1, 2, 4, 8, 12], [1, 2, 4, 8, 16, 32, 64, 128],
                              [1, 2, 4, 8, 16, 32, 64, 128, 192]]) {
            compare(Status.threadCounts(counts[counts.length - 1]), counts);
        }
    }

    function test_rangeChecks(): void {
        for (const [text, message] of [
            ["", ""], ["QQ+, A5s-A2s:0.5 ,AhKh", ""], [" 50% ", ""],
            ["KAs", "First rank must be >= second rank"],
            ["AA, KK:1.5", "Weight must be within [0, 1]"],
            ["150%", "Weight must be within [0, 1]"],
            ["AKß", "Invalid combo pattern length"]]) {
            compare(TextChecks.checkRange(text), message, text);
        }
    }

    function test_sizeChecks(): void {
        const relative = "Relative raise (x) is not allowed in this context";
        const stray = "Sizing: write sizes such as 33, 75.5, 2e or a, with commas between them";
        const number = "Failed to parse floating-point number from '1.2.3' (hex=312e322e33)";
        for (const [text, bet, raise] of [
            ["", "", ""], ["33, 75%, 2e, 500c, a", "", ""], ["2.5x", relative, ""],
            ["33, x", "Sizing: invalid token 'x'", "Sizing: invalid token 'x'"],
            ["1x", relative, "Relative raise must exceed 1.0x"], ["1.2.3", number, number],
            [" 33 % ,75,", "", ""], [" - ", "", ""], ["33 75", stray, stray], ["-50", stray, stray],
            ["50 foo", stray, stray], ["50,,75", stray, stray]]) {
            for (const addAllIn of [false, true]) {
                compare(TextChecks.checkBetSizes(text, addAllIn), bet);
                compare(TextChecks.checkRaiseSizes(text, addAllIn), raise);
            }
        }
    }

    name: "SetupLogic"
}
