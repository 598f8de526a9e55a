import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/solve_status.mjs" as Status

// How many threads a solve may take.
Card {
    id: panel

    property int maxThreadCount: 1
    property int threadCount: 1

    readonly property var _counts: Status.threadCounts(maxThreadCount)
    readonly property var _threadChoiceModel: ["Max", ..._counts]

    signal chosen(threads: int)

    function _threads(count: int): string {
        return count === 1 ? qsTr("1 thread")
                           : qsTr("%1 threads").arg(count.toLocaleString(Qt.locale(), "f", 0));
    }

    function _label(choice: var): string {
        if (choice !== "Max") {
            return _threads(choice);
        }
        return maxThreadCount === 1 ? qsTr("Max, 1 thread")
            : qsTr("Max, %1 threads").arg(maxThreadCount.toLocaleString(Qt.locale(), "f", 0));
    }

    function _index(): int {
        return threadCount === maxThreadCount
            ? 0 : Math.max(0, _threadChoiceModel.indexOf(threadCount));
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceMd

        CardHeading {
            theme: panel.theme
            iconName: "monitor"
            title: qsTr("Compute")
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: panel.theme.spaceMd
            Layout.fillWidth: true

            AppLabel {
                id: label

                theme: panel.theme
                text: qsTr("CPU threads utilized")
                font.pixelSize: Fallback.type.bodySm
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            AppComboBox {
                id: combo

                objectName: "threads"
                theme: panel.theme
                model: panel._threadChoiceModel.map(choice => panel._label(choice))
                currentIndex: panel._index()
                Accessible.name: label.text
                onActivated: index => panel.chosen(index === 0 ? panel.maxThreadCount
                                                              : panel._threadChoiceModel[index])

                // A choice of the user, and a new list, leave the binding behind.
                Connections {
                    target: panel

                    function onThreadCountChanged(): void {
                        combo.currentIndex = panel._index();
                    }
                }
            }
        }
    }
}
