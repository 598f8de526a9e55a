import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/deck.mjs" as Deck

// Asks for the card of a chance node.
AppDialog {
    id: picker

    required property ChanceChoice choice
    // The room that the dialog may take.
    required property real pageWidth
    required property real pageHeight

    visible: choice.levelIndex >= 0
    title: choice.title
    padding: 14
    topPadding: 14
    bottomPadding: 14
    width: Math.max(240, Math.min(640, pageWidth - 40, implicitWidth))
    height: Math.max(240, Math.min(520, pageHeight - 40, implicitHeight))
    onAboutToShow: {
        cards.focusFirst();
        cards.forceActiveFocus(Qt.TabFocusReason);
    }
    onClosed: choice.close()

    header: RowLayout {
        spacing: picker.theme.spaceSm

        AppLabel {
            theme: picker.theme
            text: picker.title
            font.pixelSize: Fallback.type.headingSm
            font.weight: Fallback.type.weightSemibold
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Layout.leftMargin: picker.padding
            Layout.topMargin: picker.padding
            Layout.fillWidth: true
        }
        SecondaryButton {
            theme: picker.theme
            compact: true
            text: qsTr("Random")
            enabled: picker.choice.availableIndices.length > 0
            Layout.topMargin: picker.padding
            onClicked: picker.choice.chooseRandomly()
        }
        IconButton {
            theme: picker.theme
            iconText: "✕"
            iconSize: 14
            tip: qsTr("Close")
            Layout.topMargin: picker.padding
            Layout.rightMargin: picker.padding
            onClicked: picker.close()
        }
    }
    AppScrollView {
        anchors.fill: parent
        theme: picker.theme
        // Room for the scroll bar.
        implicitWidth: contentWidth + 28
        contentWidth: cards.implicitWidth + 2 * cards.x
        contentHeight: cards.implicitHeight + 2 * cards.y

        CardPicker {
            id: cards

            // Room for the ring around a card.
            x: 3
            y: 3
            theme: picker.theme
            showFaces: true
            usedCards: Deck.CARDS.filter(card => picker.choice.indexFor(card) < 0)
            onCardSelected: card => picker.choice.choose(picker.choice.indexFor(card), card)
        }
    }
}
