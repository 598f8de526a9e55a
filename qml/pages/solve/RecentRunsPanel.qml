pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The runs that were started here.
Card {
    id: panel

    required property RunHistory history

    function _statusColor(status: string): color {
        if (status === "Running") {
            return theme.success;
        }
        return status === "Completed" ? theme.info : theme.danger;
    }

    function _statusName(status: string): string {
        switch (status) {
        case "Running":
            return qsTr("Running");
        case "Completed":
            return qsTr("Completed");
        case "Failed":
            return qsTr("Failed");
        case "Refused":
            //: A run that was not even started
            return qsTr("Refused");
        default:
            return qsTr("Cancelled");
        }
    }

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
            implicitHeight: Math.min(180, 42 + 42 * count)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: count > 0
            visible: count > 0
            model: panel.history.runs
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Recent Runs")
            Layout.fillWidth: true

            T.ScrollBar.vertical: AppScrollBar { theme: panel.theme }

            FocusRing {
                theme: panel.theme
                gap: -2
                shown: list.activeFocus
            }

            delegate: Item {
                id: run

                // See RunHistory.
                required property var modelData
                readonly property string _reason: TextChecks.inWords(modelData.reason)

                width: ListView.view.width
                implicitHeight: 42
                Accessible.role: Accessible.ListItem
                Accessible.name: [pillText.text, modelData.startedAt, modelData.summary, _reason]
                    .filter(part => part !== "").join(", ")

                Rectangle {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: 1
                    color: panel.theme.strokeLight
                }
                RowLayout {
                    anchors.fill: parent
                    anchors.rightMargin: panel.theme.spaceMd
                    spacing: panel.theme.spaceMd

                    Rectangle {
                        implicitWidth: 84
                        implicitHeight: 22
                        radius: height / 2
                        color: panel.theme.withOpacity(pillText.color, 0.18)

                        Text {
                            id: pillText

                            anchors.centerIn: parent
                            text: panel._statusName(run.modelData.status)
                            textFormat: Text.PlainText
                            color: panel._statusColor(run.modelData.status)
                            font.pixelSize: Fallback.type.labelSm
                            font.weight: Fallback.type.weightSemibold
                            Accessible.ignored: true
                        }
                    }
                    AppLabel {
                        theme: panel.theme
                        text: run.modelData.startedAt
                        muted: true
                        font.pixelSize: Fallback.type.labelMd
                        Accessible.ignored: true
                    }
                    AppLabel {
                        theme: panel.theme
                        text: run.modelData.summary
                        font.pixelSize: Fallback.type.labelMd
                        elide: Text.ElideRight
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        Layout.maximumWidth: Math.ceil(implicitWidth)
                    }
                    AppLabel {
                        theme: panel.theme
                        text: run._reason
                        color: panel.theme.danger
                        font.pixelSize: Fallback.type.labelMd
                        elide: Text.ElideRight
                        visible: text !== ""
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        Layout.minimumWidth: parent.width / 3
                    }
                    Item {
                        Layout.fillWidth: run._reason === ""
                    }
                }
            }
        }
    }
}
