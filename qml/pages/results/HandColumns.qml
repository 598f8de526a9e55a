import QtQuick
import Tidewell

// Where the parts of a row of the hand list stand, in pixels. All rows are alike.
QtObject {
    id: columns

    required property real width
    required property real scale
    // Of values, one for each action.
    required property int lines

    readonly property var locale: Qt.locale()
    readonly property FontMetrics _digits: FontMetrics {
        font.pixelSize: Fallback.type.labelMd
        font.family: Fallback.theme.monoFamily
    }
    readonly property FontMetrics _letters: FontMetrics {
        font.pixelSize: Fallback.type.labelMd
    }

    readonly property real padding: 4
    readonly property real gap: 8
    readonly property real cardUnit: 0.8 * scale
    readonly property real cardWidth: Math.round(32 * cardUnit)
    readonly property real cardHeight: Math.round(44 * cardUnit)
    readonly property real cardGap: 3
    readonly property real lineHeight: Math.ceil(_digits.height)
    readonly property real barHeight: Math.max(14, Math.round(16 * scale))

    readonly property real cardsX: 6
    readonly property real weightX: cardsX + 2 * cardWidth + cardGap
    readonly property real weightWidth: Math.ceil(_letters.advanceWidth("100%")) + 4
    readonly property real labelX: weightX + weightWidth + gap
    readonly property real evX: labelX + Math.ceil(_letters.advanceWidth(qsTr("EV:"))) + 2
    readonly property real evWidth: Math.ceil(_digits.advanceWidth("-888.88"))
    readonly property real barX: evX + evWidth + gap
    readonly property real barWidth: Math.max(0, width - barX - 6)
    readonly property real rowHeight: 2 * padding + Math.max(cardHeight, lines * lineHeight)
    readonly property real cardsY: Math.round((rowHeight - cardHeight) / 2)
    readonly property real linesY: Math.round((rowHeight - lines * lineHeight) / 2)

    // The line of values at a point of a row; -1 for none.
    function lineAt(x: real, y: real): int {
        const line = Math.floor((y - linesY) / lineHeight);
        return x >= evX - 3 && x < evX + evWidth + 3 && line >= 0 && line < lines ? line : -1;
    }
}
