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

    readonly property real _required: controller?.solveRequiredMemoryBytes ?? 0
    readonly property real _available: controller?.effectiveAvailableMemoryBytes ?? 0
    readonly property bool _tooLarge: Number.isFinite(_required) && Number.isFinite(_available)
        && _required > 0 && _available > 0 && _required > _available
    // The way on was taken before the estimate was there: it is gone as soon as that fits.
    property bool _goesOn: false
    readonly property Item _focused: Window.activeFocusItem

    signal continued

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
    SectionHeader {
        objectName: "pageHead"
        theme: header.theme
        title: qsTr("Project Setup")
        badge: header.check.badge
        badgeColor: header.theme[header.check.color]
        // A line is kept free, so that nothing moves when there is something to say.
        subtitle: header.check.obstacle || " "
        Layout.fillWidth: true
    }
    ColumnLayout {
        spacing: 2

        MemoryLine {
            objectName: "solveMemory"
            text: qsTr("Solve RAM: %1").arg(header.controller?.solveRequiredMemoryText || "—")
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
