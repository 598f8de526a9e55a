import QtQuick
import Tidewell

// A class of hands: its name, how many hands it has, and what they do.
Rectangle {
    id: row

    required property Theme theme
    // Map of `name`, `displayName`, `combos`; null for none.
    required property var bucket
    // As ActionBar takes them.
    required property var actions
    required property bool current
    required property bool hovered
    required property bool focusShown

    readonly property string _title: bucket ? bucket.displayName || bucket.name : ""
    readonly property string _combos: bucket
        ? qsTr("%1 combos").arg(bucket.combos.toLocaleString(Qt.locale(), "f", 1)) : ""

    signal pressed

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
    //: A class of hands: its name, how many hands, and what they do: "Top pair, 12.0 combos: Check 40%"
    Accessible.name: qsTr("%1, %2: %3").arg(_title).arg(_combos).arg(bar.Accessible.name)
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
        color: row.theme.legible(row.theme.textMuted, row.current ? row.theme.surface3
                                                                  : row.theme.surface2)
        font.pixelSize: Fallback.type.labelMd
        Accessible.ignored: true
    }
    ActionBar {
        id: bar

        x: 6
        y: name.y + Math.ceil(name.implicitHeight) + 4
        width: parent.width - 12
        height: 16
        theme: row.theme
        actions: row.actions
        showLabels: false
    }
}
