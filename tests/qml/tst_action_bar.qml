import QtQuick
import QtTest
import Tidewell

TestCase {
    id: test

    readonly property var mixed: [
        {name: "Check", actionType: "check", frequency: 0.5, combos: 12, equity: 0.4567, ev: 3.456},
        {name: "Bet 33%", actionType: "bet 33%", frequency: 0.25, combos: 1.25, equity: NaN,
         ev: -0.5},
        {name: "Bet 75%", frequency: 0.25}
    ]

    function init(): void {
        failOnWarning(/.?/);
        bar.actions = [];
        bar.showLabels = true;
        bar.focus = false;
        bar.interactive = false;
        bar.width = 400;
        bar.height = 60;
        clicks.clear();
        hovers.clear();
    }

    // Of the labels, from left to right.
    function shownTexts(item: Item): var {
        let texts = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            const own = child instanceof Text ? [(child as Text).text] : [];
            texts = texts.concat(own, shownTexts(child));
        }
        return texts;
    }

    // Waits until the canvas has painted: its picture comes a frame after what it follows from.
    function verifyColorAt(x: real, y: real, expected: color): void {
        const channel = difference => Math.abs(difference) < 0.01;
        tryVerify(() => {
            const pixel = grabImage(bar).pixel(x, y);
            return channel(pixel.r - expected.r) && channel(pixel.g - expected.g)
                && channel(pixel.b - expected.b);
        }, 5000, "pixel at " + x + ", " + y + " is " + expected);
    }

    function test_labels(): void {
        bar.actions = mixed;
        const locale = Qt.locale();
        compare(shownTexts(bar), [
            "Check", "50%", "12 combos", (45.7).toLocaleString(locale, "f", 1) + "% equity",
            (3.46).toLocaleString(locale, "f", 2) + " EV",
            "Bet 33%", "25%", (1.3).toLocaleString(locale, "f", 1) + " combos", "—",
            (-0.5).toLocaleString(locale, "f", 2) + " EV",
            "Bet 75%", "25%", "—", "—", "—"]);
        compare(bar.Accessible.name, "Check 50%, Bet 33% 25%, Bet 75% 25%");
    }

    function test_labels_withoutFrequencies(): void {
        bar.actions = [{name: "Check", actionType: "check", frequency: 0},
                       {name: "Fold", actionType: "fold", frequency: NaN}];
        compare(shownTexts(bar).filter(text => text.endsWith("%")), ["0%", "0%"]);
        verifyColorAt(200, 15, bar.theme.surface2);
    }

    function test_height(): void {
        bar.showLabels = false;
        compare(bar.implicitHeight, 24);
        compare(shownTexts(bar), []);
        bar.showLabels = true;
        bar.actions = [mixed[0]];
        compare(bar.implicitHeight, 40);
        bar.width = 340;
        bar.actions = mixed;
        tryVerify(() => bar.implicitHeight > 40, 5000, "labels that need more lines get them");
    }

    // A size has its own colour, by its type or its name.
    function test_colors(): void {
        bar.showLabels = false;
        bar.height = 24;
        bar.actions = mixed;
        verifyColorAt(30, 12, bar.theme.actionColor("check"));
        verifyColorAt(220, 12, bar.theme.actionColor("bet 33%"));
        verifyColorAt(320, 12, bar.theme.actionColor("bet 75%"));
        bar.theme.dark = false;
        verifyColorAt(220, 12, bar.theme.actionColor("bet 33%"));
        bar.theme.dark = true;
    }

    function test_hover(): void {
        bar.showLabels = false;
        bar.actions = mixed;
        mouseMove(bar, 100, 12);
        compare(hovers.signalArguments[hovers.count - 1][0], 0);
        mouseMove(bar, 150, 12);
        const count = hovers.count;
        mouseMove(bar, 390, 12);
        compare(hovers.count, count + 1, "once for each segment that is entered");
        compare(hovers.signalArguments[count][0], 2);
        compare(hovers.signalArguments[count][1], "Bet 75%");
        compare(hovers.signalArguments[count][2], 0.25);
    }

    function test_hover_beyondTheEnd(): void {
        bar.actions = [{name: "Check", frequency: 0}, {name: "Fold", frequency: 0}];
        mouseMove(bar, 5, 5);
        compare(hovers.signalArguments[hovers.count - 1][1], "Fold");
    }

    function test_clicks(): void {
        bar.actions = mixed;
        mouseClick(bar, 250, 12);
        compare(clicks.count, 0);
        bar.interactive = true;
        mouseClick(bar, 250, 12);
        compare(clicks.count, 1);
        compare(clicks.signalArguments[0][0], 1);
        compare(clicks.signalArguments[0][1], "Bet 33%");
    }

    function test_keys(): void {
        bar.actions = mixed;
        bar.interactive = true;
        bar.forceActiveFocus();
        for (const key of [Qt.Key_Left, Qt.Key_Right, Qt.Key_Right, Qt.Key_Right, Qt.Key_Return]) {
            keyClick(key);
        }
        keyClick(Qt.Key_Left);
        keyClick(Qt.Key_Space);
        compare(clicks.count, 2);
        compare(clicks.signalArguments[0][1], "Bet 75%");
        compare(clicks.signalArguments[1][1], "Bet 33%");
    }

    name: "ActionBar"
    when: windowShown
    visible: true
    width: 420
    height: 200

    ActionBar {
        id: bar

        theme: Theme {}
    }
    SignalSpy {
        id: clicks

        target: bar
        signalName: "actionClicked"
    }
    SignalSpy {
        id: hovers

        target: bar
        signalName: "actionHovered"
    }
}
