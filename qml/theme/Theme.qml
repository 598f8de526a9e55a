import QtQuick
import "../logic/action_list.mjs" as ActionList
import "../logic/color_difference.mjs" as Colors
import "../logic/distinct_colors.mjs" as Distinct

// Every colour, radius, distance and duration of the program. The shell creates one and hands it to
// all that is drawn; components that are handed none use Fallback.theme.
QtObject {
    id: theme

    property bool dark: true
    property bool useAccentOverride: false
    property color accentOverride: "#3FB950"
    // Actions in colours that differ for all eyes, spaced over those of a node, instead of a fixed colour
    // for each size.
    property bool distinctActions: false
    // The type words of the node that is looked at, for the distinct colours.
    property var actionsAtNode: []

    // Backgrounds, from the window outwards, and the surfaces of panels and controls on them.
    readonly property color bg0: dark ? "#080B12" : "#F4F6F9"
    readonly property color bg1: dark ? "#0D1117" : "#FFFFFF"
    readonly property color bg2: dark ? "#161B22" : "#F8FAFC"
    readonly property color surface: dark ? "#1C2128" : "#FFFFFF"
    readonly property color surface2: dark ? "#21262D" : "#F1F5F9"
    readonly property color surface3: dark ? "#2D333B" : "#E2E8F0"
    readonly property color surfaceHover: dark ? "#30363D" : "#E8ECF2"

    readonly property color stroke: dark ? "#30363D" : "#D1D9E0"
    readonly property color strokeLight: dark ? "#21262D" : "#E5E9EF"
    readonly property color strokeFocus: dark ? "#58A6FF" : "#2563EB"

    readonly property color text: dark ? "#F0F6FC" : "#1F2937"
    readonly property color textMuted: dark ? "#8B949E" : "#6B7280"
    readonly property color textFaint: dark ? "#6E7681" : "#9CA3AF"
    readonly property color textInverse: dark ? "#0D1117" : "#FFFFFF"
    // Of a field in which nothing stands.
    readonly property color placeholder: legible(textFaint, surface2)
    // Lies under figures on any action's colour.
    readonly property color plate: Qt.rgba(0, 0, 0, 0.55)
    readonly property color plateText: "#FFFFFF"

    readonly property color _defaultAccent: dark ? "#3FB950" : "#16A34A"
    readonly property color accent: useAccentOverride ? accentOverride : _defaultAccent
    readonly property color accentHover: lighten(accent, 0.12)
    readonly property color accentMuted: darken(accent, dark ? 0.6 : 0.35)

    readonly property color actionFold: dark ? "#E06C75" : "#B91C1C"
    // Stays felt green whatever accent the user likes.
    readonly property color actionCheck: _defaultAccent
    readonly property color actionCall: dark ? "#58A6FF" : "#2563EB"
    readonly property color actionBet: dark ? "#A371F7" : "#7C3AED"
    readonly property color actionRaise: dark ? "#F0883E" : "#EA580C"
    readonly property color actionAllIn: dark ? "#FF7B72" : "#EF4444"

    readonly property color gold: dark ? "#F0B429" : "#D97706"
    readonly property color goldMuted: dark ? "#9E6A03" : "#92400E"
    readonly property color info: dark ? "#58A6FF" : "#2563EB"
    readonly property color infoMuted: dark ? "#1F6FEB" : "#1D4ED8"
    // What colours say of a state does not change with the accent.
    readonly property color success: _defaultAccent
    readonly property color warn: dark ? "#F0883E" : "#D97706"
    readonly property color danger: dark ? "#F85149" : "#DC2626"

    // Card faces are light in both themes, so spades are dark in both.
    readonly property color suitSpades: "#1F2937"
    readonly property color suitHearts: dark ? "#F85149" : "#DC2626"
    readonly property color suitDiamonds: dark ? "#58A6FF" : "#2563EB"
    // The accent, unless it could be taken for another suit.
    readonly property color suitClubs: {
        const others = [suitSpades, suitHearts, suitDiamonds];
        const isOwn = others.every(suit => Colors.difference(accent, suit) >= _leastSuitDifference);
        return isOwn ? accent : _defaultAccent;
    }
    readonly property color cardFace: "#FFFEF5"
    readonly property color cardBack: dark ? "#1C4B82" : "#1E3A5F"
    readonly property color cardBorder: dark ? "#30363D" : "#D1D9E0"

    readonly property color heatCold: dark ? "#1F6FEB" : "#3B82F6"
    readonly property color heatWarm: dark ? "#F0883E" : "#F59E0B"
    readonly property color heatHot: dark ? "#F85149" : "#EF4444"

    // Pixels.
    readonly property int radiusXs: 4
    readonly property int radiusSm: 8
    readonly property int radiusMd: 12
    readonly property int radiusLg: 16
    readonly property int radiusXl: 20
    readonly property int radiusFull: 9999
    readonly property int spaceXs: 4
    readonly property int spaceSm: 8
    readonly property int spaceMd: 12
    readonly property int spaceLg: 16
    readonly property int spaceXl: 24
    readonly property int space2Xl: 32

    readonly property real shadowOpacity: dark ? 0.5 : 0.15

    // Milliseconds.
    readonly property int durationFast: 100
    readonly property int durationNormal: 200
    readonly property int durationSlow: 300

    // What we would like, best first. A font takes one family: uiFamily and monoFamily.
    readonly property string fontFamily: "Segoe UI, system-ui, -apple-system, sans-serif"
    readonly property string fontMono: "JetBrains Mono, Cascadia Code, Consolas, monospace"
    readonly property string uiFamily: _installedFamily(fontFamily, _system.font.family)
    readonly property string monoFamily: _installedFamily(fontMono, "monospace")

    readonly property FontMetrics _system: FontMetrics {}
    readonly property real _leastContrast: 4.5  // WCAG 2, level AA
    readonly property real _leastSuitDifference: 26  // CIEDE2000

    function suitColor(suit: var): color {
        switch (String(suit).toLowerCase()) {
        case "s":
        case "spades":
            return suitSpades;
        case "h":
        case "hearts":
            return suitHearts;
        case "d":
        case "diamonds":
            return suitDiamonds;
        case "c":
        case "clubs":
            return suitClubs;
        default:
            return text;
        }
    }

    // Takes an action's type word or name ("check", "Bet 33%"). The same size of bet or raise has
    // the same colour wherever it is drawn; with distinct colours, wherever the same node is.
    function actionColor(action: var): color {
        return distinctActions ? actionColorAmong(action, actionsAtNode) : _plainActionColor(action);
    }

    // At a node with these type words, which need not be the one that is looked at.
    function actionColorAmong(action: var, actions: var): color {
        const found = distinctActions ? Distinct.distinctColor(action, actions, dark) : null;
        return found ? Qt.rgba(found.r, found.g, found.b, 1) : _plainActionColor(action);
    }

    // How bars show each of these type words, which are those of one node: maps of `color`, `hatch`, the
    // colour of its stripes, and whether it is `sized`.
    function actionLooks(actions: var): var {
        return actions.map(action => {
            const color = actionColorAmong(action, actions);
            return {color: color, hatch: ActionList.isAllIn(action) ? hatchOn(color) : "transparent",
                    sized: ActionList.isSized(action)};
        });
    }

    // For the stripes of an all-in.
    function hatchOn(ground: color): color {
        return Qt.alpha(inkOn(ground), 0.4);
    }

    function _plainActionColor(action: var): color {
        if (action === null || action === undefined) {
            return textMuted;
        }
        const word = String(action).toLowerCase();
        const sized = word.match(/^(bet|raise)\s+(\d+(?:\.\d+)?)\s*%/);
        if (sized) {
            return _sizedActionColor(sized[1], Number(sized[2]));
        }
        switch (word) {
        case "fold":
            return actionFold;
        case "check":
            return actionCheck;
        case "call":
            return actionCall;
        case "bet":
            return actionBet;
        case "raise":
            return actionRaise;
        case "allin":
        case "all-in":
        case "all_in":
            return actionAllIn;
        default:
            return textMuted;
        }
    }

    function withOpacity(base: color, alpha: real): color {
        return Qt.alpha(base, alpha);
    }

    function lighten(base: color, amount: real): color {
        return Qt.lighter(base, 1 + amount);
    }

    function darken(base: color, amount: real): color {
        return Qt.darker(base, 1 + amount);
    }

    // Opaque; `share` of it is the tint.
    function mixed(base: color, tint: color, share: real): color {
        return Qt.tint(Qt.alpha(base, 1), Qt.alpha(tint, share));
    }

    // By WCAG 2: 1 for equal colours, 21 for black on white. Both are opaque.
    function contrast(first: color, second: color): real {
        const one = _luminance(first);
        const other = _luminance(second);
        return (Math.max(one, other) + 0.05) / (Math.min(one, other) + 0.05);
    }

    // Black or white, whichever is read better there.
    function inkOn(background: color): color {
        return contrast("black", background) >= contrast("white", background) ? "black" : "white";
    }

    // A colour for text on a background: the wished one, moved no further towards black or white than
    // it takes to be read.
    function legible(wish: color, background: color): color {
        const ink = inkOn(background);
        let color = wish;
        for (let step = 1; step <= 20 && contrast(color, background) < _leastContrast; ++step) {
            color = mixed(wish, ink, step / 20);
        }
        return color;
    }

    function _luminance(tint: color): real {
        const linear = part => part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
        const color = Qt.alpha(tint, 1);  // a name of a colour, too
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    }

    // Bets run from purple to pink, raises from orange to amber, with the size in percent of the
    // pot; from twice the pot on all look alike.
    function _sizedActionColor(kind: string, percent: real): color {
        const t = Math.min(percent / 200, 1);
        if (kind === "bet") {
            return Qt.hsla(0.72 + 0.12 * t, 0.70, (dark ? 0.62 : 0.42) + 0.10 * t, 1);
        }
        return Qt.hsla(0.07 + 0.04 * t, 0.78, (dark ? 0.60 : 0.44) + 0.12 * t, 1);
    }

    function _installedFamily(wishes: string, otherwise: string): string {
        const installed = Qt.fontFamilies();
        const found = wishes.split(",").map(name => name.trim())
            .find(name => installed.includes(name));
        return found ?? otherwise;
    }
}
