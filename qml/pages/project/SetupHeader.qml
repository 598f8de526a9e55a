pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The head of the page: what keeps the spot from being solved, what the solve takes of the memory,
// and the way on.
RowLayout {
    id: header

    property Theme theme: Fallback.theme
    // Null for none.
    property var controller: null
    required property SpotCheck check
    property bool canSolve: false
    property SetupHistory history: null

    readonly property real _required: controller?.solveRequiredMemoryBytes ?? 0
    readonly property real _available: controller?.effectiveAvailableMemoryBytes ?? 0
    readonly property bool _tooLarge: Number.isFinite(_required) && Number.isFinite(_available)
        && _required > 0 && _available > 0 && _required > _available
    // The way on was taken before the estimate was there: it is gone as soon as that fits.
    property bool _goesOn: false
    readonly property Item _focused: Window.activeFocusItem

    signal continued
    // To where what stands in the way can be mended.
    signal placeWanted(place: string)

    function _tryToGo(): void {
        if (_goesOn && !check.pending) {
            _goesOn = false;
            if (way.active) {
                continued();
            }
        }
    }

    spacing: theme.spaceLg

    // Whoever turns to something else does not want to be taken away from it.
    on_FocusedChanged: _goesOn = false

    Connections {
        target: header.check

        function onPendingChanged(): void {
            answer.restart();
        }
    }
    // An estimate and what follows from it are told one after the other.
    Timer {
        id: answer

        interval: 0
        onTriggered: header._tryToGo()
    }
    ColumnLayout {
        spacing: header.theme.spaceXs
        Layout.fillWidth: true

        SectionHeader {
            objectName: "pageHead"
            theme: header.theme
            title: qsTr("Project Setup")
            badge: header.check.badge
            badgeColor: header.theme[header.check.color]
            Layout.fillWidth: true
        }
        ObstacleLine {
            objectName: "obstacle"
            theme: header.theme
            text: header.check.obstacle
            leads: header.check.place !== ""
            onClicked: header.placeWanted(header.check.place)
            Layout.fillWidth: true
        }
    }
    IconButton {
        objectName: "undo"
        theme: header.theme
        iconText: "↶"
        //: Of a button; the keys stand behind it
        tip: qsTr("Undo (%1)").arg("Ctrl+Z")
        enabled: header.history?.canUndo ?? false
        onClicked: header.history.undo()
    }
    IconButton {
        objectName: "redo"
        theme: header.theme
        iconText: "↷"
        tip: qsTr("Redo (%1)").arg("Ctrl+Shift+Z")
        enabled: header.history?.canRedo ?? false
        onClicked: header.history.redo()
    }
    ColumnLayout {
        spacing: 2

        MemoryLine {
            objectName: "solveMemory"
            text: qsTr("Solve RAM: %1").arg(header.check.mistake
                ? "—" : header.controller?.solveRequiredMemoryText || "—")
            color: header._tooLarge ? header.theme.danger : header.theme.textMuted
        }
        MemoryLine {
            text: qsTr("Available RAM: %1")
                .arg(header.controller?.effectiveAvailableMemoryText || "—")
        }
    }
    ObstacleButton {
        id: way

        theme: header.theme
        buttonName: "continueToSolve"
        text: qsTr("Continue to Solve →")
        loading: header._goesOn
        active: header.canSolve && !header.check.mistake
        obstacle: header.check.obstacle
        onClicked: header.continued()
        // What was typed has been taken over by now, and may be just what was missing.
        onRefused: {
            header._goesOn = true;
            header._tryToGo();
        }
    }

    component MemoryLine: AppLabel {
        theme: header.theme
        muted: true
        font.pixelSize: Fallback.type.labelMd
        horizontalAlignment: Text.AlignRight
        Layout.alignment: Qt.AlignRight
    }
}
