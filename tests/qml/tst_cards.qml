import QtQuick
import Tidewell

import "../../qml/logic/card_text.mjs" as Cards
import "../../qml/logic/deck.mjs" as Deck

// Cards as text, drawn, on the board and in the picker.
DocumentCase {
    id: test

    readonly property Component cardComponent: PlayingCard {}
    readonly property Component boardComponent: BoardDisplay {}
    readonly property Component pickerComponent: CardPicker {}
    readonly property Component mouseArea: MouseArea {
        width: 300
        height: 200
    }

    function init(): void {
        failOnWarning(/.?/);
        mouseMove(test, 690, 390);
    }

    function cardsOf(board: Item): var {
        return all(board, item => item instanceof PlayingCard);
    }

    function cardNamed(picker: Item, name: string): var {
        return all(picker, item => item instanceof PickerCard && item.rank + item.suit === name)[0];
    }

    function test_asText(): void {
        for (const [text, slots] of [
            ["", ["", "", "", "", ""]],
            ["aDjD8S", ["Ad", "Jd", "8s", "", ""]],
            [" Ad\tJd 8 s\n", ["Ad", "Jd", "8s", "", ""]],
            ["AdJd__2c", ["Ad", "Jd", "", "2c", ""]],
            ["____Ah", ["", "", "Ah", "", ""]],
            ["1dAxZZ", ["", "", "", "", ""]],
            ["AdJ", ["Ad", "", "", "", ""]],
            ["AdJd8s2cTh3h", ["Ad", "Jd", "8s", "2c", "Th"]]]) {
            compare(Cards.boardSlots(text), slots, text);
        }
    }

    function test_cardLooks(): void {
        const ace = {rank: "A", suit: "h"};
        for (const [properties, says, expected] of [
            [ace, "Ace of hearts", ["A", "♥", "A", "♥", "♥"]],
            [{rank: "t", suit: "c", mini: true}, "Ten of clubs", ["T", "♣"]],
            [Object.assign({faceDown: true}, ace), "Face-down card", []],
            [{}, "Empty card slot", ["?"]], [{mini: true}, "Empty card slot", []],
            [{rank: "A"}, "Empty card slot", ["?"]]]) {
            const card = make(cardComponent, properties);
            compare([card.Accessible.name, texts(card)], [says, expected]);
        }
    }

    function test_cardPressed(): void {
        for (const [properties, clicks, grows] of [
            [{}, 4, false], [{enableHoverScale: true}, 4, true],
            [{enableHoverScale: true, disabled: true}, 0, false], [{hoverable: false}, 0, false]]) {
            const card = make(cardComponent, Object.assign({rank: "A", suit: "h"}, properties));
            const clicked = spyOn(card, "clicked");
            mouseClick(card);
            card.forceActiveFocus();
            keys([Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space]);
            compare([clicked.count, card.activeFocusOnTab], [clicks, clicks > 0]);
            mouseMove(card, 12, 12);
            tryVerify(() => card.scale > 1 === grows);
            card.destroy();
        }
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

    function test_boardShowsItsSlots(): void {
        for (const [text, flags, street, shown] of [
            ["AdJd8s", {}, "Flop", 5], ["AdJd8s2c", {}, "Turn", 5], ["AdJd8s2cTh", {}, "River", 5],
            ["AdJd", {}, "Flop incomplete", 5], ["AdJd__2c", {}, "Flop", 5], ["", {}, "No board yet", 2],
            ["", {editable: true}, "No board yet", 5], ["AdJd8s", {compact: true}, "", 3],
            ["AdJd8s2c", {compact: true}, "", 4], ["", {compact: true}, "", 0],
            ["", {compact: true, editable: true}, "", 5]]) {
            const board = make(boardComponent, Object.assign({boardText: text}, flags));
            const cards = cardsOf(board);
            compare(cards.length, shown);
            compare(texts(board).filter(label => label.length > 2), street ? [street] : []);
            verify(cards.every(card => card.mini === (flags.compact ?? false)));
            if (text !== "") {
                compare(cards[0].rank + cards[0].suit, "Ad");
            }
        }
    }

    function test_boardPressed(): void {
        for (const [text, flags, pressed] of [
            ["AdJd8s2cTh", {editable: true}, [0, 1, 2, 3, 4]],
            ["AdJd8s__Th", {editable: true}, [0, 1, 2, 3, 4]],
            // The river not before the turn.
            ["AdJd8s", {editable: true}, [0, 1, 2, 3]],
            ["AdJd8s2cTh", {editable: true, clickableIndices: [3, 4]}, [3, 4]],
            ["AdJd8s2cTh", {editable: true, clickableIndices: []}, []], ["AdJd8s2cTh", {}, []]]) {
            const board = make(boardComponent, Object.assign({boardText: text}, flags));
            const clicked = spyOn(board, "cardClicked");
            verify(waitForRendering(board));
            cardsOf(board).forEach(card => mouseClick(card));
            compare(firstArguments(clicked), pressed);
            compare(cardsOf(board)[4].disabled, text === "AdJd8s");
            board.destroy();
        }
    }

    function test_pickerByMouse(): void {
        const picker = make(pickerComponent);
        const selected = spyOn(picker, "cardSelected");
        for (const [used, opacity] of [[["As", "Qd"], 1], [["Qh"], 0.3], [["QH"], 0.3]]) {
            picker.usedCards = used;
            mouseClick(cardNamed(picker, "Qh"));
            compare(cardNamed(picker, "Qh").opacity, opacity);
        }
        compare(firstArguments(selected), ["Qh"]);
    }

    // Where the keys lead to, and what letters make a card of.
    function test_deckKeys(): void {
        const used = ["Qs", "Ah", "AD", "2c"];
        const isFree = card => !Deck.holds(used, card);
        for (const [from, columns, rows, to] of [
            ["As", 1, 0, "Ks"], ["Ks", 1, 0, "Js"], ["As", -1, 0, "As"], ["As", 0, -1, "As"],
            ["As", 0, 1, "Ac"], ["3c", 1, 0, "3c"], ["2s", 1, 0, "2s"], ["Jd", -1, 0, "Qd"]]) {
            compare(Deck.CARDS[Deck.nextFree(Deck.CARDS.indexOf(from), columns, rows, isFree)], to);
        }
        compare([Deck.firstFree(card => card === "2c"), Deck.firstFree(() => false)], [51, 0]);
        for (const [letters, cards] of [["tH", ["Th"]], ["98c", ["8c"]], ["ch", []], ["9xc", []],
                                        ["asKd", ["As", "Kd"]]]) {
            const made = [];
            let rank = "";
            for (const letter of ["", ...letters]) {
                const typed = Deck.typed(rank, letter);
                rank = typed.rank;
                made.push(...(typed.card ? [typed.card] : []));
            }
            compare(made, cards, letters);
        }
    }

    function test_pickerByKeyboard(): void {
        for (const showFaces of [false, true]) {
            const picker = make(pickerComponent, {usedCards: ["Qs"], showFaces: showFaces});
            const selected = spyOn(picker, "cardSelected");
            picker.forceActiveFocus();
            keys([Qt.Key_Return, Qt.Key_Right, Qt.Key_Right, Qt.Key_Space, "q", "s", "9", "c",
                  Qt.Key_Right, Qt.Key_Enter]);
            compare(firstArguments(selected), ["As", "Js", "9c", "8c"]);
            // The deck is one stop of the Tab key.
            compare(all(picker, item => item.activeFocusOnTab).length, 1);
            picker.destroy();
        }
    }

    name: "Cards"
    width: 700
    height: 400
}
