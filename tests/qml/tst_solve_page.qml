import QtQuick
import Tidewell

import "../../qml/logic/presets.mjs" as Presets
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
        property int systemThreadCount: 2
    }

    function init(): void {
        failOnWarning(/.?/);
        controller.cancelSolve();
        tryVerify(() => !controller.running, 60000);
        controller.clearResults();
        page.controller = controller;
        page.maxIterations = 40;
        page.targetExploitability = 0;
        page.threadCount = page.maxThreadCount;
        if (find("clearRuns").enabled) {
            mouseClick(find("clearRuns"));
        }
    }

    function find(name: string): var {
        const item = findChild(page, name);
        verify(item, name);
        return item;
    }

    function statuses(): var {
        return page.runs.map(run => run.status);
    }

    function run(): void {
        mouseClick(find("start"));
        tryVerify(() => !controller.running, 60000);
    }

    // All twelve sizes are alike.
    function initTestCase(): void {
        for (const key of Presets.SIZING_KEYS) {
            page[key] = "50";
        }
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
        page.ipTurnBetSizesText = "50";
        page.targetExploitability = 0.5;
        compare(find("target").text, `${figure(0.5, 1)}% (= ${figure(0.05, 2)})`);
        const flags = ["ipTurnAddAllIn", "oopRiverDontDonk", "ipAddAllInIfJamLtEnabled"];
        flags.forEach(flag => page[flag] = true);
        compare(find("options").text, "• OOP: don't donk on river\n• IP: add all-in on turn\n"
                                      + "• IP: add all-in if jam < 150% pot");
        flags.forEach(flag => page[flag] = false);
    }

    function test_runs(): void {
        verify(!find("cancel").enabled && !find("viewResults").enabled);
        verify(find("noRuns").visible);

        find("start").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        verify(controller.running);
        compare(statuses(), ["Running"]);
        tryVerify(() => !controller.running, 60000);
        compare([statuses(), page.progressWheelValue, page.currentIteration],
                [["Completed"], 1, 40]);
        compare([find("statusLine").text, find("windowCaption").text], ["Done", "Iterations: 40"]);
        verify(/^\d\d:\d\d:\d\d$/.test(page.runs[0].startedAt));
        compare(page.runs[0].summary,
                `Iterations 40 • Target 0% (≈ ${figure(0, 2)}) • Threads ${page.threadCount}`);
        const gone = spyOn(page, "goToResults");
        mouseClick(find("viewResults"));
        compare(gone.count, 1);

        // Elsewhere begun and ended: no matter of the list.
        controller.startSolveWithConfig(Spots.river);
        tryVerify(() => !controller.running, 60000);
        compare(statuses(), ["Completed"]);

        page.maxIterations = 5000000;
        mouseClick(find("start"));
        tryVerify(() => page.currentIteration > 0, 60000);
        verify(!find("start").enabled);
        mouseClick(find("cancel"));
        tryVerify(() => !controller.running, 60000);
        compare(statuses(), ["Cancelled", "Completed"]);

        page.maxIterations = 1;
        Array(9).fill(0).forEach(() => run());
        compare([page.runs.length, page.runs[0].runId - page.runs[9].runId, statuses()[9]],
                [10, 9, "Cancelled"]);
        mouseClick(find("clearRuns"));
        compare(page.runs.length, 0);
    }

    // The status line tells why. What was refused at once is no run.
    function test_badSpots(): void {
        page.oopFlopBetSizesText = "";
        mouseClick(find("start"));
        page.oopFlopBetSizesText = "50";
        compare(find("statusLine").text, "Not ready: fill out both OOP and IP sizing");
        compare(page.runs.length, 0);

        page.oopRangeText = "AA, XX";
        run();
        page.oopRangeText = Spots.river.oop_range;
        verify(find("statusLine").text.startsWith("Error: "), find("statusLine").text);
        compare(statuses(), ["Completed"]);

        page.controller = null;
        compare(find("statusLine").text, "Ready to solve");
    }

    function test_progress_data(): var {
        const iter = (number, value) => `Iter ${number} | exploitability≈${value}`;
        return [
            {tag: "starting", status: "Starting...", line: "Starting solver…", wait: true},
            {tag: "building", status: "Init: tree", line: "Initializing…", wait: true},
            {tag: "early", status: iter(50, "3.1234"), ring: 50 / 200, shown: "∞", window: 10,
             metric: 3.1234},
            {tag: "settled", status: iter(51, "3.1234"), ring: 51 / 200, shown: 3.1234, window: 1,
             metric: 3.1234},
            {tag: "beyond the scale", status: iter(300, "1"), ring: 1, shown: 1, window: 10,
             metric: 1},
            {tag: "tight target", target: 0.05, status: iter(100, "1"), ring: 0.25, shown: 1,
             window: 10, metric: 1},
            {tag: "raw", status: "Thinking", progress: 0.1, ring: 0.2, shown: "∞", window: 10},
            {tag: "raw, nothing done", status: "Thinking", line: "Thinking", wait: true}
        ];
    }

    function test_progress(row): void {
        const shown = typeof row.shown === "number" ? figure(row.shown, 2) : row.shown;
        page.maxIterations = 400;
        page.targetExploitability = row.target ?? 0.5;
        pretend({running: true, statusText: row.status, progress: row.progress ?? 0});
        compare(find("statusLine").text, row.line
            ?? `Iteration ${page.currentIteration} | exploitability=${shown}`);
        compare(find("ring").indeterminate, row.wait ?? false);
        fuzzyCompare(find("ring").value, row.ring ?? 0, 1e-6);
        compare(page.iterationWindowValue, row.window ?? 0);
        compare(find("exploitability").value,
                row.metric ? figure(row.metric, 4) : "Measuring...");
    }

    // The ring stays where it was until there are results.
    function test_finalizing(): void {
        page.maxIterations = 400;
        page.targetExploitability = 0.5;
        pretend({running: true});
        page.controller.statusText = "Iter 60 | exploitability≈2.0";
        page.controller.statusText = "Finalizing: results";
        tryCompare(find("statusLine"), "text", "Finalizing…");
        verify(find("finalizingLine").visible);
        compare(page.currentIteration, 60);
        fuzzyCompare(find("ring").value, 0.3, 1e-6);
        page.controller.resultIterations = 60;
        page.controller.resultExploitability = 0.02;
        page.controller.statusText = "Done";
        page.controller.running = false;
        compare(find("ring").value, 1);
        compare(find("exploitability").value, figure(0.02, 4));
        compare(page._lastIterFromStatusText, 0);
    }

    function test_clock(): void {
        page.maxIterations = 400;
        pretend({running: true, statusText: "Iter 20 | exploitability≈2.0"});
        tryCompare(page, "elapsedTime", "00:02", 4000);
        compare(page.iterationsPerSec, 10);
        compare(page.estimatedRemaining, "00:38");
        page.controller.running = false;
        compare([page.elapsedTime, page.estimatedRemaining], ["00:02", "00:00"]);
    }

    function test_threads(): void {
        const box = find("threads");
        const texts = () => Array.from(box.model);
        page.threadCount = 12;
        pretend({systemThreadCount: 1});
        compare([texts(), page.threadCount], [["Max, 1 thread", "1 thread"], 1]);
        pretend({systemThreadCount: 12});
        compare(texts(), ["Max, 12 threads", "1 thread", "2 threads", "4 threads", "8 threads",
                          "12 threads"]);
        box.forceActiveFocus(Qt.TabFocusReason);
        page.threadCount = 12;
        compare(box.currentIndex, 0);
        keys([Qt.Key_Down, Qt.Key_Down]);
        compare([page.threadCount, box.currentIndex], [2, 2]);
        page.threadCount = 8;
        compare(box.currentIndex, 4);
        keyClick(Qt.Key_Up);
        compare(page.threadCount, 4);
        pretend({systemThreadCount: 2});
        compare(page.threadCount, 2);
    }

    name: "SolvePage"
    width: 1280
    height: 900

    SolvePage {
        id: page

        anchors.fill: parent
        solveProgress: SolveProgress {
            controller: page.controller
            maxIterations: page.maxIterations
            targetExploitability: page.targetExploitability
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
