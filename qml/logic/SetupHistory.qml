import QtQuick
import "history.mjs" as History

// What a person has done to a spot, in the order of doing: every change of its properties, whoever made
// it, can be undone. Changes of one event are one step, and so are those between `begin` and `end`.
QtObject {
    id: history

    // With the properties below.
    required property var spot
    required property var keys
    // Of these the ones that change with every stroke of the keyboard.
    property var typedKeys: []

    readonly property bool canUndo: _history.past.length > 0
    readonly property bool canRedo: _history.future.length > 0

    property var _history: History.EMPTY
    // The values as they were last recorded.
    property var _recorded: ({})
    property bool _isHeld: false

    signal forgotten

    // From now on.
    function watch(): void {
        forget();
        for (const key of keys) {
            spot[key + "Changed"].connect(() => Qt.callLater(history._recordEvent));
        }
    }

    // The spot has become another one.
    function forget(): void {
        _history = History.EMPTY;
        _recorded = _values();
        _isHeld = false;
        forgotten();
    }

    function begin(): void {
        _record(true);
        _isHeld = true;
    }

    function end(): void {
        _isHeld = false;
        _record(false);
    }

    function undo(): void {
        end();
        _apply(History.stepBack(_history));
    }

    function redo(): void {
        end();
        _apply(History.stepForward(_history));
    }

    function _values(): var {
        return History.mapOf(keys, key => spot[key]);
    }

    function _recordEvent(): void {
        if (!_isHeld) {
            _record(true);
        }
    }

    function _record(mayBeTyped: bool): void {
        const now = _values();
        const values = History.difference(_recorded, now);
        _recorded = now;
        if (values) {
            const typed = mayBeTyped && Object.keys(values).every(key => typedKeys.includes(key));
            _history = History.recorded(_history, {values: values, time: Date.now(), typed: typed});
        }
    }

    function _apply(step: var): void {
        if (step) {
            Object.assign(spot, step.values);
            _recorded = _values();
            _history = step.history;
        }
    }
}
