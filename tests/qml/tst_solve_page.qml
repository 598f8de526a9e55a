import QtQuick
import Tidewell

import "finding.mjs" as Finding
import "../../qml/logic/presets.mjs" as Presets
import "../../qml/logic/solve_config.mjs" as SolveConfig
import "result_spots.mjs" as Spots

// The page by mouse and keys, on the program's own controller, and on one that says what no spot
// can be brought to say at a given time.
DocumentCase {
    id: test

    readonly property Component pretender: QtObject {
        property bool running: false
        property real progress: 0
        property string statusText: ""
        property int resultIterations: 0
        property real resultExploitability: 0
        property real resultStartingPot: 10
        property int systemThreadCount: 2
        property QtObject run: QtObject {
            property real startingPot: 10
            property real target: 0.05
            property real exploitability: -1
            readonly property real exploitabilityPercent: 10 * exploitability
            property int expectedIterations: 0
            property bool stoppedAtLimit: false
            property var measurements: []

            signal began
            signal measured
            signal ended

            function seconds(): real {
                return 2;
            }
            function remainingSeconds(): real {
                return expectedIterations > 0 ? 38 : -1;
            }
        }
    }

    // All twelve sizes are alike.
    function initTestCase(): void {
        Presets.SIZING_KEYS.forEach(key => page[key] = "50");
    }

    function init(): void {
        failOnWarning(/.?/);
        finish(() => controller.cancelSolve());
        controller.clearResults();
        page.controller = controller;
        page.maxIterations = 40;
        page.targetExploitability = 0;
        page.threadCount = page.maxThreadCount;
        mouseClick(find("clearRuns"));
    }

    function find(name: string): var {
        const item = findChild(page, name);
        verify(item, name);
        return item;
    }

    function statuses(): var {
        return page.runs.map(run => run.status);
    }

    function finish(begin: var): void {
        begin();
        tryVerify(() => !controller.running, 60000);
    }

    // A controller in the middle of a run.
    function pretend(values: var): void {
        page.controller = make(pretender, values);
        waitForRendering(page, 50);
    }

    function figure(value: real, digits: int): string {
        return value.toLocaleString(Qt.locale(), "f", digits);
    }

    function test_spot(): void {
        compare([find("street").text, find("money").text, find("rake").text, find("options").text],
                ["RIVER", "10 / 40", "5% (cap 3)", "None"]);
        page.ipTurnBetSizesText = " ";
        compare(find("betSizes").text, "F 50/50 • T 50/— • R 50/50");
        compare(find("start").Accessible.description,
                "IP bet sizes on the turn are empty; - stands for no sizes");
        page.ipTurnBetSizesText = "50";
        page.targetExploitability = 0.5;
        compare(find("target").text, `${figure(0.5, 1)}% (= ${figure(0.05, 2)})`);
        mouseClick(find("exactAllIn"), 10, 10);
        const flags = ["oopRiverDontDonk", "ipAddAllInIfJamLtEnabled"];
        flags.forEach(flag => page[flag] = true);
        compare(find("options").text, "• OOP: don't donk on river\n"
                                      + "• IP: add all-in if jam < 150% pot\n• Exact all-in odds");
        flags.forEach(flag => page[flag] = false);
        page.exactAllIn = false;
        mouseClick(find("aboutAllIns"));
        const dialog = Finding.inTree(page, item => item instanceof AllInDialog);
        tryVerify(() => dialog.opened && dialog.document.includes("1176 pairs"));
        keyClick(Qt.Key_Escape);
        tryVerify(() => !dialog.visible);
    }

    // By keys alone: the keyboard is always on the button that is wanted next.
    function test_runs(): void {
        verify(!find("cancel").enabled && !find("viewResults").enabled);
        find("start").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compare(statuses(), ["Running"]);
        tryVerify(() => find("viewResults").activeFocus, 60000);
        compare([statuses(), page.progressWheelValue, page.currentIteration],
                [["Completed"], 1, 40]);
        compare([find("statusLine").text, find("windowCaption").text, page.runs[0].summary],
                ["Done", "Iterations: 40", `Iterations 40 • Target 0% (≈ ${figure(0, 2)}) • Threads `
                                           + page.threadCount]);
        // Of this run, however short it was.
        verify(/^0\.\d\d s$/.test(find("elapsed").value), find("elapsed").value);
        fuzzyCompare(page.iterationsPerSec, 40 / controller.run.seconds(), 1e-6);
        compare(find("exploitability").unit,
                figure(controller.resultExploitability, 4) + " chips");
        compare([find("viewResults").quiet, find("start").quiet], [false, true]);
        const gone = spyOn(page, "goToResults");
        keyClick(Qt.Key_Return);
        compare(gone.count, 1);

        // Elsewhere begun, and stopped before its target: the list tells, and gives the spot back.
        const spot = spyOn(page, "spotRequested");
        finish(() => controller.startSolveWithConfig(
            Object.assign({}, Spots.river, {target_exploitability: 1e-5})));
        compare(statuses(), ["Completed", "Completed"]);
        verify(/^Stopped at 40 iterations, [\d.]+ % \(target 0\.0001 %\)$/.test(
            find("statusLine").text), find("statusLine").text);
        find("runs").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        compare(SolveConfig.stateOf(spot.signalArguments[0][0]).targetExploitability, 0.0001);
        compare(spot.signalArguments[0][0].board, Spots.river.board);
        verify(find("convergence").visible);
        verify(find("convergence").tipText(0).startsWith("Iteration 40\n"));

        // Cancelled here, and by a key of the shell.
        page.maxIterations = 5000000;
        for (const cancel of [() => keyClick(Qt.Key_Return), controller.cancelSolve]) {
            find("start").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => page.currentIteration > 0 && find("cancel").activeFocus, 60000);
            verify(!find("start").enabled && !find("threads").enabled);
            cancel();
            tryVerify(() => find("start").activeFocus, 60000);
            compare([statuses()[0], find("statusLine").text], ["Cancelled", "Cancelled"]);
        }

        page.maxIterations = 40;
        const refusal = "Not ready: fill out both OOP and IP sizing";
        for (const [key, bad, status, reason, line] of [
            ["oopFlopBetSizesText", "", "Refused", refusal, refusal],
            ["oopRangeText", "AA, XX", "Failed", "Invalid rank character",
             "Error: Invalid rank character"]]) {
            const good = page[key];
            page[key] = bad;
            finish(page.startSolve);
            page[key] = good;
            compare([statuses()[0], page.runs[0].reason, find("statusLine").text],
                    [status, reason, line]);
        }
        mouseClick(find("clearRuns"));
        compare(page.runs.length, 0);
    }

    function test_progress(): void {
        const iter = (number, value) => `Iter ${number} | exploitability≈${value}`;
        for (const [status, line, ring, windowed, chips, expected] of [
            ["Starting...", "Starting solver…", 0, 0, -1, 0],
            ["Init: tree", "Initializing…", 0, 0, -1, 0],
            [iter(20, "0.0000"), "Iteration 20 | exploitability=—", 0, 10, -1, 0],
            [iter(50, "31.0"), "Iteration 50 | exploitability=3.10 %", 0.125, 10, 0.31, 400],
            [iter(1001, "0.12"), `Iteration ${figure(1001, 0)} | exploitability=0.012 %`, 1, 1,
             0.0012, 1000],
            ["Thinking", "Thinking", 0, 0, -1, 0]]) {
            pretend({running: true, statusText: status});
            Object.assign(page.controller.run, {exploitability: chips, expectedIterations: expected});
            compare([find("statusLine").text, find("ring").indeterminate], [line, expected === 0]);
            fuzzyCompare(find("ring").value, ring, 1e-6);
            compare([page.iterationWindowValue, find("exploitability").unit],
                    [windowed, chips >= 0 ? `${figure(chips, 4)} chips` : ""]);
        }
        page.controller.running = false;
        page.controller.running = true;
        verify(find("cancel").enabled);
        page.controller.statusText = "Cancelling...";
        page.controller.statusText = "Iter 61 | exploitability≈1";
        compare([find("statusLine").text, find("cancel").enabled], ["Cancelling...", false]);
        page.controller = null;
        compare(find("statusLine").text, "Ready to solve");
    }

    // The ring stays where it was until there are results.
    function test_finalizing(): void {
        pretend({running: true, statusText: "Iter 20 | exploitability≈2.0"});
        page.controller.run.expectedIterations = 200;
        tryCompare(page, "estimatedRemaining", "00:38", 4000);
        compare(page.elapsedTime, "00:02");
        compare([page.iterationsPerSec, page.estimatedRemaining], [10, "00:38"]);
        page.controller.statusText = "Iter 60 | exploitability≈2.0";
        page.controller.statusText = "Finalizing: results";
        tryCompare(find("statusLine"), "text", "Finalizing…");
        verify(find("finalizingLine").visible && page.currentIteration === 60);
        fuzzyCompare(find("ring").value, 0.3, 1e-6);
        Object.assign(page.controller, {resultIterations: 60, resultExploitability: 0.02,
                                        statusText: "Done"});
        page.controller.running = false;
        compare([find("ring").value, find("exploitability").value, page._lastIterFromStatusText],
                [1, "0.20 %", 0]);
        compare([page.elapsedTime, page.estimatedRemaining], ["00:02", "00:00"]);
    }

    // The box tells the number that is used, also where a project asks for another.
    function test_threads(): void {
        const box = find("threads");
        page.threadCount = 12;
        pretend({systemThreadCount: 1});
        compare([Array.from(box.model), page.threadCount], [["Max, 1 thread", "1 thread"], 1]);
        pretend({systemThreadCount: 12});
        compare(Array.from(box.model), ["Max, 12 threads", "1 thread", "2 threads", "4 threads",
                                        "8 threads", "12 threads"]);
        box.forceActiveFocus(Qt.TabFocusReason);
        page.threadCount = 12;
        keys([Qt.Key_Down, Qt.Key_Down]);
        compare([page.threadCount, box.displayText], [2, "2 threads"]);
        page.threadCount = 3;
        compare([box.displayText, find("threadsLimited").visible], ["3 threads", false]);
        page.threadCount = 64;
        compare([box.displayText, find("threadsLimited").text],
                ["Max, 12 threads", "The project asks for 64 threads, this machine has 12 threads."]);
        verify(find("threadsLimited").visible);
        pretend({systemThreadCount: 2});
        compare(page.threadCount, 2);
    }

    name: "SolvePage"
    width: 1280
    height: 1100

    SolvePage {
        id: page

        anchors.fill: parent
        solveProgress: SolveProgress {
            controller: page.controller
            maxIterations: page.maxIterations
            targetExploitability: page.targetExploitability
        }
        runHistory: RunHistory {
            controller: page.controller
        }
        spotCheck: SpotCheck {
            spot: page
            controller: page.controller
            canSolve: page.canSolve
        }
        canSolve: true
        boardText: Spots.river.board
        startingStreet: "river"
        startingPot: 10
        effectiveStack: 40
        rakePercent: 5
        rakeCap: 3
        oopRangeText: Spots.river.oop_range
        ipRangeText: Spots.river.ip_range
        ipAddAllInIfJamLtPct: 150
    }
}
