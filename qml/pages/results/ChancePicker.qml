import QtQuick
import QtQuick.Layouts
import Tidewell

// Asks for the card of a chance node.
AppDialog {
    id: picker

    required property ChanceChoice choice
    // The room that the dialog may take.
    required property real pageWidth
    required property real pageHeight

    title: choice.title
    padding: 14
    topPadding: 14
    bottomPadding: 14
    width: Math.max(240, Math.min(640, pageWidth - 40, implicitWidth))
    height: Math.max(240, Math.min(520, pageHeight - 40, implicitHeight))
    onAboutToShow: cards.focusFirst()
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
    ChancePickerGrid {
        id: cards

        anchors.fill: parent
        theme: picker.theme
        choice: picker.choice
    }

    Connections {
        target: picker.choice

        function onLevelIndexChanged(): void {
            if (picker.choice.levelIndex >= 0) {
                picker.open();
            } else {
                picker.close();
            }
        }
    }
}
