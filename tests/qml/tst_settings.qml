import QtQuick
import QtTest
import Tidewell

Item {
    id: root

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
    // What the next start of the program finds.
    Component {
        id: nextStart

        AppearanceStore {}
    }

    TestCase {
        id: test

        function init(): void {
            failOnWarning(/.?/);
            page.resetToDefaults();
        }

        function cleanupTestCase(): void {
            page.resetToDefaults();
        }

        // The control of this accessible name.
        function find(name: string): var {
            const search = item => {
                for (const child of Array.from(item.children)) {
                    const found = child.visible && child.Accessible.name === name
                        && child.Accessible.role !== Accessible.StaticText ? child : search(child);
                    if (found) {
                        return found;
                    }
                }
                return null;
            };
            const control = search(page);
            verify(control, name);
            return control;
        }

        function stored(): var {
            const store = createTemporaryObject(nextStart, root);
            return [store.darkMode, store.accentHex];
        }

        function test_accentText_data(): var {
            return [
                {text: " #58A6FF ", overrides: true, accent: "#58a6ff"},
                {text: "#8058A6FF", overrides: true, accent: "#8058a6ff"},
                {text: "", overrides: false, accent: "#3fb950"},
                {text: "blue", overrides: true, accent: "#f0b429"},
                {text: "#12345", overrides: true, accent: "#f0b429"}
            ];
        }

        function test_accentText(row: var): void {
            page.applyAccentHex("#F0B429");
            page.applyAccentHex(row.text);
            compare(theme.useAccentOverride, row.overrides);
            compare(String(theme.accent), row.accent);
        }

        function test_swatches(): void {
            const gold = find("Gold");
            const reset = find("Reset");
            verify(!reset.enabled);
            mouseClick(gold);
            compare(String(theme.accent), "#f0b429");
            verify(gold.isCurrent);
            verify(!find("Red").isCurrent);
            mouseClick(reset);
            verify(!theme.useAccentOverride);
            verify(find("Green").isCurrent);
            gold.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            verify(gold.isCurrent);
        }

        function test_darkMode(): void {
            const toggle = find("Dark Mode");
            mouseClick(toggle);
            verify(!theme.dark);
            toggle.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            verify(theme.dark);
        }

        function test_storing(): void {
            mouseClick(find("Dark Mode"));
            mouseClick(find("Purple"));
            // Seen at once, but gone with the program.
            compare(stored(), [true, ""]);
            mouseClick(find("Save Settings"));
            compare(stored(), [false, "#a371f7"]);
            mouseClick(find("Reset to Defaults"));
            verify(theme.dark && !theme.useAccentOverride && find("Dark Mode").checked);
            compare(stored(), [true, ""]);
        }

        name: "SettingsPage"
        when: windowShown
    }
}
