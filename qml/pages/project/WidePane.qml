import QtQuick
import QtQuick.Templates as T
import Tidewell

// Scrolls what is larger than itself in either direction: by scroll bars, by the wheel (sideways
// with Shift), and to the control that the keyboard comes to. It does not follow drags, which
// belong to what it holds.
Item {
    id: pane

    property Theme theme: Fallback.theme
    // Of what it holds.
    property real contentWidth: 0
    property real contentHeight: 0
    default property alias content: flick.flickableData

    readonly property alias contentX: flick.contentX
    readonly property alias contentY: flick.contentY

    function _scrollBy(across: real, down: real): void {
        const left = Math.min(flick.contentX + across, flick.contentWidth - flick.width);
        const top = Math.min(flick.contentY + down, flick.contentHeight - flick.height);
        flick.contentX = Math.max(0, left);
        flick.contentY = Math.max(0, top);
    }

    // Below the content, which may want the wheel for itself.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.NoButton

        onWheel: wheel => {
            const delta = (wheel.angleDelta.y || wheel.angleDelta.x) / 2;
            const sideways = (wheel.modifiers & Qt.ShiftModifier) !== 0;
            pane._scrollBy(sideways ? -delta : 0, sideways ? 0 : -delta);
            wheel.accepted = sideways;
        }
    }
    Flickable {
        id: flick

        readonly property bool _wide: pane.contentWidth > width + 1

        anchors.fill: parent
        clip: true
        interactive: false
        contentWidth: _wide ? pane.contentWidth : width
        contentHeight: Math.max(pane.contentHeight, height)

        onContentWidthChanged: pane._scrollBy(0, 0)
        onContentHeightChanged: pane._scrollBy(0, 0)
        onWidthChanged: pane._scrollBy(0, 0)
        onHeightChanged: pane._scrollBy(0, 0)

        T.ScrollBar.vertical: AppScrollBar { theme: pane.theme }
        T.ScrollBar.horizontal: AppScrollBar { theme: pane.theme }
    }
    FocusFollower {
        view: flick
    }
}
