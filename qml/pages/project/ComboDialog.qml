pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The combos of one hand of a range, each with its weight.
AppDialog {
    id: dialog

    property string rangeText: ""
    property string boardText: ""
    // A label.
    property string hand: ""
    // From 0 to 1.
    property real brush: 1

    // A new one would be made of every tile at every change.
    readonly property var _combos: HandRanges.combosOf(rangeText, boardText, hand)

    // The range is to become this text.
    signal changed(text: string)

    // Beside a place in the window.
    function openAt(label: string, place: point): void {
        hand = label;
        x = Math.round(Math.max(margins, Math.min(place.x, parent.width - width - margins)));
        y = Math.round(Math.max(margins, Math.min(place.y, parent.height - height - margins)));
        open();
    }

    function _toggle(cards: string, weight: real): void {
        const isPainted = weight > 0 && Math.abs(weight - brush) < 5e-4;
        changed(HandRanges.withCombo(rangeText, cards, isPainted ? 0 : brush));
    }

    title: qsTr("Combos of %1").arg(hand)
    modal: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onOpened: (tiles.itemAt(0) as Item)?.forceActiveFocus(Qt.TabFocusReason)
    buttons: [
        SecondaryButton {
            objectName: "allCombos"
            theme: dialog.theme
            compact: true
            text: qsTr("All at %1%").arg((100 * dialog.brush).toLocaleString(Qt.locale(), "f", -128))
            onClicked: dialog.changed(HandRanges.painted(dialog.rangeText, dialog.hand, dialog.brush))
        },
        SecondaryButton {
            objectName: "noCombos"
            theme: dialog.theme
            compact: true
            text: qsTr("None")
            onClicked: dialog.changed(HandRanges.painted(dialog.rangeText, dialog.hand, 0))
        },
        SecondaryButton {
            theme: dialog.theme
            compact: true
            text: qsTr("Done")
            onClicked: dialog.accept()
        }
    ]

    GridLayout {
        columns: dialog._combos.length === 6 ? 3 : 4
        columnSpacing: dialog.theme.spaceSm
        rowSpacing: dialog.theme.spaceSm

        Repeater {
            id: tiles

            model: dialog._combos.length

            ComboTile {
                required property int index
                readonly property var _combo: dialog._combos[index]
                    ?? {cards: "AsAs", weight: 0, blocked: false}

                objectName: "combo" + cards
                theme: dialog.theme
                cards: _combo.cards
                weight: _combo.weight
                blocked: _combo.blocked
                onClicked: dialog._toggle(cards, weight)
                onShifted: difference =>
                    dialog.changed(HandRanges.withCombo(dialog.rangeText, cards, weight + difference))
            }
        }
    }
}
