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
    // The slot that is being filled, -1 for none.
    property int editingIndex: -1
    readonly property alias display: display

    signal cardChosen(slot: int, card: string)
    signal cleared(slot: int)

    function _edit(slot: int): void {
        editingIndex = slot;
        (picker.get() as CardDialog).openUnder(display);
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
        AppLabel {
            theme: panel.theme
            objectName: "boardHint"
            text: panel.error !== "" ? panel.error : qsTr("Click a slot to choose its card.")
            color: panel.error !== "" ? panel.theme.danger : panel.theme.textMuted
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
            onCardChosen: card => {
                panel.cardChosen(panel.editingIndex, card);
                close();
            }
            onCleared: {
                panel.cleared(panel.editingIndex);
                close();
            }
            onClosed: panel.editingIndex = -1
        }
    }
}
