import Qt.labs.settings
import Tidewell

import "../logic/accent.mjs" as Accent

// How the program is to look, as it is kept from run to run.
Settings {
    id: store

    // As in accent.mjs.
    property string accentHex: ""
    property bool darkMode: true
    // "standard" or "distinct".
    property string actionColors: "standard"

    function applyTo(theme: Theme): void {
        theme.dark = darkMode;
        theme.distinctActions = actionColors === "distinct";
        applyAccent(theme, accentHex);
    }

    // "" for the theme's own accent; what is no colour changes nothing.
    function applyAccent(theme: Theme, text: string): void {
        const hex = Accent.accentHex(text);
        if (hex !== "") {
            theme.accentOverride = hex;
        }
        if (hex !== "" || text.trim() === "") {
            theme.useAccentOverride = hex !== "";
        }
    }

    function keep(dark: bool, theme: Theme): void {
        darkMode = dark;
        accentHex = theme.useAccentOverride ? String(theme.accentOverride) : "";
        actionColors = theme.distinctActions ? "distinct" : "standard";
        // Properties are written by and by, and sync() does not know of them before.
        setValue("darkMode", darkMode);
        setValue("accentHex", accentHex);
        setValue("actionColors", actionColors);
        sync();
    }

    category: "ui"
}
