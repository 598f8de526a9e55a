import QtQuick
import QtTest
import Tidewell

TestCase {
    id: test

    readonly property Component themeComponent: Theme {}

    property Theme theme: null

    name: "Theme"

    function init(): void {
        failOnWarning(/.?/);
        theme = createTemporaryObject(themeComponent, test);
    }

    function verifyColor(actual: color, expected: color, what: string): void {
        verify(Qt.colorEqual(actual, expected), what + ": " + actual + ", not " + expected);
    }

    function test_accentAndWhatFollowsIt(): void {
        for (const [dark, green, muted] of [[true, "#3FB950", 1.6], [false, "#16A34A", 1.35]]) {
            theme.dark = dark;
            for (const accent of [green, "#F85149"]) {
                theme.accentOverride = accent;
                verifyColor(theme.accent, green, "before the override is on");
                theme.useAccentOverride = true;
                for (const follower of ["accent", "success", "suitClubs"]) {
                    verifyColor(theme[follower], accent, follower);
                }
                verifyColor(theme.accentHover, Qt.lighter(accent, 1.12), "hover");
                verifyColor(theme.accentMuted, Qt.darker(accent, muted), "muted");
                verifyColor(theme.actionColor("check"), green, "check stays green");
                theme.useAccentOverride = false;
                verifyColor(theme.accent, green, "after the override is off");
            }
        }
        verifyColor(theme.withOpacity("#80FF0000", 1), "#FF0000", "an alpha of its own");
    }

    function test_suitColor(): void {
        for (const [suits, name] of [
            [["s", "Spades"], "suitSpades"], [["H", "hearts"], "suitHearts"],
            [["d", "DIAMONDS"], "suitDiamonds"], [["c", "clubs"], "suitClubs"],
            [["", null, undefined, "x"], "text"]]) {
            suits.forEach(suit => verifyColor(theme.suitColor(suit), theme[name], suit));
        }
    }

    function test_actionColorByName(): void {
        for (const [actions, name] of [
            [["fold"], "actionFold"], [["Check"], "actionCheck"], [["CALL"], "actionCall"],
            [["bet"], "actionBet"], [["raise"], "actionRaise"],
            [["allin", "All-In", "all_in"], "actionAllIn"],
            [[null, undefined, "", "straddle", "chance", 7, "bet 50", "bet50%", "check bet 50%"],
             "textMuted"]]) {
            actions.forEach(action => verifyColor(theme.actionColor(action), theme[name], action));
        }
    }

    // The expected values are worked out by hand from hue, saturation and lightness.
    function test_actionColorBySize_data(): var {
        return [
            {tag: "bet 0%", dark: true, hsl: [0.72, 0.70, 0.62]},
            {tag: "Bet 50%", dark: true, hsl: [0.75, 0.70, 0.645]},
            {tag: "bet 200%", dark: true, hsl: [0.84, 0.70, 0.72]},
            {tag: "bet 300%", dark: true, hsl: [0.84, 0.70, 0.72]},
            {tag: "bet 100%", dark: false, hsl: [0.78, 0.70, 0.47]},
            {tag: "raise 0%", dark: true, hsl: [0.07, 0.78, 0.60]},
            {tag: "RAISE  100.0 %", dark: true, hsl: [0.09, 0.78, 0.66]},
            {tag: "raise 200%", dark: false, hsl: [0.11, 0.78, 0.56]},
            {tag: "bet 100% (all-in)", dark: true, hsl: [0.78, 0.70, 0.67]}
        ];
    }

    function test_actionColorBySize(row: var): void {
        theme.dark = row.dark;
        const color = theme.actionColor(row.tag);
        fuzzyCompare(color.hslHue, row.hsl[0], 0.003, "hue");
        fuzzyCompare(color.hslSaturation, row.hsl[1], 0.006, "saturation");
        fuzzyCompare(color.hslLightness, row.hsl[2], 0.003, "lightness");
        compare(color.a, 1);
    }

    // A list of wishes is no family: a font that took it whole would not be monospaced.
    function test_familiesAreSingleAndFitting(): void {
        verify(theme.uiFamily !== "" && !theme.uiFamily.includes(","));
        metrics.font.family = theme.monoFamily;
        compare(metrics.advanceWidth("iiii"), metrics.advanceWidth("WWWW"));
    }

    FontMetrics {
        id: metrics
    }
}
