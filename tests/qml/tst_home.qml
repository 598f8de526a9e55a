import QtQuick
import QtQuick.Dialogs
import Tidewell

import "finding.mjs" as Finding

DocumentCase {
    id: test

    readonly property url projectFile: "file://" + controller.appDir + "/tst_home.tidewellproj"
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

    function only(type: var): var {
        const found = every(type);
        compare(found.length, 1);
        return found[0];
    }

    function recentUrl(row: int): url {
        const recent = page.files.recent;
        return recent.data(recent.index(row, 0), Qt.UserRole);
    }

    function day(date: string, solves: int, runtimeMsSum: real): var {
        return {date: date, solves: solves, runtimeMsSum: runtimeMsSum};
    }

    function test_actions(): void {
        const newSpy = spyOn(page, "newProject");
        const quickSpy = spyOn(page, "quickSolve");
        const importSpy = spyOn(page, "importRange");
        mouseClick(button("New Solve"));
        const rows = every(QuickActionRow);
        compare(rows.map(row => row.text), ["New Solve", "Quick Solve", "Import Range"]);
        rows.forEach(row => mouseClick(row));
        compare([newSpy.count, quickSpy.count, importSpy.count], [2, 1, 1]);
        rows[1].forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        compare(quickSpy.count, 2);

        page.canImportRange = false;
        verify(!rows[2].visible);
        page.canSave = false;
        verify(!button("Save").enabled);
    }

    function test_saveAndOpen(): void {
        verify(page.files.save(projectFile));
        compare(page.files.currentFile, projectFile);
        compare(page.files.currentName, "tst_home.tidewellproj");
        page.files.forgetFile();
        const loadedSpy = spyOn(page, "projectLoaded");
        const row = only(RecentFileRow);
        compare(row.name, "tst_home.tidewellproj");
        verify(!row.missing);

        mayLose = false;
        mouseClick(row);
        compare([asked, loadedSpy.count], [1, 0]);
        compare(page.files.currentName, "");
        mayLose = true;
        mouseClick(row);
        compare(loadedSpy.count, 1);
        compare(loadedSpy.signalArguments[0][0].boardText, "AdJd8s");
        compare(loadedSpy.signalArguments[0][1], false);
        compare(page.files.currentName, "tst_home.tidewellproj");
    }

    // Another file than the project's own is replaced only by a second yes.
    function test_overwriting(): void {
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
            mouseClick(Array.from(question().buttons).find(
                item => item.visible && item.text === name));
            tryVerify(() => !question().visible);
            compare(page.files.currentName, current);
        }
        choose();
        verify(!question().visible);
    }

    function test_recentFiles(): void {
        const failedSpy = spyOn(page.files, "failed");
        const recent = page.files.recent;
        for (let i = 0; i < 10; ++i) {
            recent.add("file:///gone/" + i);
        }
        recent.add("file:///gone/5");
        recent.add("https://example.invalid/5");
        compare(recent.count, 8);
        compare([0, 1, 7].map(row => recentUrl(row).toString()),
                ["file:///gone/5", "file:///gone/9", "file:///gone/2"]);
        const again = createTemporaryQmlObject("import Tidewell\nRecentFiles {}", test);
        compare(again.data(again.index(7, 0), Qt.UserRole), recentUrl(7));

        // One that is missing says so and can be taken off the list, by mouse or key.
        const rowOf = name => every(RecentFileRow).find(row => row.name === name);
        waitForRendering(page);
        const row = rowOf("5");
        verify(row.missing);
        ignoreWarning("Load failed: Failed to open file");
        mouseClick(row);
        compare([failedSpy.count, recent.count], [1, 8]);
        mouseClick(button("Remove 5 from the list"));
        compare(recent.count, 7);
        const list = findChild(page, "recentFiles");
        list.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Down);
        verify(rowOf("8").highlighted);
        ignoreWarning("Load failed: Failed to open file");
        keyClick(Qt.Key_Return);
        compare(failedSpy.count, 2);
        keyClick(Qt.Key_Delete);
        compare(recentUrl(1).toString(), "file:///gone/7");
    }

    function test_trainerStats(): void {
        const values = () => every(StatCard).map(card => card.value);
        const clear = button("Clear");
        controller.clearPlayVsSolutionStats();
        compare(values(), ["0 / 0", "— / —", "— / —"]);
        verify(!clear.enabled);
        controller.recordPlayVsSolutionHand(false, 0);
        controller.recordPlayVsSolutionHand(true, 0.25);
        controller.recordPlayVsSolutionHand(false, 0);
        compare(values(), ["3 / 3", "67 / 67", "0.083 / 0.083"]);
        page.playVsSolutionStats = {todayHands: 0, totalHands: 1200, todayAccuracyPct: 0,
            totalAccuracyPct: 91.7, todayAvgEvLoss: 0, totalAvgEvLoss: 0.0126};
        compare(values(), ["0 / 1,200", "— / 92", "— / 0.013"]);

        mouseClick(clear);
        keyClick(Qt.Key_Escape);
        compare(controller.playVsSolutionStats().totalHands, 3);
        mouseClick(clear);
        const ok = Finding.inTree(clear.Window.window.contentItem,
            item => item instanceof SecondaryButton && item.text === "OK");
        tryVerify(() => ok.visible);
        mouseClick(ok);
        compare(controller.playVsSolutionStats().totalHands, 0);
        compare(values(), ["0 / 0", "— / —", "— / —"]);
    }

    function test_overview(): void {
        const values = () => every(FactList)[0].facts.map(
            fact => fact.value);
        compare(values(), ["0", "0", "—"]);
        const cells = Array.from(page.solveActivityGrid);
        compare(cells.length, 182);
        const today = cells.map(cell => cell.isFuture).lastIndexOf(false);
        Object.assign(cells[today], {solves: 2, runtimeMsSum: 250000});
        Object.assign(cells[0], {solves: 1234, runtimeMsSum: 0});
        page.solveActivityGrid = cells;
        compare(values(), ["1,236", "2", "2m 5s"]);
        for (const [seconds, text] of [[0, "—"], [59.96, "60.0s"], [60, "1m"], [125, "2m 5s"]]) {
            compare(only(OverviewCard).durationText(seconds), text);
        }
    }

    function test_chart(): void {
        const chart = only(SolvesChart);
        compare(chart.hoveredIndex, -1);
        page.solveHistoryDaily = [day("2026-01-01", 1, 0), day("2026-01-02", 0, 0),
            day("2026-01-03", 3, 6000)];
        mouseMove(chart, chart.plot.x + 0.3 * chart.plot.width, 50);
        compare(chart.hoveredIndex, 1);
        mouseMove(chart, chart.width - 1, 50);
        compare(chart.hoveredIndex, 2);
        compare(chart.tipText(2).split("\n").slice(1),
                ["Daily: 3", "Total: 4", "Avg runtime: 1.5s"]);
        compare(chart.tipText(0).split("\n").slice(1),
                ["Daily: 1", "Total: 1", "Avg runtime: —"]);
        mouseMove(page, 1, 1);
        compare(chart.hoveredIndex, -1);
        chart.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Left);
        compare(chart.hoveredIndex, 1);
        page.forceActiveFocus();
        page.solveHistoryDaily = [day("2026-01-01", 1, 1000)];
        waitForRendering(chart);
        compare(chart.hoveredIndex, -1);
    }

    // To what has the keyboard, and by the wheel.
    function test_scrolling(): void {
        page.anchors.bottomMargin = 700;
        const grid = only(ActivityGrid);
        const top = () => grid.mapToItem(page, 0, 0).y;
        tryVerify(() => top() > page.height);
        only(SolvesChart).forceActiveFocus(Qt.TabFocusReason);
        verify(top() >= 0 && top() < page.height);
        const before = top();
        mouseWheel(page, 20, 20, 0, 120);
        tryVerify(() => top() > before);
        page.anchors.bottomMargin = 0;
    }

    function test_calendar(): void {
        const grid = only(ActivityGrid);
        const theme = grid.theme;
        compare(grid.weeks, 26);
        const cells = Array.from(page.solveActivityGrid);
        const fills = [0, 1, 2, 3, 30].map(solves => String(grid.fillOf({solves: solves})));
        compare(fills, [theme.surface2, theme.withOpacity(theme.accent, 0.55),
                        theme.accentMuted, theme.accent, theme.accent].map(String));
        verify(Qt.colorEqual(grid.fillOf({isPadding: true}), "transparent"));
        Object.assign(cells[9], {solves: 30, avgIterations: 1234.4,
            avgExploitability: 0.01234567});
        cells[10] = {isPadding: true};
        Object.assign(cells[181], {isFuture: true});
        page.solveActivityGrid = cells;
        // The tenth and eleventh day: Wednesday and Thursday of the second week.
        mouseMove(grid, 34 + 1.5 * grid.cellSize, 20 + 2.5 * grid.cellSize);
        compare(grid.hoveredIndex, 9);
        compare(grid.tipText(9).split("\n").slice(1),
                ["Solves: 30", "Avg iters: 1,234", "Avg expl: 0.0123"]);
        mouseMove(grid, 34 + 1.5 * grid.cellSize, 20 + 3.5 * grid.cellSize);
        compare(grid.hoveredIndex, -1);
        verify(grid.tipText(181).split("\n")[0].endsWith(" (future)"));
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
