import QtQuick
import Tidewell

// The colours of the hand list's rows, worked out once for all of them.
QtObject {
    id: look

    required property Theme theme
    // Of the node.
    required property var definitions

    readonly property var _types: definitions.map(action => action.actionType || action.name)
    // As MixBar takes them.
    readonly property var actions: theme.actionLooks(_types)
    // Of a row that is `plain`, `hovered` or `current`: its `ground`, and on that `muted` text and the
    // `tints` of the actions' texts.
    readonly property var shades: ({
        plain: _shade(theme.surface2, actions),
        hovered: _shade(theme.surfaceHover, actions),
        current: _shade(theme.surface3, actions)
    })

    function _shade(ground: color, actions: var): var {
        return {ground: ground, muted: theme.legible(theme.textMuted, ground),
                tints: actions.map(action => theme.legible(action.color, ground))};
    }
}
