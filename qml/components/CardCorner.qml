import QtQuick
import Tidewell

// Rank over suit, as in the corner of a card.
Column {
    id: corner

    required property Theme theme
    required property string rank
    required property string suit
    // Of the rank; the suit is a little smaller.
    required property int pixelSize

    spacing: -0.2 * pixelSize

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: corner.rank.toUpperCase()
        color: corner.theme.suitColor(corner.suit)
        font.pixelSize: corner.pixelSize
        font.weight: Fallback.type.weightBold
        Accessible.ignored: true
    }
    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: CardText.symbol(corner.suit)
        color: corner.theme.suitColor(corner.suit)
        font.pixelSize: Math.max(1, Math.round(0.88 * corner.pixelSize))
        Accessible.ignored: true
    }
}
