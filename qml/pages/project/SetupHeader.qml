pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The head of the page: whether there is a board, whether the solve fits in memory, and the way on.
RowLayout {
    id: header

    property Theme theme: Fallback.theme
    // Null for none.
    property var controller: null
    property bool ready: false
    property bool canSolve: false

    readonly property real _required: controller?.solveRequiredMemoryBytes ?? 0
    readonly property real _available: controller?.effectiveAvailableMemoryBytes ?? 0
    readonly property bool _tooLarge: Number.isFinite(_required) && Number.isFinite(_available)
        && _required > 0 && _available > 0 && _required > _available
    // Why there is no way on.
    readonly property string _obstacle: {
        if (canSolve) {
            return "";
        }
        return _tooLarge ? qsTr("This solve needs more memory than there is")
                         : qsTr("Fill board, ranges, and sizings to enable Solve");
    }

    signal continued

    spacing: theme.spaceLg

    SectionHeader {
        objectName: "pageHead"
        theme: header.theme
        title: qsTr("Project Setup")
        badge: header.ready ? qsTr("Ready") : qsTr("Setup Required")
        badgeColor: header.ready ? header.theme.success : header.theme.warn
    }
    Item {
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
    Item {
        implicitWidth: way.implicitWidth
        implicitHeight: way.implicitHeight

        PrimaryButton {
            id: way

            objectName: "continueToSolve"
            anchors.fill: parent
            theme: header.theme
            text: qsTr("Continue to Solve →")
            enabled: header.canSolve
            Accessible.description: header._obstacle
            onClicked: header.continued()
        }
        // A disabled button does not notice the pointer.
        HoverHandler {
            id: hover
        }
        AppToolTip {
            theme: header.theme
            y: way.height + 6
            text: header._obstacle
            visible: hover.hovered && header._obstacle !== ""
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
