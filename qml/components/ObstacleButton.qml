import QtQuick
import Tidewell

// A primary button that says why it is off while it is: where the pointer rests on it, and to
// whoever has the page read out.
Item {
    id: holder

    property Theme theme: Fallback.theme
    property string obstacle: ""
    property bool active: false
    property alias text: button.text
    property alias iconText: button.iconText
    property alias loading: button.loading
    property alias quiet: button.quiet
    property alias buttonName: button.objectName
    readonly property alias button: button

    signal clicked
    // Pressed while it is off, or was: what the press itself has switched on knows nothing of it.
    signal refused

    implicitWidth: button.implicitWidth
    implicitHeight: button.implicitHeight

    PrimaryButton {
        id: button

        anchors.fill: parent
        theme: holder.theme
        enabled: holder.active
        Accessible.description: holder.active ? "" : holder.obstacle
        onClicked: holder.clicked()
    }
    // A disabled button notices neither the pointer nor a press.
    HoverHandler {
        id: hover
    }
    PointHandler {
        onActiveChanged: if (active && !button.pressed) holder.refused()
    }
    Tip {
        theme: holder.theme
        below: true
        text: holder.obstacle
        shown: hover.hovered && !holder.active
    }
}
