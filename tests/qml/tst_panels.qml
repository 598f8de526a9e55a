import QtQuick
import QtQuick.Layouts
import QtTest
import Tidewell

// What holds and shows things: panels, headers, figures, rings, icons, dialogs, scrolling.
TestCase {
    id: test

    readonly property var iconNames: [
        "bolt", "calendar", "cards", "chart", "chips", "clipboard", "clock", "file-text",
        "folder-open", "gamepad", "gear", "home", "lock", "monitor", "palette", "save", "scroll",
        "sliders", "stop", "target", "tree", "trend-up"
    ]

    name: "Panels"
    when: windowShown
    visible: true
    width: 800
    height: 600

    function init(): void {
        failOnWarning(/.?/);
    }

    function make(component: Component, properties: var): var {
        return createTemporaryObject(component, test, properties ?? {});
    }

    // How much of the item's picture is as asked.
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

    function isReddish(color: color): bool {
        return color.r > color.g + 0.2 && color.r > color.b + 0.2;
    }

    function test_cardIsAsLargeAsItsContent(): void {
        const card = make(cardComponent);
        compare(card.implicitWidth, 200 + 2 * 16);
        compare(card.implicitHeight, 90 + 2 * 16);
        const wide = card.contentChildren[0];
        const tall = card.contentChildren[1];
        wide.implicitWidth = 300;
        compare(card.implicitWidth, 300 + 2 * 16);
        wide.visible = false;
        compare(card.implicitWidth, 100 + 2 * 16);
        tall.visible = false;
        compare(card.implicitHeight, 2 * 16);
    }

    // A panel in a layout neither collapses nor leaves its content behind when it is stretched.
    function test_cardInALayout(): void {
        const row = make(cardRow);
        const first = row.children[0];
        const second = row.children[1];
        verify(waitForRendering(row));
        compare(first.width, 150 + 2 * 16);
        compare(first.height, row.height);
        compare(second.width, row.width - first.width - row.spacing);
        compare(second.contentChildren[0].width, second.width - 2 * 16);
    }

    function test_cardLifts(): void {
        const card = make(cardComponent, {width: 200, height: 100, hoverable: true});
        mouseMove(card, 50, 50);
        tryCompare(card, "scale", 1.01);
        mouseMove(test, 700, 500);
        tryCompare(card, "scale", 1);
        card.hoverable = false;
        mouseMove(card, 50, 50);
        compare(card.scale, 1);
    }

    function test_cardFrameInAccentColor(): void {
        const card = make(cardComponent, {width: 200, height: 100});
        card.contentChildren[0].visible = false;
        fuzzyCompare(share(card, isReddish), 0, 1e-9);
        card.accentColor = "red";
        verify(share(card, isReddish) > 0.02);
    }

    function test_sectionHeader(): void {
        const header = make(headerComponent);
        const bare = header.implicitHeight;
        const bareWidth = header.implicitWidth;
        header.subtitle = "What it is about";
        tryVerify(() => header.implicitHeight > bare + 10);
        header.badge = "Ready";
        tryVerify(() => header.implicitWidth > bareWidth + 30);
        header.width = 120;
        tryCompare(header.children[0], "width", 120);
    }

    function test_statCard_data(): var {
        return [
            {tag: "normal", properties: {}, width: 160, height: 80},
            {tag: "compact", properties: {compact: true}, width: 120, height: 64},
            {tag: "a long value", properties: {value: "123456789 / 1234567890"}, atLeast: 200}
        ];
    }

    function test_statCard(row): void {
        const stat = make(statComponent, row.properties);
        if (row.atLeast) {
            verify(stat.implicitWidth > row.atLeast);
        } else {
            compare(stat.implicitWidth, row.width);
            compare(stat.implicitHeight, row.height);
        }
    }

    function test_statCardIsSpokenAsOne(): void {
        compare(make(statComponent).Accessible.name, "Accuracy: 92 %");
        compare(make(statComponent, {unit: ""}).Accessible.name, "Accuracy: 92");
    }

    function test_statCardTrend_data(): var {
        return [
            {tag: "up", trend: "up", green: true},
            {tag: "down", trend: "down", red: true},
            {tag: "none", trend: ""},
            {tag: "unknown", trend: "sideways"}
        ];
    }

    function test_statCardTrend(row): void {
        const stat = make(statComponent, {trend: row.trend, width: 160, height: 80});
        verify(waitForRendering(stat));
        const isGreenish = color => color.g > color.r + 0.2 && color.g > color.b + 0.2;
        compare(share(stat, isReddish) > 0, row.red ?? false);
        compare(share(stat, isGreenish) > 0, row.green ?? false);
    }

    function test_ringText_data(): var {
        return [
            {tag: "start", value: 0, text: "0%"},
            {tag: "rounded down", value: 0.424, text: "42%"},
            {tag: "rounded up", value: 0.425, text: "43%"},
            {tag: "end", value: 1, text: "100%"},
            {tag: "above", value: 1.7, text: "100%"},
            {tag: "below", value: -0.2, text: "0%"},
            {tag: "no number", value: NaN, text: "0%"},
            {tag: "unknown", value: 0.5, indeterminate: true, text: "..."}
        ];
    }

    function test_ringText(row): void {
        const ring = make(ringComponent,
                          {value: row.value, indeterminate: row.indeterminate ?? false});
        compare(ring.Accessible.name, row.text);
        const label = findItem(ring, item => item instanceof Text);
        compare(label.text, row.text);
        verify(label.visible);
        ring.showPercentage = false;
        verify(!label.visible);
    }

    // From the top, clockwise: a quarter is at the upper right only.
    function test_ringArc(): void {
        const ring = make(ringComponent, {value: 0, progressColor: "red", trackColor: "blue",
                                          showPercentage: false});
        ring.value = 0.25;
        const at = (x, y) => grabImage(ring).pixel(x, y);
        const near = 4;
        const diagonal = 60 - 56 * Math.SQRT1_2;
        tryVerify(() => isReddish(at(120 - near, 60 - 6)));
        verify(isReddish(at(120 - diagonal, diagonal)));
        verify(at(diagonal, diagonal).b > 0.8);
        verify(at(120 - diagonal, 120 - diagonal).b > 0.8);
        verify(at(60, 60).a === 0 || !isReddish(at(60, 60)));
    }

    function test_ringTurnsWhileUnknown(): void {
        const ring = make(ringComponent, {indeterminate: true});
        const arc = ring.children[0];
        verify(waitForRendering(ring));
        const first = grabImage(ring);
        tryVerify(() => !grabImage(ring).equals(first));
        ring.indeterminate = false;
        tryCompare(arc, "rotation", 0);
    }

    function test_iconIsDrawnInItsColor_data(): var {
        return iconNames.map(name => ({tag: name}));
    }

    function test_iconIsDrawnInItsColor(row): void {
        const icon = make(iconComponent, {name: row.tag, color: "red", size: 48});
        tryVerify(() => share(icon, isReddish) > 0.05);
        verify(share(icon, isReddish) < 0.6);
        icon.color = "blue";
        tryVerify(() => share(icon, color => color.b > color.r + 0.2) > 0.05);
        fuzzyCompare(share(icon, isReddish), 0, 1e-9);
    }

    function test_iconOfNoName(): void {
        const icon = make(iconComponent, {name: "", color: "red", size: 24});
        compare(icon.implicitWidth, 24);
        compare(icon.implicitHeight, 24);
        fuzzyCompare(share(icon, isReddish), 0, 1e-9);
    }

    function test_pictures_data(): var {
        return [
            {tag: "logo", size: Qt.size(256, 256)},
            {tag: "table", size: Qt.size(1200, 700)}
        ];
    }

    function test_pictures(row): void {
        const picture = make(image, {source: "qrc:/Tidewell/assets/" + row.tag + ".svg"});
        compare(picture.status, Image.Ready);
        compare(picture.implicitWidth, row.size.width);
        compare(picture.implicitHeight, row.size.height);
    }

    function test_confirmDialog_data(): var {
        return [
            {tag: "yes", act: dialog => mouseClick(findButton(dialog, "Delete")), accepted: 1},
            {tag: "no", act: dialog => mouseClick(findButton(dialog, "Cancel")), rejected: 1},
            {tag: "Escape", act: () => keyClick(Qt.Key_Escape), rejected: 1},
            {tag: "Return on the first button", act: () => keyClick(Qt.Key_Return), rejected: 1},
            {tag: "dangerous", danger: true, accepted: 1,
             act: dialog => mouseClick(findButton(dialog, "Delete"))}
        ];
    }

    function test_confirmDialog(row): void {
        const dialog = createTemporaryObject(confirm, test, {danger: row.danger ?? false});
        const accepted = createTemporaryObject(spy, test,
                                               {target: dialog, signalName: "accepted"});
        const rejected = createTemporaryObject(spy, test,
                                               {target: dialog, signalName: "rejected"});
        dialog.open();
        tryVerify(() => dialog.opened);
        row.act(dialog);
        tryVerify(() => !dialog.visible);
        compare(accepted.count, row.accepted ?? 0);
        compare(rejected.count, row.rejected ?? 0);
    }

    function findButton(dialog: var, text: string): var {
        const wanted = item => item instanceof ButtonBase && item.text === text && item.visible;
        return findItem(dialog.footer, wanted);
    }

    function findItem(item: Item, wanted: var): var {
        if (wanted(item)) {
            return item;
        }
        for (let i = 0; i < item.children.length; ++i) {
            const found = findItem(item.children[i], wanted);
            if (found !== null) {
                return found;
            }
        }
        return null;
    }

    function test_dialogHoldsItsContent(): void {
        const dialog = createTemporaryObject(confirm, test);
        dialog.open();
        tryVerify(() => dialog.opened);
        const low = dialog.height;
        const width = dialog.width;
        dialog.text = "A question that is so long that it needs two lines, because it tells in "
                      + "all detail what will be lost for ever";
        tryVerify(() => dialog.height > low);
        compare(dialog.width, width);
        fuzzyCompare(dialog.x + dialog.width / 2, dialog.parent.width / 2, 1);
    }

    function test_scrollBarOnlyWhereThereIsSomethingToScroll(): void {
        const view = make(scroll);
        const bar = findItem(view, item => item instanceof AppScrollBar
                                           && item.orientation === Qt.Vertical);
        verify(waitForRendering(view));
        verify(!bar.visible);
        view.contentChildren[0].implicitHeight = 500;
        tryVerify(() => bar.visible);
        mouseWheel(view, 50, 50, 0, -120);
        tryVerify(() => view.contentItem.contentY > 0);
    }

    function test_toolTipWrapsLongText(): void {
        const tip = createTemporaryObject(toolTip, test, {text: "Short"});
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

    Component {
        id: cardComponent

        Card {
            Item {
                implicitWidth: 200
                implicitHeight: 40
            }
            Item {
                implicitWidth: 100
                implicitHeight: 90
            }
        }
    }
    Component {
        id: cardRow

        RowLayout {
            width: 600
            height: 100
            spacing: 10

            Card {
                Layout.fillHeight: true

                ColumnLayout {
                    anchors.fill: parent

                    Item {
                        implicitWidth: 150
                        implicitHeight: 20
                    }
                }
            }
            Card {
                Layout.fillWidth: true

                ColumnLayout {
                    anchors.fill: parent
                }
            }
        }
    }
    Component {
        id: headerComponent

        SectionHeader { title: "Project Setup" }
    }
    Component {
        id: statComponent

        StatCard {
            label: "Accuracy"
            value: "92"
            unit: "%"
        }
    }
    Component {
        id: ringComponent

        ProgressRing {}
    }
    Component {
        id: iconComponent

        Icon {
            width: size
            height: size
        }
    }
    Component {
        id: image

        Image {}
    }
    Component {
        id: confirm

        ConfirmDialog {
            title: "Delete"
            text: "Sure?"
            confirmText: "Delete"
        }
    }
    Component {
        id: scroll

        AppScrollView {
            width: 100
            height: 100

            Item {
                implicitWidth: 80
                implicitHeight: 80
            }
        }
    }
    Component {
        id: toolTip

        AppToolTip {}
    }
    Component {
        id: spy

        SignalSpy {}
    }
}
