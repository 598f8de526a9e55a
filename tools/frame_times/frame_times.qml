import QtQuick
import QtTest
import Tidewell

// How long the real program takes from an input to the picture that shows it, at 1920x1080: for each
// step of a stroke over the matrix of a range, and of a walk through the tree of a result. Run by
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
