// What the EV of an action is made of, as lines from top to bottom. A breakdown has `ev`, `follows`
// ("answers", "deal", "showdown" or "nothing") and `parts`: entries with `name`, `actionType`,
// `probability`, `ev` (NaN where it never comes), `follows` and `parts`.

// Of the cards of a deal, so many of the best and as many of the worst are shown.
const CARDS_SHOWN = 3;

// Lines with `depth` 0 or 1, `kind` ("action", "card", "outcome", or "more" for cards that are left out)
// and, but for the last, `name`, `actionType`, `probability` and `ev`.
export function rows(breakdown) {
    return linesOf(breakdown.parts ?? [], breakdown.follows, 0);
}

// The parts, each as often as it comes: what the EV adds up from.
export function sumOf(parts) {
    return parts.reduce((sum, part) => part.probability > 0 ? sum + part.probability * part.ev : sum, 0);
}

function linesOf(parts, follows, depth) {
    const cards = follows === "deal" && parts.length > 2 * CARDS_SHOWN + 1;
    const shown = cards ? parts.slice(0, CARDS_SHOWN) : parts;
    const lines = linesOfAll(shown, follows, depth);
    if (cards) {
        lines.push({depth: depth, kind: "more", count: parts.length - 2 * CARDS_SHOWN});
        lines.push(...linesOfAll(parts.slice(-CARDS_SHOWN), follows, depth));
    }
    return lines;
}

function linesOfAll(parts, follows, depth) {
    return [].concat(...parts.map(part => linesOfPart(part, follows, depth)));
}

function linesOfPart(part, follows, depth) {
    const kinds = {answers: "action", deal: "card", showdown: "outcome"};
    const line = {depth: depth, kind: kinds[follows] ?? "action", name: part.name,
                  actionType: part.actionType, probability: part.probability, ev: part.ev};
    return [line, ...linesOf(part.parts ?? [], part.follows, depth + 1)];
}
