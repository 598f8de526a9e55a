import QtQuick
import Tidewell

DocumentCase {
    id: test

    readonly property Component boxes: TreeNode {}

    function test_label(): void {
        for (const [action, type, label] of [
            ["Check", "check", "Check"], ["", "call", "Call"], ["Fold", "FOLD", "Fold"],
            ["All-In", "allin", "All-in"], ["Bet 33%", "bet 33%", "Bet 33%"],
            ["", "bet 40%", "Bet 40%"], ["Bet", "bet", "Bet"], ["", "raise", "Raise"],
            ["Bet 50%", "none", "Bet 50%"], ["All-In", "", "All-in"], ["2h", "chance", "2h"],
            ["Betting", "none", "Betting"]]) {
            compare(make(boxes, {action: action, actionType: type})._displayActionLabel, label);
        }
    }

    function test_texts(): void {
        for (const [properties, expected] of [
            [{player: "IP", action: "Call", actionType: "call", pot: 12.6, frequency: 0.456},
             ["Call", "IP", "Pot: 13", "Freq: 46%"]],
            [{player: "OOP", action: "Check", actionType: "check", frequency: 1.7},
             ["Check", "OOP", "Freq: 100%"]],
            [{player: "OOP", action: "Fold", actionType: "fold", frequency: 0},
             ["Fold", "OOP", "Freq: 0%"]],
            [{player: "OOP"}, ["OOP"]],
            [{player: "OOP", ev: 1.234}, ["OOP", "EV: +1.23"]],
            [{player: "OOP", ev: -1.2}, ["OOP", "EV: -1.20"]],
            [{nodeType: "chance", player: "Deal Turn", action: "2h"}, ["2h", "Deal Turn"]],
            [{nodeType: "terminal", player: "IP", pot: 5}, ["Terminal", "Pot: 5"]],
            [{player: "IP", hasChildren: true}, ["+", "IP"]],
            [{player: "IP", hasChildren: true, expanded: true}, ["−", "IP"]]]) {
            compare(texts(make(boxes, properties)), expected);
        }
    }

    // WCAG's measure: 1 for equal colours, 21 for black on white.
    function contrast(first: color, second: color): real {
        const linear = part => part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
        const [dark, light] = [first, second].map(color => 0.2126 * linear(color.r)
            + 0.7152 * linear(color.g) + 0.0722 * linear(color.b)).sort((a, b) => a - b);
        return (light + 0.05) / (dark + 0.05);
    }

    function test_textStandsOut(): void {
        for (const dark of [false, true]) {
            Fallback.theme.dark = dark;
            for (const look of [{nodeType: "chance"}, {nodeType: "terminal"}].concat(
                ["fold", "check", "call", "bet 33%", "bet 200%", "raise 50%", "raise 200%", "allin"]
                    .map(type => ({actionType: type})))) {
                const box = make(boxes, look);
                const message = JSON.stringify(look) + (dark ? " dark " : " light ");
                const texts = contrast(box._textColor, box._fill);
                const figures = contrast(box._mutedColor, box._fill);
                verify(texts >= 4.5, message + texts);
                verify(figures >= 2.4, message + figures);
            }
        }
    }

    function test_clicks(): void {
        const box = make(boxes, {player: "IP", hasChildren: true});
        const clicks = spyOn(box, "clicked");
        const folds = spyOn(box, "toggleExpand");
        mouseClick(box, 120, 24);
        compare([clicks.count, folds.count], [1, 0]);
        mouseClick(box, 20, 24);
        compare([clicks.count, folds.count], [1, 1], "the mark at the left is a button of its own");
        box.accessiblePressAction();
        compare(clicks.count, 2);
        box.enabled = false;
        mouseClick(box, 120, 24);
        compare(clicks.count, 2);
    }

    name: "TreeNode"
    width: 240
    height: 80
}
