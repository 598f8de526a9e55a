import QtQuick

// The keys that work on every page.
Item {
    id: shortcuts

    // The shell's.
    required property bool running
    required property bool canSave

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
        sequence: "Ctrl+1"
        onActivated: shortcuts.navigate(0)
    }
    Shortcut {
        sequence: "Ctrl+2"
        onActivated: shortcuts.navigate(1)
    }
    Shortcut {
        sequence: "Ctrl+3"
        onActivated: shortcuts.navigate(2)
    }
    Shortcut {
        sequence: "Ctrl+4"
        onActivated: shortcuts.navigate(3)
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: shortcuts.navigate(4)
    }
    Shortcut {
        sequence: "F5"
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.solveRequested();
        }
    }
    Shortcut {
        // Otherwise the key is for popups.
        enabled: shortcuts.running
        sequence: "Escape"
        autoRepeat: false
        onActivated: shortcuts.cancelRequested()
    }
    // The linter does not know StandardKey.
    // qmllint disable unqualified
    Shortcut {
        sequences: [StandardKey.New]
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.newRequested();
        }
    }
    Shortcut {
        sequences: [StandardKey.Open]
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.openRequested();
        }
    }
    Shortcut {
        enabled: shortcuts.canSave
        sequences: [StandardKey.Save]
        autoRepeat: false
        onActivated: {
            shortcuts.finishTyping();
            shortcuts.saveRequested();
        }
    }
    // qmllint enable unqualified
}
