pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/deck.mjs" as Deck
import "../../logic/suit_map.mjs" as Suits

// The way down the tree: one block for each decision and deal on it, never more of the tree than that.
// Up and down move among the actions of the last block, right or Return goes into one, left goes back,
// Home goes back to the root.
Card {
    id: panel

    required property NodeReader nodes
    required property TreeWalk walk
    // Nothing can be chosen.
    property bool frozen: false

    // The action of the last block that the keyboard stands on.
    property int cursor: 0

    signal dealRequested(level: int, node: int)

    // Whether the key was one of the tree's.
    function handleKey(key: int): bool {
        if (frozen || walk.levels.count === 0) {
            return false;
        }
        switch (key) {
        case Qt.Key_Up:
            _moveCursor(-1);
            return true;
        case Qt.Key_Down:
            _moveCursor(1);
            return true;
        case Qt.Key_Right:
        case Qt.Key_Return:
        case Qt.Key_Enter:
            _enter();
            return true;
        case Qt.Key_Left:
        case Qt.Key_Backspace:
            _leave();
            return true;
        case Qt.Key_Home:
            walk.goTo(0);
            return true;
        default:
            return false;
        }
    }

    // A click on a block: a deal asks for its card, the chosen action is reopened, another one is chosen.
    function press(level: int, action: int): void {
        const row = walk.levels.get(level);
        if (frozen) {
            return;
        }
        const isDeal = nodes.meta(row.nodeIndex).nodeType === "chance";
        if (isDeal) {
            if (level < walk.levels.count - 1) {
                _reopen(level);
            }
            dealRequested(level, row.nodeIndex);
        } else if (row.selectedActionIndex === action) {
            _reopen(level);
        } else {
            walk.selectInstead(level, action);
        }
    }

    // `card` as it is shown, in place of the one that was dealt there.
    function deal(level: int, card: string): void {
        const action = Suits.indexForCard(card, walk.dealableAt(level), walk.boardBefore(level));
        if (!frozen && action >= 0) {
            walk.showCard(walk.levels.get(level).nodeIndex, card);
            walk.selectInstead(level, action);
        }
    }

    function _freeCards(level: int): var {
        const dealable = walk.dealableAt(level);
        const board = walk.boardBefore(level);
        return Deck.CARDS.filter(card => Suits.indexForCard(card, dealable, board) >= 0);
    }

    function _last(): int {
        return walk.levels.count - 1;
    }

    function _moveCursor(step: int): void {
        const row = walk.levels.get(_last());
        if (nodes.meta(row.nodeIndex).nodeType !== "chance") {
            const count = nodes.actions(row.nodeIndex).length;
            cursor = Math.max(0, Math.min(cursor + step, count - 1));
            _revealCursor();
        }
    }

    function _enter(): void {
        if (walk.levels.get(_last()).selectedActionIndex !== cursor) {
            press(_last(), cursor);
        }
    }

    function _leave(): void {
        const decided = walk.levels.get(_last()).selectedActionIndex >= 0;
        if (decided || _last() > 0) {
            _reopen(decided ? _last() : _last() - 1);
        }
    }

    // The keyboard comes back to what was chosen there.
    function _reopen(level: int): void {
        const chosen = walk.levels.get(level).selectedActionIndex;
        walk.goTo(level);
        cursor = Math.max(0, chosen);
        _revealCursor();
    }

    // As soon as the blocks have their places.
    function _revealCursor(): void {
        revealing.restart();
    }

    function _scrollToCursor(): void {
        const block = blocks.itemAt(blocks.count - 1) as TreeLevel;
        const box = block ? block.boxOf(panel.cursor) : null;
        const flickable = view.contentItem as Flickable;
        if (!box) {
            return;
        }
        const top = box.mapToItem(column, 0, 0).y;
        const least = top + box.height + column.padding - flickable.height;
        flickable.contentY = Math.max(0, Math.min(Math.max(flickable.contentY, least),
                                                  top - column.padding));
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Tree
    Accessible.name: qsTr("Game Tree")

    Keys.onPressed: event => event.accepted = panel.handleKey(event.key)

    Connections {
        target: panel.walk.levels

        function onCountChanged(): void {
            panel.cursor = 0;
            panel._revealCursor();
        }

        // The keyboard is on what was chosen, by whatever means.
        function onDataChanged(): void {
            const row = panel.walk.levels.get(panel._last());
            if (row && row.selectedActionIndex >= 0) {
                panel.cursor = row.selectedActionIndex;
            }
        }
    }

    Timer {
        id: revealing

        interval: 0
        onTriggered: panel._scrollToCursor()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceMd

        RowLayout {
            spacing: panel.theme.spaceSm

            Icon {
                name: "tree"
                color: panel.theme.textMuted
            }
            SectionHeader {
                theme: panel.theme
                title: qsTr("Game Tree")
                Layout.fillWidth: true
            }
        }
        AppScrollView {
            id: view

            theme: panel.theme
            contentWidth: availableWidth
            activeFocusOnTab: false
            Layout.fillWidth: true
            Layout.fillHeight: true

            Column {
                id: column

                width: view.availableWidth
                padding: 6
                rightPadding: 12
                spacing: panel.theme.spaceSm

                Repeater {
                    id: blocks

                    model: panel.walk.levels

                    TreeLevel {
                        width: column.width - column.leftPadding - column.rightPadding
                        theme: panel.theme
                        nodes: panel.nodes
                        isLast: index === panel.walk.levels.count - 1
                        freeCards: panel.nodes.meta(nodeIndex).nodeType === "chance"
                            ? panel._freeCards(index) : []
                        deal: selectedActionIndex >= 0 ? panel.walk.dealAt(index) : null
                        cursor: isLast && panel.activeFocus ? panel.cursor : -1
                        onCardChosen: card => {
                            panel.forceActiveFocus();
                            panel.deal(index, card);
                        }
                        onPressed: action => {
                            panel.forceActiveFocus();
                            panel.press(index, action);
                        }
                    }
                }
            }
        }
    }
}
