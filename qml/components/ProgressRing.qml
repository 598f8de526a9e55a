import QtQuick
import Tidewell

// How far something is: an arc from the top, and the percentage in its middle.
Item {
    id: ring

    property Theme theme: Fallback.theme
    // 0 to 1; anything else is taken to the nearer end.
    property real value: 0
    property real strokeWidth: 8
    property color trackColor: theme.surface3
    property color progressColor: theme.accent
    property bool showPercentage: true
    property bool indeterminate: false

    readonly property real _share: value >= 0 ? Math.min(value, 1) : 0
    readonly property string _text: indeterminate
        ? qsTr("...")
        //: Progress of a task, such as 42%
        : qsTr("%1%").arg(Math.round(100 * _share).toLocaleString(Qt.locale(), "f", 0))

    implicitWidth: 120
    implicitHeight: 120
    Accessible.role: Accessible.ProgressBar
    Accessible.name: _text

    RingArc {
        id: arc

        anchors.fill: parent
        strokeWidth: ring.strokeWidth
        trackColor: ring.trackColor
        color: ring.progressColor
        share: ring.indeterminate ? 0.25 : ring._share

        Behavior on share {
            enabled: !ring.indeterminate
            NumberAnimation { duration: ring.theme.durationSlow; easing.type: Easing.OutCubic }
        }
        RotationAnimator on rotation {
            from: 0
            to: 360
            duration: 1500
            loops: Animation.Infinite
            running: ring.indeterminate && ring.visible
            onRunningChanged: if (!running) arc.rotation = 0
        }
    }
    Text {
        anchors.centerIn: parent
        text: ring._text
        textFormat: Text.PlainText
        color: ring.theme.text
        font.pixelSize: Math.max(9, Math.round(0.2 * Math.min(ring.width, ring.height)))
        font.weight: Fallback.type.weightBold
        visible: ring.showPercentage
        Accessible.ignored: true
    }
}
