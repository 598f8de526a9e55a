import QtQuick
import Tidewell

import "../../qml/logic/hand_labels.mjs" as Labels

// The grid of hands, and the editor made of one.
DocumentCase {
    id: test

    // Its owner does what its signals ask for.
    readonly property Component matrixComponent: HandMatrix {
        id: matrix

        onHandClicked: (hand, weight) => test.events.push("clicked " + hand + " " + weight)
        onHandDragged: (hand, weight) => test.events.push("dragged " + hand + " " + weight)
        onHandPainted: (hand, on, weight) => {
            test.events.push("painted " + hand + (on ? " on " : " off ") + weight);
            matrix.weights = Object.assign({}, matrix.weights, {[hand]: on ? 1 : 0});
        }
        onHandWeighed: (hand, by) => test.events.push(`${hand} by ${by.toFixed(2)}`)
        onHandOpened: hand => test.events.push("opened " + hand)
        onStrokeStarted: () => test.events.push("(")
        onStrokeEnded: () => test.events.push(")")
    }
    readonly property Component editorComponent: RangeEditor {
        label: "OOP Range"
        onRangeChanged: newRange => rangeText = newRange
        onStrokeStarted: () => test.events.push("(")
        onStrokeEnded: () => test.events.push(rangeText + ")")
    }
    readonly property Component textComponent: TextEdit {}
    property var events: []

    function init(): void {
        failOnWarning(/.?/);
        events = [];
        mouseMove(test, 599, 599);
    }

    function shown(properties: var): HandMatrix {
        const matrix = make(matrixComponent, properties);
        waitForRendering(matrix);
        return matrix;
    }

    // The middle of a hand's cell, or with a ">" behind the label, of the gap to its right.
    function place(matrix: HandMatrix, hand: string): point {
        const index = Labels.allHands().indexOf(hand.replace(">", ""));
        const step = matrix.effectiveCellSize + matrix.cellSpacing;
        const half = matrix.effectiveCellSize / 2;
        const x = index % 13 * step + (hand.endsWith(">") ? 2 * half + 1 : half);
        return Qt.point(x, Math.floor(index / 13) * step + half);
    }

    function move(matrix: HandMatrix, hand: string): void {
        const at = place(matrix, hand);
        mouseMove(matrix, at.x, at.y);
    }

    // Presses on the first place, moves over the others and releases on the last one.
    function stroke(matrix: HandMatrix, path: var, button: int): void {
        const [first, last] = [place(matrix, path[0]), place(matrix, path[path.length - 1])];
        mousePress(matrix, first.x, first.y, button);
        path.slice(1).forEach(hand => move(matrix, hand));
        mouseRelease(matrix, last.x, last.y, button);
    }

    function compareColors(actual: color, expected: color, message: string): void {
        for (const channel of ["r", "g", "b"]) {
            fuzzyCompare(actual[channel], expected[channel], 0.012, message + " " + actual);
        }
    }

    function test_size(): void {
        const fitting = width => ({autoFitToWidth: true, maxCellSize: 60, width: width});
        for (const [properties, cell, implicitWidth, implicitHeight] of [
            [{cellSize: 30, cellSpacing: 0, width: 900}, 30, 390, 390],
            [fitting(557), 41, 440, 557], [fitting(100), 28, 440, 388], [fitting(999), 60, 440, 804]]) {
            const matrix = make(matrixComponent, properties);
            compare(matrix.effectiveCellSize, cell);
            compare([matrix.implicitWidth, matrix.implicitHeight], [implicitWidth, implicitHeight]);
        }
    }

    function test_gestures_data(): var {
        const painting = {editable: true, weights: {AKs: 0.5, AJs: 1}};
        const choosing = {selectable: true, weights: {AKs: 0.5}};
        const dragging = {selectable: true, dragSelectable: true, weights: {AKs: 0.5}};
        return [
            {tag: "painting over empty and filled hands", properties: painting,
             path: ["AA", "AKs", "AQs", "KQs"], events: "(,AA on 0,AQs on 0,KQs on 0,)"},
            {tag: "clearing", properties: painting, path: ["AKs", "AQs", "AJs"],
             events: "(,AKs off 0.5,AJs off 1,)"},
            {tag: "at a weight", properties: Object.assign({brush: 0.5}, painting),
             path: ["AA", "AKs", "AQs", "AJs"], events: "(,AA on 0,AQs on 0,AJs on 1,)"},
            {tag: "clearing what has the weight", path: ["AKs", "AQs", "AJs"],
             properties: Object.assign({brush: 0.5}, painting), events: "(,AKs off 0.5,AJs off 1,)"},
            {tag: "a hand in part", path: ["AJs"], events: "(,AJs on 1,)",
             properties: Object.assign({brush: 1, parts: {AJs: 2}}, painting)},
            {tag: "leaping", properties: painting, path: ["AA", "ATs", "QTs", "ATs"],
             events: "(,AA on 0,AQs on 0,ATs on 0,KTs on 0,QTs on 0,)"},
            {tag: "painting over a gap", properties: painting, path: ["AA", "AA>", "AA", "AA>"],
             events: "(,AA on 0,)"},
            {tag: "painting from a gap", properties: painting, path: ["AA>", "AKs"], events: ""},
            {tag: "painting wins", path: ["AA", "KK"], events: "(,AA on 0,KK on 0,)",
             properties: {editable: true, selectable: true, dragSelectable: true}},
            {tag: "a click", properties: choosing, path: ["AKs"], events: "clicked AKs 0.5"},
            {tag: "a press that moves on", properties: choosing, path: ["AKs", "AQs"], events: ""},
            {tag: "a drag", properties: dragging, path: ["AA", "AA>", "AQs", "AKs", "AKs"],
             events: "(,dragged AA 0,dragged AKs 0.5,dragged AQs 0,dragged AKs 0.5,)"},
            {tag: "only for looking at", path: ["AA", "KK"], events: "beneath",
             properties: {dragSelectable: true}}
        ];
    }

    function test_gestures(row: var): void {
        const matrix = shown(row.properties);
        const heard = () => events.join().replace(/painted /g, "");
        stroke(matrix, row.path, Qt.LeftButton);
        compare(heard(), row.events);
        move(matrix, "22");
        compare(heard(), row.events, "nothing is left of the gesture");
    }

    // By the wheel only where the keyboard is, by a drag with Alt, and by keys.
    function test_weighing(): void {
        const matrix = shown({editable: true, brush: 1});
        const {x, y} = place(matrix, "AKs");
        const turn = (degrees, keys) => mouseWheel(matrix, x, y, 0, degrees, Qt.NoButton, keys);
        turn(120, Qt.NoModifier);
        compare(events, []);
        matrix.forceActiveFocus();
        [60, 60, -240].forEach(degrees => turn(degrees, Qt.NoModifier));
        tryCompare(test, "events", ["(", "AKs by 0.05", "AKs by -0.10", ")"]);
        events = [];
        mousePress(matrix, x, y, Qt.LeftButton, Qt.AltModifier);
        mouseMove(matrix, x, y - 13, -1, Qt.LeftButton);
        mouseMove(matrix, x, y + 6, -1, Qt.LeftButton);
        mouseRelease(matrix, x, y);
        keys([Qt.Key_Minus, Qt.Key_Menu]);
        compare(events.join(), "(,AKs by 0.10,AKs by -0.15,),(,AKs by -0.05,),opened AKs");
    }

    // What can no longer be painted on ends the stroke.
    function test_strokeThatIsCutOff(): void {
        const matrix = shown({editable: true});
        mousePress(matrix, 5, 5);
        matrix.visible = false;
        move(matrix, "AJs");
        mouseRelease(matrix, 5, 5);
        compare(events, ["(", "painted AA on 0", ")"]);
    }

    function test_hovering(): void {
        const matrix = shown({weights: {AKs: 0.5}});
        matrix.handHovered.connect((hand, weight) => events.push(hand + " " + weight));
        ["AA", "AA", "AA>", "AKs", "KK"].forEach(hand => move(matrix, hand));
        compare(matrix.hoveredHand, "KK");
        // The hand under the pointer rises over the gap.
        tryVerify(() => Qt.colorEqual(grabImage(matrix).pixel(33, 50), matrix.theme.strokeFocus));
        mouseMove(test, 599, 599);
        tryVerify(() => Qt.colorEqual(grabImage(matrix).pixel(33, 50), beneath.color));
        compare(events, ["AA 0", " 0", "AKs 0.5", "KK 0", " 0"]);
    }

    function test_keepsItsStrokeFromAFlickable(): void {
        const flickable = createTemporaryQmlObject(
            "import QtQuick\nFlickable { width: 600; height: 300; contentHeight: 900 }", test);
        const matrix = matrixComponent.createObject(flickable.contentItem, {editable: true});
        waitForRendering(matrix);
        const path = ["AA", "AKo", "AQo", "AJo", "ATo", "A9o", "A8o"];
        stroke(matrix, path, Qt.RightButton);
        compare(events, ["opened AA"]);
        events = [];
        stroke(matrix, path, Qt.LeftButton);
        compare([events.length, flickable.contentY], [path.length + 2, 0]);
    }

    function test_keys(): void {
        const {Key_Down: down, Key_Right: right, Key_Left: left, Key_Space: space} = Qt;
        for (const [properties, pressed, hand, expected] of [
            [{editable: true, weights: {KQs: 0.5}},
             [space, down, right, Qt.Key_Return, right, Qt.Key_Enter], "KQs",
             "(,painted AA on 0,),(,painted KK on 0,),(,painted KQs off 0.5,)"],
            [{selectable: true, weights: {A2s: 0.5}},
             [Qt.Key_End, space, left, Qt.Key_Up, Qt.Key_Home, Qt.Key_Return], "AA",
             "clicked A2s 0.5,clicked AA 0"],
            [{selectable: true, dragSelectable: true}, [left, down, space], "AKo", "clicked AKo 0"],
            [{}, [down, space], "AA", ""]]) {
            const matrix = shown(properties);
            events = [];
            matrix.forceActiveFocus();
            keys(pressed);
            compare([matrix.currentHand, events.join()], [hand, expected]);
        }
    }

    // The ring lies in the gap around the current hand and is for users of the keyboard.
    function test_tabReachesWhatCanBeUsed(): void {
        const idle = shown({});
        const matrix = shown({selectable: true, weights: {AA: 0.5}});
        const ring = () => grabImage(matrix).pixel(33, 10);
        beneath.forceActiveFocus();
        keyClick(Qt.Key_Tab);
        verify(matrix.activeFocus && !idle.activeFocus);
        compareColors(ring(), matrix.theme.strokeFocus, "ring");
        stroke(matrix, ["KK"], Qt.LeftButton);
        mouseMove(test, 599, 599);
        compare([matrix.currentHand, matrix.activeFocus], ["KK", true]);
        compareColors(ring(), beneath.color, "no ring after a click");
        keyClick(Qt.Key_C, Qt.ControlModifier);
        const paper = make(textComponent);
        paper.paste();
        verify(paper.text.startsWith("AA 0.5\tAKs\tAQs\t"));
    }

    function test_tellsTheCurrentHand(): void {
        for (const [properties, name] of [
            [{weights: {AA: 0.255}}, "Starting hands: AA, 26%"],
            [{title: "OOP Range"}, "OOP Range: AA, 0%"],
            [{weights: {AA: 0.5}, parts: {AA: 3}}, "Starting hands: AA, 3 of 6 combos"],
            [{weights: {AA: 1}, actionTypes: ["check", "bet 33%", "none"],
              actionProbs: {AA: [0.25, 0.75, 0]}},
             "Starting hands: AA, 100%, Check: 25%, Bet 33%: 75%, none: 0%"]]) {
            const grid = shown(properties).children[0];
            compare([grid.Accessible.role, grid.Accessible.name], [Accessible.Table, name]);
        }
    }

    // Pixels of the first cells without their labels, over the background of the kind of hand.
    function test_colors(): void {
        const split = {weights: {AA: 1}, actionTypes: ["fold", "bet 50%"], actionProbs: {AA: [0, 1]}};
        const half = {weights: {AA: 0.5}, weightDisplayMode: "verticalFill"};
        const bet = theme => Qt.alpha(theme.actionColor("bet 50%"), 0.85);
        for (const [dark, properties, x, y, base, fill] of [
            [false, {}, 5, 5, "surface3"], [true, {}, 39, 5, "surface2"],
            [false, {}, 5, 39, "surface"], [true, {selectedHand: "AA"}, 1, 5, "text"],
            [true, half, 27, 27, "surface3", theme => Qt.alpha(theme.accent, 0.8)],
            [true, split, 27, 5, "surface3", bet], [false, split, 27, 5, "surface3", bet]]) {
            changing.dark = !dark;
            const matrix = shown(Object.assign({theme: changing, showLabels: false}, properties));
            changing.dark = dark;
            compareColors(grabImage(matrix).pixel(x, y),
                          Qt.tint(changing[base], fill ? fill(changing) : "transparent"), base);
        }
    }

    function test_editorsPartsFollowEachOther(): void {
        const editor = make(editorComponent);
        const matrix = all(editor, item => item instanceof HandMatrix)[0];
        const field = all(editor, item => item instanceof AppTextField)[0];
        const label = text => all(editor, item => item instanceof Text && item.text === text)[0];
        for (const [button, text, count] of [["50%", "50%", "169 hands"], ["Clear", "", "0 hands"]]) {
            mouseClick(label(button));
            compare([field.text, label(count) !== undefined], [text, true]);
        }
        editor.rangeText = "KK";
        verify(label("1 hand"));
        stroke(matrix, ["AA", "AQs"], Qt.LeftButton);
        compare([field.text, events], ["KK+, AQs+", ["(", "KK+, AQs+)"]]);
        mouseClick(field);
        keys([Qt.Key_End, Qt.Key_Comma, Qt.Key_Q, Qt.Key_Q]);
        compare(Object.keys(matrix.weights).sort(), ["AA", "AKs", "AQs", "KK", "QQ"]);
    }

    name: "HandMatrix"
    width: 600
    height: 600

    Theme {
        id: changing
    }
    Rectangle {
        id: beneath

        anchors.fill: parent
        color: "#808080"

        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: test.events.push("beneath")
        }
    }
}
