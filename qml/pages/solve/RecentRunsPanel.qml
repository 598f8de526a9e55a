pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The runs since the program was started. A press on one asks for its spot.
Card {
    id: panel

    required property RunHistory history
    property bool running: false

    signal spotRequested(config: var)

    // Without the list there is nothing to clear, and the button lets the keyboard go.
    function _clear(): void {
        const next = clearButton.nextItemInFocusChain(false);
        history.clear();
        next.forceActiveFocus(Qt.BacktabFocusReason);
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceMd

        CardHeading {
            theme: panel.theme
            iconName: "scroll"
            title: qsTr("Recent Runs")
            Layout.fillWidth: true

            SecondaryButton {
                id: clearButton

                objectName: "clearRuns"
                theme: panel.theme
                compact: true
                text: qsTr("Clear")
                enabled: list.count > 0
                onClicked: panel._clear()
            }
        }
        AppLabel {
            objectName: "noRuns"
            theme: panel.theme
            text: qsTr("No runs yet — click Start Solve to record a run here.")
            muted: true
            font.pixelSize: Fallback.type.bodySm
            wrapMode: Text.Wrap
            visible: list.count === 0
            Layout.fillWidth: true
        }
        ListView {
            id: list

            objectName: "runs"
            implicitHeight: Math.min(230, contentHeight)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: count > 0
            visible: count > 0
            model: panel.history.runs
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Recent Runs")
            Layout.fillWidth: true

            T.ScrollBar.vertical: AppScrollBar {
                id: bar

                theme: panel.theme
            }

            onActiveFocusChanged: {
                if (activeFocus) {
                    currentIndex = Math.max(0, currentIndex);
                }
            }

            Keys.onReturnPressed: (list.currentItem as RecentRunRow)?.clicked()
            Keys.onEnterPressed: (list.currentItem as RecentRunRow)?.clicked()
            Keys.onSpacePressed: (list.currentItem as RecentRunRow)?.clicked()

            FocusRing {
                theme: panel.theme
                gap: -2
                shown: list.activeFocus
            }

            delegate: RecentRunRow {
                width: ListView.view.width - bar.implicitWidth
                theme: panel.theme
                // The page cannot be left now.
                enabled: !panel.running
                highlighted: ListView.isCurrentItem && ListView.view.activeFocus
                onClicked: panel.spotRequested(modelData.config)
            }
        }
    }
}
