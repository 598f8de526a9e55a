pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// The cards of a text, "AhKd", side by side.
Row {
    id: hand

    required property Theme theme
    required property string cards
    property real cardScale: 1

    spacing: 3 * cardScale

    Repeater {
        model: hand.cards.match(/../g) ?? []

        PlayingCard {
            required property string modelData

            theme: hand.theme
            rank: modelData.charAt(0)
            suit: modelData.charAt(1)
            mini: true
            sizeScale: hand.cardScale
            hoverable: false
        }
    }
}
