pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/card_text.mjs" as Cards

// All cards of the deck, of which those that can be dealt may be chosen: by a click, by arrow keys and
// Return, or by typing rank and suit.
AppScrollView {
    id: grid

    required property ChanceChoice choice

    readonly property int _columns: Cards.RANKS.length
    property string _typedRank: ""

    function _cardAt(place: int): string {
        return Cards.RANKS[place % _columns] + Cards.SUITS[Math.floor(place / _columns)];
    }

    function _choose(card: string): void {
        const action = choice.indexFor(card);
        if (action >= 0) {
            choice.choose(action, card);
        }
    }

    // The next card in a direction that can be chosen gets the keyboard.
    function _move(from: int, columns: int, rows: int): void {
        let row = Math.floor(from / _columns) + rows;
        let column = from % _columns + columns;
        while (row >= 0 && row < Cards.SUITS.length && column >= 0 && column < _columns) {
            if (_focusCard(row * _columns + column)) {
                return;
            }
            row += rows;
            column += columns;
        }
    }

    function _focusCard(place: int): bool {
        const suitRow = rows.itemAt(Math.floor(place / _columns)) as ChancePickerRow;
        return suitRow ? suitRow.focusCard(place % _columns) : false;
    }

    function focusFirst(): void {
        for (let place = 0; place < _columns * Cards.SUITS.length; ++place) {
            if (_focusCard(place)) {
                return;
            }
        }
    }

    function _type(letter: string): bool {
        if (_typedRank !== "" && letter !== "" && Cards.SUITS.includes(letter.toLowerCase())) {
            _choose(_typedRank + letter.toLowerCase());
            _typedRank = "";
            return true;
        }
        const isRank = letter !== "" && Cards.RANKS.includes(letter.toUpperCase());
        _typedRank = isRank ? letter.toUpperCase() : "";
        return isRank;
    }

    // Room for the scroll bar.
    implicitWidth: column.implicitWidth + 28
    implicitHeight: column.implicitHeight
    contentWidth: column.implicitWidth
    contentHeight: column.implicitHeight
    activeFocusOnTab: false

    Keys.onPressed: event => event.accepted = grid._type(event.text)

    Column {
        id: column

        padding: 3
        spacing: 3

        Repeater {
            id: rows

            model: Cards.SUITS.length

            ChancePickerRow {
                theme: grid.theme
                choice: grid.choice
                onChosen: card => grid._choose(card)
                onMoved: (column, columns, rows) =>
                    grid._move(index * grid._columns + column, columns, rows)
            }
        }
    }
}
