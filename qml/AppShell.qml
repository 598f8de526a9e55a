import QtQuick
import QtQuick.Layouts
import Tidewell

import "logic/presets.mjs" as Presets
import "logic/solve_config.mjs" as SolveConfig

// The whole window: top bar, pages, and what they have in common. Pages know nothing of each other;
// they read and write the project state that the shell is.
ProjectState {
    id: shell

    property int navIndex: 0
    // A project was started or opened, so its page can be visited.
    property bool hasProject: false
    // What the widest page would like to have, in pixels.
    property int projectRecommendedWidth: 1540

    readonly property Theme theme: Theme {}
    readonly property Typography type: Typography {}
    readonly property bool running: controller?.running ?? false
    readonly property alias files: homePage.files
    readonly property alias homePage: homePage
    readonly property alias projectPage: projectPage
    readonly property alias solvePage: solvePage
    readonly property alias resultsPage: resultsPage
    readonly property alias settingsPage: settingsPage
    readonly property alias unsavedChanges: guard.unsavedChanges

    // The solve threads have a field of their own on the Solve page; everything else comes from the
    // Project page.
    readonly property var _projectKeys: Presets.PROJECT_KEYS.filter(key => key !== "threadCount")
    property bool _isSyncing: false
    // What the results are of. The Setup page may have gone on to another spot since.
    readonly property var _solved: controller?.resultIterations > 0 ? controller.solvedConfig : {}

    // The index of a page as in TopBar. A page that cannot be visited now is not.
    function navigate(index: int): void {
        if (topBar.isOpen(index)) {
            navIndex = index;
        }
    }

    function resetToStartupBlank(): void {
        _startProject(startupBlankPreset, false);
    }

    function resetToNewProject(): void {
        _startProject(newProjectPreset, true);
    }

    function resetToDefaults(): void {
        _startProject(quickSolvePreset(), true);
    }

    // A page that sets a property of its own ends the binding of it to the shell; here all of them
    // are bound anew. Meanwhile what a page derives from one property is not taken over: the next
    // one is about to be bound, too.
    function syncPagesFromRoot(): void {
        _isSyncing = true;
        for (const page of [projectPage, solvePage]) {
            for (const key of _projectKeys) {
                page[key] = Qt.binding(() => shell[key]);
            }
        }
        _isSyncing = false;
    }

    // See LossGuard.
    function requestClose(close: var): bool {
        shortcuts.finishTyping();
        return guard.requestClose(close);
    }

    function newProject(): void {
        guard.confirmLoss(() => {
            resetToNewProject();
            navIndex = 1;
        });
    }

    function quickSolve(): void {
        guard.confirmLoss(() => {
            resetToDefaults();
            navIndex = 1;
        });
    }

    function startSolve(): void {
        if (canSolve && !running) {
            navIndex = 2;
            controller.startSolveWithConfig(solveConfig());
        }
    }

    // The files that were dropped on the window, as URLs.
    function openDropped(urls: var): void {
        if (urls.length > 1) {
            messages.showError(qsTr("Drop one project file at a time."));
        } else if (urls.length === 1) {
            files.open(urls[0]);
        }
    }

    function _startProject(preset: var, isProject: bool): void {
        applyProjectState(preset);
        hasProject = isProject;
        controller?.clearResults();
        syncPagesFromRoot();
        files.forgetFile();
        guard.markSaved(exportProjectState());
    }

    function _takeOverProject(projectState: var, hasResults: bool): void {
        applyProjectState(projectState);
        syncPagesFromRoot();
        hasProject = true;
        messages.dismiss();
        guard.markSaved(exportProjectState());
        navIndex = hasResults ? 3 : 1;
    }

    // What a page changes changes the shell's copy.
    function _followPage(page: var, key: string): void {
        page[key + "Changed"].connect(() => {
            if (!shell._isSyncing) {
                shell[key] = page[key];
            }
        });
    }

    // What is hidden must not keep the keyboard.
    onNavIndexChanged: pages.itemAt(navIndex).forceActiveFocus()
    Component.onCompleted: {
        appearance.applyTo(theme);
        _projectKeys.forEach(key => _followPage(projectPage, key));
        _followPage(solvePage, "threadCount");
        threadCountChanged.connect(() => solvePage.threadCount = threadCount);
        projectRecommendedWidth = projectPage.recommendedWindowWidth;
        resetToStartupBlank();
    }

    AppearanceStore {
        id: appearance
    }
    SolveProgress {
        id: progress

        controller: shell.controller
        maxIterations: shell.maxIterations
        targetExploitability: shell.targetExploitability
    }

    Rectangle {
        anchors.fill: parent
        color: shell.theme.bg0

        Rectangle {
            anchors.fill: parent
            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: shell.theme.withOpacity(shell.theme.accent, 0.02)
                }
                GradientStop {
                    position: 1
                    color: "transparent"
                }
            }
        }
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TopBar {
            id: topBar

            theme: shell.theme
            controller: shell.controller
            currentIndex: shell.navIndex
            hasProject: shell.hasProject
            canSolve: shell.canSolve
            solveProgress: progress
            fileName: shell.files.currentName
            hasChanges: shell.unsavedChanges
            onNavigate: index => shell.navigate(index)
            Layout.fillWidth: true
        }
        // All pages live as long as the program, so that each is found as it was left.
        StackLayout {
            id: pages

            currentIndex: shell.navIndex
            Layout.fillWidth: true
            Layout.fillHeight: true

            HomePage {
                id: homePage

                theme: shell.theme
                type: shell.type
                controller: shell.controller
                projectStateProvider: () => shell.exportProjectState()
                confirmLoss: proceed => guard.confirmLoss(proceed)
                canSave: shell.hasProject
                canImportRange: false
                onNewProject: shell.newProject()
                onQuickSolve: shell.quickSolve()
                onProjectLoaded: (projectState, hasResults) =>
                    shell._takeOverProject(projectState, hasResults)
            }
            ProjectPage {
                id: projectPage

                theme: shell.theme
                type: shell.type
                controller: shell.controller
                canSolve: shell.canSolve
                onGoToSolve: shell.navIndex = 2
                onRecommendedWindowWidthChanged:
                    shell.projectRecommendedWidth = recommendedWindowWidth
            }
            SolvePage {
                id: solvePage

                theme: shell.theme
                type: shell.type
                controller: shell.controller
                canSolve: shell.canSolve
                solveProgress: progress
                onGoToResults: shell.navIndex = 3
            }
            ResultsPage {
                id: resultsPage

                theme: shell.theme
                type: shell.type
                controller: shell.controller
                boardText: shell._solved.board ?? shell.boardText
                rakePercent: shell._solved.rake_percent ?? shell.rakePercent
                rakeCap: shell._solved.rake_cap ?? shell.rakeCap
                setupChanged: !SolveConfig.isSameSpot(shell.solveConfig(), shell._solved)
                onGoToSolve: shell.navIndex = 2
            }
            SettingsPage {
                id: settingsPage

                theme: shell.theme
                type: shell.type
                darkMode: shell.theme.dark
                onDarkModeChanged: shell.theme.dark = darkMode
                onStored: messages.showInfo(qsTr("Settings saved"))
            }
        }
    }
    ShellShortcuts {
        id: shortcuts

        running: shell.running
        canSave: shell.hasProject
        onNavigate: index => shell.navigate(index)
        onSolveRequested: shell.startSolve()
        onCancelRequested: shell.controller.cancelSolve()
        onNewRequested: shell.newProject()
        onOpenRequested: shell.files.chooseToOpen()
        onSaveRequested: shell.files.saveAgain()
    }
    Connections {
        target: shell.files

        function onSaved(): void {
            messages.showInfo(qsTr("Saved %1").arg(shell.files.currentName));
        }
        function onFailed(message: string): void {
            messages.showError(message);
        }
    }
    FileDrop {
        anchors.fill: parent
        theme: shell.theme
        onFilesDropped: urls => shell.openDropped(urls)
    }
    MessageBar {
        id: messages

        anchors.bottom: parent.bottom
        anchors.bottomMargin: shell.theme.spaceXl
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, 640, parent.width - 2 * shell.theme.spaceXl)
        theme: shell.theme
    }
    LossGuard {
        id: guard

        theme: shell.theme
        project: shell
        files: homePage.files
        hasProject: shell.hasProject
    }
}
