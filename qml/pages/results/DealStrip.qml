pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/card_text.mjs" as Cards
import "../../logic/deck.mjs" as Deck

// The cards of a deal in four lines, for the pointer: one press deals a card, or another one instead. By
// keys the card is chosen in a dialog. A line is one text, so that a deal costs a walk little.
Item {
    id: strip

    required property Theme theme
    // The cards ("Ks") that can be dealt.
    required property var freeCards
    // The card that was dealt, empty for none.
    required property string dealt

    readonly property real _pitch: Math.floor((width - _lineHeight) / Deck.COLUMNS)
    readonly property real _lineHeight: 20
    // The place of the card under the pointer in the deck, -1 for none.
    readonly property int _pointed: hover.hovered ? _placeAt(hover.point.position) : -1

    signal chosen(card: string)

    function _placeAt(point: point): int {
        const column = Math.floor((point.x - _lineHeight) / _pitch);
        const row = Math.floor(point.y / _lineHeight);
        const isCard = column >= 0 && column < Deck.COLUMNS && row >= 0 && row < Cards.SUITS.length;
        const place = row * Deck.COLUMNS + column;
        return isCard && freeCards.includes(Deck.CARDS[place]) ? place : -1;
    }

    function _colorOf(suit: string): color {
        return theme.legible(suit === "s" ? theme.text : theme.suitColor(suit), theme.surface);
    }

    // The ranks, what cannot be dealt faint. A colour is said once for all cards in a row that have it.
    function _line(suit: string, color: color): string {
        const free = Array.from(Cards.RANKS, rank => freeCards.includes(rank + suit));
        return Array.from(Cards.RANKS, (rank, i) => {
            const begin = free[i] === free[i - 1] ? "" : `<font color="${free[i] ? color : theme.stroke}">`;
            return begin + rank + (free[i] === free[i + 1] ? "" : "</font>");
        }).join("");
    }

    implicitWidth: 200
    implicitHeight: Cards.SUITS.length * _lineHeight
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Cards to deal")

    FontMetrics {
        id: metrics

        font.family: strip.theme.monoFamily
        font.pixelSize: Fallback.type.bodySm
    }
    Frame {
        place: Deck.CARDS.indexOf(strip.dealt)
        border.color: strip.theme.gold
        color: strip.theme.withOpacity(strip.theme.gold, 0.25)
    }
    Frame {
        place: strip._pointed
        border.color: strip.theme.strokeFocus
    }
    Repeater {
        model: [...Cards.SUITS]

        Item {
            id: line

            required property int index
            required property string modelData

            readonly property color _color: strip._colorOf(modelData)

            y: index * strip._lineHeight

            Text {
                width: strip._lineHeight
                height: strip._lineHeight
                text: CardText.symbol(line.modelData)
                color: line._color
                font.pixelSize: Fallback.type.bodySm
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
            Text {
                readonly property real _letter: metrics.advanceWidth("A")

                x: strip._lineHeight + (strip._pitch - _letter) / 2
                height: strip._lineHeight
                text: strip._line(line.modelData, line._color)
                textFormat: Text.StyledText
                font.family: metrics.font.family
                font.pixelSize: metrics.font.pixelSize
                font.letterSpacing: strip._pitch - _letter
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
        }
    }
    HoverHandler {
        id: hover

        cursorShape: strip._pointed >= 0 ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: point => {
            const place = strip._placeAt(point.position);
            if (place >= 0) {
                strip.chosen(Deck.CARDS[place]);
            }
        }
    }

    // Around a card.
    component Frame: Rectangle {
        required property int place

        x: strip._lineHeight + place % Deck.COLUMNS * strip._pitch
        y: Math.floor(place / Deck.COLUMNS) * strip._lineHeight
        width: strip._pitch
        height: strip._lineHeight
        radius: 4
        color: "transparent"
        border.width: 1
        visible: place >= 0
    }
}
