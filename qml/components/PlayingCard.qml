pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// One card: its face, its back, or an empty slot where rank and suit are missing.
Item {
    id: card

    property Theme theme: Fallback.theme
    property string rank: ""
    property string suit: ""
    property bool faceDown: false
    property bool selected: false
    property bool disabled: false
    property bool mini: false
    property bool hoverable: true
    property real sizeScale: 1
    property bool enableHoverScale: false
    // Takes clicks and the keyboard; otherwise the card is a picture that lets clicks through.
    property bool interactive: hoverable

    readonly property bool _empty: rank === "" || suit === ""
    readonly property real _unit: Math.max(0.1, sizeScale)
    readonly property real _radius: (mini ? 4 : 6) * _unit
    readonly property bool _hovered: hoverable && !disabled && hover.hovered

    signal clicked

    // What assistive programs call when they press the card.
    function accessiblePressAction(): void {
        if (interactive && !disabled) {
            clicked();
        }
    }

    function _spoken(): string {
        if (faceDown) {
            return qsTr("Face-down card");
        }
        return _empty ? qsTr("Empty card slot") : CardText.spoken(rank.toUpperCase(), suit);
    }

    implicitWidth: (mini ? 32 : 52) * _unit
    implicitHeight: (mini ? 44 : 72) * _unit
    opacity: disabled ? 0.4 : 1
    scale: _hovered && enableHoverScale ? 1.05 : 1
    activeFocusOnTab: interactive && !disabled
    Accessible.role: interactive ? Accessible.Button : Accessible.Graphic
    Accessible.name: _spoken()
    Accessible.focusable: activeFocusOnTab
    Accessible.selected: selected

    Keys.onReturnPressed: accessiblePressAction()
    Keys.onEnterPressed: accessiblePressAction()
    Keys.onSpacePressed: accessiblePressAction()

    Behavior on scale { NumberAnimation { duration: card.theme.durationFast } }

    SoftShadow {
        anchors.fill: parent
        theme: card.theme
        cornerRadius: card._radius
        reach: 4 * card._unit
        offset: 2 * card._unit
        strength: 0.6 * card.theme.shadowOpacity
        visible: (card.faceDown || !card._empty) && !card.disabled
    }
    OnDemand {
        anchors.fill: parent
        wanted: !card.faceDown && !card._empty
        visible: wanted

        CardFace {
            anchors.fill: parent
            theme: card.theme
            rank: card.rank
            suit: card.suit
            mini: card.mini
            unit: card._unit
            cornerRadius: card._radius
            selected: card.selected
        }
    }
    OnDemand {
        anchors.fill: parent
        wanted: card.faceDown
        visible: wanted

        CardBack {
            anchors.fill: parent
            theme: card.theme
            cornerRadius: card._radius
            selected: card.selected
        }
    }
    OnDemand {
        anchors.fill: parent
        wanted: !card.faceDown && card._empty
        visible: wanted

        CardSlot {
            anchors.fill: parent
            theme: card.theme
            mini: card.mini
            unit: card._unit
            cornerRadius: card._radius
            selected: card.selected
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: card._radius
        color: "black"
        opacity: 0.05
        visible: card._hovered
    }
    FocusRing {
        theme: card.theme
        cornerRadius: card._radius
        gap: 1
        shown: card.activeFocus
    }
    HoverHandler {
        id: hover

        enabled: card.hoverable
        cursorShape: card.interactive && !card.disabled ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    TapHandler {
        enabled: card.interactive && !card.disabled
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: card.clicked()
    }
}
