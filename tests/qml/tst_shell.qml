import QtQuick
import Tidewell

import "finding.mjs" as Finding

// The window's content on the real controller, with a river spot that solves in milliseconds.
DocumentCase {
    id: test

    readonly property url projectFile: temporaryFolder + "/tst_shell.tidewellproj"
    readonly property var river: ({
        boardText: "Td9c6h6c2s", startingStreet: "river", oopRangeText: "TT,87s,KQo",
        ipRangeText: "99,AJs,A6s,54s", startingPot: 10, effectiveStack: 40,
        maxIterations: 40, targetExploitability: 0, threadCount: 2
    })
    readonly property Component shellComponent: AppShell {}

    function init(): void {
        failOnWarning(/.?/);
        controller.clearResults();
        tryVerify(() => !controller.running);
        dialog()?.reject();
        tryVerify(() => !dialog()?.visible);
        shell.resetToStartupBlank();
        shell.navIndex = 0;
    }

    function dialog(): UnsavedDialog {
        return Finding.inTree(shell, item => item instanceof UnsavedDialog);
    }

    // Waits for the question and answers it.
    function answer(name: string): void {
        tryVerify(() => dialog()?.opened);
        mouseClick(Array.from(dialog().buttons).find(item => item.text === name && item.visible));
    }

    function messages(): MessageBar {
        return Finding.inTree(shell, item => item instanceof MessageBar);
    }

    function tab(name: string): Item {
        return Finding.inTree(shell, item => item instanceof TopBarTab && item.text === name);
    }

    function openRiver(): void {
        shell.quickSolve();
        shell.applyProjectState(river);
        shell.syncPagesFromRoot();
        tryVerify(() => shell.canSolve, 60000);
    }

    function solveRiver(): void {
        openRiver();
        keyClick(Qt.Key_F5);
        tryVerify(() => controller.resultIterations > 0 && !shell.running, 60000);
    }

    function test_startsBlank(): void {
        compare([shell.navIndex, shell.hasProject, shell.canSolve], [0, false, false]);
        compare(shell.exportProjectState(), shell.startupBlankPreset);
        compare(shell.projectRecommendedWidth, shell.projectPage.recommendedWindowWidth);
        for (const name of ["Setup", "Solve", "Results"]) {
            verify(tab(name).obstacle !== "", name);
        }
        verify(!shell.unsavedChanges);
        verify(shell.requestClose(() => fail("closes at once")));
    }

    // Which pages can be visited, by keys and by the tabs.
    function test_navigation(): void {
        const visit = keys => keys.map(key => {
            keyClick(key, Qt.ControlModifier);
            return shell.navIndex;
        });
        const all = [Qt.Key_2, Qt.Key_3, Qt.Key_4, Qt.Key_Comma, Qt.Key_1];
        compare(visit(all), [0, 0, 0, 4, 0]);
        mouseClick(tab("Results"));
        compare(shell.navIndex, 0);
        shell.homePage.newProject();
        compare(shell.navIndex, 1);
        compare(visit(all), [1, 1, 1, 4, 0]);
        solveRiver();
        compare(shell.navIndex, 2);
        compare(visit(all), [1, 2, 3, 4, 0]);
        tab("Results").children[0].forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        compare(shell.navIndex, 3);
        // Any of the twelve sizes counts, also on a street that is over.
        shell.oopFlopBetSizesText = " ";
        verify(!shell.canSolve);
        compare(visit([Qt.Key_3]), [3]);
    }

    function test_runningHoldsTheSolvePage(): void {
        openRiver();
        shell.applyProjectState({boardText: "Td9c6h6c", maxIterations: 1000000});
        compare(shell.startingStreet, "turn");
        tryVerify(() => shell.canSolve, 60000);
        keyClick(Qt.Key_F5);
        verify(shell.running);
        compare(shell.navIndex, 2);
        keyClick(Qt.Key_1, Qt.ControlModifier);
        mouseClick(tab("Settings"));
        compare(shell.navIndex, 2);
        const chip = Finding.inTree(shell, item => item instanceof StatusChip);
        tryVerify(() => /^Solving \d+%$/.test(chip.text), 60000);
        keyClick(Qt.Key_F5);
        keyClick(Qt.Key_N, Qt.ControlModifier);
        tryVerify(() => dialog()?.opened);
        compare(dialog().title, "Unsaved changes");
        answer("Cancel");
        tryVerify(() => !dialog().visible);
        verify(shell.running);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !shell.running, 60000);
        compare(chip.text, "Ready");
        keyClick(Qt.Key_1, Qt.ControlModifier);
        compare(shell.navIndex, 0);
    }

    // What nobody has visited is not there; what is visited finds the project as it is.
    function test_pagesAreBuiltWhenVisited(): void {
        const fresh = make(shellComponent, {controller: controller});
        verify(fresh.homePage && !fresh.projectPage && !fresh.solvePage && !fresh.resultsPage);
        verify(!Finding.inTree(fresh, item => item instanceof AppDialog));
        fresh.applyProjectState({boardText: "Td9c6h6c"});
        compare(fresh.exportProjectState().startingStreet, "turn");
        fresh.applyProjectState(Object.assign({}, river, {startingStreet: "turn"}));
        const before = fresh.exportProjectState();
        for (const index of [1, 2, 3, 4]) {
            fresh.navIndex = index;
        }
        compare(fresh.exportProjectState(), before);
        compare([fresh.projectPage.ipRangeText, fresh.solvePage.threadCount,
                 fresh.resultsPage.boardText], [river.ipRangeText, 2, river.boardText]);
    }

    // A page that changes a property of its own ends its binding; the next project is shown
    // all the same.
    function test_pagesFollow(): void {
        shell.homePage.quickSolve();
        compare(shell.exportProjectState(), shell.customerQuickSolvePreset);
        const page = shell.projectPage;
        page.boardText = "AsKsQs2d";
        page.startingPot = 33;
        page.ipTurnAddAllIn = true;
        shell.solvePage.threadCount = 1;
        compare([shell.boardText, shell.startingStreet, shell.startingPot, shell.ipTurnAddAllIn,
                 shell.threadCount], ["AsKsQs2d", "turn", 33, true, 1]);
        compare([shell.solvePage.boardText, shell.resultsPage.boardText],
                ["AsKsQs2d", "AsKsQs2d"]);

        // The street of this project is not that of its board.
        const loaded = Object.assign(shell.exportProjectState(), river, {
            startingStreet: "turn", threadCount: 2});
        shell.homePage.projectLoaded(loaded, false);
        compare(shell.exportProjectState(), loaded);
        for (const key of Object.keys(loaded)) {
            if (key !== "threadCount") {
                compare(page[key], loaded[key], key);
            }
            compare(shell.solvePage[key], loaded[key], key);
        }
        // What is nothing or of another kind changes nothing.
        shell.applyProjectState(null);
        shell.applyProjectState({startingPot: "a lot", rakeCap: null, unknown: 1, rakePercent: 2.5});
        compare(shell.exportProjectState(), Object.assign(loaded, {rakePercent: 2.5}));
        compare([page.rakePercent, shell.solvePage.rakePercent], [2.5, 2.5]);
    }

    // The results stay those of the spot that was solved, whatever is set up next.
    function test_resultsKeepTheirSpot(): void {
        solveRiver();
        const page = shell.resultsPage;
        compare([page.boardText, page.rakePercent, page.setupChanged], [river.boardText, 5, false]);
        shell.maxIterations = 7;
        verify(!page.setupChanged);
        shell.projectPage.boardText = "AsKsQs2d3d";
        shell.projectPage.rakePercent = 0;
        compare([page.boardText, page.treeBoardText, page.rakePercent, page.setupChanged],
                [river.boardText, river.boardText, 5, true]);
        shell.resetToNewProject();
        compare([page.boardText, page.setupChanged], ["", false]);
    }

    function test_saveAndUnsavedChanges(): void {
        solveRiver();
        verify(shell.unsavedChanges);
        verify(shell.files.save(projectFile));
        verify(!shell.unsavedChanges);
        compare([messages().text, messages().isError], ["Saved tst_shell.tidewellproj", false]);
        // What is still being typed is saved, too.
        shell.navigate(1);
        const field = findChild(shell.projectPage, "rakeCap");
        type(field, "5");
        keyClick(Qt.Key_S, Qt.ControlModifier);
        compare([shell.rakeCap, shell.unsavedChanges], [5, false]);
        keyClick("0");
        keyClick(Qt.Key_1, Qt.ControlModifier);
        compare([shell.rakeCap, field.activeFocus], [50, false]);
        shell.rakeCap = 5;

        // Opening it anew brings it to the results.
        shell.resetToStartupBlank();
        shell.openDropped([projectFile]);
        compare([shell.navIndex, shell.rakeCap, shell.unsavedChanges], [3, 5, false]);
        verify(controller.resultIterations > 0);
        shell.projectPage.rakeCap = 6;

        // Keep it, lose it, save it.
        const lastBoard = shell.boardText;
        keyClick(Qt.Key_N, Qt.ControlModifier);
        tryVerify(() => dialog().opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !dialog().visible);
        compare(shell.boardText, lastBoard);
        keyClick(Qt.Key_N, Qt.ControlModifier);
        answer("Save");
        compare([shell.boardText, shell.navIndex], ["", 1]);
        shell.openDropped([projectFile]);
        compare(shell.rakeCap, 6);
        shell.rakeCap = 8;
        tryVerify(() => !dialog().visible);
        shell.openDropped([projectFile]);
        answer("Don't Save");
        compare(shell.rakeCap, 6);
    }

    // No key and no button that starts a solve loses a result; one that is back in a moment is not
    // asked about.
    function test_resultsAreKept(): void {
        const guard = Finding.inTree(shell, item => item instanceof LossGuard);
        const kept = () => controller.resultIterations === 40 && !shell.running;
        const replaced = () => Finding.inTree(shell, item => item instanceof ConfirmDialog
                                                             && item.title === "Replace the result?");
        solveRiver();
        keyClick(Qt.Key_F5);
        verify(!dialog()?.visible);
        tryVerify(kept, 60000);
        guard.worthKeepingSeconds = 0;
        for (const begin of [() => keyClick(Qt.Key_F5),
                             () => mouseClick(findChild(shell.solvePage, "start"))]) {
            begin();
            tryVerify(() => dialog()?.opened);
            verify(/^Keep the result of 0\.\d+ s of solving\?/.test(dialog().text), dialog().text);
            keyClick(Qt.Key_F5);
            keyClick(Qt.Key_N, Qt.ControlModifier);
            keyClick(Qt.Key_1, Qt.ControlModifier);
            compare([shell.navIndex, dialog().title], [2, "Keep the result?"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !dialog().visible);
            verify(kept());
        }
        shell.files.currentFile = projectFile;
        shell.applyProjectState({boardText: "Td9c6h6c", maxIterations: 1000000});
        tryVerify(() => shell.canSolve, 60000);
        keyClick(Qt.Key_F5);
        answer("Save");
        compare(messages().text, "Saved tst_shell.tidewellproj");
        tryVerify(() => shell.solvePage.currentIteration > 0, 60000);
        tryVerify(() => !dialog().visible);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !shell.running, 60000);

        // Nothing is there now but what is on the disk.
        keyClick(Qt.Key_S, Qt.ControlModifier);
        tryVerify(() => replaced()?.opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !replaced().visible);
        shell.resetToStartupBlank();
        shell.openDropped([projectFile]);
        verify(kept());
        guard.worthKeepingSeconds = 2;
    }

    function test_close(): void {
        shell.homePage.quickSolve();
        shell.projectPage.rakeCap = 5;
        let closed = 0;
        verify(!shell.requestClose(() => ++closed));
        answer("Cancel");
        tryVerify(() => !dialog().visible);
        compare(closed, 0);
        verify(!shell.requestClose(() => ++closed));
        compare(dialog().title, "Quit Tidewell?");
        answer("Quit Without Saving");
        compare(closed, 1);
        verify(shell.requestClose(() => ++closed));
    }

    function test_failuresAreShown(): void {
        shell.homePage.quickSolve();
        const before = shell.exportProjectState();
        ignoreWarning("Load failed: Failed to open file");
        shell.openDropped(["file:///nowhere/at.tidewellproj"]);
        compare([messages().visible, messages().isError], [true, true]);
        compare(messages().text, "at.tidewellproj could not be opened: Failed to open file");
        ignoreWarning(/^Load failed: Its name/);
        shell.openDropped(["file:///nowhere/a%FFt.tidewellproj"]);
        verify(messages().text.startsWith("a%FFt.tidewellproj could not be opened: Its name"));
        compare([shell.navIndex, shell.exportProjectState()], [1, before]);
        shell.openDropped([projectFile, projectFile]);
        compare(messages().text, "Drop one project file at a time.");
        ignoreWarning(/^saveProject: failed to open:/);
        ignoreWarning(/^Save failed:/);
        shell.rakeCap = 9;
        verify(!shell.files.save("file:///nowhere/at.tidewellproj"));
        verify(messages().text.startsWith("at.tidewellproj could not be saved"));
        verify(shell.unsavedChanges);
        const cross = Finding.inTree(messages(), item => item instanceof IconButton);
        waitForRendering(test);
        mouseClick(cross);
        verify(!messages().visible);
    }

    function test_appearance(): void {
        const store = createTemporaryQmlObject("import Tidewell\nAppearanceStore {}", test);
        const theme = createTemporaryQmlObject("import Tidewell\nTheme {}", test);
        for (const [dark, stored, accent] of [
            [false, "#8058A6FF", "#8058a6ff"], [true, "no colour", "#8058a6ff"],
            [true, "", "#3fb950"]]) {
            store.accentHex = stored;
            store.darkMode = dark;
            store.applyTo(theme);
            compare([theme.dark, String(theme.accent)], [dark, accent]);
        }
        shell.navigate(4);
        shell.settingsPage.darkMode = false;
        verify(!shell.theme.dark);
        shell.settingsPage.darkMode = true;
        verify(shell.theme.dark);
    }

    name: "AppShell"
    width: 1280
    height: 720

    AppShell {
        id: shell

        anchors.fill: parent
        controller: test.controller
    }
}
