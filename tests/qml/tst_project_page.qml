import QtQuick
import Qt.labs.settings
import Tidewell

import "finding.mjs" as Finding
import "../../qml/logic/presets.mjs" as Presets
import "../../qml/logic/solve_config.mjs" as SolveConfig

// The page by mouse and keys.
DocumentCase {
    id: test

    property bool estimateDue: false
    readonly property Item everything: test.Window.contentItem

    function init(): void {
        failOnWarning(/.?/);
        page.width = 1540;
        page.height = 1000;
        page.canSolve = estimateDue = false;
        enterSpot(Presets.newProject(2, false));
        page.forceActiveFocus();
        waitForRendering(page);
    }

    function enterSpot(state: var): void {
        delete state.threadCount;
        Object.assign(page, state);
    }

    // "oopSizing/flopBetSizes" is a field of one of the two panels.
    function find(path: string): var {
        return path.split("/").reduce((item, name) => {
            const found = Finding.inTree(item, child => child.objectName === name);
            verify(found, path);
            return found;
        }, everything);
    }

    function enter(item: Item, text: string): void {
        mouseClick(item);
        type(item, text);
        keyClick(Qt.Key_Return);
    }

    function slots(): var {
        return all(find("board"), item => item instanceof PlayingCard);
    }

    function openSlot(index: int): void {
        mouseClick(slots()[index]);
        tryCompare(page, "editingCardIndex", index);
        tryVerify(() => find("cardPicker").activeFocus);
    }

    function pickAceOfHearts(): void {
        const isIt = item => item instanceof PickerCard && item.rank + item.suit === "Ah";
        mouseClick(all(find("cardPicker"), isIt)[0]);
    }

    // The picker goes on until the flop is full, and gives the keyboard back.
    function test_board(): void {
        slots()[2].forceActiveFocus();
        keyClick(Qt.Key_Return);
        tryVerify(() => find("cardPicker").activeFocus);
        waitForRendering(find("cardPicker"));
        pickAceOfHearts();
        compare([page.boardText, page.editingCardIndex], ["____Ah", 0]);
        verify(slots()[4].disabled);
        // A used card cannot be taken again, and one that is typed can.
        pickAceOfHearts();
        compare([page.editingCardIndex, page.boardText], [0, "____Ah"]);
        keys(["7", "s", "K", "d"]);
        tryCompare(page, "editingCardIndex", -1);
        compare(page.boardText, "7sKdAh");
        tryVerify(() => slots()[2].activeFocus);

        // From one slot straight to another, and a cleared one leaves the others.
        page.boardText += "2c2d";
        compare(page.startingStreet, "river");
        openSlot(4);
        openSlot(3);
        compare(find("slotName").text, "Turn card");
        mouseClick(find("clearCard"));
        compare(page.boardText, "7sKdAh__2d");
        openSlot(0);
        mouseClick(find("effectiveStack"));
        tryCompare(page, "editingCardIndex", -1);
        verify(page.boardText === "7sKdAh__2d" && find("effectiveStack").activeFocus);
        wait(200);
        verify(find("effectiveStack").activeFocus);
    }

    // Whole cards are taken over as they are typed; what is none stays, marked.
    function test_boardField(): void {
        const field = find("boardField");
        type(field, "asKD7");
        compare([page.boardText, field.text, field.error], ["AsKd", "asKD7", ""]);
        keys(["c", ",", " ", "1", "0", "h", Qt.Key_Return]);
        compare([page.boardText, field.text], ["AsKd7cTh", "As Kd 7c Th"]);
        enter(field, "As Kz 7c");
        page.forceActiveFocus();
        compare([page.boardText, field.text], ["As", "As Kz 7c"]);
        verify(find("boardHint").text.startsWith("“Kz”"));
        page.boardText = "2c3c4c";
        compare([field.text, field.error], ["2c 3c 4c", ""]);
    }

    // What is out of bounds is not taken, but stays in sight until it is mended.
    function test_numbers(): void {
        for (const [name, text, value] of [
            ["startingPot", "0", 18], ["startingPot", "250.5", 250.5],
            ["effectiveStack", "100000.01", 91], ["rakePercent", "0,125", 0.125],
            ["rakeCap", "12.5", 3], ["targetExploitability", "0.25", 0.25]]) {
            const [field, good] = [find(name), Number(text.replace(",", ".")) === value];
            enter(field, text);
            page.forceActiveFocus();
            compare([page[name], field.text], [value, good ? String(value) : text], name);
            compare([field.error === "", page.spotCheck.place], [good, good ? "board" : "game/" + name]);
            page.history.forget();
            compare(Number(field.text), value);
        }
        mouseClick(all(page, item => item instanceof SecondaryButton && item.text === "0.1%")[0]);
        compare([page.targetExploitability, find("targetExploitability").text], [0.1, "0.1"]);
    }

    // A mistake is marked once it is finished, until it is mended.
    function test_sizing(): void {
        const bets = find("oopSizing/flopBetSizes");
        type(bets, "33, 2x");
        compare([bets.error, page.oopFlopBetSizesText], ["", ""]);
        keyClick(Qt.Key_Tab);
        verify(page.oopFlopBetSizesText === "33, 2x" && bets.error.startsWith("“2x”"));
        bets.forceActiveFocus();
        keys([Qt.Key_End, Qt.Key_Backspace]);
        compare(bets.error, "");

        enter(find("oopSizing/turnBetSizes"), "66");
        enter(find("ipSizing/turnBetSizes"), "50");
        mouseClick(find("oopSizing/turnAddAllIn"));
        mouseClick(find("oopSizing/riverDontDonk"));
        mouseClick(find("oopSizing/jamToggle"));
        type(find("oopSizing/jamPercent"), "12");
        compare(page.oopAddAllInIfJamLtPct, 12);
        mouseClick(find("ipSizing/copySizing"));
        compare([page.ipTurnBetSizesText, page.ipTurnAddAllIn, page.ipRiverAddAllIn,
                 page.ipAddAllInIfJamLtEnabled, page.ipAddAllInIfJamLtPct],
                ["66", true, false, true, 12]);
        compare([find("ipSizing/turnBetSizes").text, find("ipSizing/jamPercent").text,
                 find("ipSizing/turnAddAllIn").checked, page.oopRiverDontDonk],
                ["66", "12", true, true]);
    }

    // The place of a hand in the matrix, the one in row and column.
    function pressCell(path: string, row: int, column: int, button: int): void {
        const step = find(path).effectiveCellSize + 2;
        mouseClick(find(path), (column + 0.5) * step, (row + 0.5) * step, button);
    }

    // A cell shows what the solver reads, and painting changes no more than its combos.
    function test_painting(): void {
        page.oopRangeText = "A5s-A2s:0.5, AhKh, AsKs, Z9";
        const matrix = find("oopRange/matrix");
        compare([matrix.weights.AKs, matrix.parts.AKs, matrix.weights.A3s], [0.5, 2, 0.5]);
        page.boardText = "AhKd2c";
        compare(find("oopRange/rangeSize").text,
                "10 combos · 0.8% of hands · 3.5 on the board");
        pressCell("oopRange/matrix", 0, 11, Qt.LeftButton);
        compare(page.oopRangeText, "A5s-A4s:0.5, A3s, A2s:0.5, AsKs, AhKh, Z9");
        pressCell("oopRange/matrix", 0, 11, Qt.LeftButton);
        compare(page.oopRangeText, "A5s-A4s:0.5, A2s:0.5, AsKs, AhKh, Z9");
        mouseClick(find("oopRange/brush25"));
        pressCell("oopRange/matrix", 0, 1, Qt.LeftButton);
        compare(page.oopRangeText, "AKs:0.25, A5s-A4s:0.5, A2s:0.5, Z9");

        // Combo by combo.
        pressCell("oopRange/matrix", 0, 0, Qt.RightButton);
        tryVerify(() => find("comboAsAh").activeFocus);
        waitForRendering(find("comboAsAh"));
        verify(find("comboAhAd").blocked && !find("comboAsAd").blocked);
        mouseClick(find("comboAsAd"));
        keyClick(Qt.Key_Plus);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !find("comboAsAd").visible);
        compare(page.oopRangeText, "AKs:0.25, A5s-A4s:0.5, A2s:0.5, AsAd:0.3, Z9");

        page.ipRangeText = "50%";
        mouseClick(find("oopRange/swapRanges"));
        compare([page.oopRangeText, page.ipRangeText.slice(-2)], ["50%", "Z9"]);
        mouseClick(find("ipRange/copyRange"));
        page.oopRangeText = "22+, A2+:0.25";
        mouseClick(find("oopRange/invertRange"));
        compare([page.ipRangeText, HandRanges.read(page.oopRangeText, "").weights.A9o,
                 HandRanges.read(page.oopRangeText, "").weights.AA], ["50%", 0.75, undefined]);
    }

    // One history of all that is done, whatever has the keyboard.
    function test_undo(): void {
        page.oopClickWeightPct = 100;
        page.history.forget();
        const undo = () => keyClick(Qt.Key_Z, Qt.ControlModifier);
        const redo = () => keyClick(Qt.Key_Z, Qt.ControlModifier | Qt.ShiftModifier);
        const state = () => [page.oopRangeText, page.ipRangeText, page.startingPot, page.boardText];
        const states = [state()];
        const done = () => {
            wait(0);
            states.push(state());
        };
        mouseClick(find("oopRange/matrix"), 10, 10);
        done();
        enter(find("startingPot"), "40");
        done();
        type(find("ipRange/rangeText"), "QQ+");
        done();
        setBoard("AdJd8s");
        done();
        mouseClick(find("ipRange/clearRange"));
        done();
        compare(states[states.length - 1], ["AA", "", 40, "AdJd8s"]);
        find("ipRange/rangeText").forceActiveFocus();
        for (const before of states.slice(0, -1).reverse()) {
            undo();
            compare(state(), before);
        }
        undo();
        states.slice(1).forEach(after => {
            redo();
            compare(state(), after);
        });
        redo();
        // What is typed and not taken over is the field's.
        type(find("oopSizing/flopBetSizes"), "66");
        undo();
        compare([find("oopSizing/flopBetSizes").text === "66", state()], [false, states[5]]);
    }

    function setBoard(text: string): void {
        page.boardText = text;
    }

    function saveProfile(name: string): void {
        mouseClick(find("saveSettings"));
        tryVerify(() => find("profileName").activeFocus);
        enter(find("profileName"), name);
        tryVerify(() => !find("profileName").visible);
    }

    function openProfiles(index: int): var {
        mouseClick(find("loadSettings"));
        tryVerify(() => find("profileList").activeFocus);
        verify(!find("loadProfile").enabled);
        waitForRendering(find("profileList"));
        return find("profileList").itemAtIndex(index);
    }

    function test_profiles(): void {
        saveProfile(" A ");
        Object.assign(page, {startingPot: 40, ipRiverBetSizesText: "120", oopFlopDontDonk: true});
        saveProfile("A");
        const names = () => page.settingsProfiles.map(profile => profile.name);
        compare(names(), ["A", "A (2)"]);
        compare(JSON.parse(store.value("profilesJson")), page.settingsProfiles);

        const settings = () => [page.startingPot, page.ipRiverBetSizesText, page.oopFlopDontDonk];
        mouseClick(openProfiles(0));
        mouseClick(find("loadProfile"));
        compare(settings(), [18, "", false]);
        tryVerify(() => !find("profileList").visible);
        mouseDoubleClickSequence(openProfiles(1));
        compare(settings(), [40, "120", true]);
        tryVerify(() => !find("profileList").visible);

        mouseClick(openProfiles(0));
        mouseClick(find("deleteProfile"));
        const question = Finding.inTree(page, item => item instanceof ConfirmDialog);
        tryVerify(() => question.opened && question.text.includes("“A”"));
        const isYes = item => item.visible && item.text === "Delete";
        mouseClick(Array.from(question.buttons).find(isYes));
        tryVerify(() => !question.visible);
        compare(names(), ["A (2)"]);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !find("profileList").visible);
    }

    // What keeps the spot from being solved stands in the head, at the button and at the field.
    function test_obstacles(): void {
        const general = "Fill board, ranges, and sizings to enable Solve";
        const head = find("pageHead");
        const line = find("obstacle");
        compare([head.badge, line.text], ["Setup Required", general]);
        for (const [change, badge, text, place] of [
            [{ipRangeText: "", oopTurnBetSizesText: ""}, "Setup Required", "Choose at least one hand",
             "ipRange/rangeText"],
            [{boardText: "AdJd"}, "Setup Required", "Choose three, four or five cards", "boardField"],
            [{boardText: "AdJdAd"}, "Check Board", "The board has Ad twice"],
            [{ipRangeText: "AdKh"}, "Check IP Range", "IP range: every hand holds a card of"],
            [{ipRangeText: "AA, ZZ"}, "Check IP Range", "IP range: “ZZ”: not a hand"],
            [{oopRangeText: "AA:0"}, "Check OOP Range", "OOP range: no hand has a weight above 0"],
            [{ipRiverRaiseSizesText: " "}, "Setup Required", "IP raise sizes on the river are empty",
             "ipSizing/riverRaiseSizes"],
            [{oopTurnBetSizesText: "0%"}, "Check OOP Sizing",
             "OOP bet sizes on the turn: “0%”: a size is more than 0"],
            [{oopTurnBetSizesText: "50, 2x"}, "Check OOP Sizing", "OOP bet sizes on the turn: “2x”"],
            [{startingPot: 2e7, effectiveStack: 2e7}, "Cannot Be Solved", "Pot and stack are too"],
            [{startingPot: 1}, "Not Enough RAM", "Needs "]]) {
            enterSpot(Object.assign(Presets.quickSpot(2), change));
            controller.requestSolveMemoryEstimate(SolveConfig.solveConfig(page));
            tryVerify(() => !controller.solveEstimatePending, 60000);
            compare(head.badge, badge);
            verify(line.text.startsWith(text), line.text);
            compare(find("continueToSolve").Accessible.description, line.text);
            if (place) {
                mouseClick(line);
                verify(find(place).activeFocus && find(place).marked, place);
                page.forceActiveFocus();
            }
        }
        Object.assign(page, {boardText: "AdJdAd", oopRangeText: "AA, AdAd"});
        verify(find("boardHint").text === "The board has Ad twice"
               && find("oopRange/rangeText").error.startsWith("“AdAd”"));
    }

    // Lines by street, and what the sizes come to in chips.
    function test_preview(): void {
        enterSpot(Object.assign(Presets.quickSpot(2), {
            boardText: "AdJd8s4c2h", startingStreet: "river", oopRiverBetSizesText: "50, a", ipRiverBetSizesText: "500c",
            ipRiverRaiseSizesText: "3x", oopRiverRaiseSizesText: "-"}));
        controller.requestSolveMemoryEstimate(SolveConfig.solveConfig(page));
        tryVerify(() => !controller.solveEstimatePending, 60000);
        const {streets, sizes} = controller.solvePreview;
        compare(sizes.map(size => [size.seat, size.raise, size.text, size.chips, size.allIn].join()),
                ["OOP,false,50,9,false", "OOP,false,a,91,true", "IP,false,500c,5,false",
                 "IP,true,3x,27,false"]);
        compare([streets.length, streets[0].street, controller.solvePreview.decisions],
                [1, "river", streets[0].decisions]);
        const shown = all(find("preview"), item => item instanceof AppLabel && item.visible)
            .map(item => item.text);
        verify(shown.includes("50% → 9\na → all-in 91") && shown.includes("3x → to 27 (100%)"), shown);
        controller.forgetSolveMemoryEstimate();
        compare([controller.solveRequiredMemoryText, find("previewTotal").text.slice(0, 5)],
                ["—", "Shown"]);
    }

    // What was typed last is taken over by any press; who has gone on before the estimate is there
    // goes on with it, but not after turning to something else.
    function test_continue(): void {
        enterSpot(Presets.quickSpot(2));
        const button = find("continueToSolve");
        const bets = find("oopSizing/flopBetSizes");
        const gone = spyOn(page, "goToSolve");
        type(bets, "40");
        mouseClick(page, 5, 5);
        compare([page.oopFlopBetSizesText, bets.activeFocus], ["40", false]);
        for (const [typed, turnAway] of [["41", true], ["42", false]]) {
            page.canSolve = false;
            type(bets, typed);
            estimateDue = true;
            verify(!button.enabled);
            mouseClick(button);
            compare(page.oopFlopBetSizesText, typed);
            tryVerify(() => button.loading);
            compare(find("pageHead").badge, "Estimating...");
            if (turnAway) {
                mouseClick(find("startingPot"));
            }
            page.canSolve = true;
            estimateDue = false;
            wait(10);
            compare(gone.count, turnAway ? 0 : 1);
            compare([find("pageHead").badge, button.loading], ["Ready", false]);
        }
        // The size was all that was missing.
        page.canSolve = Qt.binding(() => page.oopFlopBetSizesText === "43");
        type(bets, "43");
        mouseClick(button);
        compare(gone.count, 2);
    }

    // What is larger than the window moves by the wheel and to what has the keyboard.
    function test_scrolling(): void {
        // The window opens so wide, and need not grow for the page.
        verify(page.recommendedWindowWidth <= 1540, page.recommendedWindowWidth);
        page.width = 900;
        page.height = 600;
        const pane = Finding.inTree(page, item => item instanceof WidePane);
        tryVerify(() => pane.contentWidth > 900
                        && pane.contentWidth >= page.recommendedWindowWidth);
        for (const [keys, place] of [[Qt.NoModifier, [0, 60]], [Qt.ShiftModifier, [60, 60]]]) {
            mouseWheel(pane, 450, 20, 0, -120, Qt.NoButton, keys);
            compare([pane.contentX, pane.contentY], place);
        }
        const field = find("ipSizing/riverBetSizes");
        field.forceActiveFocus(Qt.TabFocusReason);
        const area = field.mapToItem(page, 0, 0, field.width, field.height);
        verify(area.x >= 0 && area.right <= 900);
    }

    name: "ProjectPage"
    width: 1540
    height: 1000

    Settings {
        id: store

        category: "settings_profiles"
    }
    ProjectPage {
        id: page

        controller: test.controller
        spotCheck: SpotCheck {
            spot: page
            controller: page.controller
            canSolve: page.canSolve
            estimateDue: test.estimateDue
        }
    }
}
