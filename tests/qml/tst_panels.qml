import QtQuick
import Tidewell

import "finding.mjs" as Finding

// What holds and shows things: panels, headers, figures, rings, icons, dialogs, scrolling.
DocumentCase {
    id: test

    readonly property Component cardComponent: Card {
        Item {
            implicitWidth: 200
            implicitHeight: 40
        }
        Item {
            implicitWidth: 100
            implicitHeight: 90
        }
    }
    readonly property Component statComponent: StatCard {
        label: "Accuracy"
        value: "92"
        unit: "%"
    }
    readonly property Component ringComponent: ProgressRing {}
    readonly property Component iconComponent: Icon {
        width: size
        height: size
    }
    readonly property Component confirm: ConfirmDialog {
        title: "Delete"
        text: "Sure?"
        confirmText: "Delete"
    }
    readonly property Component scroll: AppScrollView {
        width: 100
        height: 100

        Item {
            implicitWidth: 80
            implicitHeight: 80
        }
    }
    readonly property Component toolTip: AppToolTip {}
    readonly property var iconNames: [
        "bolt", "calendar", "cards", "chart", "chips", "clipboard", "clock", "file-text",
        "folder-open", "gamepad", "gear", "home", "lock", "monitor", "palette", "save", "scroll",
        "sliders", "stop", "target", "tree", "trend-up"
    ]

    function test_cardIsAsLargeAsItsContent(): void {
        const card = make(cardComponent);
        const frame = card.implicitWidth - 200;
        compare(card.implicitHeight, 90 + frame);
        card.contentChildren[0].implicitWidth = 300;
        compare(card.implicitWidth, 300 + frame);
        card.contentChildren[0].visible = false;
        compare(card.implicitWidth, 100 + frame);
    }

    function test_statCard(): void {
        const stat = make(statComponent, {width: 160, height: 80});
        compare(stat.Accessible.name, "Accuracy: 92 %");
        for (const [trend, arrows] of [["up", "↑"], ["down", "↓"], ["", ""], ["sideways", ""]]) {
            stat.trend = trend;
            compare(texts(stat).filter(text => "↑↓".includes(text)).join(""), arrows);
        }
        stat.unit = "";
        compare(stat.Accessible.name, "Accuracy: 92");
        stat.value = "123456789 / 1234567890";
        tryVerify(() => stat.implicitWidth > 200);
    }

    function test_ringText(): void {
        for (const [value, text] of [[0, "0%"], [0.424, "42%"], [0.425, "43%"], [1, "100%"],
                                     [1.7, "100%"], [-0.2, "0%"], [NaN, "0%"]]) {
            const ring = make(ringComponent, {value: value});
            compare([texts(ring), ring.Accessible.name], [[text], text]);
            ring.indeterminate = true;
            compare([texts(ring), ring.Accessible.name], [["..."], "..."]);
            ring.showPercentage = false;
            compare(texts(ring), []);
        }
    }

    // From the top, clockwise: a quarter is at the upper right only.
    function test_ringArc(): void {
        const ring = make(ringComponent, {value: 0, progressColor: "red", trackColor: "blue",
                                          showPercentage: false});
        ring.value = 0.25;
        const at = (x, y) => grabImage(ring).pixel(x, y);
        const diagonal = 60 - 56 * Math.SQRT1_2;
        tryVerify(() => isReddish(at(120 - diagonal, diagonal)));
        verify(at(diagonal, diagonal).b > 0.8 && at(120 - diagonal, 120 - diagonal).b > 0.8);
        ring.indeterminate = true;
        const first = grabImage(ring);
        tryVerify(() => !grabImage(ring).equals(first), 5000, "it turns");
    }

    function test_iconsAreDrawnInTheirColor(): void {
        const icon = make(iconComponent, {size: 48});
        for (const name of iconNames) {
            icon.name = name;
            icon.color = "red";
            tryVerify(() => share(icon, isReddish) > 0.05 && share(icon, isReddish) < 0.6, 5000, name);
            icon.color = "blue";
            tryVerify(() => share(icon, color => color.b > color.r + 0.2) > 0.05);
        }
        icon.name = "";
        tryVerify(() => share(icon, color => color.b > color.r + 0.2) === 0);
    }

    function test_confirmDialog_data(): var {
        const press = (dialog, text) => mouseClick(Finding.inTree(dialog.footer,
            item => item instanceof ButtonBase && item.text === text && item.visible));
        return [
            {tag: "yes", act: dialog => press(dialog, "Delete"), accepted: 1},
            {tag: "no", act: dialog => press(dialog, "Cancel"), rejected: 1},
            {tag: "Escape", act: () => keyClick(Qt.Key_Escape), rejected: 1},
            {tag: "Return on the first button", act: () => keyClick(Qt.Key_Return), rejected: 1},
            {tag: "dangerous", danger: true, act: dialog => press(dialog, "Delete"), accepted: 1}
        ];
    }

    function test_confirmDialog(row: var): void {
        const dialog = make(confirm, {danger: row.danger ?? false});
        const accepted = spyOn(dialog, "accepted");
        const rejected = spyOn(dialog, "rejected");
        dialog.open();
        tryVerify(() => dialog.opened);
        row.act(dialog);
        tryVerify(() => !dialog.visible);
        compare([accepted.count, rejected.count], [row.accepted ?? 0, row.rejected ?? 0]);
    }

    function test_scrollBarOnlyWhereThereIsSomethingToScroll(): void {
        const view = make(scroll);
        const bar = Finding.inTree(view, item => item instanceof AppScrollBar
                                                 && item.orientation === Qt.Vertical);
        verify(waitForRendering(view));
        verify(!bar.visible);
        view.contentChildren[0].implicitHeight = 500;
        tryVerify(() => bar.visible);
        mouseWheel(view, 50, 50, 0, -120);
        tryVerify(() => view.contentItem.contentY > 0);
    }

    function test_toolTipWrapsLongText(): void {
        const tip = make(toolTip, {text: "Short"});
        const height = tip.implicitHeight;
        verify(tip.implicitWidth < 100);
        tip.text = "A long text that would run over the edge of any window if it stood in one "
                   + "single line, and so has to be broken";
        tip.visible = true;
        tryVerify(() => tip.opened);
        compare(tip.width, tip.maximumWidth);
        tryVerify(() => tip.height > height + 10);
        verify(tip.x + tip.parent.x >= 0);
    }

    name: "Panels"
    width: 800
    height: 600
}
