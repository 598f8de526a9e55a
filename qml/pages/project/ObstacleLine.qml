import QtQuick
import QtQuick.Templates as T
import Tidewell

// Why something cannot be done, in a line; a press goes to where that can be mended.
T.AbstractButton {
    id: line

    property Theme theme: Fallback.theme
    // There is somewhere to go to.
    property bool leads: false

    // A line is kept free, so that nothing moves when there is something to say.
    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    enabled: leads
    hoverEnabled: true
    focusPolicy: leads ? Qt.StrongFocus : Qt.NoFocus
    Accessible.role: leads ? Accessible.Link : Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: line.text === "" ? " " : line.leads ? line.text + "  →" : line.text
        textFormat: Text.PlainText
        color: line.hovered ? line.theme.text : line.theme.textMuted
        font.pixelSize: Fallback.type.bodySm
        font.underline: line.hovered
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    HoverHandler {
        cursorShape: line.leads ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    FocusRing {
        theme: line.theme
        cornerRadius: line.theme.radiusXs
        shown: line.visualFocus
    }
}
