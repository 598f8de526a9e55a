import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// Chooses the card of one slot of a board, without covering the board.
AppDialog {
    id: dialog

    // 0 to 4; -1 while nothing is chosen.
    property int slot: -1
    property var usedCards: []

    // From the window's edges, and from the board.
    readonly property real _margin: 12
    readonly property real _gap: 8

    signal cardChosen(card: string)
    signal cleared

    function openUnder(item: Item): void {
        const corner = item.mapToItem(parent, 0, item.height + _gap);
        x = Math.round(_within(corner.x, parent.width - width));
        y = Math.round(_within(corner.y, parent.height - height));
        open();
    }

    function _within(place: real, room: real): real {
        return Math.max(_margin, Math.min(place, room - _margin));
    }

    onAboutToShow: {
        cards.focusFirst();
        cards.focus = true;
    }

    title: qsTr("Select card")
    modal: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    margins: _margin
    buttons: [
        SecondaryButton {
            objectName: "clearCard"
            theme: dialog.theme
            text: qsTr("Clear card")
            onClicked: dialog.cleared()
        },
        SecondaryButton {
            theme: dialog.theme
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]

    ColumnLayout {
        spacing: dialog.theme.spaceMd

        AppLabel {
            objectName: "slotName"
            theme: dialog.theme
            muted: true
            text: {
                if (dialog.slot === 3) {
                    return qsTr("Turn card");
                }
                return dialog.slot === 4 ? qsTr("River card") : qsTr("Flop card");
            }
        }
        CardPicker {
            id: cards

            objectName: "cardPicker"
            theme: dialog.theme
            focus: true
            usedCards: dialog.usedCards
            onCardSelected: card => dialog.cardChosen(card)
        }
    }
}
