pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tidewell
import "../../logic/hand_filter.mjs" as HandFilter

// The rows of the hand list. Up, down, Home, End and the page keys move among the hands, left and right
// among the values of one, Return asks why a value is what it is. Pointer and taps are heeded here, once
// for all rows.
ListView {
    id: list

    required property Theme theme
    required property HandList hands
    required property var actionsFor
    required property real uiScale
    required property string unknownEv

    readonly property HandColumns columns: HandColumns {
        width: list.width - bar.implicitWidth
        scale: list.uiScale
        lines: Math.max(1, list.hands.definitions.length)
    }
    readonly property HandListLook _look: HandListLook {
        theme: list.theme
        definitions: list.hands.definitions
    }
    readonly property string litHand: {
        const row = pointer.row >= 0 ? pointer.row : _keyboard ? currentIndex : -1;
        const combo = enabled ? hands.rows[row] : undefined;
        return combo ? HandFilter.classOfCards(combo.c1, combo.c2) : "";
    }

    // The line of values that the keyboard is on.
    property int _line: 0
    // Keys are in use, not the pointer.
    property bool _keyboard: false

    signal whyRequested(c1: string, c2: string, actionIndex: int)
    signal copyRequested

    function _moveTo(row: int): void {
        currentIndex = Math.max(0, Math.min(row, count - 1));
        list.positionViewAtIndex(currentIndex, ListView.Contain);
    }

    function _moveLine(by: int): void {
        _line = Math.max(0, Math.min(_line + by, hands.definitions.length - 1));
    }

    function _askWhy(row: int, action: int): void {
        const combo = hands.rows[row];
        if (combo && action >= 0 && action < hands.definitions.length && unknownEv === "") {
            whyRequested(combo.c1, combo.c2, action);
        }
    }

    function _rowAt(y: real): int {
        return indexAt(1, y + contentY);
    }

    function _lineAt(row: int, point: point): int {
        return row >= 0 ? columns.lineAt(point.x, point.y + contentY - row * columns.rowHeight) : -1;
    }

    function _heed(event: KeyEvent): bool {
        const page = Math.max(1, Math.floor(height / columns.rowHeight) - 1);
        const rows = {[Qt.Key_Up]: currentIndex - 1, [Qt.Key_Down]: currentIndex + 1,
                      [Qt.Key_PageUp]: currentIndex - page, [Qt.Key_PageDown]: currentIndex + page,
                      [Qt.Key_Home]: 0, [Qt.Key_End]: count - 1};
        if (event.key in rows) {
            _moveTo(rows[event.key]);
        } else if (event.key === Qt.Key_Left || event.key === Qt.Key_Right) {
            _moveLine(event.key === Qt.Key_Left ? -1 : 1);
        } else if ([Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key)) {
            if (!event.isAutoRepeat) {
                _askWhy(currentIndex, _line);
            }
        } else {
            return false;
        }
        _keyboard = true;
        return true;
    }

    clip: true
    reuseItems: true
    boundsBehavior: Flickable.StopAtBounds
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    activeFocusOnTab: true
    cacheBuffer: 0
    model: RowCountModel {
        id: rows
    }
    Component.onCompleted: rows.count = hands.rows.length
    Accessible.role: Accessible.List
    Accessible.description: qsTr("Left and right choose an action, Return shows why.")

    T.ScrollBar.vertical: AppScrollBar {
        id: bar

        theme: list.theme
    }

    Keys.onPressed: event => {
        if (event.matches(StandardKey.Copy)) {
            copyRequested();
            event.accepted = true;
        } else {
            event.accepted = list._heed(event);
        }
    }
    onActiveFocusChanged: _keyboard = activeFocus

    Connections {
        target: list.hands

        // Another list begins at its top. None leaves the rows where they are: nobody sees them, and
        // most of the time there are others soon.
        function onRowsChanged(): void {
            if (list.hands.rows.length > 0) {
                rows.count = list.hands.rows.length;
            }
            list.currentIndex = 0;
            list._line = 0;
            list.positionViewAtBeginning();
        }
    }

    delegate: HandRow {
        required property int index

        width: list.columns.width
        height: list.columns.rowHeight
        theme: list.theme
        columns: list.columns
        combo: list.hands.rows[index] ?? null
        definitions: list.hands.definitions
        actionsFor: list.actionsFor
        look: list._look
        unknownEv: list.unknownEv
        current: ListView.isCurrentItem && list.activeFocus
        hovered: pointer.row === index
        focusShown: current && list._keyboard
        hoveredLine: hovered ? pointer.line : -1
        focusedLine: focusShown ? list._line : -1
        onWhyPressed: action => list._askWhy(index, action)
    }

    HoverHandler {
        id: pointer

        readonly property int row: hovered ? list._rowAt(point.position.y) : -1
        readonly property int line: hovered ? list._lineAt(row, point.position) : -1

        cursorShape: line >= 0 && list.unknownEv === "" ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: point => {
            const row = list._rowAt(point.position.y);
            const line = list._lineAt(row, point.position);
            list.forceActiveFocus(Qt.MouseFocusReason);
            list._keyboard = false;
            if (row >= 0) {
                list.currentIndex = row;
                list._line = Math.max(0, line);
                list._askWhy(row, line);
            }
        }
    }
    // Of the values that nobody can know.
    Item {
        x: list.columns.evX
        y: pointer.row * list.columns.rowHeight - list.contentY
        width: list.columns.evWidth
        height: 1

        Tip {
            theme: list.theme
            text: list.unknownEv
            shown: pointer.line >= 0
        }
    }
}
