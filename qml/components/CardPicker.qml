pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../logic/card_text.mjs" as Cards

// All cards of the deck, one of which can be chosen: by a click, by arrow keys and Return, or by
// typing rank and suit. Used ones cannot.
FocusScope {
    id: picker

    property Theme theme: Fallback.theme
    // Such as "Ah"; the suit counts in either case.
    property var usedCards: []
    property bool showSuitHeaders: true

    readonly property int _columns: Cards.RANKS.length
    // Row by row, the card that has the keyboard.
    property int _current: 0
    // What has been typed of a card.
    property string _typedRank: ""

    signal cardSelected(card: string)

    function _cardAt(index: int): string {
        return Cards.RANKS[index % _columns] + Cards.SUITS[Math.floor(index / _columns)];
    }

    function _isUsed(card: string): bool {
        return usedCards.includes(card) || usedCards.includes(card.charAt(0) + card.charAt(1).toUpperCase());
    }

    function _choose(index: int): void {
        const card = _cardAt(index);
        if (!_isUsed(card)) {
            cardSelected(card);
        }
    }

    function _move(columns: int, rows: int): void {
        const row = Math.floor(_current / _columns) + rows;
        const column = _current % _columns + columns;
        if (row >= 0 && row < Cards.SUITS.length && column >= 0 && column < _columns) {
            _current = row * _columns + column;
        }
    }

    function _type(letter: string): bool {
        if (_typedRank !== "" && Cards.SUITS.includes(letter.toLowerCase())) {
            _current = Cards.SUITS.indexOf(letter.toLowerCase()) * _columns
                       + Cards.RANKS.indexOf(_typedRank);
            _typedRank = "";
            _choose(_current);
            return true;
        }
        const isRank = letter !== "" && Cards.RANKS.includes(letter.toUpperCase());
        _typedRank = isRank ? letter.toUpperCase() : "";
        return isRank;
    }

    implicitWidth: grid.implicitWidth
    implicitHeight: grid.implicitHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    //: The list of all cards to choose from
    Accessible.name: qsTr("Cards")

    Keys.onLeftPressed: _move(-1, 0)
    Keys.onRightPressed: _move(1, 0)
    Keys.onUpPressed: _move(0, -1)
    Keys.onDownPressed: _move(0, 1)
    Keys.onReturnPressed: _choose(_current)
    Keys.onEnterPressed: _choose(_current)
    Keys.onSpacePressed: _choose(_current)
    Keys.onPressed: event => event.accepted = picker._type(event.text)

    Column {
        id: grid

        spacing: 4

        Repeater {
            model: Cards.SUITS.length

            Row {
                id: suitRow

                required property int index
                readonly property string suit: Cards.SUITS[index]
                // Spades are dark, for card faces; the picker's surface is dark too in the dark theme.
                readonly property color suitColor: suit === "s" && picker.theme.dark
                    ? picker.theme.text : picker.theme.suitColor(suit)

                spacing: 4

                Text {
                    width: 28
                    height: 28
                    text: CardText.symbol(suitRow.suit)
                    color: suitRow.suitColor
                    font.pixelSize: 18
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    visible: picker.showSuitHeaders
                    Accessible.ignored: true
                }
                Repeater {
                    model: picker._columns

                    PickerCard {
                        required property int index
                        readonly property int place: suitRow.index * picker._columns + index

                        theme: picker.theme
                        rank: Cards.RANKS[index]
                        suit: suitRow.suit
                        suitColor: suitRow.suitColor
                        used: picker._isUsed(rank + suit)
                        focused: picker.activeFocus && picker._current === place
                        onChosen: picker._choose(place)
                    }
                }
            }
        }
    }
}
