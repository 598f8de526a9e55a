// The first item below `item`, in any popup and what is built on demand too, that `matches` takes; null
// for none.
export function inTree(item, matches) {
    const children = item.content && item.item ? [item.item] : item.data ?? item.contentData ?? [];
    for (const child of Array.from(children)) {
        const found = matches(child) ? child : inTree(child, matches);
        if (found) {
            return found;
        }
    }
    return null;
}

// All that can be seen below `item` and that `matches` takes, each before what is in it.
export function allSeen(item, matches) {
    const found = [];
    for (const child of Array.from(item.children).filter(child => child.visible)) {
        found.push(...(matches(child) ? [child] : []), ...allSeen(child, matches));
    }
    return found;
}
