pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/card_text.mjs" as Cards

// The cards of one suit.
Row {
    id: row

    required property int index
    required property Theme theme
    required property ChanceChoice choice

    readonly property string suit: Cards.SUITS[index]
    // Spades are dark, for card faces; the tile's surface is dark too in the dark theme.
    readonly property color _suitColor: suit === "s" && theme.dark ? theme.text
                                                                   : theme.suitColor(suit)

    signal chosen(card: string)
    // An arrow key was pressed on a card.
    signal moved(column: int, columns: int, rows: int)

    // Whether the card can be chosen and has the keyboard now.
    function focusCard(column: int): bool {
        const card = cards.itemAt(column) as PlayingCard;
        if (!card || card.disabled) {
            return false;
        }
        card.forceActiveFocus(Qt.TabFocusReason);
        return true;
    }

    spacing: 3

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 22
        height: 22
        radius: row.theme.radiusXs
        color: row.theme.surface3

        Text {
            anchors.centerIn: parent
            text: CardText.symbol(row.suit)
            color: row._suitColor
            font.pixelSize: Fallback.type.bodyLg
            Accessible.ignored: true
        }
    }
    Repeater {
        id: cards

        model: Cards.RANKS.length

        PlayingCard {
            id: card

            required property int index

            theme: row.theme
            rank: Cards.RANKS[index]
            suit: row.suit
            mini: true
            enableHoverScale: true
            disabled: row.choice.indexFor(rank + suit) < 0
            activeFocusOnTab: false
            onClicked: row.chosen(rank + suit)

            Keys.onLeftPressed: row.moved(index, -1, 0)
            Keys.onRightPressed: row.moved(index, 1, 0)
            Keys.onUpPressed: row.moved(index, 0, -1)
            Keys.onDownPressed: row.moved(index, 0, 1)
        }
    }
}
