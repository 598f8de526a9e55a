import QtQuick
import QtQuick.Dialogs
import Tidewell

import "finding.mjs" as Finding

DocumentCase {
    id: test

    readonly property url projectFile: temporaryFolder + "/tst_home.tidewellproj"
    property int asked: 0
    property bool mayLose: true

    function init(): void {
        failOnWarning(/.?/);
        page.canSave = true;
        page.canImportRange = true;
        page.solveActivityGrid = controller.solveActivityGridLastSixMonths();
        page.solveHistoryDaily = [];
        page.files.currentFile = "";
        while (page.files.recent.count > 0) {
            page.files.recent.remove(recentUrl(0));
        }
        mayLose = true;
        asked = 0;
    }

    function every(type: var): var {
        return all(page, item => item instanceof type);
    }

    function button(name: string): var {
        const [found] = all(page, item => item.Accessible.role === Accessible.Button
                                          && item.Accessible.name === name);
        verify(found, name);
        return found;
    }

    function recentUrl(row: int): url {
        const recent = page.files.recent;
        return recent.data(recent.index(row, 0), Qt.UserRole);
    }

    function test_actions(): void {
        const spies = Array.of("newProject", "quickSolve", "importRange").map(n => spyOn(page, n));
        mouseClick(button("New Solve"));
        const rows = every(QuickActionRow);
        compare(rows.map(row => row.text), ["New Solve", "Quick Solve", "Import Range"]);
        rows.forEach(row => mouseClick(row));
        rows[1].forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        compare(spies.map(spy => spy.count), [2, 2, 1]);
        page.canImportRange = page.canSave = false;
        verify(!rows[2].visible && !button("Save").enabled);
    }

    // Another file than the project's own is replaced only by a second yes, and opening asks first.
    function test_saveAndOpen(): void {
        const question = () => Finding.inTree(page.files, item => item instanceof ConfirmDialog);
        const choose = () => {
            page.files.chooseToSave();
            const dialog = Finding.inTree(page.files, item => item instanceof FileDialog);
            dialog.close();
            dialog.selectedFile = projectFile;
            dialog.accepted();
        };
        verify(page.files.save(projectFile));
        page.files.forgetFile();
        for (const [name, current] of [["Cancel", ""], ["Replace", "tst_home.tidewellproj"]]) {
            choose();
            tryVerify(() => question()?.opened);
            mouseClick(Array.from(question().buttons).find(item => item.text === name));
            tryVerify(() => !question().visible);
            compare(page.files.currentName, current);
        }
        choose();
        verify(!question().visible);

        page.files.forgetFile();
        const loadedSpy = spyOn(page, "projectLoaded");
        const row = every(RecentFileRow)[0];
        compare([row.name, row.missing], ["tst_home.tidewellproj", false]);
        for (const [may, loaded, current] of [[false, 0, ""], [true, 1, "tst_home.tidewellproj"]]) {
            mayLose = may;
            mouseClick(row);
            compare([loadedSpy.count, page.files.currentName], [loaded, current]);
        }
        compare([asked, loadedSpy.signalArguments[0][0].boardText,
                 loadedSpy.signalArguments[0][1]], [2, "AdJd8s", false]);
    }

    // One that is missing says so and can be taken off the list, by mouse or key.
    function test_recentFiles(): void {
        const failedSpy = spyOn(page.files, "failed");
        const recent = page.files.recent;
        [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 5].forEach(i => recent.add("file:///gone/" + i));
        recent.add("https://example.invalid/5");
        const again = createTemporaryQmlObject("import Tidewell\nRecentFiles {}", test);
        compare([recent.count, again.data(again.index(7, 0), Qt.UserRole)], [8, recentUrl(7)]);
        compare([0, 1, 7].map(row => recentUrl(row).toString().slice(-1)), ["5", "9", "2"]);

        const rowOf = name => every(RecentFileRow).find(row => row.name === name);
        waitForRendering(page);
        verify(rowOf("5").missing);
        ignoreWarning("Load failed: Failed to open file");
        mouseClick(rowOf("5"));
        compare([failedSpy.count, recent.count], [1, 8]);
        mouseClick(button("Remove 5 from the list"));
        compare(recent.count, 7);
        findChild(page, "recentFiles").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Down);
        verify(rowOf("8").highlighted);
        ignoreWarning("Load failed: Failed to open file");
        keys([Qt.Key_Return, Qt.Key_Delete]);
        compare([failedSpy.count, recentUrl(1).toString()], [2, "file:///gone/7"]);
    }

    function test_trainerStats(): void {
        const values = () => every(StatCard).map(card => card.value);
        const clear = button("Clear");
        controller.clearPlayVsSolutionStats();
        compare([values(), clear.enabled], [["0 / 0", "— / —", "— / —"], false]);
        [[false, 0], [true, 0.25], [false, 0]].forEach(
            hand => controller.recordPlayVsSolutionHand(hand[0], hand[1]));
        compare(values(), ["3 / 3", "67 / 67", "0.083 / 0.083"]);
        page.playVsSolutionStats = {todayHands: 0, totalHands: 1200, todayAccuracyPct: 0,
            totalAccuracyPct: 91.7, todayAvgEvLoss: 0, totalAvgEvLoss: 0.0126};
        compare(values(), ["0 / 1,200", "— / 92", "— / 0.013"]);
        mouseClick(clear);
        keyClick(Qt.Key_Escape);
        compare(controller.playVsSolutionStats().totalHands, 3);
        mouseClick(clear);
        const ok = Finding.inTree(clear.Window.window.contentItem, item => item.text === "OK");
        tryVerify(() => ok.visible);
        mouseClick(ok);
        compare([controller.playVsSolutionStats().totalHands, values()[0]], [0, "0 / 0"]);
    }

    function test_overview(): void {
        const cells = Array.from(page.solveActivityGrid);
        const today = cells.map(cell => cell.isFuture).lastIndexOf(false);
        Object.assign(cells[0], {solves: 1234, runtimeMsSum: 0});
        for (const [ms, text] of [[0, "—"], [2 * 59960, "60.0s"], [120000, "1m"], [250000, "2m 5s"]]) {
            Object.assign(cells[today], {solves: 2, runtimeMsSum: ms});
            page.solveActivityGrid = cells.slice();
            compare(every(FactList)[0].facts.map(fact => fact.value), ["1,236", "2", text]);
        }
    }

    function test_chart(): void {
        const chart = every(SolvesChart)[0];
        const days = [[1, 0], [0, 0], [3, 6000]].map(([solves, ms], i) =>
            ({date: "2026-01-0" + (i + 1), solves: solves, runtimeMsSum: ms}));
        page.solveHistoryDaily = days;
        for (const [item, x, day] of [[chart, chart.plot.x + 0.3 * chart.plot.width, 1],
                                      [chart, chart.width - 1, 2], [page, 1, -1]]) {
            mouseMove(item, x, 50);
            compare(chart.hoveredIndex, day);
        }
        compare([2, 0].map(day => chart.tipText(day).split("\n").slice(1).join()),
                ["Daily: 3,Total: 4,Avg runtime: 1.5s", "Daily: 1,Total: 1,Avg runtime: —"]);
        chart.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Left);
        compare(chart.hoveredIndex, 1);
        page.solveHistoryDaily = days.slice(1, 2);
        compare(chart.hoveredIndex, 0, "the day has gone");
        page.forceActiveFocus();
    }

    function test_calendar(): void {
        const grid = every(ActivityGrid)[0];
        const cells = Array.from(page.solveActivityGrid);
        Object.assign(cells[9], {solves: 30, avgIterations: 1234.4, avgExploitability: 0.01234567,
                                 avgExploitabilityPercent: 0.123});
        cells[10] = {isPadding: true};
        cells[181].isFuture = true;
        page.solveActivityGrid = cells;
        // The tenth and eleventh day: Wednesday and Thursday of the second week.
        for (const [day, index] of [[2.5, 9], [3.5, -1]]) {
            mouseMove(grid, 34 + 1.5 * grid.cellSize, 20 + day * grid.cellSize);
            compare(grid.hoveredIndex, index);
        }
        compare(grid.tipText(9).split("\n").slice(1),
                ["Solves: 30", "Avg iters: 1,234", "Avg expl: 0.12 % (0.0123 chips)"]);
        verify(grid.tipText(181).includes(" (future)\n"));
    }

    name: "HomePage"
    width: 1216
    height: 1100

    ProjectFiles {
        id: projectFiles

        controller: test.controller
        stateProvider: () => ({boardText: "AdJd8s"})
        confirmLoss: proceed => {
            ++test.asked;
            if (test.mayLose) {
                proceed();
            }
        }
    }
    HomePage {
        id: page

        anchors.fill: parent
        controller: test.controller
        files: projectFiles
    }
}
