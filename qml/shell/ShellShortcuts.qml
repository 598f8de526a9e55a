import QtQuick
import QtQuick.Templates as T

// The keys that work on every page, and not while a dialog waits for an answer.
Item {
    id: shortcuts

    // The shell's.
    required property bool running
    required property bool canSave

    // What darkens the window behind a dialog stands among the popups as long as it is open.
    readonly property bool _asked: Array.from(T.Overlay.overlay?.children ?? [])
        .some(child => child.objectName === "dimmer")

    signal navigate(int index)
    signal solveRequested
    signal cancelRequested
    signal newRequested
    signal openRequested
    signal saveRequested

    // A field takes over what was typed when the keyboard leaves it. A shortcut, or the window's
    // own cross, leaves the keyboard where it is.
    function finishTyping(): void {
        const field = Window.activeFocusItem as TextInput;
        if (field?.acceptableInput) {
            field.editingFinished();
        }
    }

    Shortcut {
        enabled: !shortcuts._asked
        sequence: "Ctrl+1"
        onActivated: shortcuts.navigate(0)
    }
    Shortcut {
        enabled: !shortcuts._asked
        sequence: "Ctrl+2"
        onActivated: shortcuts.navigate(1)
    }
    Shortcut {
        enabled: !shortcuts._asked
        sequence: "Ctrl+3"
        onActivated: shortcuts.navigate(2)
    }
    Shortcut {
        enabled: !shortcuts._asked
        sequence: "Ctrl+4"
        onActivated: shortcuts.navigate(3)
    }
    Shortcut {
        enabled: !shortcuts._asked
        sequence: "Ctrl+,"
        onActivated: shortcuts.navigate(4)
    }
    Shortcut {
        enabled: !shortcuts._asked
        sequence: "F5"
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.solveRequested();
        }
    }
    Shortcut {
        // Otherwise the key is for popups.
        enabled: shortcuts.running && !shortcuts._asked
        sequence: "Escape"
        autoRepeat: false
        onActivated: shortcuts.cancelRequested()
    }
    // The linter does not know StandardKey.
    // qmllint disable unqualified
    Shortcut {
        enabled: !shortcuts._asked
        sequences: [StandardKey.New]
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.newRequested();
        }
    }
    Shortcut {
        enabled: !shortcuts._asked
        sequences: [StandardKey.Open]
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.openRequested();
        }
    }
    Shortcut {
        enabled: shortcuts.canSave && !shortcuts._asked
        sequences: [StandardKey.Save]
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.saveRequested();
        }
    }
    // qmllint enable unqualified
}
