// The frequencies of a mix as they stand in fields: texts of two decimals, one for each action of the
// node. They add up to 1 as far as they are shown: what one gains another gives.

function twoDecimals(share) {
    return share.toFixed(2);
}

// NaN for what is no number; a comma may stand for the point.
function numberIn(text) {
    const plain = String(text ?? "").trim().replace(",", ".");
    return /^[-+]?(\d+\.?\d*|\.\d+)$/.test(plain) ? Number(plain) : NaN;
}

// Junk and what is below 0 count nothing.
function usable(text) {
    const number = numberIn(text);
    return number > 0 ? number : 0;
}

export function evenTexts(count) {
    return Array(count).fill(twoDecimals(1 / count));
}

// What stands in the fields once `text` has been entered into one of them. The last field takes up the
// difference, the one before it where the last was edited; all others stay, and so they limit what can
// be entered. A text that is no number changes nothing.
export function withEdit(texts, edited, text) {
    const count = texts.length;
    const entered = numberIn(text);
    if (isNaN(entered) || edited < 0 || edited >= count) {
        return texts;
    }
    if (count === 1) {
        return [twoDecimals(1)];
    }
    const sink = edited === count - 1 ? count - 2 : count - 1;
    const shares = texts.map(usable);
    const fixed = shares.reduce((sum, share, index) =>
        index === edited || index === sink ? sum : sum + share, 0);
    const room = Math.max(0, 1 - fixed);
    shares[edited] = Math.round(100 * Math.max(0, Math.min(entered, room))) / 100;
    shares[sink] = Math.round(100 * Math.max(0, room - shares[edited])) / 100;
    return shares.map(twoDecimals);
}

// `count` probabilities that add up to 1; where nothing is above 0, all alike.
export function probabilities(texts, count) {
    const shares = Array.from({length: count}, (_, index) => usable(texts[index]));
    const total = shares.reduce((sum, share) => sum + share, 0);
    return shares.map(share => total > 0 ? share / total : 1 / count);
}

// One action, always.
export function pure(action, count) {
    return Array.from({length: count}, (_, index) => index === action ? 1 : 0);
}
