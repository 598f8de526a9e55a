import QtQuick
import Tidewell

DocumentCase {
    id: test

    // What the next start of the program finds.
    readonly property Component nextStart: AppearanceStore {}

    function init(): void {
        failOnWarning(/.?/);
        page.resetToDefaults();
    }

    function cleanupTestCase(): void {
        page.resetToDefaults();
    }

    // The control of this accessible name.
    function find(name: string): var {
        return all(page, item => item.Accessible.name === name
                                 && item.Accessible.role !== Accessible.StaticText)[0];
    }

    function stored(): var {
        const store = make(nextStart);
        return [store.darkMode, store.accentHex];
    }

    function test_accentText(): void {
        for (const [text, overrides, accent] of [
            [" #58A6FF ", true, "#58a6ff"], ["#8058A6FF", true, "#8058a6ff"],
            ["", false, "#3fb950"], ["blue", true, "#f0b429"], ["#12345", true, "#f0b429"],
            ["#3FB", true, "#f0b429"]]) {
            page.applyAccentHex("#F0B429");
            page.applyAccentHex(text);
            compare([theme.useAccentOverride, String(theme.accent)], [overrides, accent], text);
        }
    }

    function test_swatches(): void {
        const gold = find("Gold");
        const reset = find("Reset");
        verify(!reset.enabled);
        mouseClick(gold);
        compare(String(theme.accent), "#f0b429");
        verify(gold.isCurrent && !find("Red").isCurrent);
        mouseClick(reset);
        verify(!theme.useAccentOverride && find("Green").isCurrent);
        gold.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        verify(gold.isCurrent);
    }

    function test_storing(): void {
        const toggle = find("Dark Mode");
        toggle.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Space);
        verify(theme.dark);
        mouseClick(toggle);
        mouseClick(find("Purple"));
        verify(!theme.dark);
        // Seen at once, but gone with the program.
        compare(stored(), [true, ""]);
        mouseClick(find("Save Settings"));
        compare(stored(), [false, "#a371f7"]);
        mouseClick(find("Reset to Defaults"));
        verify(theme.dark && !theme.useAccentOverride && toggle.checked);
        compare(stored(), [true, ""]);
    }

    name: "SettingsPage"
    width: 1000
    height: 600

    Theme {
        id: theme
    }
    SettingsPage {
        id: page

        anchors.fill: parent
        theme: theme
        // As the shell does it.
        darkMode: theme.dark
        onDarkModeChanged: theme.dark = darkMode
    }
}
