pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

import "result_spots.mjs" as Spots

// Locks and distributions on the program's own controller, by mouse and keys.
DocumentCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
        page.visible = true;
        page.boardText = Spots.river.board;
        controller.startSolveWithConfig(Spots.river);
        waitForSolve();
    }

    function waitForSolve(): void {
        tryVerify(() => !controller.running && controller.resultIterations > 0, 60000);
    }

    function one(type: var): var {
        return all(page.Window.window.contentItem, item => item instanceof type)[0];
    }

    function press(name: string): void {
        wait(200);  // the layout comes to rest
        mouseClick(findChild(page.Window.window.contentItem, name));
    }

    // Of hands of the matrix, where they are drawn.
    function centre(row: int, column: int): point {
        const matrix = one(HandMatrix);
        const step = matrix.effectiveCellSize + matrix.cellSpacing;
        return Qt.point((column + 0.5) * step, (row + 0.5) * step);
    }

    function locks(): var {
        return Array.from(controller.nodeLocks(page.currentNodeIndex),
                          lock => [lock.hand, Array.from(lock.actionProbs)]);
    }

    function choose(name: string): void {
        wait(200);
        mouseClick(all(one(LockPanel), item => item instanceof SecondaryButton
                                               && item.text === name)[0]);
    }

    function frequencyFields(): var {
        return all(one(LockPanel), item => item instanceof AppTextField);
    }

    function test_paint(): void {
        press("lockMode");
        wait(200);
        const matrix = one(HandMatrix);
        const ten = centre(4, 4);
        mouseClick(matrix, ten.x, ten.y);
        compare(locks(), [], "nothing is selected");
        choose("Bet 50% · 5");
        const nine = centre(5, 5);
        mousePress(matrix, ten.x, ten.y);
        mouseMove(matrix, nine.x, nine.y);
        mouseRelease(matrix, nine.x, nine.y);
        compare(locks(), [["99", [0, 1]], ["TT", [0, 1]]]);
        compare([page.handActionProbs.TT, matrix.lockedHands.length], [[0, 1], 2]);
        verify(page._nodeHasLocks(0) && controller.nodeLocksUnsaved);

        choose("Mixed");
        const [first, second] = frequencyFields();
        type(first, "abc");
        keyClick(Qt.Key_Return);
        compare([first.text, page.nodeLockSelectedActionIndex], ["0.50", -1]);
        type(first, "0.3");
        keyClick(Qt.Key_Tab);
        compare([first.text, second.text], ["0.30", "0.70"]);
        matrix.forceActiveFocus(Qt.TabFocusReason);
        keys([Qt.Key_Up, Qt.Key_Space]);
        fuzzyCompare(locks()[1][1][0], 0.3, 1e-6);

        // Locks of another node stay, also where this one is reset.
        const child = controller.nodeActions(0)[1].childIndex;
        page.selectActionAtLevel(0, 1);
        compare(frequencyFields().map(field => field.text), ["0.33", "0.33", "0.33"]);
        page.applyNodeLockToHand(child, "AJs");
        compare([controller.nodeLocks(child).length, controller.nodeLocks(0).length], [1, 3]);
        press("standardMode");
        compare([controller.nodeLocks(child).length, controller.nodeLocks(0).length,
                 page.nodeLockMode, page._nodeHasLocks(0)], [0, 3, false, true]);
        const file = temporaryFolder + "/node_locks_test.tidewellproj";
        verify(controller.saveProject(file, {}) && !controller.nodeLocksUnsaved);
        controller.clearResults();
        compare([page.nodeLocksByNode, page.nodeLockMode], [{}, false]);
        verify(controller.loadProject(file).ok && page._nodeHasLocks(0));
        compare([one(HandMatrix).lockedHands.length, page.handActionProbs.TT], [3, [0, 1]]);
    }

    function test_solveAgain(): void {
        const cards = () => all(page, item => item instanceof StatCard);
        const before = cards().map(card => card.value);
        press("lockMode");
        page.nodeLockSelectedActionIndex = 0;
        for (const hand of ["TT", "87s", "KQo"]) {
            page.applyNodeLockToHand(0, hand);
        }
        const shown = spyOn(page, "goToSolve");
        press("reSolve");
        waitForSolve();
        compare([shown.count, page._startingSolveWithNodeLocks], [1, false]);
        compare([controller.nodeLocks(0).length, page._nodeHasLocks(0), page.nodeLockMode],
                [3, true, true]);
        compare(cards().map(card => card.before), before);
        verify(cards()[0].value !== before[0]);
        // One that was cancelled, and an ordinary one.
        page.reSolve();
        controller.cancelSolve();
        tryVerify(() => !controller.running);
        controller.startSolveWithConfig(Spots.river);
        waitForSolve();
        compare([page._nodeHasLocks(0), page.nodeLocksByNode, page.nodeLockMode], [false, {}, false]);
        compare(cards().map(card => card.before + card.value), before);
    }

    function test_distributions(): void {
        const plot = () => one(DistributionPlot);
        press("distributions");
        tryVerify(() => plot() && page._distPayload.ok, 20000);
        verify(plot().activeFocus);
        keys([Qt.Key_Right, Qt.Key_Right]);
        const best = page._distSeriesSortedSeparate(page._distPayload.oopHands,
                                                    page._distPayload.equityOop);
        const ranks = Math.max(page._distPayload.oopHands.length, page._distPayload.ipHands.length);
        compare([page._distHoverIndex, page._distHoverT], [1, 1 / (ranks - 1)]);
        keyClick(Qt.Key_Home);
        const figure = (100 * best[0].value).toLocaleString(Qt.locale(), "f", 1);
        verify(texts(plot()).includes(`OOP: ${figure}%`));
        const shown = plot();
        tryVerify(() => {
            const picture = grabImage(shown);
            return Array.from({length: shown.height}, (_, y) => picture.pixel(shown.width / 2, y))
                .some(pixel => Qt.colorEqual(pixel, page.theme.actionBet));
        }, 5000, "the curve of OOP");
        keyClick(Qt.Key_C, Qt.ControlModifier);
        press("distributionMetric");
        compare([page._distMetricEquity, page._distHoverIndex], [false, -1]);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !plot());
        // Put on the clipboard while the dialog was open.
        const field = make(pasted);
        field.paste();
        verify(field.text.startsWith("Rank\tOOP hand") && field.text.split("\n").length === ranks + 2);

        // Nobody waits for a dialog that was closed; the next one begins anew.
        page.selectActionAtLevel(0, 0);
        const answers = spyOn(controller, "handDistributions169Ready");
        page.distributions.open();
        verify(page._distPayload.pending);
        page.distributions.close();
        wait(300);
        compare(answers.count, 0);
        page.distributions.open();
        tryVerify(() => page._distPayload.ok, 20000);
        page.visible = false;
        verify(!page.distributions.shown);
    }

    readonly property Component pasted: TextEdit {}

    name: "NodeLocks"
    width: 1440
    height: 1000

    ResultsPage {
        id: page

        width: test.width
        height: test.height
        controller: test.controller
    }
}
