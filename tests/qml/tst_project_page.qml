import QtQuick
import Qt.labs.settings
import Tidewell

import "finding.mjs" as Finding
import "../../qml/logic/presets.mjs" as Presets

// The page by mouse and keys.
DocumentCase {
    id: test

    readonly property Item everything: test.Window.contentItem

    function init(): void {
        failOnWarning(/.?/);
        page.width = 1540;
        page.height = 1000;
        page.canSolve = false;
        page.settingsProfiles = [];
        const state = Presets.newProject(2, false);
        delete state.threadCount;
        Object.assign(page, state);
        page.forceActiveFocus();
        waitForRendering(page);
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
        compare(page.editingCardIndex, index);
        tryVerify(() => find("cardPicker").activeFocus);
    }

    function pickCard(name: string): void {
        mouseClick(all(find("cardPicker"), item => item instanceof PickerCard
                                                   && item.rank + item.suit === name)[0]);
    }

    // Opens the slot and gives it the card.
    function deal(index: int, name: string): void {
        openSlot(index);
        pickCard(name);
        tryCompare(page, "editingCardIndex", -1);
    }

    function test_board(): void {
        openSlot(2);
        compare(find("slotName").text, "Flop card");
        const corner = find("board").mapToItem(everything, 0, find("board").height);
        const picker = find("cardPicker").mapToItem(everything, 0, 0);
        verify(picker.x > corner.x && picker.y > corner.y + 8);
        pickCard("Ah");
        tryCompare(page, "editingCardIndex", -1);
        compare(page.boardText, "____Ah");
        compare(find("pageHead").badge, "Setup Required");
        verify(slots()[4].disabled);

        deal(0, "Kd");
        // A used card cannot be taken again, and one that is typed can.
        openSlot(1);
        pickCard("Ah");
        compare([page.editingCardIndex, page.boardText], [1, "Kd__Ah"]);
        keys(["7", "s"]);
        tryCompare(page, "editingCardIndex", -1);
        compare([page.boardText, page.startingStreet], ["Kd7sAh", "flop"]);
        compare([find("pageHead").badge, page.usedBoardCards], ["Ready", ["Kd", "7s", "Ah"]]);
        deal(3, "2c");
        compare(page.startingStreet, "turn");
        deal(4, "2d");
        compare([page.boardText, page.startingStreet], ["Kd7sAh2c2d", "river"]);

        // From one slot straight to another, and what is behind a cleared one goes, too.
        openSlot(4);
        compare(find("slotName").text, "River card");
        mouseClick(slots()[3]);
        tryCompare(find("slotName"), "text", "Turn card");
        compare(page.editingCardIndex, 3);
        tryVerify(() => find("cardPicker").activeFocus);
        mouseClick(find("clearCard"));
        compare([page.boardText, page.startingStreet], ["Kd7sAh", "flop"]);
        openSlot(0);
        keyClick(Qt.Key_Escape);
        tryCompare(page, "editingCardIndex", -1);
        openSlot(0);
        mouseClick(page, page.width - 5, 5);
        tryCompare(page, "editingCardIndex", -1);
        compare(page.boardText, "Kd7sAh");
    }

    // What is out of bounds is marked and not taken, and the value comes back.
    function test_numbers(): void {
        for (const [name, text, value, refused] of [
            ["startingPot", "", 18, false], ["startingPot", "0", 18, true],
            ["startingPot", "250.5", 250.5, false], ["effectiveStack", "100000.01", 91, true],
            ["rakePercent", "150", 5, true], ["rakePercent", "0,125", 0.125, false],
            ["rakeCap", "12.5", 3, true], ["targetExploitability", "0.000001", 1e-6, false]]) {
            const field = find(name);
            enter(field, text);
            compare([page[name], field.error !== ""], [value, refused], name + " " + text);
            page.forceActiveFocus();
            compare([Number(field.text), field.error], [value, ""]);
        }
        for (const [text, target] of [["1%", 1], ["0.5%", 0.5], ["0.1%", 0.1]]) {
            mouseClick(all(page, item => item instanceof SecondaryButton && item.text === text)[0]);
            compare([page.targetExploitability, find("targetExploitability").text],
                    [target, String(target)]);
        }
    }

    function test_sizes(): void {
        const bets = find("oopSizing/flopBetSizes");
        type(bets, "33, 2x");
        compare([bets.error, page.oopFlopBetSizesText], ["", ""]);
        keyClick(Qt.Key_Tab);
        compare(page.oopFlopBetSizesText, "33, 2x");
        const message = TextChecks.checkBetSizes("33, 2x", false);
        verify(message !== "");
        compare(bets.error, message);
        // The tab led to the next field; a multiple is a raise.
        verify(find("oopSizing/turnBetSizes").activeFocus);
        enter(find("oopSizing/flopRaiseSizes"), "2.5x");
        compare(find("oopSizing/flopRaiseSizes").error, "");
        mouseClick(bets);
        keys([Qt.Key_End, Qt.Key_Backspace]);
        compare(bets.error, "");
        keyClick(Qt.Key_Return);
        compare(page.oopFlopBetSizesText, "33, 2");
    }

    function test_jamAndCopy(): void {
        enter(find("oopSizing/turnBetSizes"), "66");
        enter(find("ipSizing/turnBetSizes"), "50");
        mouseClick(find("oopSizing/turnAddAllIn"));
        mouseClick(find("oopSizing/riverDontDonk"));
        const percent = find("oopSizing/jamPercent");
        verify(!percent.enabled);
        mouseClick(find("oopSizing/jamToggle"));
        type(percent, "12");
        compare(page.oopAddAllInIfJamLtPct, 12);
        enter(percent, "1000.5");
        compare(page.oopAddAllInIfJamLtPct, 1000);
        verify(percent.error !== "");
        enter(percent, "30");

        mouseClick(find("ipSizing/copySizing"));
        compare([page.ipTurnBetSizesText, page.ipTurnAddAllIn, page.ipRiverAddAllIn,
                 page.ipAddAllInIfJamLtEnabled, page.ipAddAllInIfJamLtPct],
                ["66", true, false, true, 30]);
        compare([find("ipSizing/turnBetSizes").text, find("ipSizing/jamPercent").text,
                 find("ipSizing/turnAddAllIn").checked], ["66", "30", true]);
        compare([page.oopRiverDontDonk, find("ipSizing/riverDontDonk").visible],
                [true, false]);
    }

    // A click takes the whole token of a hand away, so it can be taken back, step by step.
    function test_undo(): void {
        const undo = find("oopRange/undoChange");
        page.oopRangeText = "JJ+, AKs";
        verify(!undo.visible);
        const matrix = find("oopRange/matrix");
        mouseClick(matrix, 10, 10);
        compare(page.oopRangeText, "AKs");
        mouseClick(find("oopRange/clearRange"));
        compare(page.oopRangeText, "");
        mouseClick(undo);
        compare(page.oopRangeText, "AKs");
        mouseClick(undo);
        compare([page.oopRangeText, undo.visible], ["JJ+, AKs", false]);
        mouseClick(matrix, 10, 10);
        page.oopRangeText = "22";
        verify(!undo.visible);
    }

    function saveProfile(name: string): void {
        mouseClick(find("saveSettings"));
        tryVerify(() => find("profileName").activeFocus);
        verify(!find("saveProfile").enabled);
        keyClick(Qt.Key_Return);
        verify(find("nameComplaint").visible);
        enter(find("profileName"), name);
        tryVerify(() => !find("profileName").visible);
    }

    function openProfiles(index: int): var {
        mouseClick(find("loadSettings"));
        tryVerify(() => find("profileList").activeFocus);
        verify(!find("loadProfile").enabled && !find("deleteProfile").enabled);
        waitForRendering(find("profileList"));
        return find("profileList").itemAtIndex(index);
    }

    function test_profiles(): void {
        saveProfile(" A ");
        page.startingPot = 40;
        page.ipRiverBetSizesText = "120";
        page.oopFlopDontDonk = true;
        saveProfile("A");
        const names = () => page.settingsProfiles.map(profile => profile.name);
        compare(names(), ["A", "A (2)"]);
        compare(JSON.parse(store.value("profilesJson")), page.settingsProfiles);

        page.boardText = "AsKsQs";
        mouseClick(openProfiles(0));
        mouseClick(find("loadProfile"));
        compare([page.startingPot, page.ipRiverBetSizesText, page.oopFlopDontDonk,
                 page.boardText], [18, "", false, "AsKsQs"]);
        tryVerify(() => !find("profileList").visible);
        mouseDoubleClickSequence(openProfiles(1));
        compare([page.startingPot, page.ipRiverBetSizesText, page.oopFlopDontDonk],
                [40, "120", true]);
        tryVerify(() => !find("profileList").visible);

        mouseClick(openProfiles(0));
        const question = Finding.inTree(page, item => item instanceof ConfirmDialog);
        const remove = () => {
            mouseClick(find("deleteProfile"));
            verify(question.text.includes("“A”"));
            tryVerify(() => question.opened);
        };
        remove();
        keyClick(Qt.Key_Escape);
        tryVerify(() => !question.visible);
        compare(names(), ["A", "A (2)"]);
        remove();
        mouseClick(Array.from(question.buttons).find(
            item => item.visible && item.text === "Delete"));
        compare(names(), ["A (2)"]);
        verify(!find("loadProfile").enabled);
        tryVerify(() => !question.visible);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !find("profileList").visible);
    }

    function test_continue(): void {
        const button = find("continueToSolve");
        verify(!button.enabled);
        compare(button.Accessible.description,
                "Fill board, ranges, and sizings to enable Solve");
        const goneToSolve = spyOn(page, "goToSolve");
        page.canSolve = true;
        mouseClick(button);
        button.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        compare(goneToSolve.count, 2);
    }

    // What is larger than the window moves by the wheel and to what has the keyboard.
    function test_scrolling(): void {
        page.width = 900;
        page.height = 600;
        const pane = Finding.inTree(page, item => item instanceof WidePane);
        tryVerify(() => pane.contentWidth > 900
                        && pane.contentWidth >= page.recommendedWindowWidth);
        mouseWheel(pane, 450, 20, 0, -120);
        compare([pane.contentX, pane.contentY], [0, 60]);
        mouseWheel(pane, 450, 20, 0, -120, Qt.NoButton, Qt.ShiftModifier);
        compare([pane.contentX, pane.contentY], [60, 60]);
        find("continueToSolve").parent.forceActiveFocus();
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
    }
}
