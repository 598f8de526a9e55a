pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// The tooltip of the control that it is declared in, which knows when it is to be seen.
OnDemand {
    id: tip

    property Theme theme: Fallback.theme
    property string text: ""
    property bool shown: false
    // Under the control, for those at the top of the window.
    property bool below: false

    wanted: shown && text !== ""

    AppToolTip {
        parent: tip.parent
        theme: tip.theme
        text: tip.text
        visible: tip.wanted
        y: tip.below ? tip.parent.height + 6 : -implicitHeight - 6
    }
}
