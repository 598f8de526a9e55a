import QtQuick
import QtTest
import Tidewell
import "../../qml/logic/card_text.mjs" as Cards

// Cards as text, drawn, on the board and in the picker.
TestCase {
    id: test

    name: "Cards"
    when: windowShown
    visible: true
    width: 700
    height: 400

    function init(): void {
        failOnWarning(/.?/);
        mouseMove(test, 690, 390);
    }

    function make(component: Component, properties: var): Item {
        return createTemporaryObject(component, test, properties ?? {});
    }

    function spyOn(item: Item, signalName: string): SignalSpy {
        return createTemporaryObject(spy, test, {target: item, signalName: signalName});
    }

    function findAll(item: Item, wanted: var): var {
        const found = wanted(item) ? [item] : [];
        for (let i = 0; i < item.children.length; ++i) {
            found.push(...findAll(item.children[i], wanted));
        }
        return found;
    }

    function cardsOf(board: Item): var {
        return findAll(board, item => item instanceof PlayingCard);
    }

    function cardNamed(picker: Item, name: string): PickerCard {
        return findAll(picker, item => item instanceof PickerCard
                                       && item.rank + item.suit === name)[0];
    }

    function test_boardSlots_data(): var {
        return [
            {tag: "empty", text: "", slots: ["", "", "", "", ""]},
            {tag: "flop", text: "AdJd8s", slots: ["Ad", "Jd", "8s", "", ""]},
            {tag: "letter case", text: "aDjD8S", slots: ["Ad", "Jd", "8s", "", ""]},
            {tag: "white space", text: " Ad\tJd 8 s\n", slots: ["Ad", "Jd", "8s", "", ""]},
            {tag: "a gap", text: "AdJd__2c", slots: ["Ad", "Jd", "", "2c", ""]},
            {tag: "only the third", text: "____Ah", slots: ["", "", "Ah", "", ""]},
            {tag: "no cards", text: "1dAxZZ", slots: ["", "", "", "", ""]},
            {tag: "an odd character", text: "AdJ", slots: ["Ad", "", "", "", ""]},
            {tag: "more than five", text: "AdJd8s2cTh3h", slots: ["Ad", "Jd", "8s", "2c", "Th"]}
        ];
    }

    function test_boardSlots(row): void {
        compare(Cards.boardSlots(row.text), row.slots);
    }

    function test_spokenCards_data(): var {
        return [
            {tag: "face", rank: "A", suit: "s", spoken: "Ace of spades"},
            {tag: "number", rank: "7", suit: "h", spoken: "7 of hearts"},
            {tag: "ten", rank: "T", suit: "d", spoken: "Ten of diamonds"},
            {tag: "upper-case suit", rank: "Q", suit: "C", spoken: "Queen of clubs"},
            {tag: "no suit", rank: "Q", suit: "x", spoken: ""},
            {tag: "no rank", rank: "1", suit: "s", spoken: ""}
        ];
    }

    function test_spokenCards(row): void {
        compare(CardText.spoken(row.rank, row.suit), row.spoken);
    }

    function test_cardSizes_data(): var {
        return [
            {tag: "full", properties: {}, width: 52, height: 72},
            {tag: "mini", properties: {mini: true}, width: 32, height: 44},
            {tag: "scaled", properties: {sizeScale: 1.25}, width: 65, height: 90},
            {tag: "mini scaled", properties: {mini: true, sizeScale: 2}, width: 64, height: 88},
            {tag: "at least a tenth", properties: {sizeScale: 0}, width: 5.2, height: 7.2},
            {tag: "below 0", properties: {sizeScale: -3}, width: 5.2, height: 7.2}
        ];
    }

    function test_cardSizes(row): void {
        const card = make(cardComponent, row.properties);
        fuzzyCompare(card.implicitWidth, row.width, 1e-6);
        fuzzyCompare(card.implicitHeight, row.height, 1e-6);
    }

    function test_cardLooks_data(): var {
        return [
            {tag: "face", properties: {rank: "A", suit: "h"}, says: "Ace of hearts",
             texts: ["A", "♥", "A", "♥", "♥"]},
            {tag: "mini", properties: {rank: "t", suit: "c", mini: true}, says: "Ten of clubs",
             texts: ["T", "♣"]},
            {tag: "back", properties: {rank: "A", suit: "h", faceDown: true},
             says: "Face-down card", texts: []},
            {tag: "slot", properties: {}, says: "Empty card slot", texts: ["?"]},
            {tag: "mini slot", properties: {mini: true}, says: "Empty card slot", texts: []},
            {tag: "a rank alone", properties: {rank: "A"}, says: "Empty card slot", texts: ["?"]}
        ];
    }

    function test_cardLooks(row): void {
        const card = make(cardComponent, row.properties);
        compare(card.Accessible.name, row.says);
        const texts = findAll(card, item => item instanceof Text && item.visible)
            .map(item => item.text);
        compare(texts, row.texts);
    }

    function test_cardSuitColors_data(): var {
        return Array.of("s", "h", "d", "c").map(suit => ({tag: suit}));
    }

    function test_cardSuitColors(row): void {
        const card = make(cardComponent, {rank: "A", suit: row.tag});
        for (const item of findAll(card, item => item instanceof Text && item.visible)) {
            verify(Qt.colorEqual(item.color, Fallback.theme.suitColor(row.tag)));
        }
    }

    function test_cardPressed_data(): var {
        return [
            {tag: "face", properties: {rank: "A", suit: "h"}, clicks: true},
            {tag: "slot", properties: {}, clicks: true},
            {tag: "disabled", properties: {rank: "A", suit: "h", disabled: true}, opacity: 0.4},
            {tag: "a picture only", properties: {rank: "A", suit: "h", hoverable: false}}
        ];
    }

    function test_cardPressed(row): void {
        const card = make(cardComponent, row.properties);
        const clicked = spyOn(card, "clicked");
        mouseClick(card);
        compare(clicked.count, row.clicks ? 1 : 0);
        for (const key of [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space]) {
            card.forceActiveFocus();
            keyClick(key);
        }
        compare(clicked.count, row.clicks ? 4 : 0);
        compare(card.activeFocusOnTab, row.clicks ?? false);
        fuzzyCompare(card.opacity, row.opacity ?? 1, 1e-6);
    }

    function test_pictureLetsClicksThrough(): void {
        const area = make(mouseArea);
        const clicked = spyOn(area, "clicked");
        createTemporaryObject(cardComponent, area, {hoverable: false});
        createTemporaryObject(boardComponent, area, {boardText: "AdJd8s", compact: true, y: 80});
        mouseClick(area, 10, 10);
        mouseClick(area, 20, 100);
        compare(clicked.count, 2);
    }

    function test_cardHover_data(): var {
        return [
            {tag: "plain", properties: {}, scale: 1},
            {tag: "growing", properties: {enableHoverScale: true}, scale: 1.05},
            {tag: "disabled", properties: {enableHoverScale: true, disabled: true}, scale: 1},
            {tag: "not hoverable", properties: {enableHoverScale: true, hoverable: false},
             scale: 1}
        ];
    }

    function test_cardHover(row): void {
        const card = make(cardComponent, row.properties);
        mouseMove(card, 10, 10);
        mouseMove(card, 12, 12);
        tryCompare(card, "scale", row.scale);
    }

    function test_boardShowsItsSlots_data(): var {
        return [
            {tag: "flop", properties: {boardText: "AdJd8s"}, street: "Flop", shown: 5},
            {tag: "turn", properties: {boardText: "AdJd8s2c"}, street: "Turn", shown: 5},
            {tag: "river", properties: {boardText: "AdJd8s2cTh"}, street: "River", shown: 5},
            {tag: "two cards", properties: {boardText: "AdJd"}, street: "Preflop", shown: 5},
            {tag: "a gap", properties: {boardText: "AdJd__2c"}, street: "Flop", shown: 5},
            {tag: "nothing", properties: {}, street: "Preflop", shown: 2},
            {tag: "nothing, editable", properties: {editable: true}, street: "Preflop", shown: 5},
            {tag: "compact flop", properties: {boardText: "AdJd8s", compact: true}, shown: 3},
            {tag: "compact turn", properties: {boardText: "AdJd8s2c", compact: true}, shown: 4},
            {tag: "compact nothing", properties: {compact: true}, shown: 0},
            {tag: "compact editable", properties: {compact: true, editable: true}, shown: 5}
        ];
    }

    function test_boardShowsItsSlots(row): void {
        const board = make(boardComponent, row.properties);
        const shown = cardsOf(board).filter(card => card.visible);
        compare(shown.length, row.shown);
        const labels = findAll(board, item => item instanceof Text && item.visible
                                              && !(item.parent instanceof CardCorner)
                                              && item.text.length > 1);
        compare(labels.map(label => label.text), row.street ? [row.street] : []);
        if (shown.length > 0 && row.properties.boardText) {
            compare(shown[0].rank + shown[0].suit, "Ad");
        }
        verify(shown.every(card => card.mini === (row.properties.compact ?? false)));
    }

    function test_boardPressed_data(): var {
        return [
            {tag: "every slot", properties: {editable: true, boardText: "AdJd8s2cTh"},
             pressed: [0, 1, 2, 3, 4]},
            {tag: "the river not before the turn", properties: {editable: true,
             boardText: "AdJd8s"}, pressed: [0, 1, 2, 3]},
            {tag: "a river without a turn", properties: {editable: true,
             boardText: "AdJd8s__Th"}, pressed: [0, 1, 2, 3, 4]},
            {tag: "chosen slots", properties: {editable: true, boardText: "AdJd8s2cTh",
             clickableIndices: [3, 4]}, pressed: [3, 4]},
            {tag: "none", properties: {editable: true, boardText: "AdJd8s2cTh",
             clickableIndices: []}, pressed: []},
            {tag: "read-only", properties: {boardText: "AdJd8s2cTh"}, pressed: []}
        ];
    }

    function test_boardPressed(row): void {
        const board = make(boardComponent, row.properties);
        const clicked = spyOn(board, "cardClicked");
        verify(waitForRendering(board));
        cardsOf(board).forEach(card => mouseClick(card));
        const pressed = [];
        for (let i = 0; i < clicked.count; ++i) {
            pressed.push(clicked.signalArguments[i][0]);
        }
        compare(pressed, row.pressed);
        const river = cardsOf(board)[4];
        compare(river.disabled, row.tag === "the river not before the turn");
    }

    function test_boardFollowsItsTextAndScale(): void {
        const board = make(boardComponent, {boardText: "AdJd8s", compact: true});
        const flopWidth = board.implicitWidth;
        board.boardText = "AdJd8s2c";
        tryVerify(() => board.implicitWidth > flopWidth + 30);
        const width = board.implicitWidth;
        board.cardScale = 2;
        tryVerify(() => board.implicitWidth > 1.7 * width);
        board.cardScale = 1;
        board.horizontalPadding = 10;
        tryCompare(board, "implicitWidth", width + 20);
        compare(make(boardComponent).horizontalPadding, 10);
    }

    function test_pickerHoldsAllCards(): void {
        const picker = make(pickerComponent);
        const cards = findAll(picker, item => item instanceof PickerCard);
        const names = cards.map(card => card.rank + card.suit);
        compare(names.length, 52);
        compare(names.slice(0, 3), ["As", "Ks", "Qs"]);
        compare(names[13], "Ah");
        compare(names[26], "Ad");
        compare(names[51], "2c");
        verify(cards.every(card => card.width === 28 && card.height === 28));
        const width = picker.implicitWidth;
        picker.showSuitHeaders = false;
        tryVerify(() => picker.implicitWidth <= width - 28);
    }

    function test_pickerByMouse_data(): var {
        return [
            {tag: "free", used: [], chosen: 1},
            {tag: "others used", used: ["As", "Qd"], chosen: 1},
            {tag: "used", used: ["Qh"], chosen: 0},
            {tag: "used in upper case", used: ["QH"], chosen: 0}
        ];
    }

    function test_pickerByMouse(row): void {
        const picker = make(pickerComponent, {usedCards: row.used});
        const selected = spyOn(picker, "cardSelected");
        const card = cardNamed(picker, "Qh");
        mouseClick(card);
        compare(selected.count, row.chosen);
        if (row.chosen) {
            compare(selected.signalArguments[0][0], "Qh");
        }
        fuzzyCompare(card.opacity, row.chosen ? 1 : 0.3, 1e-6);
        mouseMove(card, 10, 10);
        tryCompare(card, "scale", row.chosen ? 1.1 : 1);
        verify(Qt.colorEqual(card.border.color, row.chosen ? Fallback.theme.suitHearts
                                                           : Fallback.theme.stroke));
    }

    function test_pickerByKeyboard_data(): var {
        const right = Qt.Key_Right;
        const down = Qt.Key_Down;
        return [
            {tag: "first", keys: [Qt.Key_Return], chosen: ["As"]},
            {tag: "by arrows", keys: [right, down, down, Qt.Key_Space], chosen: ["Kd"]},
            {tag: "not over the edge", keys: [Qt.Key_Left, Qt.Key_Up, down, Qt.Key_Enter],
             chosen: ["Ah"]},
            {tag: "typed", keys: ["9", "c"], chosen: ["9c"]},
            {tag: "typed in either case", keys: ["t", "H"], chosen: ["Th"]},
            {tag: "corrected", keys: ["9", "8", "c"], chosen: ["8c"]},
            {tag: "a suit alone", keys: ["c", "h"], chosen: []},
            {tag: "broken off", keys: ["9", "x", "c"], chosen: []},
            {tag: "used", keys: [right, right, Qt.Key_Return, "q", "s"], chosen: []},
            {tag: "goes on from what was typed", keys: ["9", "c", right, Qt.Key_Return],
             chosen: ["9c", "8c"]}
        ];
    }

    function test_pickerByKeyboard(row): void {
        const picker = make(pickerComponent, {usedCards: ["Qs"]});
        const selected = spyOn(picker, "cardSelected");
        picker.forceActiveFocus();
        verify(cardNamed(picker, "As").focused);
        row.keys.forEach(key => keyClick(key));
        const chosen = [];
        for (let i = 0; i < selected.count; ++i) {
            chosen.push(selected.signalArguments[i][0]);
        }
        compare(chosen, row.chosen);
    }

    function test_pickerColors_data(): var {
        return [
            {tag: "dark", theme: darkTheme, spades: "text"},
            {tag: "light", theme: lightTheme, spades: "suitSpades"}
        ];
    }

    function test_pickerColors(row): void {
        const picker = make(pickerComponent, {theme: row.theme});
        const suits = {"s": row.spades, "h": "suitHearts", "d": "suitDiamonds", "c": "suitClubs"};
        for (const suit of Object.keys(suits)) {
            verify(Qt.colorEqual(cardNamed(picker, "7" + suit).suitColor,
                                 row.theme[suits[suit]]), suit);
        }
    }

    Theme {
        id: darkTheme
    }
    Theme {
        id: lightTheme

        dark: false
    }
    Component {
        id: cardComponent

        PlayingCard {}
    }
    Component {
        id: boardComponent

        BoardDisplay {}
    }
    Component {
        id: pickerComponent

        CardPicker {}
    }
    Component {
        id: mouseArea

        MouseArea {
            width: 300
            height: 200
        }
    }
    Component {
        id: spy

        SignalSpy {}
    }
}
