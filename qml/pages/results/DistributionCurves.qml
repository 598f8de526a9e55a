import QtQuick
import QtQuick.Window

// The curves themselves, each over the whole width of the area: OOP a whole line, IP a dashed one, so
// that they are told apart without their colours, too.
Canvas {
    id: curves

    // `oop` and `ip`, arrays of `{hand, value}` by rank.
    required property var series
    // The values at the lower and upper edge of the area, `low` and `high`.
    required property var ends
    required property rect area
    required property color oopColor
    required property color ipColor

    // All that the picture follows from.
    readonly property var _look: [series, ends, area, oopColor, ipColor, Screen.devicePixelRatio]

    function _paintSeries(context: var, points: var, color: color, dashes: var): void {
        if (points.length === 0) {
            return;
        }
        const step = area.width / Math.max(1, points.length - 1);
        const scale = area.height / (ends.high - ends.low);
        context.beginPath();
        context.setLineDash(dashes);
        points.forEach((point, rank) =>
            context.lineTo(area.x + rank * step, area.y + (ends.high - point.value) * scale));
        context.lineWidth = 2;
        context.lineJoin = "round";
        context.strokeStyle = color;
        context.stroke();
    }

    on_LookChanged: requestPaint()
    onPaint: {
        const context = getContext("2d");
        context.reset();
        _paintSeries(context, series.oop, oopColor, []);
        _paintSeries(context, series.ip, ipColor, [4, 2]);  // in widths of the line
    }
}
