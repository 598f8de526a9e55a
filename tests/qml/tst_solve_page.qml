import QtQuick
import QtTest
import Tidewell
import "../../qml/logic/solve_status.mjs" as Status
import "result_spots.mjs" as Spots

// The page by mouse and keys, on the program's own controller, and on one that says what no spot can
// be brought to say at a given time.
TestCase {
    id: test

    // Set by the program that runs the tests.
    readonly property var controller: appController // qmllint disable unqualified

    function init(): void {
        failOnWarning(/.?/);
        controller.clearResults();
        page.controller = controller;
        page.maxIterations = 40;
        page.targetExploitability = 0;
        page.threadCount = page.maxThreadCount;
        if (find("clearRuns").enabled) {
            mouseClick(find("clearRuns"));
        }
        gone.clear();
    }

    function cleanup(): void {
        controller.cancelSolve();
        tryVerify(() => !controller.running, 60000);
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

    // A controller in the middle of a run.
    function pretend(values: var): void {
        page.controller = createTemporaryObject(pretender, test, values);
        waitForRendering(page, 50);
    }

    function test_spot(): void {
        compare(find("street").text, "RIVER");
        compare(find("money").text, "10 / 40");
        compare(find("rake").text, "5% (cap 3)");
        page.ipTurnBetSizesText = " ";
        compare(find("betSizes").text, "F 50/50 • T 50/— • R 50/50");
        page.ipTurnBetSizesText = "50";
        page.targetExploitability = 0.5;
        compare(find("target").text, qsTr("%1% (= %2)").arg((0.5).toLocaleString(Qt.locale(), "f", 1))
                .arg((0.05).toLocaleString(Qt.locale(), "f", 2)));
        compare(find("options").text, "None");
        page.ipTurnAddAllIn = true;
        page.oopRiverDontDonk = true;
        page.ipAddAllInIfJamLtEnabled = true;
        compare(find("options").text, "• OOP: don't donk on river\n• IP: add all-in on turn\n"
                                      + "• IP: add all-in if jam < 150% pot");
        page.ipTurnAddAllIn = false;
        page.oopRiverDontDonk = false;
        page.ipAddAllInIfJamLtEnabled = false;
    }

    function test_runs(): void {
        verify(!find("cancel").enabled && !find("viewResults").enabled);
        verify(find("noRuns").visible);

        find("start").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        verify(controller.running);
        compare(statuses(), ["Running"]);
        tryVerify(() => !controller.running, 60000);
        compare(statuses(), ["Completed"]);
        compare(find("statusLine").text, "Done");
        compare(page.progressWheelValue, 1);
        compare(page.currentIteration, 40);
        compare(find("windowCaption").text, "Iterations: 40");
        verify(/^\d\d:\d\d:\d\d$/.test(page.runs[0].startedAt));
        compare(page.runs[0].summary, `Iterations 40 • Target 0% (≈ ${(0).toLocaleString(
            Qt.locale(), "f", 2)}) • Threads ${page.threadCount}`);
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
        for (let i = 0; i < 9; ++i) {
            run();
        }
        compare(page.runs.length, 10);
        compare(page.runs[0].runId - page.runs[9].runId, 9);
        compare(statuses()[9], "Cancelled");
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
            {tag: "beyond the scale", status: iter(300, "1"), ring: 1, shown: 1, window: 10, metric: 1},
            {tag: "tight target", target: 0.05, status: iter(100, "1"), ring: 0.25, shown: 1,
             window: 10, metric: 1},
            {tag: "loose target", target: 1, status: iter(75, "1"), ring: 0.5, shown: 1, window: 5,
             metric: 1},
            {tag: "raw", status: "Thinking", progress: 0.1, ring: 40 / 200, shown: "∞", window: 10},
            {tag: "raw, nothing done", status: "Thinking", line: "Thinking", wait: true}
        ];
    }

    function test_progress(row): void {
        const text = (value, digits) => typeof value === "number"
            ? value.toLocaleString(Qt.locale(), "f", digits) : value;
        page.maxIterations = 400;
        page.targetExploitability = row.target ?? 0.5;
        pretend({running: true, statusText: row.status, progress: row.progress ?? 0});
        compare(find("statusLine").text, row.line
            ?? `Iteration ${page.currentIteration} | exploitability=${text(row.shown, 2)}`);
        compare(find("ring").indeterminate, row.wait ?? false);
        fuzzyCompare(find("ring").value, row.ring ?? 0, 1e-6);
        compare(page.iterationWindowValue, row.window ?? 0);
        compare(find("exploitability").value,
                row.metric ? text(row.metric, 4) : qsTr("Measuring..."));
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
        compare(find("exploitability").value, (0.02).toLocaleString(Qt.locale(), "f", 4));
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
        compare(Status.minutesText(6005), "100:05");
    }

    function test_threads(): void {
        const texts = () => Array.from(find("threads").model);
        for (const [most, expected] of [
            [12, ["Max, 12 threads", "1 thread", "2 threads", "4 threads", "8 threads", "12 threads"]],
            [1, ["Max, 1 thread", "1 thread"]]]) {
            pretend({systemThreadCount: most});
            compare(texts(), expected);
            compare(page.threadCount <= most, true);
        }
        pretend({systemThreadCount: 12});
        const box = find("threads");
        box.forceActiveFocus(Qt.TabFocusReason);
        page.threadCount = 12;
        compare(box.currentIndex, 0);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        compare([page.threadCount, box.currentIndex], [2, 2]);
        page.threadCount = 8;
        compare(box.currentIndex, 4);
        keyClick(Qt.Key_Up);
        compare(page.threadCount, 4);
        pretend({systemThreadCount: 2});
        compare(page.threadCount, 2);
    }

    name: "SolvePage"
    when: windowShown
    visible: true
    width: 1280
    height: 900

    SolvePage {
        id: page

        anchors.fill: parent
        canSolve: true
        boardText: Spots.river.board
        startingStreet: "river"
        startingPot: 10
        effectiveStack: 40
        rakePercent: 5
        rakeCap: 3
        oopRangeText: Spots.river.oop_range
        ipRangeText: Spots.river.ip_range
        oopFlopBetSizesText: "50"
        oopTurnBetSizesText: "50"
        oopRiverBetSizesText: "50"
        oopFlopRaiseSizesText: "50"
        oopTurnRaiseSizesText: "50"
        oopRiverRaiseSizesText: "50"
        ipFlopBetSizesText: "50"
        ipTurnBetSizesText: "50"
        ipRiverBetSizesText: "50"
        ipFlopRaiseSizesText: "50"
        ipTurnRaiseSizesText: "50"
        ipRiverRaiseSizesText: "50"
        ipAddAllInIfJamLtPct: 150
    }
    SignalSpy {
        id: gone

        target: page
        signalName: "goToResults"
    }
    Component {
        id: pretender

        QtObject {
            property bool running: false
            property real progress: 0
            property string statusText: ""
            property int resultIterations: 0
            property real resultExploitability: 0
            property int systemThreadCount: 2
        }
    }
}
