import QtQuick
import Tidewell

// One of the drawings of assets/icons, tinted. Purely a picture: what it stands for is said by the
// control that shows it.
Item {
    id: icon

    property string name: ""
    property real size: 20
    property color color: Fallback.theme.text
    property real iconOpacity: 1

    readonly property url source: name === ""
        ? "" : Qt.resolvedUrl("../assets/icons/" + name + ".svg")

    implicitWidth: size
    implicitHeight: size
    opacity: iconOpacity
    Accessible.ignored: true

    TintedImage {
        anchors.centerIn: parent
        width: icon.size
        height: icon.size
        source: icon.source
        color: icon.color
    }
}
