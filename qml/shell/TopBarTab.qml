import QtQuick
import QtQuick.Templates as T
import Tidewell

// One page of the program in the top bar. While it cannot be opened it says why.
Item {
    id: tab

    required property string text
    required property string iconName
    property Theme theme: Fallback.theme
    property bool current: false
    // Why it cannot be opened; empty when it can.
    property string obstacle: ""

    signal clicked

    implicitWidth: button.implicitWidth
    implicitHeight: button.implicitHeight
    Accessible.ignored: true

    T.TabButton {
        id: button

        readonly property color contentColor: {
            if (tab.current) {
                const bar = tab.theme.dark ? tab.theme.bg0 : tab.theme.bg1;
                return tab.theme.legible(tab.theme.accent, Qt.tint(bar, background.color));
            }
            return enabled ? tab.theme.text : tab.theme.textMuted;
        }

        anchors.fill: parent
        implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
        implicitHeight: 36
        horizontalPadding: tab.theme.spaceMd
        text: tab.text
        // The shell says which page is shown, not the tab that was pressed.
        checkable: false
        enabled: tab.obstacle === ""
        hoverEnabled: true
        focusPolicy: Qt.StrongFocus
        font.pixelSize: Fallback.type.bodyMd
        font.weight: Fallback.type.weightMedium
        Accessible.role: Accessible.PageTab
        Accessible.name: tab.text
        Accessible.description: tab.obstacle
        Accessible.selectable: true
        Accessible.selected: tab.current
        onClicked: tab.clicked()

        Keys.onReturnPressed: tab.clicked()
        Keys.onEnterPressed: tab.clicked()

        contentItem: ButtonContent {
            text: tab.text
            iconName: tab.iconName
            color: button.contentColor
            font: button.font
        }
        background: Rectangle {
            radius: tab.theme.radiusSm
            color: {
                if (tab.current) {
                    return tab.theme.withOpacity(tab.theme.accent, 0.12);
                }
                return button.enabled && button.hovered ? tab.theme.surfaceHover : "transparent";
            }

            FocusRing {
                theme: tab.theme
                gap: 0
                shown: button.visualFocus
            }
        }
    }
    // A disabled control does not notice the pointer.
    HoverHandler {
        id: hover
    }
    Tip {
        theme: tab.theme
        below: true
        text: tab.obstacle
        shown: hover.hovered && !tab.current
    }
}
