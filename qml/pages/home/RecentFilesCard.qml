pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The project files that were last opened or saved, newest first.
Card {
    id: card

    required property RecentFiles files

    signal openRequested(url file)

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceSm

        CardHeading {
            theme: card.theme
            iconName: "file-text"
            title: qsTr("Recent Files")
            Layout.fillWidth: true
        }
        Text {
            text: qsTr("Projects that you save or open are listed here. "
                       + "You can also drop a project file on the window.")
            textFormat: Text.PlainText
            color: card.theme.textMuted
            font.pixelSize: Fallback.type.bodySm
            wrapMode: Text.Wrap
            visible: card.files.count === 0
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        ListView {
            id: list

            objectName: "recentFiles"
            clip: true
            activeFocusOnTab: true
            keyNavigationEnabled: true
            model: card.files
            boundsBehavior: Flickable.StopAtBounds
            cacheBuffer: 0
            visible: count > 0
            // What does not fit scrolls.
            implicitHeight: Math.min(contentHeight, 6 * 40)
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Recent Files")
            Layout.fillWidth: true
            Layout.fillHeight: true

            onActiveFocusChanged: {
                if (activeFocus) {
                    currentIndex = Math.max(0, currentIndex);
                }
            }

            Keys.onReturnPressed: list.currentItem?.clicked()
            Keys.onEnterPressed: list.currentItem?.clicked()
            Keys.onSpacePressed: list.currentItem?.clicked()
            Keys.onDeletePressed: list.currentItem?.removeRequested()

            delegate: RecentFileRow {
                width: ListView.view.width - bar.implicitWidth
                theme: card.theme
                highlighted: ListView.isCurrentItem && ListView.view.activeFocus
                onClicked: card.openRequested(url)
                onRemoveRequested: card.files.remove(url)
            }
            T.ScrollBar.vertical: AppScrollBar {
                id: bar

                theme: card.theme
            }
        }
    }
}
