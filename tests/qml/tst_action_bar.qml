import QtQuick
import Tidewell

DocumentCase {
    id: test

    readonly property var mixed: [
        {name: "Check", actionType: "check", frequency: 0.5, combos: 12, equity: 0.4567, ev: 3.456},
        {name: "Bet 33%", actionType: "bet 33%", frequency: 0.25, combos: 1.25, equity: NaN,
         ev: -0.5},
        {name: "Bet 75%", frequency: 0.25}
    ]

    function init(): void {
        failOnWarning(/.?/);
        bar.showLabels = false;
        bar.actions = mixed;
    }

    // Waits until the canvas has painted: its picture comes a frame after what it follows from.
    function verifyColorAt(x: real, expected: color): void {
        const isNear = difference => Math.abs(difference) < 0.01;
        tryVerify(() => {
            const pixel = grabImage(bar).pixel(x, 12);
            return isNear(pixel.r - expected.r) && isNear(pixel.g - expected.g)
                && isNear(pixel.b - expected.b);
        }, 5000, "pixel at " + x + " is " + expected);
    }

    function test_labels(): void {
        bar.showLabels = true;
        const figure = (value, digits) => value.toLocaleString(Qt.locale(), "f", digits);
        compare(texts(bar), [
            "Check", "50%", "12 combos", figure(45.7, 1) + "% equity", figure(3.46, 2) + " EV",
            "Bet 33%", "25%", figure(1.3, 1) + " combos", "—", figure(-0.5, 2) + " EV",
            "Bet 75%", "25%", "—", "—", "—"]);
        compare(bar.Accessible.name, "Check 50%, Bet 33% 25%, Bet 75% 25%");
        const height = bar.implicitHeight;
        bar.width = 340;
        tryVerify(() => bar.implicitHeight > height, 5000, "more lines where they are needed");
        bar.width = 400;
    }

    // A size has its own colour, by its type or its name.
    function test_colors(): void {
        for (const dark of [true, false, true]) {
            bar.theme.dark = dark;
            verifyColorAt(30, bar.theme.actionColor("check"));
            verifyColorAt(220, bar.theme.actionColor("bet 33%"));
            verifyColorAt(320, bar.theme.actionColor("bet 75%"));
        }
    }

    function test_pointing(): void {
        const hovers = spyOn(bar, "actionHovered");
        mouseMove(bar, 100, 12);
        mouseMove(bar, 150, 12);
        mouseMove(bar, 390, 12);
        compare(firstArguments(hovers), [0, 2], "once for each segment that is entered");
        compare([hovers.signalArguments[1][1], hovers.signalArguments[1][2]], ["Bet 75%", 0.25]);
    }

    function test_pressing(): void {
        const clicks = spyOn(bar, "actionClicked");
        bar.interactive = false;
        mouseClick(bar, 250, 12);
        compare(clicks.count, 0);
        bar.interactive = true;
        mouseClick(bar, 250, 12);
        compare([clicks.signalArguments[0][0], clicks.signalArguments[0][1]], [1, "Bet 33%"]);
        bar.actions = [...mixed];
        bar.forceActiveFocus();
        keys([Qt.Key_Left, Qt.Key_Right, Qt.Key_Right, Qt.Key_Right, Qt.Key_Return, Qt.Key_Left,
              Qt.Key_Space]);
        compare(firstArguments(clicks), [1, 2, 1]);
    }

    name: "ActionBar"
    width: 420
    height: 200

    ActionBar {
        id: bar

        width: 400
        height: 60
        theme: Theme {}
    }
}
