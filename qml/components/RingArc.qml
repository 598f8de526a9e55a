import QtQuick
import Tidewell

// A ring, and on it an arc with round ends, clockwise from the top.
Canvas {
    id: ring

    property real strokeWidth: 8
    property color trackColor: Fallback.theme.surface3
    property color color: Fallback.theme.accent
    // Of the whole turn, 0 to 1.
    property real share: 0

    implicitWidth: 64
    implicitHeight: 64
    onStrokeWidthChanged: requestPaint()
    onTrackColorChanged: requestPaint()
    onColorChanged: requestPaint()
    onShareChanged: requestPaint()
    onPaint: {
        const context = getContext("2d");
        context.reset();
        const radius = (Math.min(width, height) - strokeWidth) / 2;
        if (radius <= 0) {
            return;
        }
        context.lineWidth = strokeWidth;
        context.lineCap = "round";
        context.strokeStyle = trackColor;
        context.beginPath();
        context.arc(width / 2, height / 2, radius, 0, 2 * Math.PI);
        context.stroke();
        if (share <= 0) {
            return;
        }
        const top = -Math.PI / 2;
        context.strokeStyle = color;
        context.beginPath();
        context.arc(width / 2, height / 2, radius, top, top + 2 * Math.PI * Math.min(share, 1));
        context.stroke();
    }
}
