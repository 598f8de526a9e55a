import QtQuick
import QtTest
import Tidewell

import "../../tests/qml/finding.mjs" as Finding

// How long the real program takes from an input to the picture that shows it, at 1920x1080: for each
// step of a stroke over the matrix of a range, of a walk through the tree of a result, and of what is done
// with a list of 1,176 hands. A walk that waits for the hands of each node tells how long the event loop is
// held up in one go, whatever for. Run by
//     xvfb-run -a -s "-screen 0 1920x1080x24" qml_tests -input frame_times.qml
// where the processor draws all: with OpenGL (llvmpipe), or with QT_QUICK_BACKEND=software by Qt Quick
// itself, which draws only what has changed. The figures are for a machine with nothing else to do.
Item {
    id: root

    width: 1920
    height: 1080

    AppShell {
        id: shell

        anchors.fill: parent
        // The program makes it known to the documents.
        // qmllint disable unqualified
        controller: appController
        // qmllint enable unqualified
    }
    Connections {
        target: root.Window.window

        function onAfterAnimating(): void {
            ++times.begun;
        }
        function onFrameSwapped(): void {
            ++times.shown;
            times.takeFrame(Date.now());
        }
    }
    TestCase {
        id: times

        // Milliseconds for each picture at 60 a second.
        readonly property real most: 1000 / 60

        // Steps by key, and the number of a card where one is dealt: down to the next action (d), into it
        // (r). They say check, check, card, check, check; bet, call, card, check, check; and so on.
        readonly property var ways: ["rr0rr", "drdr1rr", "rdrdr2drdr", "rr3drdr", "drdr4drdr"]

        // Pictures whose making has begun, and those that came to the screen.
        property int begun: 0
        property int shown: 0

        // Takes the next input and tells whether there was one; null while nothing is measured.
        property var input: null
        property real inputAt: 0
        // The picture that shows it: the first that was begun after it.
        property int awaited: 0
        // Milliseconds from each input to its picture, and until the program has answered it.
        property var found: []
        property var handled: []

        // The longest time in which the event loop did nothing else, in milliseconds, while `holding`.
        property real hold: 0
        property real heldSince: 0

        property bool holding: false

        // Goes once round the event loop after the other.
        function noteHold(): void {
            const now = Date.now();
            hold = Math.max(hold, now - heldSince);
            heldSince = now;
            if (holding) {
                Qt.callLater(noteHold);
            }
        }

        function takeFrame(now: real): void {
            if (input !== null && shown >= awaited) {
                found.push(now - inputAt);
                next.start();
            }
        }

        function takeInput(): void {
            awaited = begun + 1;
            inputAt = Date.now();
            if (!input()) {
                input = null;
                return;
            }
            handled.push(Date.now() - inputAt);
        }

        // An input comes as soon as the one before it is on the screen.
        function measure(what: string, nextInput: var): void {
            found = [];
            handled = [];
            begun = 0;
            shown = 0;
            input = nextInput;
            takeInput();
            tryVerify(() => input === null, 20000);
            report(what, found);
            report(what + ", without drawing", handled);
        }

        function report(what: string, all: var): void {
            const sorted = all.slice().sort((a, b) => a - b);
            const slow = sorted.filter(time => time > most).length;
            console.info(`${what}: ${all.length} inputs, median ${sorted[all.length >> 1]} ms, worst `
                         + `${sorted[all.length - 1]} ms, ${slow} above ${most.toFixed(1)} ms`);
        }

        // Row by row, to and fro, over every hand of an empty range, and off again.
        function test_stroke(): void {
            shell.resetToDefaults();
            shell.navIndex = 1;
            shell.projectPage.oopRangeText = "";
            const matrix = findChild(findChild(shell, "oopRange"), "matrix");
            wait(1000);
            const step = matrix.effectiveCellSize + matrix.cellSpacing;
            for (const what of ["Painting hands", "Clearing hands"]) {
                let cell = 0;
                measure(what, () => {
                    const row = Math.floor(cell / 13);
                    const column = row % 2 === 0 ? cell % 13 : 12 - cell % 13;
                    const x = (column + 0.5) * step;
                    const y = (row + 0.5) * step;
                    if (cell === 0) {
                        mousePress(matrix, x, y);
                    } else if (cell < 169) {
                        mouseMove(matrix, x, y, -1, Qt.LeftButton);
                    }
                    return cell++ < 169;
                });
                mouseRelease(matrix, step / 2, step / 2);
                const on = Object.values(matrix.weights).filter(weight => weight > 0).length;
                compare(on, what === "Painting hands" ? 169 : 0);
                wait(500);
            }
        }

        // From the root to the end of the hand on one way after the other, twice.
        function test_walk(): void {
            shell.resetToDefaults();
            shell.applyProjectState({boardText: "AdJd8s2c", maxIterations: 20});
            shell.syncPagesFromRoot();
            tryVerify(() => shell.canSolve, 60000);
            keyClick(Qt.Key_F5);
            tryVerify(() => shell.controller.resultIterations > 0 && !shell.running, 300000);
            shell.navIndex = 3;
            const page = shell.resultsPage;
            page.forceActiveFocus();
            wait(1000);
            for (const what of ["Walking to new nodes", "Walking to known nodes"]) {
                const steps = [...ways.join("h") + "h"];
                measure(what, () => {
                    const step = steps.shift();
                    if (step !== undefined) {
                        take(page, step);
                    }
                    return step !== undefined;
                });
            }
            const held = [];
            holding = true;
            heldSince = Date.now();
            noteHold();
            for (const step of ways.join("h") + "h") {
                hold = 0;
                take(page, step);
                tryVerify(() => !page._handCombosLoading, 20000);
                wait(150);
                held.push(hold);
            }
            holding = false;
            report("Walking and waiting for the hands, longest hold", held);
        }

        // Down the list line by line and in leaps, sorted, searched and filtered.
        function test_list(): void {
            const ranks = [..."AKQJT98765432"];
            const all = ranks.map((high, i) => ranks.slice(i).map(low => high + low)).join(",");
            const sizes = {};
            for (const seat of ["oop", "ip"]) {
                for (const street of ["Flop", "Turn", "River"]) {
                    sizes[`${seat}${street}BetSizesText`] = "100";
                    sizes[`${seat}${street}RaiseSizesText`] = "100";
                }
            }
            shell.resetToDefaults();
            shell.applyProjectState(Object.assign(sizes, {
                boardText: "AhQh7h", oopRangeText: all, ipRangeText: all, startingPot: 10,
                effectiveStack: 10, maxIterations: 1}));
            shell.syncPagesFromRoot();
            tryVerify(() => shell.canSolve, 60000);
            keyClick(Qt.Key_F5);
            tryVerify(() => shell.controller.resultIterations > 0 && !shell.running, 300000);
            shell.navIndex = 3;
            const page = shell.resultsPage;
            tryVerify(() => page.visibleHandCombos.length === 1176, 60000);
            wait(1000);
            const list = Finding.allSeen(page, item => item instanceof HandListView)[0];
            const most = list.contentHeight - list.height;
            const places = count => Array.from({length: count}, (_, i) => i / count);
            const scroll = part => () => list.contentY = Math.round(part * most);
            const actions = [
                ...Array.from({length: 60}, (_, i) => () => list.contentY = 20 * i),
                ...places(40).map(scroll)];
            measure("Scrolling 1,176 hands", nextOf(actions));
            const heads = ["weight", "ev", 0, 1];
            measure("Sorting 1,176 hands",
                    nextOf([...heads, ...heads].map(key => () => page.handList.sortBy(key))));
            measure("Searching 1,176 hands", nextOf(
                ["A", "AK", "AKs", "AKs 2", "AKs 22", "", "J", "JJ", ""].map(text =>
                    () => page.handSearchText = text)));
            measure("Filtering 1,176 hands", nextOf(
                ["top pair", "", "air", "", "flush", ""].map(name => () => page.selectedBucket = name)));
        }

        function nextOf(actions: var): var {
            const left = actions.slice();
            return () => {
                const action = left.shift();
                if (action) {
                    action();
                    root.Window.window.update();  // what changes nothing has a picture, too
                }
                return action !== undefined;
            };
        }

        function take(page: ResultsPage, step: string): void {
            const keys = {d: Qt.Key_Down, r: Qt.Key_Right, h: Qt.Key_Home};
            if (step in keys) {
                keyClick(keys[step]);
            } else {
                page.selectActionAtLevel(page.treeLevels.count - 1, Number(step));
            }
        }

        Timer {
            id: next

            interval: 0
            onTriggered: times.takeInput()
        }

        name: "FrameTimes"
        when: windowShown
    }
}
