pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The hands that were played, newest first. A click shows one; it then stays while others come, until
// the newest is clicked.
Rectangle {
    id: panel

    required property Theme theme
    required property HandLog log

    signal saveRequested

    color: theme.surface2
    radius: theme.radiusMd
    border.width: 1
    border.color: theme.stroke

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: panel.theme.spaceMd
        spacing: panel.theme.spaceSm

        RowLayout {
            spacing: panel.theme.spaceXs

            AppLabel {
                theme: panel.theme
                text: qsTr("Hand Log")
                font.pixelSize: Fallback.type.bodyLg
                font.weight: Fallback.type.weightSemibold
                Accessible.role: Accessible.Heading
            }
            AppLabel {
                theme: panel.theme
                text: panel.log.count === 1 ? qsTr("1 hand") : qsTr("%1 hands").arg(panel.log.count)
                muted: true
                elide: Text.ElideRight
                font.pixelSize: Fallback.type.labelMd
                Layout.leftMargin: panel.theme.spaceXs
                Layout.fillWidth: true
            }
            IconButton {
                theme: panel.theme
                iconName: "clipboard"
                iconSize: 16
                tip: qsTr("Copy the log as tab-separated text")
                enabled: panel.log.count > 0
                focusPolicy: Qt.TabFocus
                onClicked: panel.log.copy()
            }
            IconButton {
                theme: panel.theme
                iconName: "save"
                iconSize: 16
                tip: qsTr("Save the log as tab-separated text")
                enabled: panel.log.count > 0
                focusPolicy: Qt.TabFocus
                onClicked: panel.saveRequested()
            }
        }
        AppLabel {
            theme: panel.theme
            text: qsTr("Hands that have ended are listed here.")
            muted: true
            wrapMode: Text.Wrap
            font.pixelSize: Fallback.type.bodySm
            visible: panel.log.count === 0
            Layout.fillWidth: true
        }
        ListView {
            id: list

            clip: true
            spacing: 6
            model: panel.log
            currentIndex: panel.log.selectedIndex
            highlightMoveDuration: 0
            keyNavigationEnabled: false
            boundsBehavior: Flickable.StopAtBounds
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Hand Log")
            Layout.fillWidth: true
            Layout.fillHeight: true

            delegate: HandLogEntry {
                required property int index
                required property var model

                width: list.width - panel.theme.spaceSm - 2
                theme: panel.theme
                hand: model
                current: ListView.isCurrentItem
                onClicked: panel.log.select(index)
            }

            T.ScrollBar.vertical: AppScrollBar { theme: panel.theme }
        }
    }
}
