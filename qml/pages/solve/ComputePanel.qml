import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/solve_config.mjs" as SolveConfig
import "../../logic/solve_status.mjs" as Status

// How many threads and iterations a solve may take, and how its all-ins are weighed.
Card {
    id: panel

    // An AppController, or null.
    property var controller: null
    property int maxThreadCount: 1
    // As it was asked for; a project may come from a larger machine.
    property int threadCount: 1
    property bool exactAllIn: false
    property int maxIterations: 0
    // A solve takes what it was started with.
    property bool running: false

    readonly property int _usedThreads: SolveConfig.usableThreads(threadCount, maxThreadCount)
    readonly property var _counts: Status.threadCounts(maxThreadCount)
    readonly property var _threadChoiceModel: ["Max", ..._counts]

    signal chosen(threads: int)
    signal exactAllInChosen(exact: bool)
    signal limitChosen(iterations: int)

    function _threads(count: int): string {
        return count === 1 ? qsTr("1 thread") : qsTr("%Ln threads", "", count);
    }

    function _label(choice: var): string {
        if (choice !== "Max") {
            return _threads(choice);
        }
        return maxThreadCount === 1 ? qsTr("Max, 1 thread")
                                    : qsTr("Max, %Ln threads", "", maxThreadCount);
    }

    // A number that is none of the choices has no index; the box shows it all the same.
    function _index(): int {
        return _usedThreads === maxThreadCount
            ? 0 : Math.max(0, _threadChoiceModel.indexOf(_usedThreads));
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
                displayText: panel._label(panel._usedThreads === panel.maxThreadCount
                                          ? "Max" : panel._usedThreads)
                enabled: !panel.running
                Accessible.name: qsTr("%1: %2").arg(label.text).arg(displayText)
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
        AppLabel {
            objectName: "threadsLimited"
            theme: panel.theme
            text: qsTr("The project asks for %1, this machine has %2.")
                .arg(panel._threads(panel.threadCount)).arg(panel._threads(panel.maxThreadCount))
            color: panel.theme.warn
            font.pixelSize: Fallback.type.labelMd
            wrapMode: Text.Wrap
            visible: panel.threadCount > panel.maxThreadCount
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: panel.theme.spaceMd
            Layout.fillWidth: true

            AppLabel {
                id: limitLabel

                theme: panel.theme
                text: qsTr("Iteration limit")
                font.pixelSize: Fallback.type.bodySm
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            NumberField {
                objectName: "iterationLimit"
                theme: panel.theme
                value: panel.maxIterations
                from: 1
                to: 10000000
                decimals: 0
                enabled: !panel.running
                Accessible.name: limitLabel.text
                Layout.preferredWidth: combo.implicitWidth
                onCommitted: number => panel.limitChosen(number)

                Tip {
                    theme: panel.theme
                    below: true
                    text: qsTr("A solve stops here even where it has not come to its target.")
                    shown: limitHover.hovered
                }
                HoverHandler {
                    id: limitHover
                }
            }
        }
        ExactAllInRow {
            theme: panel.theme
            controller: panel.controller
            active: panel.exactAllIn
            enabled: !panel.running
            onSwitched: active => panel.exactAllInChosen(active)
            Layout.fillWidth: true
        }
    }
}
