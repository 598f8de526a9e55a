pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

import "../logic/presets.mjs" as Presets
import "../logic/solve_config.mjs" as SolveConfig

// The pages, of which one is seen. They know nothing of each other; what they enter into the project
// comes to the others through the shell.
StackLayout {
    id: pages

    // The shell.
    required property ProjectState project
    required property ProjectFiles files
    required property SolveProgress progress
    required property SpotCheck spotCheck
    required property RunHistory runHistory
    required property Theme theme
    required property Typography type
    required property bool hasProject
    // See LossGuard.
    required property var confirmSolve

    // null until they are visited.
    readonly property HomePage homePage: homePlace.item as HomePage
    readonly property ProjectPage projectPage: projectPlace.item as ProjectPage
    readonly property SolvePage solvePage: solvePlace.item as SolvePage
    readonly property ResultsPage resultsPage: resultsPlace.item as ResultsPage
    readonly property SettingsPage settingsPage: settingsPlace.item as SettingsPage
    // The program's UpdateManager; null for none.
    property var updater: null
    // What the Setup page would like to have, in pixels.
    property int projectRecommendedWidth: 1540

    // These are entered on the Solve page; everything else comes from the Project page.
    readonly property var _solveKeys: ["threadCount", "exactAllIn", "maxIterations"]
    readonly property var _projectKeys: Presets.PROJECT_KEYS.filter(key => key !== "threadCount")
    property bool _isSyncing: false
    // What the results are of. The Setup page may have gone on to another spot since.
    readonly property var _solved:
        project.controller?.resultIterations > 0 ? project.controller.solvedConfig : {}

    signal newProject
    signal quickSolve
    signal projectLoaded(var projectState, bool hasResults)
    signal navigate(int index)
    signal settingsStored
    signal spotRequested(var config)

    // A page that sets a property of its own ends the binding of it to the project; here all of them
    // are bound anew.
    function sync(): void {
        for (const page of [projectPage, solvePage]) {
            if (page) {
                _bind(page);
            }
        }
        projectPage?.history.forget();
    }

    function visit(index: int): void {
        const page = (itemAt(index) as OnDemand).get() as Item;
        // What is hidden must not keep the keyboard.
        page.forceActiveFocus();
    }

    // Meanwhile what a page derives from one property is not taken over: the next one is about to be
    // bound, too.
    function _bind(page: Item): void {
        _isSyncing = true;
        for (const key of _projectKeys) {
            page[key] = Qt.binding(() => pages.project[key]);
        }
        _isSyncing = false;
    }

    // What a page changes changes the project.
    function _follow(page: Item, key: string): void {
        page[key + "Changed"].connect(() => {
            if (!pages._isSyncing) {
                pages.project[key] = page[key];
            }
        });
    }

    OnDemand {
        id: homePlace

        HomePage {
            anchors.fill: parent
            theme: pages.theme
            type: pages.type
            controller: pages.project.controller
            files: pages.files
            projectStateProvider: pages.files.stateProvider
            canSave: pages.hasProject
            canImportRange: false
            onNewProject: pages.newProject()
            onQuickSolve: pages.quickSolve()
            onProjectLoaded: (projectState, hasResults) =>
                pages.projectLoaded(projectState, hasResults)
        }
    }
    OnDemand {
        id: projectPlace

        onBuilt: page => {
            pages._bind(page);
            pages._projectKeys.forEach(key => pages._follow(page, key));
            (page as ProjectPage).history.forget();
        }
        ProjectPage {
            anchors.fill: parent
            theme: pages.theme
            type: pages.type
            controller: pages.project.controller
            canSolve: pages.project.canSolve
            spotCheck: pages.spotCheck
            onGoToSolve: pages.navigate(2)
            onRecommendedWindowWidthChanged: pages.projectRecommendedWidth = recommendedWindowWidth
        }
    }
    OnDemand {
        id: solvePlace

        onBuilt: page => {
            pages._bind(page);
            for (const key of pages._solveKeys) {
                const take = () => page[key] = pages.project[key];
                take();
                pages.project[key + "Changed"].connect(take);
                pages._follow(page, key);
            }
        }
        SolvePage {
            anchors.fill: parent
            theme: pages.theme
            type: pages.type
            controller: pages.project.controller
            canSolve: pages.project.canSolve
            solveProgress: pages.progress
            spotCheck: pages.spotCheck
            runHistory: pages.runHistory
            confirmSolve: pages.confirmSolve
            onGoToResults: pages.navigate(3)
            onSpotRequested: config => pages.spotRequested(config)
        }
    }
    OnDemand {
        id: resultsPlace

        ResultsPage {
            anchors.fill: parent
            theme: pages.theme
            type: pages.type
            controller: pages.project.controller
            boardText: pages._solved.board ?? pages.project.boardText
            rakePercent: pages._solved.rake_percent ?? pages.project.rakePercent
            rakeCap: pages._solved.rake_cap ?? pages.project.rakeCap
            confirmSolve: pages.confirmSolve
            setupChanged: !SolveConfig.isSameSpot(pages.project.solveConfig(), pages._solved)
            onGoToSolve: pages.navigate(2)
        }
    }
    OnDemand {
        id: settingsPlace

        SettingsPage {
            anchors.fill: parent
            theme: pages.theme
            type: pages.type
            darkMode: pages.theme.dark
            controller: pages.project.controller
            updater: pages.updater
            onDarkModeChanged: pages.theme.dark = darkMode
            onStored: pages.settingsStored()
        }
    }
}
