import QtQuick
import Tidewell

// Takes files that are dropped on it, and says so while they are held over it.
DropArea {
    id: area

    property Theme theme: Fallback.theme

    signal filesDropped(var urls)

    onEntered: drag => {
        drag.accepted = drag.hasUrls;
    }
    onDropped: drop => {
        drop.accept(Qt.CopyAction);
        area.filesDropped(drop.urls);
    }

    Rectangle {
        anchors.fill: parent
        color: area.theme.withOpacity(area.theme.bg0, 0.7)
        border.width: 2
        border.color: area.theme.accent
        visible: area.containsDrag

        Text {
            anchors.centerIn: parent
            text: qsTr("Drop the file to open it")
            textFormat: Text.PlainText
            color: area.theme.text
            font.pixelSize: Fallback.type.headingLg
            font.weight: Fallback.type.weightSemibold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
