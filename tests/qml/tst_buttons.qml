import QtQuick
import QtTest
import Tidewell

// Buttons, switches and chips: by mouse, by keyboard, disabled, and their sizes.
TestCase {
    id: test

    readonly property var sorts: ({
        "PrimaryButton": primary, "SecondaryButton": secondary, "IconButton": iconButton,
        "ToggleSwitch": toggle, "AppCheckBox": checkBox, "Chip": chip
    })

    name: "Buttons"
    when: windowShown
    visible: true
    width: 600
    height: 400

    function init(): void {
        failOnWarning(/.?/);
    }

    function make(sort: string, properties: var): var {
        return createTemporaryObject(sorts[sort], test, properties ?? {});
    }

    function spyOn(item: Item, signalName: string): SignalSpy {
        return createTemporaryObject(spy, test, {target: item, signalName: signalName});
    }

    // Pixels of a picture of the item that are as asked.
    function share(item: Item, wanted: var): real {
        const picture = grabImage(item);
        let hits = 0;
        for (let x = 0; x < item.width; ++x) {
            for (let y = 0; y < item.height; ++y) {
                hits += wanted(picture.pixel(x, y)) ? 1 : 0;
            }
        }
        return hits / (item.width * item.height);
    }

    function test_pressing_data(): var {
        const rows = [];
        for (const sort of Object.keys(sorts)) {
            rows.push({tag: sort + " by mouse", sort: sort, key: 0, presses: true});
            rows.push({tag: sort + " by Space", sort: sort, key: Qt.Key_Space, presses: true});
            const isButton = sort.includes("Button") || sort === "Chip";
            rows.push({tag: sort + " by Return", sort: sort, key: Qt.Key_Return,
                       presses: isButton});
            rows.push({tag: sort + " by Enter", sort: sort, key: Qt.Key_Enter,
                       presses: isButton});
            rows.push({tag: sort + " by a letter", sort: sort, key: Qt.Key_X, presses: false});
        }
        return rows;
    }

    function test_pressing(row): void {
        for (const enabled of [true, false]) {
            const control = make(row.sort, {enabled: enabled});
            const clicked = spyOn(control, "clicked");
            control.forceActiveFocus(Qt.TabFocusReason);
            if (row.key === 0) {
                mouseClick(control, 20, control.height / 2);
            } else {
                keyClick(row.key);
            }
            compare(clicked.count, row.presses && enabled ? 1 : 0);
            if (control.checkable) {
                compare(control.checked, row.presses && enabled);
            }
            control.destroy();
        }
    }

    function test_spokenAs_data(): var {
        return [
            {tag: "PrimaryButton", role: Accessible.Button, name: "Press"},
            {tag: "SecondaryButton", role: Accessible.Button, name: "Press"},
            {tag: "IconButton", role: Accessible.Button, name: "Does it"},
            {tag: "ToggleSwitch", role: Accessible.CheckBox, name: "Press"},
            {tag: "AppCheckBox", role: Accessible.CheckBox, name: "Press"},
            {tag: "Chip", role: Accessible.Button, name: "Press"}
        ];
    }

    function test_spokenAs(row): void {
        const control = make(row.tag);
        compare(control.Accessible.role, row.role);
        compare(control.Accessible.name, row.name);
    }

    function test_tabReachesTheControlAndShowsIt_data(): var {
        return Object.keys(sorts).map(sort => ({tag: sort}));
    }

    function test_tabReachesTheControlAndShowsIt(row): void {
        const before = make("PrimaryButton");
        const control = make(row.tag, {x: 100, y: 100});
        before.forceActiveFocus();
        keyClick(Qt.Key_Tab);
        verify(control.activeFocus);
        const ring = findRing(control);
        verify(ring.visible);
        verify(Qt.colorEqual(ring.border.color, Fallback.theme.strokeFocus));
        keyClick(Qt.Key_Tab);
        verify(!ring.visible);
    }

    function findRing(item: Item): var {
        if (item instanceof FocusRing) {
            return item;
        }
        for (let i = 0; i < item.children.length; ++i) {
            const ring = findRing(item.children[i]);
            if (ring !== null) {
                return ring;
            }
        }
        return null;
    }

    function test_sizes_data(): var {
        return [
            {tag: "PrimaryButton", properties: {}, height: 40},
            {tag: "PrimaryButton", properties: {compact: true}, height: 28},
            {tag: "SecondaryButton", properties: {}, height: 40},
            {tag: "SecondaryButton", properties: {"font.pixelSize": 40}, height: 56, atLeast: true},
            {tag: "ToggleSwitch", properties: {text: ""}, width: 44, height: 24},
            {tag: "Chip", properties: {}, height: 28},
            {tag: "AppCheckBox", properties: {text: ""}, width: 18, height: 24}
        ];
    }

    function test_sizes(row): void {
        const control = make(row.tag, row.properties);
        if (row.atLeast) {
            verify(control.implicitHeight >= row.height);
        } else {
            compare(control.implicitHeight, row.height);
        }
        if (row.width !== undefined) {
            compare(control.implicitWidth, row.width);
        }
    }

    // Nothing is cut off at its implicit size, whatever stands before the text.
    function test_widthFollowsTheContent_data(): var {
        return Array.of("PrimaryButton", "SecondaryButton", "Chip").map(sort => ({tag: sort}));
    }

    function test_widthFollowsTheContent(row): void {
        const plain = make(row.tag);
        const longer = make(row.tag, {text: "Press and hold on"});
        const marked = make(row.tag, {iconText: "+"});
        metrics.font = plain.font;
        verify(plain.implicitWidth >= metrics.advanceWidth("Press") + 2 * 8);
        fuzzyCompare(longer.implicitWidth - plain.implicitWidth,
                     metrics.advanceWidth("Press and hold on") - metrics.advanceWidth("Press"), 2);
        verify(marked.implicitWidth >= plain.implicitWidth + metrics.advanceWidth("+"));
    }

    function test_iconTakesPrecedenceOverGlyph(): void {
        const both = make("PrimaryButton", {iconText: "WWWWWWWW", iconName: "bolt"});
        const icon = make("PrimaryButton", {iconName: "bolt"});
        const loading = make("PrimaryButton", {iconText: "WWWWWWWW", loading: true});
        compare(both.implicitWidth, icon.implicitWidth);
        compare(loading.implicitWidth, icon.implicitWidth);
    }

    function test_colors_data(): var {
        return [
            {tag: "dark", dark: true},
            {tag: "light", dark: false}
        ];
    }

    function test_colors(row): void {
        redTheme.dark = row.dark;
        const button = make("PrimaryButton", {theme: redTheme, text: "", width: 80});
        const isRed = color => color.r > color.g + 0.2 && color.r > color.b + 0.2;
        verify(share(button, isRed) > 0.9);
        button.enabled = false;
        fuzzyCompare(share(button, isRed), 0, 0.01);
        const toggle = make("ToggleSwitch", {theme: redTheme, text: "", y: 100});
        fuzzyCompare(share(toggle, isRed), 0, 0.01);
        toggle.checked = true;
        tryVerify(() => share(toggle, isRed) > 0.3);
    }

    function test_dangerAndCheckedStandOut(): void {
        const theme = Fallback.theme;
        const button = make("SecondaryButton", {checkable: true});
        verify(Qt.colorEqual(button.background.border.color, theme.stroke));
        mouseMove(button, 5, 5);
        verify(Qt.colorEqual(button.background.border.color, theme.strokeFocus));
        verify(Qt.colorEqual(button.background.color, theme.surfaceHover));
        mousePress(button, 5, 5);
        verify(Qt.colorEqual(button.background.color, theme.surface3));
        mouseRelease(button, 5, 5);
        mouseMove(test, 500, 300);
        verify(button.checked);
        verify(Qt.colorEqual(button.background.border.color, theme.accent));
        button.danger = true;
        verify(Qt.colorEqual(button.background.border.color, theme.danger));
    }

    function test_hoverGrows_data(): var {
        return [
            {tag: "PrimaryButton", properties: {}, scale: 1.02},
            {tag: "SecondaryButton", properties: {}, scale: 1.02},
            {tag: "SecondaryButton", properties: {enabled: false}, scale: 1},
            {tag: "Chip", properties: {}, scale: 1.05},
            {tag: "Chip", properties: {clickable: false}, scale: 1}
        ];
    }

    function test_hoverGrows(row): void {
        const control = make(row.tag, row.properties);
        mouseMove(test, 500, 300);
        mouseMove(control, 5, 5);
        mouseMove(control, 8, 8);
        tryCompare(control, "scale", row.scale);
        mouseMove(test, 500, 300);
        tryCompare(control, "scale", 1);
    }

    function test_toggleByDrag(): void {
        const control = make("ToggleSwitch", {text: ""});
        mousePress(control, 8, 12);
        mouseMove(control, 25, 12);
        mouseMove(control, 42, 12);
        mouseRelease(control, 42, 12);
        verify(control.checked);
    }

    function test_chipIsRemoved_data(): var {
        return [
            {tag: "by its cross", key: 0},
            {tag: "by Delete", key: Qt.Key_Delete},
            {tag: "by Backspace", key: Qt.Key_Backspace}
        ];
    }

    function test_chipIsRemoved(row): void {
        for (const removable of [true, false]) {
            const control = make("Chip", {removable: removable});
            const removed = spyOn(control, "removeClicked");
            const clicked = spyOn(control, "clicked");
            control.forceActiveFocus();
            if (row.key === 0) {
                mouseClick(control, control.width - 14, control.height / 2);
            } else {
                keyClick(row.key);
            }
            compare(removed.count, removable ? 1 : 0);
            compare(clicked.count, !removable && row.key === 0 ? 1 : 0);
            control.destroy();
        }
    }

    // A chip that only says something lets clicks through to what it lies on.
    function test_plainChipLetsClicksThrough(): void {
        const area = createTemporaryObject(mouseArea, test);
        const clicked = spyOn(area, "clicked");
        const control = createTemporaryObject(chip, area, {clickable: false});
        mouseClick(control, 10, 10);
        compare(clicked.count, 1);
        verify(!control.activeFocusOnTab);
        compare(control.Accessible.role, Accessible.StaticText);
    }

    function test_tipShowsOnHover_data(): var {
        return [{tag: "PrimaryButton"}, {tag: "SecondaryButton"}, {tag: "IconButton"}];
    }

    function test_tipShowsOnHover(row): void {
        const control = make(row.tag, {tip: "Does it", x: 100, y: 100});
        compare(control.Accessible.description === "Does it"
                || control.Accessible.name === "Does it", true);
        const tooltip = findTip(control);
        verify(!tooltip.visible);
        mouseMove(control, 5, 5);
        tryVerify(() => tooltip.opened);
        compare(tooltip.text, "Does it");
        mouseMove(test, 500, 300);
        tryVerify(() => !tooltip.visible);
    }

    function findTip(item: Item): var {
        for (let i = 0; i < item.data.length; ++i) {
            if (item.data[i] instanceof AppToolTip) {
                return item.data[i];
            }
        }
        return null;
    }

    Component {
        id: primary

        PrimaryButton { text: "Press" }
    }
    Component {
        id: secondary

        SecondaryButton { text: "Press" }
    }
    Component {
        id: iconButton

        IconButton {
            tip: "Does it"
            iconName: "gear"
        }
    }
    Component {
        id: toggle

        ToggleSwitch { text: "Press" }
    }
    Component {
        id: checkBox

        AppCheckBox { text: "Press" }
    }
    Component {
        id: chip

        Chip {
            text: "Press"
            clickable: true
        }
    }
    Component {
        id: mouseArea

        MouseArea {
            width: 200
            height: 100
        }
    }
    Theme {
        id: redTheme

        useAccentOverride: true
        accentOverride: "#F85149"
    }
    Component {
        id: spy

        SignalSpy {}
    }
    FontMetrics {
        id: metrics
    }
}
