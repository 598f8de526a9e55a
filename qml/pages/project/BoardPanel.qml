pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/board_text.mjs" as Board

// The board, and the dialog that puts cards into its slots. It shows `boardText` and never writes
// it.
Card {
    id: panel

    property string boardText: ""
    property real cardScale: 1
    // What is wrong with the board; empty for nothing.
    property string error: ""
    // It is what keeps the spot from being solved.
    property bool marked: false
    // The slot that is being filled, -1 for none.
    property int editingIndex: -1
    property SetupHistory history: null
    readonly property alias display: display
    readonly property alias field: field

    // Where the keyboard goes when the picker has closed: to where it was, or to what was pressed.
    property Item _before: null
    readonly property Item _focused: Window.activeFocusItem

    signal cardChosen(slot: int, card: string)
    signal cleared(slot: int)
    signal entered(board: string)

    function _edit(slot: int): void {
        if (editingIndex < 0) {
            _before = _focused;
        }
        editingIndex = slot;
        (picker.get() as CardDialog).openUnder(display);
    }

    // Goes on with the next card of the flop. The board is the page's and knows of the choice by now.
    function _choose(card: string): void {
        cardChosen(editingIndex, card);
        const next = Board.nextSlot(boardText, editingIndex);
        if (next < 0) {
            (picker.get() as CardDialog).close();
        } else {
            editingIndex = next;
        }
    }

    function _endEditing(): void {
        editingIndex = -1;
        if (_focused === null || _focused === Window.contentItem) {
            _before?.forceActiveFocus(Qt.PopupFocusReason);
        }
        _before = null;
    }

    on_FocusedChanged: {
        const dialog = picker.item as CardDialog;
        if (editingIndex >= 0 && dialog && !dialog.activeFocus && _focused
                && _focused !== Window.contentItem) {
            _before = _focused;
        }
    }

    padding: theme.spaceMd
    Accessible.role: Accessible.Grouping
    Accessible.name: title.title

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        CardHeading {
            id: title

            theme: panel.theme
            title: qsTr("Board")
            Layout.fillWidth: true
        }
        BoardDisplay {
            id: display

            objectName: "board"
            theme: panel.theme
            boardText: panel.boardText
            editable: true
            cardScale: panel.cardScale
            horizontalPadding: 0
            onCardClicked: index => panel._edit(index)
            Layout.topMargin: panel.theme.spaceXs
        }
        Item {
            Layout.fillHeight: true
        }
        BoardField {
            id: field

            objectName: "boardField"
            theme: panel.theme
            history: panel.history
            boardText: panel.boardText
            marked: panel.marked
            onEdited: board => panel.entered(board)
            Layout.fillWidth: true
        }
        AppLabel {
            readonly property string _mistake: panel.error !== "" ? panel.error : field.error

            theme: panel.theme
            objectName: "boardHint"
            text: _mistake !== "" ? _mistake : qsTr("Click a slot, or type the cards.")
            color: _mistake !== "" ? panel.theme.danger : panel.theme.textMuted
            font.pixelSize: Fallback.type.labelMd
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
    OnDemand {
        id: picker

        CardDialog {
            theme: panel.theme
            slot: panel.editingIndex
            usedCards: Board.cardsOf(panel.boardText)
            onCardChosen: card => panel._choose(card)
            onCleared: {
                panel.cleared(panel.editingIndex);
                close();
            }
            onClosed: panel._endEditing()
        }
    }
}
