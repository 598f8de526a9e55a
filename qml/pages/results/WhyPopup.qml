pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// Why an action is worth what it is to a hand: a sheet over the panel that it is declared in. Escape
// closes it and gives the keyboard back.
T.Popup {
    id: popup

    required property Theme theme
    // Null for none.
    required property var controller
    // From the suits of cards as the tree keeps them to those that are shown.
    required property var suits

    // What was asked, and how the action is called.
    property int node: -1
    property string c1: ""
    property string c2: ""
    property int actionIndex: -1
    property var action: ({name: "", actionType: ""})

    property var _breakdown: ({ok: false, pending: true})

    // Of a hand of the player to act, as the tree keeps its cards. `action` is an entry of the node's list.
    function ask(node: int, c1: string, c2: string, actionIndex: int, action: var): void {
        popup.node = node;
        popup.c1 = c1;
        popup.c2 = c2;
        popup.actionIndex = actionIndex;
        popup.action = action;
        _ask();
        open();
    }

    function _ask(): void {
        _breakdown = controller ? controller.nodeActionBreakdown(node, c1, c2, actionIndex)
                                : {ok: false, pending: false};
    }

    function _cardText(kept: string): string {
        return kept.charAt(0) + CardText.symbol(suits[kept.charAt(1)] ?? "");
    }

    x: parent ? Math.max(0, parent.width - width) : 0
    width: Math.min(360, parent ? parent.width : 360)
    height: Math.min(implicitHeight, T.Overlay.overlay ? T.Overlay.overlay.height - 2 * margins
                                                       : implicitHeight)
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
    margins: 8
    padding: theme.spaceMd
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onClosed: {
        if (controller) {
            controller.dropActionBreakdown();
        }
    }

    background: Rectangle {
        radius: popup.theme.radiusSm
        color: popup.theme.surface
        border.width: 1
        border.color: popup.theme.strokeFocus
        Accessible.role: Accessible.Dialog
        Accessible.name: qsTr("What the EV is made of")
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 120 }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 120 }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: popup.theme.spaceSm

        RowLayout {
            spacing: popup.theme.spaceSm

            AppLabel {
                objectName: "whyTitle"
                theme: popup.theme
                //: %1 is an action, %2 a hand: "Bet 50% with A♠K♦"
                text: qsTr("%1 with %2").arg(ActionText.shown(popup.action))
                                        .arg(popup._cardText(popup.c1) + popup._cardText(popup.c2))
                font.pixelSize: Fallback.type.bodyMd
                font.weight: Fallback.type.weightSemibold
                elide: Text.ElideRight
                Accessible.role: Accessible.Heading
                Layout.fillWidth: true
            }
            IconButton {
                theme: popup.theme
                iconText: "✕"
                iconSize: 12
                tip: qsTr("Close")
                focus: true
                onClicked: popup.close()
            }
        }
        AppScrollView {
            id: view

            theme: popup.theme
            contentWidth: availableWidth
            implicitHeight: Math.ceil(panel.implicitHeight)
            activeFocusOnTab: false
            Layout.fillWidth: true
            Layout.fillHeight: true

            WhyPanel {
                id: panel

                width: view.availableWidth
                theme: popup.theme
                breakdown: popup._breakdown
                suits: popup.suits
            }
        }
    }
    Connections {
        target: popup.controller
        enabled: popup.opened || popup.visible

        function onNodeActionBreakdownReady(node: int, c1: string, c2: string, action: int): void {
            if (node === popup.node && c1 === popup.c1 && c2 === popup.c2
                    && action === popup.actionIndex) {
                popup._ask();
            }
        }

        function onResultsChanged(): void {
            popup.close();
        }
    }
}
