import QtQuick
import Tidewell

// The cards of a board as a short text in the colours of their suits, on `ground`.
Text {
    id: label

    property Theme theme: Fallback.theme
    // Such as "AdJd8s"; what is no card is left out.
    property string board: ""
    property color ground: theme.surface

    readonly property var _cards: board.match(/[2-9TJQKA][shdc]/gi) ?? []

    function _colored(card: string): string {
        const ink = theme.legible(theme.suitColor(card.slice(1)), ground);
        const rank = card.slice(0, 1).toUpperCase();
        return `<font color="${ink}">${rank}${CardText.symbol(card.slice(1))}</font>`;
    }

    text: _cards.map(card => _colored(card)).join(" ")
    textFormat: Text.StyledText
    font.pixelSize: Fallback.type.bodySm
    font.weight: Fallback.type.weightSemibold
    Accessible.ignored: true
}
