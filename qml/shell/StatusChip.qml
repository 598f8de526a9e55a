import QtQuick
import QtQuick.Layouts
import Tidewell

// What the solver does, in a word and a percentage.
Rectangle {
    id: chip

    property Theme theme: Fallback.theme
    property bool running: false
    property bool canSolve: false
    // While it runs.
    property string phase: ""
    // Of what the solve is expected to take, 0 to 1, where that can be told.
    property bool isEstimated: false
    property real progress: 0

    readonly property bool _green: running || canSolve
    readonly property string text: {
        if (!running) {
            return qsTr("Ready");
        }
        if (!isEstimated) {
            return _phaseText();
        }
        const percent = Math.round(100 * progress).toLocaleString(Qt.locale(), "f", 0);
        //: What the solver does and how far it is: "Solving 42%"
        return qsTr("%1 %2%").arg(_phaseText()).arg(percent);
    }

    function _phaseText(): string {
        switch (phase) {
        case "finalizing":
            return qsTr("Finalizing");
        case "starting":
            return qsTr("Starting");
        case "initializing":
            return qsTr("Initializing");
        default:
            return qsTr("Solving");
        }
    }

    implicitWidth: Math.ceil(row.implicitWidth) + 2 * theme.spaceMd
    implicitHeight: Math.max(28, Math.ceil(row.implicitHeight) + 8)
    radius: height / 2
    color: _green ? theme.withOpacity(theme.success, 0.15) : theme.surface2
    border.width: 1
    border.color: _green ? theme.success : theme.stroke
    Accessible.role: Accessible.StatusBar
    Accessible.name: text

    RowLayout {
        id: row

        anchors.centerIn: parent
        spacing: chip.theme.spaceSm

        Rectangle {
            id: dot

            implicitWidth: 8
            implicitHeight: 8
            radius: 4
            color: chip._green ? chip.theme.success : chip.theme.textFaint

            SequentialAnimation on opacity {
                loops: Animation.Infinite
                running: chip.running
                onRunningChanged: {
                    if (!running) {
                        dot.opacity = 1;
                    }
                }

                NumberAnimation { to: 0.4; duration: 500 }
                NumberAnimation { to: 1; duration: 500 }
            }
        }
        Text {
            text: chip.text
            textFormat: Text.PlainText
            color: {
                const theme = chip.theme;
                const bar = theme.dark ? theme.bg0 : theme.bg1;
                return theme.legible(chip._green ? theme.success : theme.textMuted,
                                     Qt.tint(bar, chip.color));
            }
            font.pixelSize: Fallback.type.labelMd
            font.weight: Fallback.type.weightSemibold
            Accessible.ignored: true
        }
    }
}
