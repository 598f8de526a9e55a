pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../logic/card_text.mjs" as Cards
import "../logic/deck.mjs" as Deck

// All cards of the deck, one of which can be chosen: by a click, by arrow keys and Return, or by
// typing rank and suit. Used ones cannot.
FocusScope {
    id: picker

    property Theme theme: Fallback.theme
    // Such as "Ah"; the suit counts in either case.
    property var usedCards: []
    property bool showSuitHeaders: true
    // Small playing cards in place of tiles with the rank.
    property bool showFaces: false

    readonly property real _gap: showFaces ? 3 : 4
    readonly property real _headerSize: showFaces ? 22 : 28
    // The card that has the keyboard while the picker has it.
    property int _current: 0
    // What has been typed of a card.
    property string _typedRank: ""

    signal cardSelected(card: string)

    function focusFirst(): void {
        _typedRank = "";
        _focusCard(Deck.firstFree(_isFree));
    }

    function _isFree(card: string): bool {
        return !Deck.holds(usedCards, card);
    }

    function _suitColor(suit: string): color {
        // Spades are dark, for card faces; the picker's surface is dark too in the dark theme.
        return suit === "s" && theme.dark ? theme.text : theme.suitColor(suit);
    }

    function _choose(card: string): void {
        if (_isFree(card)) {
            _focusCard(Deck.CARDS.indexOf(card));
            cardSelected(card);
        }
    }

    function _focusCard(place: int): void {
        const card = cards.itemAt(place);
        if (activeFocus) {
            card.forceActiveFocus(Qt.TabFocusReason);
        } else {
            card.focus = true;
        }
        // Only now: the one that has the keyboard is always a stop of the Tab key.
        _current = place;
    }

    function _move(columns: int, rows: int): void {
        _focusCard(Deck.nextFree(_current, columns, rows, _isFree));
    }

    function _type(letter: string): bool {
        const {rank, card} = Deck.typed(_typedRank, letter);
        _typedRank = rank;
        if (card !== "") {
            _choose(card);
        }
        return rank !== "" || card !== "";
    }

    implicitWidth: deck.implicitWidth
    implicitHeight: deck.implicitHeight
    Accessible.role: Accessible.List
    //: The list of all cards to choose from
    Accessible.name: qsTr("Cards")
    Component.onCompleted: focusFirst()

    Keys.onLeftPressed: _move(-1, 0)
    Keys.onRightPressed: _move(1, 0)
    Keys.onUpPressed: _move(0, -1)
    Keys.onDownPressed: _move(0, 1)
    Keys.onReturnPressed: _choose(Deck.CARDS[_current])
    Keys.onEnterPressed: _choose(Deck.CARDS[_current])
    Keys.onSpacePressed: _choose(Deck.CARDS[_current])
    Keys.onPressed: event => event.accepted = picker._type(event.text)

    Row {
        id: deck

        spacing: picker._gap

        Column {
            spacing: picker._gap
            visible: picker.showSuitHeaders

            Repeater {
                model: [...Cards.SUITS]

                Item {
                    id: header

                    required property string modelData

                    implicitWidth: picker._headerSize
                    implicitHeight: (cards.itemAt(0) as Item)?.implicitHeight ?? 0

                    Rectangle {
                        anchors.centerIn: parent
                        width: picker._headerSize
                        height: width
                        radius: picker.theme.radiusXs
                        color: picker.showFaces ? picker.theme.surface3 : "transparent"

                        Text {
                            anchors.centerIn: parent
                            text: CardText.symbol(header.modelData)
                            color: picker._suitColor(header.modelData)
                            font.pixelSize: picker.showFaces ? Fallback.type.bodyLg : 18
                            Accessible.ignored: true
                        }
                    }
                }
            }
        }
        Grid {
            columns: Deck.COLUMNS
            spacing: picker._gap

            Repeater {
                id: cards

                model: Deck.CARDS
                delegate: picker.showFaces ? face : tile
            }
        }
    }

    Component {
        id: tile

        PickerCard {
            required property string modelData
            required property int index

            theme: picker.theme
            rank: modelData[0]
            suit: modelData[1]
            suitColor: picker._suitColor(suit)
            used: !picker._isFree(modelData)
            activeFocusOnTab: index === picker._current
            onChosen: picker._choose(modelData)
        }
    }
    Component {
        id: face

        PlayingCard {
            required property string modelData
            required property int index

            theme: picker.theme
            rank: modelData[0]
            suit: modelData[1]
            mini: true
            enableHoverScale: true
            disabled: !picker._isFree(modelData)
            activeFocusOnTab: index === picker._current
            onClicked: picker._choose(modelData)
        }
    }
}
