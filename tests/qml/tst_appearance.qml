import QtQuick
import Tidewell

import "../../qml/logic/color_difference.mjs" as Colors
import "../../qml/logic/distinct_colors.mjs" as Distinct
import "color_vision.mjs" as Vision

// The theme, the page on which a person chooses it, and the window.
DocumentCase {
    id: test

    readonly property Component tabs: TopBarTab {
        text: "Results"
        iconName: "chart"
    }
    readonly property Component chips: StatusChip {}
    // What the next start of the program finds.
    readonly property Component nextStart: AppearanceStore {}

    readonly property Component windows: Main {
        availableGeometry: Qt.rect(0, 0, 2000, 1200)
    }

    // The control of this accessible name.
    function find(name: string): var {
        return all(page, item => item.Accessible.name === name
                                 && item.Accessible.role !== Accessible.StaticText)[0];
    }

    function stored(): var {
        const store = make(nextStart);
        return [store.darkMode, store.accentHex, store.actionColors];
    }

    function verifyColor(actual: color, expected: color, what: string): void {
        verify(Qt.colorEqual(actual, expected), what + ": " + actual + ", not " + expected);
    }

    function test_accentAndWhatFollowsIt(): void {
        for (const [dark, wish, accent, muted] of [
            [true, "", "#3FB950", 1.6], [false, "#F85149", "#F85149", 1.35],
            [false, "", "#16A34A", 1.35],
            [true, " #58a6ff ", "#58A6FF", 1.6],
            // What is no colour changes nothing.
            [true, "blue", "#58A6FF", 1.6], [true, "#12345", "#58A6FF", 1.6],
            [true, "#3FB", "#58A6FF", 1.6], [true, "#8058A6FF", "#8058A6FF", 1.6]]) {
            theme.dark = dark;
            page.applyAccentHex(wish);
            verifyColor(theme.accent, accent, "accent");
            // Red and blue are the colours of other suits.
            verifyColor(theme.suitClubs, wish === "" ? accent : dark ? "#3FB950" : "#16A34A", "clubs");
            verifyColor(theme.success, dark ? "#3FB950" : "#16A34A", "what has gone well");
            verifyColor(theme.accentHover, Qt.lighter(accent, 1.12), "hover");
            verifyColor(theme.accentMuted, Qt.darker(accent, muted), "muted");
            verifyColor(theme.actionColor("check"), dark ? "#3FB950" : "#16A34A", "stays green");
        }
    }

    // A change is seen at once, but gone with the program unless it is saved.
    function test_storing(): void {
        page.resetToDefaults();
        const toggle = find("Dark Mode");
        const gold = find("Gold");
        const reset = find("Reset");
        verify(!reset.enabled);
        mouseClick(gold);
        compare([String(theme.accent), gold.isCurrent, find("Red").isCurrent],
                ["#f0b429", true, false]);
        mouseClick(reset);
        verify(!theme.useAccentOverride && find("Green").isCurrent);
        gold.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        mouseClick(toggle);
        compare([theme.dark, gold.isCurrent, stored()], [false, true, [true, "", "standard"]]);
        mouseClick(find("Distinct"));
        mouseClick(find("Save Settings"));
        compare(stored(), [false, "#f0b429", "distinct"]);
        mouseClick(find("Reset to Defaults"));
        compare([theme.dark, theme.useAccentOverride, theme.distinctActions, toggle.checked, stored()],
                [true, false, false, true, [true, "", "standard"]]);
    }

    function test_colorsByName(): void {
        for (const [find, names, color] of [
            ["suitColor", ["s", "Spades"], "suitSpades"], ["suitColor", ["H"], "suitHearts"],
            ["suitColor", ["DIAMONDS"], "suitDiamonds"], ["suitColor", ["", null, "x"], "text"],
            ["actionColor", ["fold"], "actionFold"], ["actionColor", ["bet"], "actionBet"],
            ["actionColor", ["CALL"], "actionCall"], ["actionColor", ["raise"], "actionRaise"],
            ["actionColor", ["allin", "All-In", "all_in"], "actionAllIn"],
            ["actionColor", [null, undefined, "", "straddle", 7, "bet50%", "check bet 50%"],
             "textMuted"]]) {
            names.forEach(name => verifyColor(theme[find](name), theme[color], name));
        }
    }

    // The expected values are worked out by hand from hue, saturation and lightness.
    function test_actionColorBySize(): void {
        for (const [action, dark, hue, saturation, lightness] of [
            ["bet 0%", true, 0.72, 0.70, 0.62], ["Bet 50%", true, 0.75, 0.70, 0.645],
            ["bet 200%", true, 0.84, 0.70, 0.72], ["bet 300%", true, 0.84, 0.70, 0.72],
            ["bet 100%", false, 0.78, 0.70, 0.47], ["raise 0%", true, 0.07, 0.78, 0.60],
            ["RAISE  100.0 %", true, 0.09, 0.78, 0.66], ["raise 200%", false, 0.11, 0.78, 0.56],
            ["bet 100% (all-in)", true, 0.78, 0.70, 0.67]]) {
            theme.dark = dark;
            const color = theme.actionColor(action);
            fuzzyCompare(color.hslHue, hue, 0.003, action);
            fuzzyCompare(color.hslSaturation, saturation, 0.006, action);
            fuzzyCompare(color.hslLightness, lightness, 0.003, action);
        }
    }

    // The pairs are of the test data of Sharma, Wu and Dalal.
    function test_colorDifference(): void {
        for (const [one, other, expected] of [
            [[50, 2.6772, -79.7751], [50, 0, -82.7485], 2.0425], [[50, -1, 2], [50, 0, 0], 2.3669],
            [[50, 2.49, -0.001], [50, -2.49, 0.0011], 7.2195], [[50, 2.5, 0], [73, 25, -18], 27.1492],
            [[2.0776, 0.0795, -1.135], [0.9033, -0.0636, -0.5514], 0.9082]]) {
            const [first, second] = [one, other].map(([l, a, b]) => ({l: l, a: a, b: b}));
            fuzzyCompare(Colors.labDifference(first, second), expected, 1e-4);
        }
    }

    // Any two actions of a node differ by 15 at least, to any eye.
    function test_distinctActions(): void {
        const sizes = (kind, count) =>
            Array.from({length: count}, (_, i) => `${kind} ${[25, 33, 50, 130, 300][i]}%`);
        const nodes = [];
        for (let bets = 0; bets <= Distinct.MOST_BETS; ++bets) {
            nodes.push(["check", ...sizes("bet", bets), "allin"]);
        }
        for (let raises = 0; raises <= Distinct.MOST_RAISES; ++raises) {
            nodes.push(["fold", "call", ...sizes("raise", raises), "allin"]);
        }
        theme.distinctActions = true;
        for (const dark of [true, false]) {
            theme.dark = dark;
            for (const node of nodes) {
                theme.actionsAtNode = node;
                let least = Infinity;
                for (const eye of Vision.eyes) {
                    const seen = node.map(type => Vision.seenBy(eye, theme.actionColor(type)));
                    seen.forEach((one, i) => seen.slice(i + 1).forEach(other => {
                        least = Math.min(least, Colors.difference(one, other));
                    }));
                }
                verify(least >= 15, `${node}: ${least}, dark ${dark}`);
            }
        }
        theme.distinctActions = false;
        theme.actionsAtNode = [];
    }

    function test_legible(): void {
        for (const [first, second, contrast] of [
            ["black", "white", 21], ["white", "white", 1], ["#767676", "white", 4.54]]) {
            fuzzyCompare(theme.contrast(first, second), contrast, 0.005);
        }
        verifyColor(theme.legible("#123456", "white"), "#123456", "a wish that can be granted");
        page.applyAccentHex("");
        for (const dark of [true, false]) {
            theme.dark = dark;
            const bar = dark ? theme.bg0 : theme.bg1;
            const inkOf = (component, properties) =>
                all(make(component, Object.assign({theme: theme}, properties)),
                    item => item instanceof Text)[0].color;
            const tab = properties => inkOf(tabs, properties);
            for (const [what, color, ground] of [
                ["tab", tab({}), bar], ["closed tab", tab({obstacle: "not yet"}), bar],
                ["current tab", tab({current: true}), theme.mixed(bar, theme.accent, 0.12)],
                ["ready", inkOf(chips, {canSolve: true}), theme.mixed(bar, theme.success, 0.15)],
                ["place holder", theme.placeholder, theme.surface2],
                // Whatever a theme may hold.
                ["grey", theme.legible("#808080", "#777777"), "#777777"],
                ["gold", theme.legible(theme.gold, theme.surface2), theme.surface2]]) {
                verify(theme.contrast(color, ground) >= 4.5,
                       `${what}: ${color} on ${ground}, ${dark ? "dark" : "light"}`);
            }
        }
    }

    // A list of wishes is no family: a font that took it whole would not be monospaced.
    function test_familiesAreSingleAndFitting(): void {
        verify(theme.uiFamily !== "" && !theme.uiFamily.includes(","));
        metrics.font.family = theme.monoFamily;
        compare(metrics.advanceWidth("iiii"), metrics.advanceWidth("WWWW"));
    }

    // Pages that come and go, and one that is seen for the first time, change nothing about it.
    function test_leastWidthOfTheWindow(): void {
        const window = make(windows);
        const shell = Array.from(window.contentItem.children).find(item => item instanceof AppShell);
        shell.newProject();
        for (const index of [0, 1, 4, 1, 0]) {
            shell.navIndex = index;
            wait(50);
            compare([window.minimumWidth, shell.navIndex], [1540, index]);
        }
        verify(shell.projectRecommendedWidth > 1000, "as the page was last seen");
    }

    name: "Appearance"
    width: 1000
    height: 1100

    Theme {
        id: theme
    }
    FontMetrics {
        id: metrics
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
