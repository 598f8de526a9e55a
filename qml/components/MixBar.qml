import QtQuick
import Tidewell
import "../logic/action_bar.mjs" as Bar

// The picture of an action bar: segments with their percentages.
ActionBarItem {
    id: bar

    required property Theme theme
    // Of the actions, adding up to 1.
    required property var shares
    // What Theme.actionLooks() says of them.
    required property var looks
    // Index of the action that is framed, -1 for none.
    property int framed: -1

    function _segments(): var {
        const segments = Bar.segments(shares, width, height, theme.radiusSm);
        const count = Math.min(segments.length, looks.length);
        const sized = looks.map(look => look.sized);
        const result = [];
        for (let i = 0; i < count; ++i) {
            const segment = segments[i];
            const percent = Math.round(100 * shares[i]);
            segment.color = looks[i].color;
            segment.hatch = looks[i].hatch;
            segment.parted = Bar.isParted(shares, sized, i);
            segment.framed = i === framed;
            // A text needs some width even before it is measured.
            segment.text = segment.width > 35 && percent > 0 ? qsTr("%1%").arg(percent) : "";
            result.push(segment);
        }
        return result;
    }

    segments: _segments()
    radius: theme.radiusSm
    ground: theme.surface2
    frame: theme.text
    plate: theme.plate
    textColor: theme.plateText
    Accessible.ignored: true
}
