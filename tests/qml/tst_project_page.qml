import QtQuick
import Qt.labs.settings
import QtTest
import Tidewell

import "finding.mjs" as Finding
import "../../qml/logic/presets.mjs" as Presets

// The page by mouse and keys.
Item {
    id: root

    width: 1540
    height: 1000

    SignalSpy {
        id: goneToSolve

        target: page
        signalName: "goToSolve"
    }
    Settings {
        id: store

        category: "settings_profiles"
    }
    ProjectPage {
        id: page

        // Set by the program that runs the tests.
        // qmllint disable unqualified
        controller: appController
        // qmllint enable unqualified
        height: 1000
    }
    TestCase {
        id: test

        readonly property Item everything: root.Window.contentItem

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

        function cleanup(): void {
            // What a failed test left open.
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Escape);
            tryCompare(page, "editingCardIndex", -1);
        }

        function find(name: string): var {
            const item = findChild(everything, name);
            verify(item, name);
            return item;
        }

        // "oopSizing/flopBetSizes" is a field of one of the two panels.
        function control(path: string): var {
            return path.split("/").reduce((item, name) => {
                const found = Finding.inTree(item, child => child.objectName === name);
                verify(found, path);
                return found;
            }, everything);
        }

        function type(item: Item, text: string): void {
            mouseClick(item);
            verify(item.activeFocus);
            keyClick(Qt.Key_A, Qt.ControlModifier);
            keyClick(Qt.Key_Delete);
            for (const character of text) {
                keyClick(character);
            }
        }

        function enter(item: Item, text: string): void {
            type(item, text);
            keyClick(Qt.Key_Return);
        }

        function slots(): var {
            const found = [];
            Finding.inTree(find("board"), item => {
                if (item instanceof PlayingCard) {
                    found.push(item);
                }
                return false;
            });
            return found.sort((a, b) => a.modelData - b.modelData);
        }

        function openSlot(index: int): void {
            mouseClick(slots()[index]);
            compare(page.editingCardIndex, index);
            tryVerify(() => find("cardPicker").activeFocus);
        }

        function pickCard(name: string): void {
            mouseClick(Finding.inTree(find("cardPicker"),
                item => item instanceof PickerCard && item.rank + item.suit === name));
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
            keyClick("7");
            keyClick("s");
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

        function test_numbers_data(): var {
            return [
                {field: "startingPot", text: "250.5", value: 250.5},
                {field: "startingPot", text: "", value: 18},
                {field: "startingPot", text: "0", value: 18},
                {field: "effectiveStack", text: "100000.01", value: 91},
                {field: "rakePercent", text: "0,125", value: 0.125},
                {field: "rakePercent", text: "150", value: 5},
                {field: "rakeCap", text: "12x.5", value: 125},
                {field: "targetExploitability", text: "0.000001", value: 0.000001}
            ];
        }

        // What is out of bounds is marked and not taken, and the value comes back.
        function test_numbers(row: var): void {
            const field = find(row.field);
            enter(field, row.text);
            compare(page[row.field], row.value);
            compare(field.error !== "", row.text !== "" && Number(row.text) > row.value
                                        || row.text === "0");
            page.forceActiveFocus();
            compare([field.text, field.error], [Number(row.value).toString(), ""]);
        }

        function test_targetButtons(): void {
            for (const [text, target] of [["1%", 1], ["0.5%", 0.5], ["0.1%", 0.1]]) {
                mouseClick(Finding.inTree(page,
                    item => item instanceof SecondaryButton && item.text === text));
                compare(page.targetExploitability, target);
                compare(find("targetExploitability").text, String(target));
            }
        }

        function test_sizes(): void {
            const bets = control("oopSizing/flopBetSizes");
            type(bets, "33, 2x");
            compare([bets.error, page.oopFlopBetSizesText], ["", ""]);
            keyClick(Qt.Key_Tab);
            compare(page.oopFlopBetSizesText, "33, 2x");
            const message = TextChecks.checkBetSizes("33, 2x", false);
            verify(message !== "");
            compare(bets.error, message);
            // The tab led to the next field; a multiple is a raise.
            verify(control("oopSizing/turnBetSizes").activeFocus);
            enter(control("oopSizing/flopRaiseSizes"), "2.5x");
            compare(control("oopSizing/flopRaiseSizes").error, "");
            mouseClick(bets);
            keyClick(Qt.Key_End);
            keyClick(Qt.Key_Backspace);
            compare(bets.error, "");
            keyClick(Qt.Key_Return);
            compare(page.oopFlopBetSizesText, "33, 2");
        }

        function test_jamAndCopy(): void {
            enter(control("oopSizing/turnBetSizes"), "66");
            enter(control("ipSizing/turnBetSizes"), "50");
            mouseClick(control("oopSizing/turnAddAllIn"));
            mouseClick(control("oopSizing/riverDontDonk"));
            const percent = control("oopSizing/jamPercent");
            verify(!percent.enabled);
            mouseClick(control("oopSizing/jamToggle"));
            type(percent, "12");
            compare(page.oopAddAllInIfJamLtPct, 12);
            enter(percent, "1000.5");
            compare(page.oopAddAllInIfJamLtPct, 1000);
            verify(percent.error !== "");
            enter(percent, "30");

            mouseClick(control("ipSizing/copySizing"));
            compare([page.ipTurnBetSizesText, page.ipTurnAddAllIn, page.ipRiverAddAllIn,
                     page.ipAddAllInIfJamLtEnabled, page.ipAddAllInIfJamLtPct],
                    ["66", true, false, true, 30]);
            compare([control("ipSizing/turnBetSizes").text, control("ipSizing/jamPercent").text,
                     control("ipSizing/turnAddAllIn").checked], ["66", "30", true]);
            compare([page.oopRiverDontDonk, control("ipSizing/riverDontDonk").visible],
                    [true, false]);
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
            const remove = () => {
                mouseClick(find("deleteProfile"));
                const question = Finding.inTree(page, item => item instanceof ConfirmDialog);
                verify(question.text.includes("“A”"));
                tryVerify(() => question.opened);
                return question;
            };
            const question = remove();
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
            const field = control("ipSizing/riverBetSizes");
            field.forceActiveFocus(Qt.TabFocusReason);
            const area = field.mapToItem(page, 0, 0, field.width, field.height);
            verify(area.x >= 0 && area.right <= 900);
        }

        name: "ProjectPage"
        when: windowShown
    }
}
