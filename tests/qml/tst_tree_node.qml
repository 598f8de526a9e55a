import QtQuick
import QtTest
import Tidewell

TestCase {
    id: test

    function init(): void {
        failOnWarning(/.?/);
        clicks.clear();
        folds.clear();
    }

    // One fresh box with some properties.
    function box(properties: var): TreeNode {
        const node = createTemporaryObject(boxes, test, properties);
        verify(node);
        clicks.target = node;
        folds.target = node;
        return node;
    }

    function visibleTexts(item: Item): var {
        let texts = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            if (child.visible) {
                const own = child instanceof Text ? [(child as Text).text] : [];
                texts = texts.concat(own, visibleTexts(child));
            }
        }
        return texts;
    }

    function test_label_data(): var {
        return [
            {tag: "check", action: "Check", type: "check", label: "Check"},
            {tag: "call", action: "", type: "call", label: "Call"},
            {tag: "fold", action: "Fold", type: "FOLD", label: "Fold"},
            {tag: "all-in", action: "All-In", type: "allin", label: "All-in"},
            {tag: "bet", action: "Bet 33%", type: "bet 33%", label: "Bet 33%"},
            {tag: "bet, size of its type", action: "", type: "bet 40%", label: "Bet 40%"},
            {tag: "bet without size", action: "Bet", type: "bet", label: "Bet"},
            {tag: "raise", action: "Raise 120%", type: "raise 120%", label: "Raise 120%"},
            {tag: "raise without size", action: "", type: "raise", label: "Raise"},
            {tag: "bet by name", action: "Bet 50%", type: "none", label: "Bet 50%"},
            {tag: "all-in by name", action: "All-In", type: "", label: "All-in"},
            {tag: "a card", action: "2h", type: "chance", label: "2h"},
            {tag: "something else", action: "Betting", type: "none", label: "Betting"}
        ];
    }

    function test_label(data: var): void {
        compare(box({action: data.action, actionType: data.type})._displayActionLabel, data.label);
    }

    function test_texts_data(): var {
        return [
            {tag: "decision", of: {player: "IP", action: "Call", actionType: "call", pot: 12.6,
                                   frequency: 0.456},
             texts: ["Call", "IP", "Pot: 13", "Freq: 46%"]},
            {tag: "clamped", of: {player: "OOP", action: "Check", actionType: "check",
                                  frequency: 1.7},
             texts: ["Check", "OOP", "Freq: 100%"]},
            {tag: "never", of: {player: "OOP", action: "Fold", actionType: "fold", frequency: 0},
             texts: ["Fold", "OOP", "Freq: 0%"]},
            {tag: "one line", of: {player: "OOP"}, texts: ["OOP"]},
            {tag: "value", of: {player: "OOP", ev: 1.234}, texts: ["OOP", "EV: +1.23"]},
            {tag: "loss", of: {player: "OOP", ev: -1.2}, texts: ["OOP", "EV: -1.20"]},
            {tag: "deal", of: {nodeType: "chance"}, texts: ["Deal"]},
            {tag: "deal of a street", of: {nodeType: "chance", player: "Deal Turn", action: "2h"},
             texts: ["2h", "Deal Turn"]},
            {tag: "end", of: {nodeType: "terminal", player: "IP", pot: 5},
             texts: ["Terminal", "Pot: 5"]},
            {tag: "unfold", of: {player: "IP", hasChildren: true}, texts: ["+", "IP"]},
            {tag: "unfolded", of: {player: "IP", hasChildren: true, expanded: true},
             texts: ["−", "IP"]}
        ];
    }

    function test_texts(data: var): void {
        compare(visibleTexts(box(data.of)), data.texts);
    }

    // Text stands out on every fill, in both themes.
    function test_colors_data(): var {
        return [
            {tag: "decision", dark: true, of: {actionType: "bet 75%"}},
            {tag: "light decision", dark: false, of: {actionType: "check"}},
            {tag: "deal", dark: true, of: {nodeType: "chance"}},
            {tag: "light end", dark: false, of: {nodeType: "terminal"}}
        ];
    }

    function test_colors(data: var): void {
        Fallback.theme.dark = data.dark;
        const node = box(data.of);
        const base = Fallback.theme.surface2;
        const tint = data.of.nodeType === "chance" ? Fallback.theme.gold
                                                   : Fallback.theme.actionColor(data.of.actionType);
        const share = data.of.nodeType === "chance" ? 0.22 : 0.28;
        if (data.of.nodeType === "terminal") {
            verify(Qt.colorEqual(node._fill, Fallback.theme.surface3));
        } else {
            fuzzyCompare(node._fill, Qt.rgba(base.r * (1 - share) + tint.r * share,
                                             base.g * (1 - share) + tint.g * share,
                                             base.b * (1 - share) + tint.b * share, 1), 1);
        }
        verify(Qt.colorEqual(node._textColor, data.dark ? Fallback.theme.text : "#0B0F14"));
        verify(Qt.colorEqual(node._mutedColor, data.dark ? Fallback.theme.textMuted : "#2D333B"));
        Fallback.theme.dark = true;
    }

    function test_clicks(): void {
        const node = box({player: "IP", hasChildren: true});
        mouseClick(node, 120, 24);
        compare([clicks.count, folds.count], [1, 0]);
        mouseClick(node, 20, 24);
        compare([clicks.count, folds.count], [1, 1], "the mark at the left is a button of its own");
        node.accessiblePressAction();
        compare(clicks.count, 2);
        node.enabled = false;
        mouseClick(node, 120, 24);
        compare(clicks.count, 2);
    }

    name: "TreeNode"
    when: windowShown
    visible: true
    width: 240
    height: 80

    Component {
        id: boxes

        TreeNode {}
    }
    SignalSpy {
        id: clicks

        signalName: "clicked"
    }
    SignalSpy {
        id: folds

        signalName: "toggleExpand"
    }
}
