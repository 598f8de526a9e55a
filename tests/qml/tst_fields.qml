pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// What is typed and chosen in.
DocumentCase {
    id: test

    readonly property Component numberField: NumberField {
        value: model.number
        from: 0.01
        to: 100
        onCommitted: number => model.number = number
    }
    readonly property Component stubbornField: NumberField { value: 10 }
    readonly property Component textField: AppTextField {}
    readonly property Component comboBox: AppComboBox {
        model: [{label: "English", code: "en"}, {label: "Deutsch", code: "de"},
                {label: "Three, the widest of all", code: "long"}]
    }

    function init(): void {
        failOnWarning(/.?/);
        model.number = 10;
    }

    // What a field that holds 10 makes of what is typed, with bounds of 0.01 and 100; nothing where
    // no number is given.
    function test_numberIsCommitted(): void {
        for (const [typed, number, properties] of [
            ["42.50", 42.5], ["0.01", 0.01], ["100", 100], ["150"], ["0"], [""], ["."], ["1.239"],
            ["a5b", 5], ["1e1"], ["-5"], ["1,5", 1.5], ["1,500"], ["1,5,0"], [",5", 0.5],
            ["1 0", 10], ["-1.5", -1.5, {from: -5}], ["7", 7, {decimals: 0}],
            ["7,5", undefined, {decimals: 0}]]) {
            for (const leaveBy of [Qt.Key_Return, Qt.Key_Tab]) {
                model.number = 10;
                const field = make(numberField, properties);
                make(textField);
                const committed = spyOn(field, "committed");
                type(field, typed);
                keyClick(leaveBy);
                compare([committed.count, model.number],
                        number === undefined ? [0, 10] : [1, number], typed);
                // What is refused stays.
                const refused = number === undefined && typed !== "";
                compare(field.error !== "", refused, typed);
                if (leaveBy === Qt.Key_Tab || number !== undefined) {
                    compare(field.text === String(model.number), !refused, typed);
                }
                field.destroy();
            }
        }
    }

    function test_numberOutOfBoundsIsMarked(): void {
        const field = make(numberField);
        const edited = spyOn(field, "edited");
        type(field, "150");
        compare(firstArguments(edited), [1, 15], "150 is out of bounds");
        verify(field.error.includes("100"), field.error);
        verify(Qt.colorEqual(field.background.border.color, Fallback.theme.danger));
        compare(field.Accessible.description, field.error);
        make(textField).forceActiveFocus();
        verify(field.text === "150" && field.error !== "");
        model.number = 20;
        compare([field.error, field.text], ["", "20"]);
    }

    function test_numberFollowsItsModelUnlessTypedIn(): void {
        const field = make(numberField);
        model.number = 20;
        compare(field.text, "20");
        type(field, "3");
        model.number = 30;
        compare(field.text, "3");
        make(textField).forceActiveFocus();
        // Out of bounds, but that is no fault of the user's.
        model.number = 0;
        field.forceActiveFocus();
        compare([field.text, field.error], ["0", ""]);
        // The owner may refuse what was committed.
        const stubborn = make(stubbornField);
        type(stubborn, "42");
        keyClick(Qt.Key_Return);
        compare(stubborn.text, "10");
    }

    function test_textFieldTellsItsError(): void {
        const field = make(textField, {placeholderText: "Name", tip: "Any name", y: 100});
        compare([field.Accessible.role, field.Accessible.name, field.Accessible.description],
                [Accessible.EditableText, "Name", "Any name"]);
        type(field, "abc");
        const tip = Array.from(field.data).find(item => item instanceof Tip);
        verify(!tip.item);
        field.error = "Not a name";
        tryVerify(() => tip.item?.opened);
        compare([tip.text, field.Accessible.description], ["Not a name", "Not a name"]);
        field.error = "";
        tryVerify(() => !tip.item.visible);
        field.font.pixelSize = 40;
        verify(field.implicitHeight > 40);
    }

    // Models of objects are read by the text role.
    function test_combo(): void {
        const box = make(comboBox, {textRole: "label", valueRole: "code"});
        const activated = spyOn(box, "activated");
        box.forceActiveFocus(Qt.TabFocusReason);
        verify(Qt.colorEqual(box.background.border.color, Fallback.theme.strokeFocus));
        keyClick(Qt.Key_Down);
        compare(box.currentText, "Deutsch");
        for (const key of [Qt.Key_Return, Qt.Key_Escape]) {
            keyClick(Qt.Key_Space);
            tryVerify(() => box.popup.opened);
            keys([Qt.Key_Down, key]);
            tryVerify(() => !box.popup.visible);
            compare([box.currentValue, activated.count], ["long", 2]);
        }
        mouseClick(box);
        tryVerify(() => box.popup.opened);
        verify(waitForRendering(box.popup.contentItem));
        const row = box.popup.contentItem.itemAtIndex(0);
        compare([row.text, row.Accessible.name], ["English", "English"]);
        mouseClick(row);
        tryVerify(() => !box.popup.visible);
        compare([box.displayText, box.currentValue], ["English", "en"]);
        // As wide as its widest text, whichever is chosen.
        metrics.font = box.font;
        verify(box.implicitWidth - box.leftPadding - box.rightPadding
               >= metrics.advanceWidth("Three, the widest of all"));
    }

    name: "Fields"
    width: 600
    height: 500

    QtObject {
        id: model

        property real number: 10
    }
    FontMetrics {
        id: metrics
    }
}
