import QtQuick
import Tidewell

// Buttons, switches and chips: by mouse, by keyboard, disabled.
DocumentCase {
    id: test

    readonly property Component primary: PrimaryButton { text: "Press" }
    readonly property Component secondary: SecondaryButton { text: "Press" }
    readonly property Component iconButton: IconButton {
        tip: "Does it"
        iconName: "gear"
    }
    readonly property Component toggle: ToggleSwitch { text: "Press" }
    readonly property Component checkBox: AppCheckBox { text: "Press" }
    readonly property Component chip: Chip {
        text: "Press"
        clickable: true
    }
    readonly property var sorts: [
        {tag: "PrimaryButton", component: primary}, {tag: "SecondaryButton", component: secondary},
        {tag: "IconButton", component: iconButton, name: "Does it"},
        {tag: "ToggleSwitch", component: toggle, role: Accessible.CheckBox},
        {tag: "AppCheckBox", component: checkBox, role: Accessible.CheckBox},
        {tag: "Chip", component: chip}
    ]

    function init(): void {
        failOnWarning(/.?/);
        mouseMove(test, 500, 300);
    }

    function test_pressing_data(): var {
        return sorts;
    }

    function test_pressing(row: var): void {
        const isButton = row.role !== Accessible.CheckBox;
        for (const enabled of [true, false]) {
            for (const [key, presses] of [[0, true], [Qt.Key_Space, true], [Qt.Key_X, false],
                                          [Qt.Key_Return, isButton], [Qt.Key_Enter, isButton]]) {
                const control = make(row.component, {enabled: enabled});
                const clicked = spyOn(control, "clicked");
                control.forceActiveFocus(Qt.TabFocusReason);
                if (key === 0) {
                    mouseClick(control, 20, control.height / 2);
                } else {
                    keyClick(key);
                }
                compare(clicked.count, presses && enabled ? 1 : 0, key);
                if (control.checkable) {
                    compare(control.checked, presses && enabled);
                }
                control.destroy();
            }
        }
    }

    function test_isSpokenAndReached_data(): var {
        return sorts;
    }

    function test_isSpokenAndReached(row: var): void {
        make(primary).forceActiveFocus();
        const control = make(row.component, {x: 100, y: 100});
        compare([control.Accessible.role, control.Accessible.name],
                [row.role ?? Accessible.Button, row.name ?? "Press"]);
        keyClick(Qt.Key_Tab);
        verify(control.activeFocus);
        const [ring] = all(control, item => item instanceof FocusRing);
        verify(Qt.colorEqual(ring.border.color, Fallback.theme.strokeFocus));
        keyClick(Qt.Key_Tab);
        verify(!ring.visible);
    }

    // Nothing is cut off at its implicit size, whatever the font and what stands before the text.
    function test_sizeFollowsTheContent(): void {
        for (const component of [primary, secondary, chip]) {
            const plain = make(component);
            const marked = make(component, {iconText: "+"});
            metrics.font = plain.font;
            verify(plain.implicitWidth >= metrics.advanceWidth("Press") + 2 * 8);
            verify(marked.implicitWidth >= plain.implicitWidth + metrics.advanceWidth("+"));
        }
        verify(make(secondary, {"font.pixelSize": 40}).implicitHeight > 40);
        const icon = make(primary, {iconName: "bolt"});
        for (const sign of [{iconName: "bolt"}, {loading: true}]) {
            const both = make(primary, Object.assign({iconText: "WWWWWWWW"}, sign));
            compare(both.implicitWidth, icon.implicitWidth, "one sign, not the glyph too");
        }
    }

    function test_chipIsRemoved(): void {
        for (const removable of [true, false]) {
            for (const key of [0, Qt.Key_Delete, Qt.Key_Backspace]) {
                const control = make(chip, {removable: removable});
                const removed = spyOn(control, "removeClicked");
                const clicked = spyOn(control, "clicked");
                control.forceActiveFocus();
                if (key === 0) {
                    mouseClick(control, control.width - 14, control.height / 2);
                } else {
                    keyClick(key);
                }
                compare(removed.count, removable ? 1 : 0);
                compare(clicked.count, !removable && key === 0 ? 1 : 0);
                control.destroy();
            }
        }
    }

    function test_tipShowsOnHover(): void {
        for (const component of [primary, secondary, iconButton]) {
            const control = make(component, {tip: "Does it", x: 100, y: 100});
            verify([control.Accessible.description, control.Accessible.name].includes("Does it"));
            const tip = Array.from(control.data).find(item => item instanceof Tip);
            verify(!tip.item);
            mouseMove(control, 5, 5);
            tryVerify(() => tip.item?.opened);
            compare(tip.item.text, "Does it");
            mouseMove(test, 500, 300);
            tryVerify(() => !tip.item.visible);
            control.destroy();
        }
    }

    name: "Buttons"
    width: 600
    height: 400

    FontMetrics {
        id: metrics
    }
}
