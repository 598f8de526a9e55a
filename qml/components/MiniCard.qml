import QtQuick
import Tidewell

// A small card as a picture alone, for lists that show many: nothing but its face.
Rectangle {
    id: card

    required property Theme theme
    // Such as "Ah"; empty for none.
    required property string name
    // Of a mini card of 32 by 44 pixels.
    property real unit: 1

    readonly property string _suit: name.slice(1)

    implicitWidth: Math.round(32 * unit)
    implicitHeight: Math.round(44 * unit)
    radius: 4 * unit
    color: theme.cardFace
    border.width: 1
    border.color: theme.cardBorder
    Accessible.ignored: true

    Text {
        id: rank

        x: Math.round(5 * card.unit)
        y: Math.round(card.unit)
        text: card.name.slice(0, 1)
        textFormat: Text.PlainText
        color: suit.color
        font.pixelSize: Math.round(18 * card.unit)
        font.weight: Fallback.type.weightBold
        Accessible.ignored: true
    }
    Text {
        id: suit

        x: rank.x
        y: rank.y + Math.round(19 * card.unit)
        text: CardText.symbol(card._suit)
        textFormat: Text.PlainText
        color: card.theme.suitColor(card._suit)
        font.pixelSize: Math.round(16 * card.unit)
        Accessible.ignored: true
    }
}
