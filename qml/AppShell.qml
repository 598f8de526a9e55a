import QtQuick
import QtQuick.Layouts
import Tidewell

import "logic/solve_config.mjs" as SolveConfig

// The whole window: top bar, pages, and what they have in common. Pages know nothing of each other;
// they read and write the project state that the shell is.
ProjectState {
    id: shell

    property int navIndex: 0
    // A project was started or opened, so its page can be visited.
    property bool hasProject: false
    // The program's UpdateManager; null for none.
    property var updater: null
    // What the widest page would like to have, in pixels.
    property alias projectRecommendedWidth: pages.projectRecommendedWidth

    readonly property Theme theme: Theme {}
    readonly property Typography type: Typography {}
    readonly property bool running: controller?.running ?? false
    // The controller takes some texts for something else than they say.
    readonly property bool _mayStart: canSolve && !spotCheck.mistake
    readonly property alias files: files
    // null until they are visited.
    readonly property alias homePage: pages.homePage
    readonly property alias projectPage: pages.projectPage
    readonly property alias solvePage: pages.solvePage
    readonly property alias resultsPage: pages.resultsPage
    readonly property alias settingsPage: pages.settingsPage
    readonly property alias unsavedChanges: guard.unsavedChanges

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

    // Shows on all pages what the project is now.
    function syncPagesFromRoot(): void {
        pages.sync();
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
        if (_mayStart && !running) {
            navIndex = 2;
            const config = solveConfig();
            guard.confirmSolve(() => controller.startSolveWithConfig(config), false);
        } else if (hasProject && !running) {
            messages.showError(spotCheck.obstacle);
        }
    }

    // Puts the spot of a former run on the Setup page; asks before one that is nowhere else goes.
    function openSpot(config: var): void {
        const open = () => {
            applyProjectState(SolveConfig.stateOf(config));
            syncPagesFromRoot();
            hasProject = true;
            navIndex = 1;
        };
        if (runHistory.holds(solveConfig())) {
            open();
        } else {
            guard.confirmSetup(open);
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

    onNavIndexChanged: pages.visit(navIndex)
    Component.onCompleted: {
        appearance.applyTo(theme);
        resetToStartupBlank();
        pages.visit(navIndex);
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
    RunHistory {
        id: runHistory

        controller: shell.controller
    }
    SpotCheck {
        id: spotCheck

        spot: shell
        controller: shell.controller
        canSolve: shell.canSolve
        estimateDue: shell.estimateDue
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
            canSolve: shell._mayStart
            spotObstacle: spotCheck.obstacle
            solveProgress: progress
            fileName: shell.files.currentName
            hasChanges: shell.unsavedChanges
            onNavigate: index => shell.navigate(index)
            Layout.fillWidth: true
        }
        PageStack {
            id: pages

            currentIndex: shell.navIndex
            project: shell
            updater: shell.updater
            files: files
            progress: progress
            spotCheck: spotCheck
            runHistory: runHistory
            theme: shell.theme
            type: shell.type
            hasProject: shell.hasProject
            confirmSolve: (proceed, underLocks) => guard.confirmSolve(proceed, underLocks)
            onNewProject: shell.newProject()
            onQuickSolve: shell.quickSolve()
            onProjectLoaded: (projectState, hasResults) =>
                shell._takeOverProject(projectState, hasResults)
            onNavigate: index => shell.navIndex = index
            onSpotRequested: config => shell.openSpot(config)
            onSettingsStored: messages.showInfo(qsTr("Settings saved"))
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
    ProjectFiles {
        id: files

        theme: shell.theme
        controller: shell.controller
        stateProvider: () => shell.exportProjectState()
        confirmLoss: proceed => guard.confirmLoss(proceed)
        onSaved: messages.showInfo(qsTr("Saved %1").arg(currentName))
        onFailed: message => messages.showError(message)
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
        files: files
        hasProject: shell.hasProject
    }
}
