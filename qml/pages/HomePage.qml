import QtQuick
import QtQuick.Layouts
import Tidewell

// The start page: ways into a project, and what has been solved so far. It holds no project; the
// shell hands it one to save and takes over the one that was opened.
Item {
    id: page

    property Theme theme: Fallback.theme
    property Typography type: Fallback.type
    property var controller: null
    // Gives the project state that a save writes, a map.
    property var projectStateProvider: () => ({})
    // Opens and saves projects; the shell's.
    property var files: null
    property bool canSave: true
    property bool canImportRange: true

    property var solveActivityGrid: []
    property var solveHistoryDaily: []
    property int solvesToday: 0
    property var playVsSolutionStats: ({})

    signal newProject
    signal quickSolve
    signal importRange
    signal projectLoaded(var projectState, bool hasResults)

    function reloadSolveStats(): void {
        solveActivityGrid = controller?.solveActivityGridLastSixMonths() ?? [];
        solveHistoryDaily = controller?.solveHistoryDaily() ?? [];
        solvesToday = controller?.solvesToday() ?? 0;
    }

    function reloadTrainerStats(): void {
        playVsSolutionStats = controller?.playVsSolutionStats() ?? {};
    }

    onVisibleChanged: {
        if (visible) {
            // Other windows have been at work, too.
            page.files.recent.refresh();
            page.reloadSolveStats();
            page.reloadTrainerStats();
        }
    }
    Component.onCompleted: {
        reloadSolveStats();
        reloadTrainerStats();
    }

    Connections {
        target: page.files

        function onOpened(projectState: var, hasResults: bool): void {
            page.projectLoaded(projectState, hasResults);
        }
    }
    Connections {
        target: page.controller

        function onSolveStatsChanged(): void {
            page.reloadSolveStats();
        }
        function onPlayVsSolutionStatsChanged(): void {
            page.reloadTrainerStats();
        }
    }
    AppScrollView {
        id: scroll

        anchors.fill: parent
        theme: page.theme
        contentWidth: availableWidth

        ColumnLayout {
            x: page.theme.spaceXl
            width: scroll.availableWidth - 2 * page.theme.spaceXl
            spacing: page.theme.spaceXl

            HeroBand {
                theme: page.theme
                canSave: page.canSave
                onNewRequested: page.newProject()
                onSaveRequested: page.files.chooseToSave()
                onOpenRequested: page.files.chooseToOpen()
                Layout.fillWidth: true
                Layout.topMargin: page.theme.spaceXl
            }
            RowLayout {
                spacing: page.theme.spaceXl
                Layout.fillWidth: true

                QuickActionsCard {
                    theme: page.theme
                    canImportRange: page.canImportRange
                    onNewRequested: page.newProject()
                    onQuickRequested: page.quickSolve()
                    onImportRequested: page.importRange()
                    Layout.preferredWidth: 320
                    Layout.maximumWidth: 320
                    Layout.alignment: Qt.AlignTop
                }
                RecentFilesCard {
                    theme: page.theme
                    files: page.files.recent
                    onOpenRequested: file => page.files.open(file)
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
            TrainerStatsCard {
                theme: page.theme
                stats: page.playVsSolutionStats
                onClearConfirmed: page.controller?.clearPlayVsSolutionStats()
                Layout.fillWidth: true
            }
            OverviewCard {
                theme: page.theme
                controller: page.controller
                activityGrid: page.solveActivityGrid
                solvesToday: page.solvesToday
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: page.theme.spaceXl
                Layout.fillWidth: true
                Layout.bottomMargin: page.theme.spaceXl

                SolvesChartCard {
                    theme: page.theme
                    history: page.solveHistoryDaily
                    Layout.preferredWidth: 680
                    Layout.maximumWidth: 680
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
                ActivityCard {
                    theme: page.theme
                    cells: page.solveActivityGrid
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
        }
    }
}
