import QtQuick
import Tidewell

// The components that show actions: the bar, and the boxes of the tree.
DocumentCase {
    id: test

    readonly property Component boxes: TreeNode {}
    readonly property var mixed: [
        {name: "Check", actionType: "check", frequency: 0.5, combos: 12, equity: 0.4567, ev: 3.456},
        {name: "Bet 33%", actionType: "bet 33%", frequency: 0.25, combos: 1.25, equity: NaN,
         ev: -0.5},
        {name: "Bet 75%", frequency: 0.25, combos: null, equity: null, ev: null}
    ]

    function init(): void {
        failOnWarning(/.?/);
        bar.showLabels = false;
        bar.actions = mixed;
    }

    // Waits until the bar has painted: its picture comes a frame after what it follows from.
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
        bar.actions = [{name: "Raise 3x", frequency: 0, combos: 0, equity: 0.5, ev: 3}];
        compare(texts(bar).slice(-3), ["0 combos", "—", "—"], "nobody takes it");
        bar.actions = [{name: "Fold", frequency: 1, combos: 1234}, {name: "Call", combos: 1}];
        compare(texts(bar).filter(text => text.includes("combo")),
                [figure(1234, 0) + " combos", "1 combo"]);
    }

    // A size has its own colour, by its type or its name.
    function test_colors(): void {
        for (const dark of [true, false, true]) {
            bar.theme.dark = dark;
            [[30, "check"], [220, "bet 33%"], [320, "bet 75%"]].forEach(
                ([x, action]) => verifyColorAt(x, bar.theme.actionColor(action)));
        }
    }

    function test_pointingAndPressing(): void {
        const hovers = spyOn(bar, "actionHovered");
        const clicks = spyOn(bar, "actionClicked");
        Array.of(100, 150, 390).forEach(x => mouseMove(bar, x, 12));
        compare(firstArguments(hovers), [0, 2], "once for each segment that is entered");
        for (const interactive of [false, true]) {
            bar.interactive = interactive;
            mouseClick(bar, 250, 12);
        }
        bar.actions = [...mixed];
        bar.forceActiveFocus();
        keys([Qt.Key_Left, Qt.Key_Right, Qt.Key_Right, Qt.Key_Right, Qt.Key_Return, Qt.Key_Left,
              Qt.Key_Space]);
        compare(firstArguments(clicks), [1, 2, 1]);
    }

    function test_boxes(): void {
        const figure = (value, digits) => value.toLocaleString(Qt.locale(), "f", digits);
        for (const [properties, expected] of [
            [{player: "IP", action: "Call", actionType: "call", pot: 12.6, frequency: 0.456},
             ["Call", "IP", "Pot: " + figure(12.6, 2), "Freq: 46%"]],
            [{player: "OOP", action: "Bet 75%", actionType: "bet 75%", chips: 13.5, pot: 36},
             ["Bet 75% · " + figure(13.5, 2), "OOP", "Pot: 36"]],
            [{player: "IP", action: "Raise 200%", actionType: "raise 200%", chips: 36},
             ["Raise to 36", "IP"]],
            [{player: "OOP", frequency: 1.7, ev: 1.234}, ["OOP", "Freq: 100%", "EV: +1.23"]],
            [{player: "OOP", frequency: 0, ev: -1.2}, ["OOP", "Freq: 0%", "EV: -1.20"]],
            [{nodeType: "chance", player: "Deal Turn", action: "2h"}, ["2h", "Deal Turn"]],
            [{nodeType: "terminal", player: "IP", pot: 5}, ["Terminal", "Pot: 5"]],
            [{player: "IP", hasChildren: true, expanded: true}, ["−", "IP"]]]) {
            compare(texts(make(boxes, properties)), expected);
        }
        for (const [action, type, label] of [
            ["Fold", "FOLD", "Fold"], ["All-In", "allin", "All-in"], ["", "bet 40%", "Bet 40%"],
            ["", "raise", "Raise"], ["Bet 50%", "none", "Bet 50%"], ["Betting", "", "Betting"]]) {
            compare(make(boxes, {action: action, actionType: type})._displayActionLabel, label);
        }
    }

    function test_figuresAreLegible(): void {
        const types = Array.of("fold", "check", "call", "bet 1%", "bet 200%", "raise 1%",
                               "raise 200%", "allin", "none");
        const looks = types.map((type, i) =>
            ({action: "Call", actionType: type, ev: i % 2 ? 1 : -1}));
        looks.push({nodeType: "chance", action: "2h"}, {nodeType: "terminal", ev: -1});
        for (const theme of [light, dark]) {
            const compareOn = (color, ground, what) => verify(theme.contrast(color, ground) >= 4.5,
                `${what}: ${color} on ${ground}, ${theme.dark ? "dark" : "light"}`);
            for (const type of types) {
                compareOn(theme.plateText, Qt.tint(theme.actionColor(type), theme.plate), type);
            }
            for (const look of looks) {
                const box = make(boxes, Object.assign(
                    {theme: theme, player: "IP", pot: 5, frequency: 0.5}, look));
                for (const text of all(box, item => item instanceof Text)) {
                    const onChip = look.action && text.text === box._displayActionLabel;
                    compareOn(text.color, onChip ? box._chipColor : box._fill,
                              `${JSON.stringify(look)} ${text.text}`);
                }
            }
        }
    }

    function test_pressingABox(): void {
        const box = make(boxes, {player: "IP", hasChildren: true});
        const clicks = spyOn(box, "clicked");
        const folds = spyOn(box, "toggleExpand");
        mouseClick(box, 120, 24);
        compare([clicks.count, folds.count], [1, 0]);
        mouseClick(box, 20, 24);
        compare([clicks.count, folds.count], [1, 1], "the mark at the left is a button of its own");
        box.accessiblePressAction();
        box.enabled = false;
        mouseClick(box, 120, 24);
        compare(clicks.count, 2);
    }

    name: "Actions"
    width: 420
    height: 200

    ActionBar {
        id: bar

        y: 100
        width: 400
        height: 60
        theme: Theme {}
    }
    Theme {
        id: light

        dark: false
    }
    Theme {
        id: dark
    }
}
