import QtQuick
import Tidewell
import "../../logic/action_bar.mjs" as Bar

// A class of hands: its name, how many hands it has, and what they do.
Rectangle {
    id: row

    required property Theme theme
    // Map of `name`, `displayName`, `combos`; null for none.
    required property var bucket
    // As MixBar takes them.
    required property var looks
    // Gives the entries of an ActionBar for a list of probabilities.
    required property var actionsFor
    // For texts, on a row and on the current one.
    required property color muted
    required property color mutedOnCurrent
    required property bool current
    required property bool hovered
    required property bool focusShown

    readonly property string _title: bucket ? bucket.displayName || bucket.name : ""
    readonly property string _combos: bucket
        ? qsTr("%1 combos").arg(bucket.combos.toLocaleString(Qt.locale(), "f", 1)) : ""

    signal pressed

    // Of a class that somebody is on: another node has others.
    function _mix(): string {
        return !bucket || !(current || hovered || focusShown) ? ""
            : actionsFor(bucket.actionProbs).map(action =>
                //: An action and how often it is taken: "Bet 33%: 40%"
                qsTr("%1: %2%").arg(ActionText.shown(action)).arg(Math.round(100 * action.frequency)))
            .join(", ");
    }

    implicitHeight: Math.ceil(name.implicitHeight) + 16 + 4 + 12
    radius: theme.radiusXs
    color: {
        if (current) {
            return theme.surface3;
        }
        return hovered ? theme.surfaceHover : "transparent";
    }
    border.width: focusShown ? 2 : 0
    border.color: theme.strokeFocus
    Accessible.role: Accessible.ListItem
    //: A class of hands and how many hands it has: "Top pair, 12.0 combos"
    Accessible.name: qsTr("%1, %2").arg(_title).arg(_combos)
    Accessible.description: row._mix()
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.onPressAction: row.pressed()

    AppLabel {
        id: name

        anchors.left: parent.left
        anchors.right: combos.left
        anchors.margins: 6
        y: 6
        theme: row.theme
        text: row._title
        font.pixelSize: Fallback.type.bodySm
        font.weight: Fallback.type.weightMedium
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    AppLabel {
        id: combos

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.baseline: name.baseline
        theme: row.theme
        text: row._combos
        color: row.current ? row.mutedOnCurrent : row.muted
        font.pixelSize: Fallback.type.labelMd
        Accessible.ignored: true
    }
    MixBar {
        x: 6
        y: name.y + Math.ceil(name.implicitHeight) + 4
        width: parent.width - 12
        height: 16
        theme: row.theme
        shares: row.bucket ? Bar.sharesOf(row.bucket.actionProbs) : []
        looks: row.looks
    }
}
