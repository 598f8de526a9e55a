import QtQuick
import QtQuick.Templates as T
import Tidewell

// Scrolls what is larger than itself, and to the control that the keyboard comes to. Give the
// content a width bound to availableWidth, and it scrolls up and down only.
T.ScrollView {
    id: scroller

    property Theme theme: Fallback.theme

    readonly property FocusFollower _follower: FocusFollower {
        parent: scroller
        z: 1
        view: scroller.contentItem as Flickable
    }

    implicitWidth: Math.ceil(contentWidth) + leftPadding + rightPadding
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding

    T.ScrollBar.vertical: AppScrollBar {
        parent: scroller
        theme: scroller.theme
        x: scroller.mirrored ? 0 : scroller.width - width
        y: scroller.topPadding
        height: scroller.availableHeight
        active: scroller.T.ScrollBar.horizontal.active
    }
    T.ScrollBar.horizontal: AppScrollBar {
        parent: scroller
        theme: scroller.theme
        x: scroller.leftPadding
        y: scroller.height - height
        width: scroller.availableWidth
        active: scroller.T.ScrollBar.vertical.active
    }
}
