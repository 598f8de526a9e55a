pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The pages of the program, and what the solver does.
Rectangle {
    id: bar

    property Theme theme: Fallback.theme
    property var controller: null
    // The page shown: 0 Home, 1 Setup, 2 Solve, 3 Results, 4 Settings.
    property int currentIndex: 0
    property bool hasProject: false
    property bool canSolve: false
    // Why the spot cannot be solved.
    property string spotObstacle: ""
    required property SolveProgress solveProgress
    // Of the project's file; empty for none.
    property string fileName: ""
    property bool hasChanges: false

    readonly property bool running: controller?.running ?? false
    readonly property bool hasResults: (controller?.resultIterations ?? 0) > 0
    // Whoever watches a solve stays with it until it has ended.
    readonly property bool _isHeld: currentIndex === 2 && running

    signal navigate(int index)

    function isOpen(index: int): bool {
        return _obstacle(index) === "";
    }

    function _obstacle(index: int): string {
        if (_isHeld && index !== 2) {
            return qsTr("Wait for the solve to finish, or cancel it");
        }
        if (index === 1 && !hasProject) {
            return qsTr("Start a new project (or load one) from Home to enable Project");
        }
        if (index === 2 && !canSolve) {
            return spotObstacle || qsTr("Fill board, ranges, and sizings to enable Solve");
        }
        if (index === 3 && !hasResults) {
            return qsTr("Run a solve to enable Results");
        }
        return "";
    }

    implicitWidth: row.implicitWidth + 2 * theme.spaceXl
    implicitHeight: 56
    color: theme.dark ? theme.bg0 : theme.bg1

    component PageTab: TopBarTab {
        required property int index

        theme: bar.theme
        current: bar.currentIndex === index
        obstacle: bar._obstacle(index)
        onClicked: bar.navigate(index)
    }

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: bar.theme.spaceXl
        anchors.rightMargin: bar.theme.spaceXl
        spacing: bar.theme.spaceXs

        Text {
            text: qsTr("Tidewell")
            textFormat: Text.PlainText
            color: bar.theme.text
            font.pixelSize: Fallback.type.headingMd
            font.weight: Fallback.type.weightBold
            Accessible.ignored: true
            Layout.rightMargin: bar.theme.spaceLg
        }
        PageTab {
            index: 0
            text: qsTr("Home")
            iconName: "home"
        }
        PageTab {
            index: 1
            text: qsTr("Setup")
            iconName: "clipboard"
        }
        PageTab {
            index: 2
            text: qsTr("Solve")
            iconName: "bolt"
        }
        PageTab {
            index: 3
            text: qsTr("Results")
            iconName: "chart"
        }
        Rectangle {
            implicitWidth: 1
            implicitHeight: 24
            color: bar.theme.stroke
            Layout.leftMargin: bar.theme.spaceXs
            Layout.rightMargin: bar.theme.spaceXs
        }
        PageTab {
            index: 4
            text: qsTr("Settings")
            iconName: "gear"
        }
        Text {
            readonly property string name: bar.fileName === "" && bar.hasChanges
                ? qsTr("Unsaved project") : bar.fileName

            text: bar.hasChanges && name !== "" ? "• " + name : name
            textFormat: Text.PlainText
            color: bar.theme.textMuted
            font.pixelSize: Fallback.type.labelMd
            elide: Text.ElideMiddle
            horizontalAlignment: Text.AlignRight
            Accessible.role: Accessible.StaticText
            Accessible.name: bar.hasChanges ? qsTr("%1, not saved").arg(name) : name
            Layout.fillWidth: true
            Layout.leftMargin: bar.theme.spaceLg
            Layout.rightMargin: bar.theme.spaceMd
        }
        StatusChip {
            theme: bar.theme
            running: bar.running
            canSolve: bar.canSolve
            phase: bar.solveProgress.phase
            isEstimated: bar.solveProgress.isEstimated
            progress: bar.solveProgress.progressWheelValue
            // These pages say by themselves what the spot is ready for.
            visible: bar.running || bar.currentIndex !== 1 && bar.currentIndex !== 2
        }
    }
    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 1
        color: bar.theme.stroke
    }
    AppProgressBar {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 3
        theme: bar.theme
        value: Math.max(0, bar.controller?.fileProgress ?? 0)
        visible: (bar.controller?.fileProgress ?? -1) >= 0
        Accessible.name: qsTr("Reading or writing a project file")
    }
}
