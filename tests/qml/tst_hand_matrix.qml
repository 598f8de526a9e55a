import QtQuick
import Tidewell

import "../../qml/logic/range_text.mjs" as RangeText

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
    }
    readonly property Component flickableComponent: Flickable {
        readonly property alias matrix: strokes

        width: 600
        height: 300
        contentHeight: 900

        HandMatrix {
            id: strokes

            editable: true
            onHandPainted: hand => test.events.push(hand)
        }
    }
    readonly property Component focusComponent: Item { activeFocusOnTab: true }
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
        const index = RangeText.allHands().indexOf(hand.replace(">", ""));
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
        const first = place(matrix, path[0]);
        const last = place(matrix, path[path.length - 1]);
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
        const fitting = width => ({autoFitToWidth: true, width: width});
        for (const [properties, cell, implicitWidth, implicitHeight] of [
            [{}, 32, 440, 440],
            [{cellSize: 30, cellSpacing: 0, width: 900}, 30, 390, 390],
            [fitting(560), 41, 440, 557], [fitting(557), 41, 440, 557],
            [fitting(100), 28, 440, 388], [fitting(2000), 64, 440, 856],
            [Object.assign({maxCellSize: 40}, fitting(2000)), 40, 440, 544]]) {
            const matrix = make(matrixComponent, properties);
            compare([matrix.effectiveCellSize, matrix.effectiveMatrixSize],
                    [cell, 13 * cell + 12 * matrix.cellSpacing]);
            compare([matrix.implicitWidth, matrix.implicitHeight],
                    [implicitWidth, implicitHeight]);
        }
    }

    function test_gestures_data(): var {
        const painting = {editable: true, weights: {AKs: 0.5, AJs: 1}};
        const choosing = {selectable: true, weights: {AKs: 0.5}};
        const dragging = {selectable: true, dragSelectable: true, weights: {AKs: 0.5}};
        return [
            {tag: "painting over empty and filled hands", properties: painting,
             path: ["AA", "AKs", "AQs", "KQs"],
             events: ["painted AA on 0", "painted AQs on 0", "painted KQs on 0"]},
            {tag: "clearing", properties: painting, path: ["AKs", "AQs", "AJs"],
             events: ["painted AKs off 0.5", "painted AJs off 1"]},
            {tag: "painting to and fro", properties: painting, path: ["AA", "AQs", "AA", "AQs"],
             events: ["painted AA on 0", "painted AQs on 0"]},
            {tag: "painting over a gap", properties: painting,
             path: ["AA", "AA>", "AA", "A2o>"], events: ["painted AA on 0"]},
            {tag: "painting from a gap", properties: painting, path: ["AA>", "AKs", "AA"],
             events: []},
            {tag: "painting wins", path: ["AA", "KK"],
             properties: {editable: true, selectable: true, dragSelectable: true},
             events: ["painted AA on 0", "painted KK on 0"]},
            {tag: "a click", properties: choosing, path: ["AKs"], events: ["clicked AKs 0.5"]},
            {tag: "a press that goes elsewhere", properties: choosing, path: ["AKs", "AQs"],
             events: []},
            {tag: "a click on a gap", properties: choosing, path: ["AKs>"], events: []},
            {tag: "a drag", properties: dragging, path: ["AA", "AA>", "AKs", "AA", "AA"],
             events: ["dragged AA 0", "dragged AKs 0.5", "dragged AA 0"]},
            {tag: "a drag of one hand", properties: dragging, path: ["AKs"],
             events: ["dragged AKs 0.5"]},
            {tag: "only for looking at", path: ["AA", "KK"], events: ["beneath"],
             properties: {dragSelectable: true}}
        ];
    }

    function test_gestures(row: var): void {
        const matrix = shown(row.properties);
        stroke(matrix, row.path, Qt.LeftButton);
        compare(events, row.events);
        move(matrix, "22");
        compare(events, row.events, "nothing is left of the gesture");
    }

    function test_hovering(): void {
        const matrix = shown({weights: {AKs: 0.5}});
        matrix.handHovered.connect((hand, weight) => events.push(hand + " " + weight));
        for (const hand of ["AA", "AA", "AA>", "AKs", "KK"]) {
            move(matrix, hand);
        }
        compare(matrix.hoveredHand, "KK");
        mouseMove(test, 599, 599);
        compare(matrix.hoveredHand, "");
        compare(events, ["AA 0", " 0", "AKs 0.5", "KK 0", " 0"]);
    }

    function test_keepsItsStrokeFromAFlickable(): void {
        const flickable = make(flickableComponent);
        waitForRendering(flickable.matrix);
        const path = ["AA", "AKo", "AQo", "AJo", "ATo", "A9o", "A8o"];
        stroke(flickable.matrix, path, Qt.RightButton);
        compare(events, []);
        stroke(flickable.matrix, path, Qt.LeftButton);
        compare([events, flickable.contentY], [path, 0]);
    }

    function test_keys(): void {
        for (const [properties, pressed, hand, expected] of [
            [{editable: true, weights: {KQs: 0.5}},
             [Qt.Key_Space, Qt.Key_Down, Qt.Key_Right, Qt.Key_Return, Qt.Key_Right, Qt.Key_Enter],
             "KQs", ["painted AA on 0", "painted KK on 0", "painted KQs off 0.5"]],
            [{selectable: true, weights: {A2s: 0.5}},
             [Qt.Key_End, Qt.Key_Space, Qt.Key_Left, Qt.Key_Up, Qt.Key_Home, Qt.Key_Return],
             "AA", ["clicked A2s 0.5", "clicked AA 0"]],
            [{selectable: true, dragSelectable: true},
             [Qt.Key_Left, Qt.Key_Down, Qt.Key_Space], "AKo", ["clicked AKo 0"]],
            [{}, [Qt.Key_Down, Qt.Key_Space], "AA", []]]) {
            const matrix = shown(properties);
            events = [];
            matrix.forceActiveFocus();
            keys(pressed);
            compare([matrix.currentHand, events], [hand, expected]);
        }
    }

    function test_tabReachesWhatCanBeUsed(): void {
        const idle = shown({});
        const matrix = shown({selectable: true, theme: light});
        const before = make(focusComponent);
        before.forceActiveFocus();
        keyClick(Qt.Key_Tab);
        verify(matrix.activeFocus);
        verify(!idle.activeFocus);

        // The ring lies in the gap around the current hand and is for users of the keyboard.
        const ring = () => grabImage(matrix).pixel(33, 10);
        compareColors(ring(), light.strokeFocus, "ring");
        stroke(matrix, ["KK"], Qt.LeftButton);
        mouseMove(test, 599, 599);
        compare(matrix.currentHand, "KK");
        verify(matrix.activeFocus);
        compareColors(ring(), beneath.color, "no ring after a click");
        keys([Qt.Key_Up, Qt.Key_Left]);
        compareColors(ring(), light.strokeFocus, "ring again");
    }

    function test_copiesItselfAsText(): void {
        const matrix = shown({weights: {AA: 0.5}});
        matrix.forceActiveFocus();
        keyClick(Qt.Key_C, Qt.ControlModifier);
        const paper = make(textComponent);
        paper.paste();
        compare(paper.text.split("\n").length, 14);
        compare(paper.text.split("\t").slice(0, 3), ["AA 0.5", "AKs", "AQs"]);
    }

    function test_tellsTheCurrentHand(): void {
        for (const [properties, name] of [
            [{weights: {AA: 0.255}}, "Starting hands: AA, 26%"],
            [{title: "OOP Range"}, "OOP Range: AA, 0%"],
            [{weights: {AA: 1}, actionTypes: ["check", "bet 33%"],
              actionProbs: {AA: [0.25, 0.75]}},
             "Starting hands: AA, 100%, Check: 25%, Bet 33%: 75%"]]) {
            const grid = shown(properties).children[0];
            compare([grid.Accessible.role, grid.Accessible.name], [Accessible.Table, name]);
        }
    }

    // Pixels of the first cells without their labels, over the background of the kind of hand.
    function test_colors_data(): var {
        const split = {actionTypes: ["fold", "bet 50%"], actionProbs: {AA: [0.25, 0.75]},
                       weights: {AA: 1}};
        const half = {weights: {AA: 0.5}};
        const accent = light.withOpacity(light.accent, 0.8);
        const bet = light.withOpacity(light.actionColor("bet 50%"), 0.85);
        return [
            {tag: "pair", properties: {}, at: [5, 5], base: light.surface3},
            {tag: "suited", properties: {}, at: [39, 5], base: light.surface2},
            {tag: "offsuit", properties: {}, at: [5, 39], base: light.surface},
            {tag: "border", properties: {}, at: [0, 5], base: light.strokeLight},
            {tag: "accent", properties: half, at: [5, 5], base: light.surface3, fill: accent},
            {tag: "from the bottom", at: [27, 27], base: light.surface3, fill: accent,
             properties: Object.assign({weightDisplayMode: "verticalFill"}, half)},
            {tag: "own colour", properties: {weights: {AA: 1}, colors: {AA: "#102030"}},
             at: [5, 5], base: light.surface3, fill: "#102030"},
            {tag: "second action", properties: split, at: [27, 5], base: light.surface3,
             fill: bet},
            {tag: "chosen", properties: {selectedHand: "AA"}, at: [1, 5], base: light.text}
        ];
    }

    function test_colors(row: var): void {
        const matrix = shown(Object.assign({theme: light, showLabels: false}, row.properties));
        compareColors(grabImage(matrix).pixel(row.at[0], row.at[1]),
                      Qt.tint(row.base, row.fill ?? "transparent"), row.tag);
    }

    function test_followsItsTheme(): void {
        const matrix = shown({theme: changing, weights: {AA: 1}, actionTypes: ["raise 50%"],
                              actionProbs: {AA: [1]}, showLabels: false});
        const pixel = () => grabImage(matrix).pixel(5, 5);
        for (const dark of [true, false]) {
            changing.dark = dark;
            const fill = changing.withOpacity(changing.actionColor("raise 50%"), 0.85);
            compareColors(pixel(), Qt.tint(changing.surface3, fill), dark ? "dark" : "light");
        }
    }

    name: "HandMatrix"
    width: 600
    height: 600

    Theme {
        id: light

        dark: false
    }
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
