import QtQuick
import Tidewell

// The back of a card: diagonal lines in a frame.
Rectangle {
    id: back

    property Theme theme: Fallback.theme
    property real cornerRadius: 6
    property bool selected: false

    radius: cornerRadius
    color: theme.cardBack
    border.width: selected ? 2 : 1
    border.color: selected ? theme.accent : theme.cardBorder

    Canvas {
        readonly property real _step: 8

        anchors.fill: parent
        anchors.margins: 3
        onPaint: {
            const context = getContext("2d");
            context.reset();
            const radius = Math.max(0, back.cornerRadius - 3);
            context.beginPath();
            context.roundedRect(0.5, 0.5, width - 1, height - 1, radius, radius);
            context.clip();
            context.strokeStyle = Qt.rgba(1, 1, 1, 0.1);
            context.lineWidth = 2;
            context.beginPath();
            for (let x = -height; x < width; x += _step) {
                context.moveTo(x, height);
                context.lineTo(x + height, 0);
            }
            context.stroke();
            context.lineWidth = 1;
            context.beginPath();
            context.roundedRect(0.5, 0.5, width - 1, height - 1, radius, radius);
            context.stroke();
        }
    }
}
