import QtQuick
import QtTest
import Tidewell

TestCase {
    id: test

    property Theme theme: null

    name: "Theme"

    function init(): void {
        failOnWarning(/.?/);
        theme = createTemporaryObject(themeComponent, test);
    }

    function verifyColor(actual: color, expected: color, what: string): void {
        verify(Qt.colorEqual(actual, expected), what + ": " + actual + ", not " + expected);
    }

    function test_paletteOfBothThemes_data(): var {
        return [
            {tag: "bg0", dark: "#080B12", light: "#F4F6F9"},
            {tag: "bg1", dark: "#0D1117", light: "#FFFFFF"},
            {tag: "bg2", dark: "#161B22", light: "#F8FAFC"},
            {tag: "surface", dark: "#1C2128", light: "#FFFFFF"},
            {tag: "surface2", dark: "#21262D", light: "#F1F5F9"},
            {tag: "surface3", dark: "#2D333B", light: "#E2E8F0"},
            {tag: "surfaceHover", dark: "#30363D", light: "#E8ECF2"},
            {tag: "stroke", dark: "#30363D", light: "#D1D9E0"},
            {tag: "strokeLight", dark: "#21262D", light: "#E5E9EF"},
            {tag: "strokeFocus", dark: "#58A6FF", light: "#2563EB"},
            {tag: "text", dark: "#F0F6FC", light: "#1F2937"},
            {tag: "textMuted", dark: "#8B949E", light: "#6B7280"},
            {tag: "textFaint", dark: "#6E7681", light: "#9CA3AF"},
            {tag: "textInverse", dark: "#0D1117", light: "#FFFFFF"},
            {tag: "actionFold", dark: "#E06C75", light: "#B91C1C"},
            {tag: "actionCheck", dark: "#3FB950", light: "#16A34A"},
            {tag: "actionCall", dark: "#58A6FF", light: "#2563EB"},
            {tag: "actionBet", dark: "#A371F7", light: "#7C3AED"},
            {tag: "actionRaise", dark: "#F0883E", light: "#EA580C"},
            {tag: "actionAllIn", dark: "#FF7B72", light: "#EF4444"},
            {tag: "gold", dark: "#F0B429", light: "#D97706"},
            {tag: "goldMuted", dark: "#9E6A03", light: "#92400E"},
            {tag: "info", dark: "#58A6FF", light: "#2563EB"},
            {tag: "infoMuted", dark: "#1F6FEB", light: "#1D4ED8"},
            {tag: "warn", dark: "#F0883E", light: "#D97706"},
            {tag: "danger", dark: "#F85149", light: "#DC2626"},
            {tag: "suitSpades", dark: "#1F2937", light: "#1F2937"},
            {tag: "suitHearts", dark: "#F85149", light: "#DC2626"},
            {tag: "suitDiamonds", dark: "#58A6FF", light: "#2563EB"},
            {tag: "cardFace", dark: "#FFFEF5", light: "#FFFEF5"},
            {tag: "cardBack", dark: "#1C4B82", light: "#1E3A5F"},
            {tag: "cardBorder", dark: "#30363D", light: "#D1D9E0"},
            {tag: "heatCold", dark: "#1F6FEB", light: "#3B82F6"},
            {tag: "heatWarm", dark: "#F0883E", light: "#F59E0B"},
            {tag: "heatHot", dark: "#F85149", light: "#EF4444"}
        ];
    }

    function test_paletteOfBothThemes(row): void {
        verifyColor(theme[row.tag], row.dark, "dark");
        theme.dark = false;
        verifyColor(theme[row.tag], row.light, "light");
    }

    function test_accentAndWhatFollowsIt_data(): var {
        return [
            {tag: "dark", dark: true, override: "", accent: "#3FB950", muted: 1.6},
            {tag: "light", dark: false, override: "", accent: "#16A34A", muted: 1.35},
            {tag: "dark red", dark: true, override: "#F85149", accent: "#F85149", muted: 1.6},
            {tag: "light red", dark: false, override: "#F85149", accent: "#F85149", muted: 1.35}
        ];
    }

    function test_accentAndWhatFollowsIt(row): void {
        theme.dark = row.dark;
        if (row.override !== "") {
            theme.accentOverride = row.override;
            verifyColor(theme.accent, theme._defaultAccent, "before the override is on");
            theme.useAccentOverride = true;
        }
        verifyColor(theme.accent, row.accent, "accent");
        verifyColor(theme.success, row.accent, "success");
        verifyColor(theme.suitClubs, row.accent, "clubs");
        verifyColor(theme.accentHover, Qt.lighter(row.accent, 1.12), "hover");
        verifyColor(theme.accentMuted, Qt.darker(row.accent, row.muted), "muted");
        verifyColor(theme.actionColor("check"), row.dark ? "#3FB950" : "#16A34A", "check");
        theme.useAccentOverride = false;
        verifyColor(theme.accent, theme._defaultAccent, "after the override is off");
    }

    function test_suitColor_data(): var {
        return [
            {tag: "s", suit: "s", name: "suitSpades"},
            {tag: "Spades", suit: "Spades", name: "suitSpades"},
            {tag: "H", suit: "H", name: "suitHearts"},
            {tag: "hearts", suit: "hearts", name: "suitHearts"},
            {tag: "d", suit: "d", name: "suitDiamonds"},
            {tag: "DIAMONDS", suit: "DIAMONDS", name: "suitDiamonds"},
            {tag: "c", suit: "c", name: "suitClubs"},
            {tag: "clubs", suit: "clubs", name: "suitClubs"},
            {tag: "empty", suit: "", name: "text"},
            {tag: "none", suit: null, name: "text"},
            {tag: "undefined", suit: undefined, name: "text"},
            {tag: "other", suit: "x", name: "text"}
        ];
    }

    function test_suitColor(row): void {
        verifyColor(theme.suitColor(row.suit), theme[row.name], row.tag);
    }

    function test_actionColorByName_data(): var {
        return [
            {tag: "fold", action: "fold", name: "actionFold"},
            {tag: "Check", action: "Check", name: "actionCheck"},
            {tag: "CALL", action: "CALL", name: "actionCall"},
            {tag: "bet", action: "bet", name: "actionBet"},
            {tag: "raise", action: "raise", name: "actionRaise"},
            {tag: "allin", action: "allin", name: "actionAllIn"},
            {tag: "All-In", action: "All-In", name: "actionAllIn"},
            {tag: "all_in", action: "all_in", name: "actionAllIn"},
            {tag: "null", action: null, name: "textMuted"},
            {tag: "undefined", action: undefined, name: "textMuted"},
            {tag: "empty", action: "", name: "textMuted"},
            {tag: "unknown", action: "straddle", name: "textMuted"},
            {tag: "chance", action: "chance", name: "textMuted"},
            {tag: "number", action: 7, name: "textMuted"},
            {tag: "a size without its sign", action: "bet 50", name: "textMuted"},
            {tag: "no blank before the size", action: "bet50%", name: "textMuted"},
            {tag: "in the middle", action: "check bet 50%", name: "textMuted"}
        ];
    }

    function test_actionColorByName(row): void {
        for (const dark of [true, false]) {
            theme.dark = dark;
            verifyColor(theme.actionColor(row.action), theme[row.name], row.tag);
        }
    }

    // The expected values are worked out by hand from hue, saturation and lightness.
    function test_actionColorBySize_data(): var {
        return [
            {tag: "bet 0%", dark: true, action: "bet 0%", hsl: [0.72, 0.70, 0.62]},
            {tag: "Bet 50%", dark: true, action: "Bet 50%", hsl: [0.75, 0.70, 0.645]},
            {tag: "bet 200%", dark: true, action: "bet 200%", hsl: [0.84, 0.70, 0.72]},
            {tag: "bet 300%", dark: true, action: "bet 300%", hsl: [0.84, 0.70, 0.72]},
            {tag: "light bet 100%", dark: false, action: "bet 100%", hsl: [0.78, 0.70, 0.47]},
            {tag: "raise 0%", dark: true, action: "raise 0%", hsl: [0.07, 0.78, 0.60]},
            {tag: "RAISE 100.0 %", dark: true, action: "RAISE 100.0 %", hsl: [0.09, 0.78, 0.66]},
            {tag: "light raise 200%", dark: false, action: "raise 200%", hsl: [0.11, 0.78, 0.56]},
            {tag: "with a tail", dark: true, action: "bet 100% (all-in)", hsl: [0.78, 0.70, 0.67]}
        ];
    }

    function test_actionColorBySize(row): void {
        theme.dark = row.dark;
        const color = theme.actionColor(row.action);
        fuzzyCompare(color.hslHue, row.hsl[0], 0.003, "hue");
        fuzzyCompare(color.hslSaturation, row.hsl[1], 0.006, "saturation");
        fuzzyCompare(color.hslLightness, row.hsl[2], 0.003, "lightness");
        compare(color.a, 1);
    }

    function test_equalSizesLookEqual(): void {
        verifyColor(theme.actionColor("Bet 33%"), theme.actionColor("bet  33 %"), "blanks");
        verifyColor(theme.actionColor("bet 33%"), theme.actionColor("bet 33.0%"), "fraction");
        verify(!Qt.colorEqual(theme.actionColor("bet 33%"), theme.actionColor("bet 66%")));
        verify(!Qt.colorEqual(theme.actionColor("bet 33%"), theme.actionColor("raise 33%")));
    }

    function test_opacityAndShade(): void {
        const faint = theme.withOpacity("#3FB950", 0.25);
        verifyColor(Qt.rgba(faint.r, faint.g, faint.b, 1), "#3FB950", "colour");
        fuzzyCompare(faint.a, 0.25, 0.001);
        verifyColor(theme.withOpacity("#80FF0000", 1), "#FF0000", "an alpha of its own");
        verifyColor(theme.lighten("#204060", 0.5), Qt.lighter("#204060", 1.5), "lighter");
        verifyColor(theme.darken("#204060", 0.5), Qt.darker("#204060", 1.5), "darker");
        verifyColor(theme.lighten("#204060", 0), "#204060", "unchanged");
    }

    function test_shadowFollowsTheTheme(): void {
        fuzzyCompare(theme.shadowOpacity, 0.5, 1e-6);
        theme.dark = false;
        fuzzyCompare(theme.shadowOpacity, 0.15, 1e-6);
    }

    // A list of wishes is no family: a font that took it whole would not be monospaced.
    function test_familiesAreSingleAndFitting(): void {
        verify(!theme.uiFamily.includes(","));
        verify(theme.uiFamily !== "");
        narrow.font.family = theme.monoFamily;
        wide.font.family = theme.monoFamily;
        compare(narrow.advanceWidth, wide.advanceWidth);
    }

    Component {
        id: themeComponent

        Theme {}
    }
    TextMetrics {
        id: narrow

        text: "iiii"
    }
    TextMetrics {
        id: wide

        text: "WWWW"
    }
}
