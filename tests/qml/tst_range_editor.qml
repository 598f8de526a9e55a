import QtQuick
import QtTest
import Tidewell
import "../../qml/logic/range_editor.mjs" as RangeEditorText

Item {
    id: stage

    width: 600
    height: 600

    Component {
        id: editorComponent

        RangeEditor {
            label: "OOP Range"
            onRangeChanged: newRange => rangeText = newRange
        }
    }

    TestCase {
        id: test

        function init(): void {
            failOnWarning(/.?/);
        }

        // The first item below one that has a property of a value.
        function find(item: Item, property: string, value: var): var {
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                const found = child[property] === value ? child : find(child, property, value);
                if (found) {
                    return found;
                }
            }
            return null;
        }

        function test_weights_data(): var {
            return [
                {tag: "empty", text: " ", weights: {}},
                {tag: "hands", text: "AA, aks QJO,72",
                 weights: {AA: 1, AKs: 1, QJo: 1, "72s": 1, "72o": 1}},
                {tag: "climbing pairs", text: "qq+", weights: {AA: 1, KK: 1, QQ: 1}},
                {tag: "weights as written", text: "AA:0.5 KK:2, QQ:-1",
                 weights: {AA: 0.5, KK: 2, QQ: -1}},
                {tag: "no number", text: "AA:x", weights: {AA: NaN}},
                {tag: "the last one counts", text: "AK:0.5, AKs", weights: {AKs: 1, AKo: 0.5}},
                {tag: "forms it does not know", text: "A8s+, 99-22, A, AhKh", weights: {}}
            ];
        }

        function test_weights(data: var): void {
            compare(RangeEditorText.parseWeights(data.text), data.weights);
        }

        function test_percent(): void {
            const weights = RangeEditorText.parseWeights("25 %");
            compare(Object.keys(weights).length, 169);
            compare(weights["72o"], 0.25);
            compare(RangeEditorText.countHands(weights), 169);
            compare(RangeEditorText.countHands(RangeEditorText.parseWeights("0%")), 0);
        }

        function test_painting_data(): var {
            return [
                {tag: "first", text: "", hand: "T9s", on: true, result: "T9s"},
                {tag: "in the order of the grid", text: "22, AKo, 77", hand: "AA", on: true,
                 result: "AA, AKo, 77, 22"},
                {tag: "flat", text: "QQ+:0.5, AK", hand: "KK", on: false,
                 result: "AA, AKs, AKo, QQ"},
                {tag: "what is off goes", text: "AA:0, KK:-1, QQ", hand: "JJ", on: true,
                 result: "QQ, JJ"},
                {tag: "last one", text: "AA", hand: "AA", on: false, result: ""}
            ];
        }

        function test_painting(data: var): void {
            compare(RangeEditorText.paintedText(data.text, data.hand, data.on), data.result);
        }

        function test_quickButtons_data(): var {
            return [
                {tag: "100%", count: "169 hands"},
                {tag: "50%", count: "169 hands"},
                {tag: "25%", count: "169 hands"},
                {tag: "Clear", text: "", count: "0 hands"}
            ];
        }

        function test_quickButtons(data: var): void {
            const editor = createTemporaryObject(editorComponent, stage, {rangeText: "AA, AK"});
            verify(find(editor, "text", "3 hands"));
            mouseClick(find(editor, "text", data.tag));
            compare(editor.rangeText, data.text ?? data.tag);
            verify(find(editor, "text", data.count));
            compare(find(editor, "mono", true).text, editor.rangeText);
        }

        function test_gridAndTextFollowEachOther(): void {
            const editor = createTemporaryObject(editorComponent, stage, {rangeText: "KK"});
            const matrix = find(editor, "cellSize", 30);
            const field = find(editor, "mono", true);
            mouseClick(matrix, 15, 15);
            compare(editor.rangeText, "AA, KK");
            compare(field.text, "AA, KK");

            mouseClick(field);
            keyClick(Qt.Key_End);
            for (const key of [Qt.Key_Comma, Qt.Key_Q, Qt.Key_Q]) {
                keyClick(key);
            }
            compare(editor.rangeText.toUpperCase(), "AA, KK,QQ");
            compare(matrix.weights, {AA: 1, KK: 1, QQ: 1});

            editor.rangeText = "50%";
            compare(field.text, "50%");
            mouseClick(matrix, 15, 15);
            compare(editor.rangeText.split(", ").length, 168);
        }

        name: "RangeEditor"
        when: windowShown
    }
}
