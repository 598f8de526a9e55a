import QtQuick
import "../../logic/distribution_series.mjs" as Series

// What each seat's hands are worth at the current node, the best first. The controller works it out
// beside the event loop from the first request on, and only as long as somebody waits for it.
QtObject {
    id: distributions

    // Null for none.
    required property var controller
    required property int node

    // The controller's answer: `ok`, `pending`, `error`, and lists by seat.
    property var payload: _nothing
    // What is shown, equity or EV.
    property bool isEquity: true
    // Where the curves are read: 0 to 1 of the width, and the rank in the longer series; -1 for nowhere.
    property real hoverT: -1
    property int hoverIndex: -1
    // Somebody looks at them.
    property bool shown: false

    // `oop` and `ip`, arrays of `{hand, value}`.
    readonly property var series: Series.bothSeats(payload, isEquity)
    readonly property var _nothing: ({
        ok: false, pending: false, nodeIndex: -1, error: "Unavailable",
        oopHands: [], ipHands: [], evOop: [], evIp: [], equityOop: [], equityIp: []
    })

    function open(): void {
        isEquity = true;
        shown = true;
        reload();
    }

    function close(): void {
        if (shown && payload.pending) {
            controller?.cancelHandDistributions169(payload.nodeIndex);
        }
        shown = false;
    }

    function reload(): void {
        clearHover();
        payload = controller?.nodeHandDistributions169(node) ?? _nothing;
    }

    function hoverAt(t: real): void {
        if (Math.abs(t - hoverT) > 1e-6) {
            hoverT = t;
            hoverIndex = t < 0 ? -1 : Math.round(t * (Series.longest(series) - 1));
        }
    }

    function moveHover(ranks: int): void {
        hoverAt(Series.moved(hoverT, ranks, series));
    }

    function clearHover(): void {
        hoverT = -1;
        hoverIndex = -1;
    }

    onIsEquityChanged: clearHover()

    readonly property Connections _answer: Connections {
        target: distributions.controller

        function onHandDistributions169Ready(nodeIndex: int): void {
            if (distributions.shown && nodeIndex === distributions.node) {
                distributions.reload();
            }
        }
    }
}
