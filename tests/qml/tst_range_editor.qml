import QtQuick
import Tidewell

import "../../qml/logic/range_editor.mjs" as RangeEditorText

DocumentCase {
    id: test

    readonly property Component editorComponent: RangeEditor {
        label: "OOP Range"
        onRangeChanged: newRange => rangeText = newRange
    }

    function test_weights(): void {
        for (const [text, weights] of [
            [" ", {}],
            ["AA, aks QJO,72", {AA: 1, AKs: 1, QJo: 1, "72s": 1, "72o": 1}],
            ["qq+", {AA: 1, KK: 1, QQ: 1}],
            ["AA:0.5 KK:2, QQ:-1", {AA: 0.5, KK: 2, QQ: -1}],
            ["AA:x", {AA: NaN}],
            ["AK:0.5, AKs", {AKs: 1, AKo: 0.5}],
            // Forms that it does not know.
            ["A8s+, 99-22, A, AhKh", {}]]) {
            compare(RangeEditorText.parseWeights(text), weights, text);
        }
        const quarter = RangeEditorText.parseWeights("25 %");
        compare([Object.keys(quarter).length, quarter["72o"]], [169, 0.25]);
        compare(RangeEditorText.countHands(RangeEditorText.parseWeights("0%")), 0);
    }

    function test_painting(): void {
        for (const [text, hand, on, painted] of [
            ["", "T9s", true, "T9s"],
            ["22, AKo, 77", "AA", true, "AA, AKo, 77, 22"],
            ["QQ+:0.5, AK", "KK", false, "AA, AKs, AKo, QQ"],
            ["AA:0, KK:-1, QQ", "JJ", true, "QQ, JJ"],
            ["AA", "AA", false, ""]]) {
            compare(RangeEditorText.paintedText(text, hand, on), painted);
        }
    }

    function test_gridTextAndButtonsFollowEachOther(): void {
        const editor = make(editorComponent);
        const matrix = all(editor, item => item instanceof HandMatrix)[0];
        const field = all(editor, item => item instanceof AppTextField)[0];
        const label = text => all(editor, item => item instanceof Text && item.text === text)[0];
        for (const [button, text, count] of [
            ["100%", "100%", "169 hands"], ["50%", "50%", "169 hands"], ["25%", "25%", "169 hands"],
            ["Clear", "", "0 hands"]]) {
            mouseClick(label(button));
            compare([editor.rangeText, field.text], [text, text]);
            verify(label(count), count);
        }
        editor.rangeText = "KK";
        mouseClick(matrix, 15, 15);
        compare([editor.rangeText, field.text], ["AA, KK", "AA, KK"]);
        mouseClick(field);
        keys([Qt.Key_End, Qt.Key_Comma, Qt.Key_Q, Qt.Key_Q]);
        compare(editor.rangeText.toUpperCase(), "AA, KK,QQ");
        compare(matrix.weights, {AA: 1, KK: 1, QQ: 1});
        verify(label("3 hands"));
        editor.rangeText = "50%";
        mouseClick(matrix, 15, 15);
        compare(editor.rangeText.split(", ").length, 168);
    }

    name: "RangeEditor"
    width: 600
    height: 600
}
