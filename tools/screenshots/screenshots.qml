import QtQuick
import QtTest
import Tidewell

import "../../tests/qml/finding.mjs" as Finding

// Walks the real program through its pages and writes a picture of each state into the folder of
// TIDEWELL_SCREENSHOTS: dark and light, at the smallest and at a common size of a screen.
Item {
    id: root

    width: 1280
    height: 720

    AppShell {
        id: shell

        anchors.fill: parent
        // The program makes it known to the documents.
        // qmllint disable unqualified
        controller: appController
        updater: updates
        // qmllint enable unqualified
    }
    TestCase {
        id: tour

        // Set by the program that runs the tour.
        readonly property string folder: screenshotFolder // qmllint disable unqualified
        property string look: ""
        property int count: 0

        function picture(name: string): void {
            // Hover effects and opening popups come to rest.
            wait(350);
            const path = `${folder}/${look}-${String(++count).padStart(2, "0")}-${name}.png`;
            let written = null;
            root.Window.contentItem.grabToImage(result => written = result.saveToFile(path));
            tryVerify(() => written !== null, 20000);
            verify(written, path);
        }

        function find(name: string): Item {
            const item = findChild(root.Window.contentItem, name);
            verify(item, name);
            return item;
        }

        function click(item: Item): void {
            wait(200);  // a change of the layout comes to rest
            mouseClick(item);
        }

        function open(state: var): void {
            shell.resetToDefaults();
            shell.applyProjectState(state);
            shell.syncPagesFromRoot();
            tryVerify(() => shell.canSolve, 60000);
        }

        function solve(): void {
            keyClick(Qt.Key_F5);
            tryVerify(() => shell.controller.resultIterations > 0 && !shell.running, 300000);
        }

        function home(): void {
            shell.resetToStartupBlank();
            shell.navIndex = 0;
            picture("home");
        }

        function setup(): void {
            shell.newProject();
            picture("setup-new");
            shell.resetToDefaults();
            shell.navIndex = 1;
            tryVerify(() => shell.canSolve, 60000);
            picture("setup-quick-solve");
            shell.projectPage.oopFlopBetSizesText = "33, x";
            shell.projectPage.ipRangeText = "AA, QQ+, AKz";
            picture("setup-mistakes");
            shell.resetToDefaults();
            const slot = Finding.inTree(find("board"), item => item instanceof PlayingCard);
            click(slot);
            picture("setup-card");
            keyClick(Qt.Key_Escape);
            click(find("saveSettings"));
            picture("setup-save-settings");
            keyClick(Qt.Key_Escape);
            click(find("loadSettings"));
            picture("setup-load-settings");
            keyClick(Qt.Key_Escape);
        }

        function solving(): void {
            tryVerify(() => shell.canSolve, 60000);
            shell.navIndex = 2;
            picture("solve-ready");
            click(find("start"));
            tryVerify(() => shell.solvePage.currentIteration > 60, 120000);
            picture("solve-running");
            click(find("cancel"));
            tryVerify(() => !shell.running, 60000);
            open({boardText: "AdJd8s2c", maxIterations: 60});
            solve();
            picture("solve-done");
        }

        function results(): void {
            shell.navIndex = 3;
            picture("results-root");
            const page = shell.resultsPage;
            const matrix = Finding.inTree(page, item => item instanceof HandMatrix);
            const cell = matrix.cellOf("AKs");
            mouseMove(matrix, cell.x + 5, cell.y + 5);
            wait(300);
            picture("results-hand");
            mouseMove(matrix, -5, -5);
            shell.theme.distinctActions = true;
            picture("results-distinct");
            shell.theme.distinctActions = false;
            page.selectActionAtLevel(0, 0);
            picture("results-answer");
            page.toggleBucketFilter("top pair");
            page.toggleHandFilter("AJs");
            picture("results-filters");
            page.toggleHandFilter("AJs");
            page.handSearchText = "AKQ";
            picture("results-no-match");
            page.handSearchText = "";
            page.toggleBucketFilter("top pair");
            page.selectActionAtLevel(1, 0);
            picture("results-chance");
            page.openChancePicker(2, page.currentNodeIndex);
            picture("results-picker");
            page.chooseChanceCard(page.chancePickerAvailableCardIndices[5], "");
            picture("results-river");
        }

        // The root's hands, painted; a solve under them; and what a project knows of the curves.
        function locks(): void {
            const page = shell.resultsPage;
            page.resetTreeToRoot();
            page.nodeLocks.enterMode();
            picture("locks-none");
            page.nodeLocks.select(1);
            for (const hand of ["AA", "KK", "QQ", "JJ", "AKs", "AQs", "AKo"]) {
                page.applyNodeLockToHand(0, hand);
            }
            picture("locks-pure");
            page.nodeLocks.toggleMixed();
            for (const hand of ["TT", "99", "88", "77", "KQs"]) {
                page.applyNodeLockToHand(0, hand);
            }
            picture("locks-mixed");
            page.selectActionAtLevel(0, 0);
            page.selectActionAtLevel(1, 0);
            picture("locks-chance");
            page.goToSolve();
            page.nodeLocks.solveAgain();
            tryVerify(() => !shell.running && shell.controller.resultIterations > 0, 300000);
            shell.navIndex = 3;
            picture("locks-solved");
        }

        function distributions(): void {
            const page = shell.resultsPage;
            page.distributions.open();
            tryVerify(() => page._distPayload.ok, 60000);
            const answer = page._distPayload;
            page._distPayload = Object.assign({}, answer, {ok: false, pending: true});
            picture("distributions-pending");
            page._distPayload = answer;
            picture("distributions-equity");
            keyClick(Qt.Key_End);
            keyClick(Qt.Key_Left, Qt.ShiftModifier);
            keyClick(Qt.Key_Left, Qt.ShiftModifier);
            keyClick(Qt.Key_C, Qt.ControlModifier);
            picture("distributions-hover");
            page._distMetricEquity = false;
            keyClick(Qt.Key_Home);
            picture("distributions-ev");
            page._distPayload = Object.assign({}, answer, {
                ok: false, error: "Distributions unavailable (no live solve state)."
            });
            picture("distributions-error");
            keyClick(Qt.Key_Escape);
            wait(200);  // until the dialog has faded
        }

        // What an action would lose, by index; NaN where nobody knows.
        function losses(page: ResultsPage): var {
            const node = page.playNodeIndex;
            const actor = shell.controller.nodeMeta(node).player;
            return Array.from(shell.controller.nodeActions(node), (_, action) =>
                page._suboptimalEvInfoAtNode(node, actor, action).evLoss ?? NaN);
        }

        // As the keyboard does, with the least or the greatest loss.
        function press(page: ResultsPage, best: bool): void {
            const all = losses(page);
            const wanted = best ? Math.min(...all) : Math.max(...all);
            keyClick(Qt.Key_1 + all.indexOf(wanted));
        }

        function awaitTurn(page: ResultsPage): void {
            tryVerify(() => page.playAwaitingUserAction || page.playHandComplete, 60000);
        }

        function play(): void {
            const page = shell.resultsPage;
            click(find("play"));
            picture("play-role");
            page.trainer.seed(5);
            keyClick(Qt.Key_3);
            awaitTurn(page);
            picture("play-waiting");
            while (!page.playHandComplete) {
                press(page, true);
                awaitTurn(page);
            }
            picture("play-complete");
            keyClick(Qt.Key_Space);
            awaitTurn(page);
            press(page, false);
            tryVerify(() => page.playHandComplete);
            picture("play-mistake");
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Space);
            awaitTurn(page);
            picture("play-pinned");
            keyClick(Qt.Key_D);
            for (const best of [true, false]) {
                tryVerify(() => page.playAwaitingUserAction);
                press(page, best);
                tryVerify(() => page.playDrillFeedbackText !== "");
                picture(best ? "play-drill-right" : "play-drill-wrong");
            }
            page.playMode = false;
        }

        function others(): void {
            shell.navIndex = 4;
            picture("settings");
            shell.navIndex = 0;
            picture("home-after-solves");
            shell.requestClose(() => {});
            picture("unsaved");
            keyClick(Qt.Key_Escape);
        }

        function test_tour_data(): var {
            const rows = [];
            for (const [width, height] of [[1280, 720], [1920, 1080]]) {
                for (const dark of [true, false]) {
                    rows.push({tag: `${dark ? "dark" : "light"}-${width}`, width, height, dark});
                }
            }
            return rows;
        }

        function test_tour(row): void {
            root.width = row.width;
            root.height = row.height;
            shell.theme.dark = row.dark;
            look = row.tag;
            count = 0;
            home();
            setup();
            solving();
            results();
            locks();
            distributions();
            play();
            others();
        }

        name: "Screenshots"
        when: windowShown
    }
}
