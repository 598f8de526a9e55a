import QtQuick
import QtTest
import Tidewell
import "../../qml/logic/range_text.mjs" as RangeText

Item {
    id: stage

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

    Component {
        id: matrixComponent

        HandMatrix {
            id: matrix

            onHandClicked: (hand, weight) => test.events.push("clicked " + hand + " " + weight)
            onHandDragged: (hand, weight) => test.events.push("dragged " + hand + " " + weight)
            onHandPainted: (hand, on, weight) => {
                test.events.push("painted " + hand + (on ? " on " : " off ") + weight);
                matrix.weights = Object.assign({}, matrix.weights, {[hand]: on ? 1 : 0});
            }
        }
    }
    Component {
        id: flickableComponent

        Flickable {
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
    }
    Component {
        id: focusComponent

        Item { activeFocusOnTab: true }
    }
    Component {
        id: textComponent

        TextEdit {}
    }

    TestCase {
        id: test

        property var events: []

        function init(): void {
            failOnWarning(/.?/);
            events = [];
            mouseMove(stage, 599, 599);
        }

        // A matrix whose owner does what its signals ask for.
        function shown(properties: var): HandMatrix {
            const matrix = createTemporaryObject(matrixComponent, stage, properties);
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

        function press(matrix: HandMatrix, hand: string, button: int): void {
            const at = place(matrix, hand);
            mousePress(matrix, at.x, at.y, button);
        }

        function move(matrix: HandMatrix, hand: string): void {
            const at = place(matrix, hand);
            mouseMove(matrix, at.x, at.y);
        }

        function release(matrix: HandMatrix, hand: string, button: int): void {
            const at = place(matrix, hand);
            mouseRelease(matrix, at.x, at.y, button);
        }

        function compareColors(actual: color, expected: color, message: string): void {
            for (const channel of ["r", "g", "b"]) {
                fuzzyCompare(actual[channel], expected[channel], 0.012, message + " " + actual);
            }
        }

        function test_size_data(): var {
            return [
                {tag: "plain", properties: {}, cell: 32, implicitWidth: 440, implicitHeight: 440},
                {tag: "of a size", properties: {cellSize: 30, cellSpacing: 0, width: 900}, cell: 30,
                 implicitWidth: 390, implicitHeight: 390},
                {tag: "fitting", properties: {autoFitToWidth: true, width: 560}, cell: 41,
                 implicitWidth: 440, implicitHeight: 557},
                {tag: "fitting exactly", properties: {autoFitToWidth: true, width: 557}, cell: 41,
                 implicitWidth: 440, implicitHeight: 557},
                {tag: "narrow", properties: {autoFitToWidth: true, width: 100}, cell: 28,
                 implicitWidth: 440, implicitHeight: 388},
                {tag: "wide", properties: {autoFitToWidth: true, width: 2000}, cell: 64,
                 implicitWidth: 440, implicitHeight: 856},
                {tag: "own limits", cell: 40, implicitWidth: 440, implicitHeight: 544,
                 properties: {autoFitToWidth: true, width: 2000, maxCellSize: 40}}
            ];
        }

        function test_size(data: var): void {
            const matrix = createTemporaryObject(matrixComponent, stage, data.properties);
            compare(matrix.effectiveCellSize, data.cell);
            compare(matrix.effectiveMatrixSize, 13 * data.cell + 12 * matrix.cellSpacing);
            compare(matrix.implicitWidth, data.implicitWidth);
            compare(matrix.implicitHeight, data.implicitHeight);
        }

        // Presses on the first place, moves over the others and releases on the last one.
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
                {tag: "painting one hand of a selectable matrix", path: ["AA"],
                 events: ["painted AA on 0"], properties: {editable: true, selectable: true}},
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

        function test_gestures(data: var): void {
            const matrix = shown(data.properties);
            press(matrix, data.path[0], Qt.LeftButton);
            for (const hand of data.path.slice(1)) {
                move(matrix, hand);
            }
            release(matrix, data.path[data.path.length - 1], Qt.LeftButton);
            compare(events, data.events);

            // Nothing is left of the gesture.
            move(matrix, "22");
            compare(events, data.events);
        }

        function test_takesTheLeftButtonOnly(): void {
            const matrix = shown({editable: true});
            press(matrix, "AA", Qt.RightButton);
            move(matrix, "KK");
            release(matrix, "KK", Qt.RightButton);
            compare(events, []);
        }

        function test_hovering(): void {
            const matrix = shown({weights: {AKs: 0.5}});
            matrix.handHovered.connect((hand, weight) => events.push(hand + " " + weight));
            for (const hand of ["AA", "AA", "AA>", "AKs", "KK"]) {
                move(matrix, hand);
            }
            compare(matrix.hoveredHand, "KK");
            mouseMove(stage, 599, 599);
            compare(matrix.hoveredHand, "");
            compare(events, ["AA 0", " 0", "AKs 0.5", "KK 0", " 0"]);
        }

        function test_keepsItsStrokeFromAFlickable(): void {
            const flickable = createTemporaryObject(flickableComponent, stage);
            const matrix = flickable.matrix;
            waitForRendering(matrix);
            press(matrix, "AA", Qt.LeftButton);
            for (const hand of ["AKo", "AQo", "AJo", "ATo", "A9o", "A8o"]) {
                move(matrix, hand);
            }
            release(matrix, "A8o", Qt.LeftButton);
            compare(events.length, 7);
            compare(flickable.contentY, 0);
        }

        function test_keys_data(): var {
            return [
                {tag: "painting", properties: {editable: true, weights: {KQs: 0.5}},
                 keys: [Qt.Key_Space, Qt.Key_Down, Qt.Key_Right, Qt.Key_Return, Qt.Key_Right,
                        Qt.Key_Enter],
                 hand: "KQs",
                 events: ["painted AA on 0", "painted KK on 0", "painted KQs off 0.5"]},
                {tag: "choosing", properties: {selectable: true, weights: {A2s: 0.5}},
                 keys: [Qt.Key_End, Qt.Key_Space, Qt.Key_Left, Qt.Key_Up, Qt.Key_Home,
                        Qt.Key_Return],
                 hand: "AA", events: ["clicked A2s 0.5", "clicked AA 0"]},
                {tag: "choosing where drags choose too", hand: "AKo",
                 properties: {selectable: true, dragSelectable: true},
                 keys: [Qt.Key_Left, Qt.Key_Down, Qt.Key_Space], events: ["clicked AKo 0"]},
                {tag: "only for looking at", properties: {}, keys: [Qt.Key_Down, Qt.Key_Space],
                 hand: "AA", events: []}
            ];
        }

        function test_keys(data: var): void {
            const matrix = shown(data.properties);
            matrix.forceActiveFocus();
            for (const key of data.keys) {
                keyClick(key);
            }
            compare(matrix.currentHand, data.hand);
            compare(events, data.events);
        }

        function test_tabReachesWhatCanBeUsed(): void {
            const idle = shown({});
            const matrix = shown({selectable: true, theme: light});
            const before = createTemporaryObject(focusComponent, stage);
            before.forceActiveFocus();
            keyClick(Qt.Key_Tab);
            verify(matrix.activeFocus);
            verify(!idle.activeFocus);

            // The ring lies in the gap around the current hand and is for users of the keyboard.
            const ring = () => grabImage(matrix).pixel(33, 10);
            compareColors(ring(), light.strokeFocus, "ring");
            press(matrix, "KK", Qt.LeftButton);
            release(matrix, "KK", Qt.LeftButton);
            mouseMove(stage, 599, 599);
            compare(matrix.currentHand, "KK");
            verify(matrix.activeFocus);
            compareColors(ring(), beneath.color, "no ring after a click");
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Left);
            compareColors(ring(), light.strokeFocus, "ring again");
        }

        function test_copiesItselfAsText(): void {
            const matrix = shown({weights: {AA: 0.5}});
            matrix.forceActiveFocus();
            keyClick(Qt.Key_C, Qt.ControlModifier);
            const paper = createTemporaryObject(textComponent, stage);
            paper.paste();
            compare(paper.text.split("\n").length, 14);
            compare(paper.text.split("\t").slice(0, 3), ["AA 0.5", "AKs", "AQs"]);
        }

        function test_tellsTheCurrentHand_data(): var {
            return [
                {tag: "weight", properties: {weights: {AA: 0.255}},
                 name: "Starting hands: AA, 26%"},
                {tag: "empty", properties: {title: "OOP Range"}, name: "OOP Range: AA, 0%"},
                {tag: "strategy", name: "Starting hands: AA, 100%, check: 25%, bet 33%: 75%",
                 properties: {weights: {AA: 1}, actionTypes: ["check", "bet 33%"],
                              actionProbs: {AA: [0.25, 0.75]}}}
            ];
        }

        function test_tellsTheCurrentHand(data: var): void {
            const grid = shown(data.properties).children[0];
            compare(grid.Accessible.role, Accessible.Table);
            compare(grid.Accessible.name, data.name);
        }

        // Pixels of cells without their labels, over the background of the kind of hand.
        function test_colors_data(): var {
            const split = {showLabels: false, weights: {AA: 1}, actionTypes: ["fold", "bet 50%"],
                           actionProbs: {AA: [0.25, 0.75]}};
            const bet = light.actionColor("bet 50%");
            return [
                {tag: "pair", properties: {showLabels: false}, at: [5, 5], base: light.surface3},
                {tag: "suited", properties: {showLabels: false}, at: [39, 5], base: light.surface2},
                {tag: "offsuit", properties: {showLabels: false}, at: [5, 39], base: light.surface},
                {tag: "border", properties: {showLabels: false}, at: [0, 5],
                 base: light.strokeLight},
                {tag: "accent", properties: {weights: {AA: 0.5}}, at: [5, 5], base: light.surface3,
                 fill: light.withOpacity(light.accent, 0.8)},
                {tag: "beside the fill", properties: {weights: {AA: 0.5}}, at: [27, 5],
                 base: light.surface3},
                {tag: "from the bottom", at: [27, 27], base: light.surface3,
                 properties: {weights: {AA: 0.5}, weightDisplayMode: "verticalFill"},
                 fill: light.withOpacity(light.accent, 0.8)},
                {tag: "own colour", properties: {weights: {AA: 1}, colors: {AA: "#102030"}},
                 at: [5, 5], base: light.surface3, fill: "#102030"},
                {tag: "first action", properties: split, at: [5, 5], base: light.surface3,
                 fill: light.withOpacity(light.actionFold, 0.85)},
                {tag: "second action", properties: split, at: [27, 5], base: light.surface3,
                 fill: light.withOpacity(bet, 0.85)},
                {tag: "chosen", properties: {showLabels: false, selectedHand: "AA"}, at: [1, 5],
                 base: light.text}
            ];
        }

        function test_colors(data: var): void {
            const matrix = shown(Object.assign({theme: light}, data.properties));
            compareColors(grabImage(matrix).pixel(data.at[0], data.at[1]),
                          Qt.tint(data.base, data.fill ?? "transparent"), data.tag);
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
        when: windowShown
    }
}
