// How the strategy view shares out its room, in pixels: at the top the bar of the actions, below it the
// matrix with the classes of hands and the list of hands at its right. The matrix is as large as the
// height allows, with the money of the node below it where cells stay of a good size; otherwise the
// money, the whole view wide, is what is scrolled to.

const GOOD_CELL = 28;
const LARGEST_CELL = 64;
const LEAST_DETAILS = 300;

export function bucketsWidth(scale) {
    return Math.max(220, Math.round(300 * scale));
}

// Of the matrix.
export function sideOf(cell, cellGap) {
    return 13 * cell + 12 * cellGap;
}

function cellIn(side, cellGap) {
    return Math.floor((side - sideOf(0, cellGap)) / 13);
}

// `room`: `width` and `height` of the view, `scale`; distances `gap` (between panels) and `line`
// (between lines); heights `barTitle`, `highBar` and `lowBar` (with segments of a good height and as
// low as its labels leave), `matrixTitle`; `legendWidth` of all entries on one line and `legendLine` of
// a line with its distance; `smallestCell` and `cellGap`; `money`: heights of the box of the node in its
// `wide` and its `narrow` form, and the `least` width for the wide one with what stands beside it;
// `tools`: height of what stands below that, its distance included.
// Gives `barHeight`, `matrixWidth`, `beside` (the lists stand at the right of the matrix, not below),
// `listsHeight`, `moneyBelow` (the matrix) and `moneyWide`.
export function shareOut(room) {
    const lists = bucketsWidth(room.scale) + room.gap + LEAST_DETAILS + room.gap;
    const beside = room.width >= sideOf(room.smallestCell, room.cellGap) + lists;
    const widest = cellIn(beside ? room.width - lists : room.width, room.cellGap);
    const legend = Math.ceil(room.legendWidth / sideOf(GOOD_CELL, room.cellGap)) * room.legendLine;
    const above = bar => room.barTitle + room.line + bar + room.gap;
    const around = room.matrixTitle + room.line + legend + room.line;
    const cellWith = (bar, below) =>
        Math.min(widest, LARGEST_CELL,
                 cellIn(room.height - above(bar) - around - below, room.cellGap));

    const forms = [];
    for (const bar of [room.highBar, room.lowBar]) {
        for (const wide of [true, false]) {
            const money = wide ? room.money.wide : room.money.narrow;
            forms.push({bar, wide, below: true, cell: cellWith(bar, money + room.line + room.tools)});
        }
    }
    for (const bar of [room.highBar, room.lowBar]) {
        forms.push({bar, wide: true, below: false, cell: cellWith(bar, 0)});
    }
    const fits = form => form.cell >= GOOD_CELL
        && (!form.below || !form.wide || sideOf(form.cell, room.cellGap) >= room.money.least);
    const form = forms.find(fits) ?? forms[forms.length - 1];

    const side = sideOf(Math.max(room.smallestCell, form.cell), room.cellGap);
    const matrixHeight = around + side;
    return {
        barHeight: form.bar,
        matrixWidth: side,
        beside: beside,
        listsHeight: beside ? Math.max(matrixHeight, room.height - above(form.bar))
                            : Math.round(0.8 * room.height),
        moneyBelow: form.below,
        moneyWide: form.wide,
    };
}
