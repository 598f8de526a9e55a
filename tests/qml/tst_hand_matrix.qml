import QtQuick
import Tidewell

import "../../qml/logic/range_editor.mjs" as RangeEditorText
import "../../qml/logic/range_text.mjs" as RangeText

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
        onStrokeStarted: test.events.push("(")
        onStrokeEnded: test.events.push(")")
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
    readonly property Component editorComponent: RangeEditor {
        label: "OOP Range"
        onRangeChanged: newRange => rangeText = newRange
        onStrokeStarted: test.events.push("(")
        onStrokeEnded: test.events.push(rangeText + ")")
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
        const [first, last] = [path[0], path[path.length - 1]].map(hand => place(matrix, hand));
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
            compare([matrix.effectiveCellSize, matrix.implicitWidth, matrix.implicitHeight],
                    [cell, implicitWidth, implicitHeight]);
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
            {tag: "painting to and fro", properties: painting, path: ["AA", "AQs", "AA", "AQs"],
             events: "(,AA on 0,AQs on 0,)"},
            {tag: "leaping along a row and down a column", properties: painting,
             path: ["AA", "ATs", "QTs"],
             events: "(,AA on 0,AQs on 0,ATs on 0,KTs on 0,QTs on 0,)"},
            {tag: "painting over a gap", properties: painting, path: ["AA", "AA>", "AA", "AA>"],
             events: "(,AA on 0,)"},
            {tag: "painting from a gap", properties: painting, path: ["AA>", "AKs", "AA"],
             events: ""},
            {tag: "painting wins", path: ["AA", "KK"],
             properties: {editable: true, selectable: true, dragSelectable: true},
             events: "(,AA on 0,KK on 0,)"},
            {tag: "a click", properties: choosing, path: ["AKs"], events: "clicked AKs 0.5"},
            {tag: "a press that goes elsewhere", properties: choosing, path: ["AKs", "AQs"],
             events: ""},
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
        mouseMove(test, 599, 599);
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
             "KQs", "(,painted AA on 0,),(,painted KK on 0,),(,painted KQs off 0.5,)"],
            [{selectable: true, weights: {A2s: 0.5}},
             [Qt.Key_End, Qt.Key_Space, Qt.Key_Left, Qt.Key_Up, Qt.Key_Home, Qt.Key_Return],
             "AA", "clicked A2s 0.5,clicked AA 0"],
            [{selectable: true, dragSelectable: true},
             [Qt.Key_Left, Qt.Key_Down, Qt.Key_Space], "AKo", "clicked AKo 0"],
            [{}, [Qt.Key_Down, Qt.Key_Space], "AA", ""]]) {
            const matrix = shown(properties);
            events = [];
            matrix.forceActiveFocus();
            keys(pressed);
            compare([matrix.currentHand, events.join()], [hand, expected]);
        }
    }

    function test_tabReachesWhatCanBeUsed(): void {
        const idle = shown({});
        const matrix = shown({selectable: true, weights: {AA: 0.5}});
        make(focusComponent).forceActiveFocus();
        keyClick(Qt.Key_Tab);
        verify(matrix.activeFocus && !idle.activeFocus);

        // The ring lies in the gap around the current hand and is for users of the keyboard.
        const ring = () => grabImage(matrix).pixel(33, 10);
        compareColors(ring(), matrix.theme.strokeFocus, "ring");
        stroke(matrix, ["KK"], Qt.LeftButton);
        mouseMove(test, 599, 599);
        compare([matrix.currentHand, matrix.activeFocus], ["KK", true]);
        compareColors(ring(), beneath.color, "no ring after a click");
        keys([Qt.Key_Up, Qt.Key_Left]);
        compareColors(ring(), matrix.theme.strokeFocus, "ring again");

        keyClick(Qt.Key_C, Qt.ControlModifier);
        const paper = make(textComponent);
        paper.paste();
        verify(paper.text.startsWith("AA 0.5\tAKs\tAQs\t"));
    }

    function test_tellsTheCurrentHand(): void {
        for (const [properties, name] of [
            [{weights: {AA: 0.255}}, "Starting hands: AA, 26%"],
            [{title: "OOP Range"}, "OOP Range: AA, 0%"],
            [{weights: {AA: 1}, actionTypes: ["check", "bet 33%", "none"],
              actionProbs: {AA: [0.25, 0.75, 0]}},
             "Starting hands: AA, 100%, Check: 25%, Bet 33%: 75%, none: 0%"]]) {
            const grid = shown(properties).children[0];
            compare([grid.Accessible.role, grid.Accessible.name], [Accessible.Table, name]);
        }
    }

    // Pixels of the first cells without their labels, over the background of the kind of hand.
    function test_colors(): void {
        const split = {actionTypes: ["fold", "bet 50%"], actionProbs: {AA: [0.25, 0.75]},
                       weights: {AA: 1}};
        for (const [dark, properties, x, y, base, fill] of [
            [false, {}, 5, 5, "surface3"], [true, {}, 39, 5, "surface2"],
            [false, {}, 5, 39, "surface"], [true, {}, 0, 5, "strokeLight"],
            [false, {weights: {AA: 0.5}}, 5, 5, "surface3", theme => Qt.alpha(theme.accent, 0.8)],
            [true, {weights: {AA: 0.5}, weightDisplayMode: "verticalFill"}, 27, 27, "surface3",
             theme => Qt.alpha(theme.accent, 0.8)],
            [false, {weights: {AA: 1}, colors: {AA: "#102030"}}, 5, 5, "surface3",
             () => "#102030"],
            [true, split, 27, 5, "surface3", theme => Qt.alpha(theme.actionColor("bet 50%"), 0.85)],
            [false, split, 27, 5, "surface3", theme => Qt.alpha(theme.actionColor("bet 50%"), 0.85)],
            [true, {selectedHand: "AA"}, 1, 5, "text"]]) {
            changing.dark = !dark;
            const matrix = shown(Object.assign({theme: changing, showLabels: false}, properties));
            changing.dark = dark;
            compareColors(grabImage(matrix).pixel(x, y),
                          Qt.tint(changing[base], fill ? fill(changing) : "transparent"), base);
        }
    }

    function test_editorWeights(): void {
        for (const [text, weights] of [
            [" ", {}],
            ["AA, aks QJO,72", {AA: 1, AKs: 1, QJo: 1, "72s": 1, "72o": 1}],
            ["qq+", {AA: 1, KK: 1, QQ: 1}],
            ["AA:0.5 KK:2, QQ:-1, JJ:x", {AA: 0.5, KK: 2, QQ: -1, JJ: NaN}],
            ["AK:0.5, AKs", {AKs: 1, AKo: 0.5}],
            // Forms that it does not know.
            ["A8s+, 99-22, A, AhKh", {}]]) {
            compare(RangeEditorText.parseWeights(text), weights, text);
        }
        for (const [text, hand, on, painted] of [
            ["", "T9s", true, "T9s"],
            ["22, AKo, 77", "AA", true, "AA, AKo, 77, 22"],
            ["QQ+:0.5, AK", "KK", false, "AA, AKs, AKo, QQ"],
            ["AA:0, KK:-1, QQ", "JJ", true, "QQ, JJ"],
            ["AA", "AA", false, ""]]) {
            compare(RangeEditorText.paintedText(text, hand, on), painted);
        }
    }

    function test_editorsPartsFollowEachOther(): void {
        const editor = make(editorComponent);
        const matrix = all(editor, item => item instanceof HandMatrix)[0];
        const field = all(editor, item => item instanceof AppTextField)[0];
        const label = text => all(editor, item => item instanceof Text && item.text === text)[0];
        for (const [button, text, count] of [["50%", "50%", "169 hands"], ["Clear", "", "0 hands"]]) {
            mouseClick(label(button));
            compare([editor.rangeText, field.text], [text, text]);
            verify(label(count), count);
        }
        editor.rangeText = "KK";
        verify(label("1 hand"));
        stroke(matrix, ["AA", "AQs"], Qt.LeftButton);
        compare([field.text, events], ["AA, AKs, AQs, KK", ["(", "AA, AKs, AQs, KK)"]]);
        mouseClick(field);
        keys([Qt.Key_End, Qt.Key_Comma, Qt.Key_Q, Qt.Key_Q]);
        compare(matrix.weights, {AA: 1, AKs: 1, AQs: 1, KK: 1, QQ: 1});
        editor.rangeText = "50%";
        mouseClick(matrix, 15, 15);
        compare(editor.rangeText.split(", ").length, 168);
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
