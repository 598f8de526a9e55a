pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The classes of hands that a node's range holds. One of them can be chosen.
ListFrame {
    id: panel

    required property var buckets
    // Whether the node is one to look at; one on the way is not shown.
    required property bool settled
    // The actions of the node.
    required property var actions
    // Gives the entries of an ActionBar for a list of probabilities.
    required property var actionsFor
    // Name of the class, empty for none.
    property string selected: ""

    // With the actions they are of.
    property var _shown: []
    property var _shownActions: []
    readonly property var _looks: theme.actionLooks(
        _shownActions.map(action => action.actionType || action.name))
    readonly property color _muted: theme.legible(theme.textMuted, theme.surface2)
    readonly property color _mutedOnCurrent: theme.legible(theme.textMuted, theme.surface3)

    signal chosen(name: string)

    function _show(): void {
        if (settled) {
            _shownActions = actions;
            _shown = buckets;
        }
    }

    function _choose(index: int): void {
        if (index >= 0 && index < _shown.length) {
            list.currentIndex = index;
            chosen(_shown[index].name);
        }
    }

    onBucketsChanged: _show()
    onSettledChanged: _show()
    Component.onCompleted: _show()

    title: qsTr("Buckets")
    note: qsTr("%1 shown").arg(_shown.length.toLocaleString(Qt.locale(), "f", 0))

    ListView {
        id: list

        readonly property real barRoom: bar.visible ? bar.implicitWidth : 0

        function step(by: int): void {
            currentIndex = Math.max(0, Math.min(currentIndex + by, count - 1));
        }

        clip: true
        reuseItems: true
        spacing: 2
        boundsBehavior: Flickable.StopAtBounds
        highlightFollowsCurrentItem: true
        highlightMoveDuration: 0
        activeFocusOnTab: count > 0
        keyNavigationEnabled: false
        model: RowCountModel {
            count: panel._shown.length
        }
        Accessible.role: Accessible.List
        Accessible.name: panel.title
        Layout.fillWidth: true
        Layout.fillHeight: true

        T.ScrollBar.vertical: AppScrollBar {
            id: bar

            theme: panel.theme
        }

        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(height / 50));
            const steps = {[Qt.Key_Up]: -1, [Qt.Key_Down]: 1, [Qt.Key_Home]: -count,
                           [Qt.Key_End]: count, [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page};
            const presses = [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space];
            if (event.key in steps) {
                step(steps[event.key]);
            } else if (presses.includes(event.key)) {
                if (!event.isAutoRepeat) {
                    panel._choose(currentIndex);
                }
            } else if (event.key === Qt.Key_Escape && panel.selected !== "") {
                panel.chosen(panel.selected);
            } else {
                return;
            }
            event.accepted = true;
        }

        delegate: BucketRow {
            required property int index

            readonly property var _bucket: panel._shown[index] ?? null

            width: ListView.view.width - list.barRoom
            theme: panel.theme
            bucket: _bucket
            looks: panel._looks
            muted: panel._muted
            mutedOnCurrent: panel._mutedOnCurrent
            actionsFor: panel.actionsFor
            current: _bucket !== null && _bucket.name === panel.selected
            hovered: pointer.row === index
            focusShown: list.activeFocus && ListView.isCurrentItem
            onPressed: panel._choose(index)
        }

        HoverHandler {
            id: pointer

            readonly property int row: hovered
                ? list.indexAt(1, point.position.y + list.contentY) : -1

            cursorShape: row >= 0 ? Qt.PointingHandCursor : Qt.ArrowCursor
        }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: point => {
                list.forceActiveFocus(Qt.MouseFocusReason);
                panel._choose(list.indexAt(1, point.position.y + list.contentY));
            }
        }
    }
}
