// The first item below `item`, in any popup too, that `matches` takes; null for none.
export function inTree(item, matches) {
    const children = item.data ?? item.contentData ?? [];
    for (const child of Array.from(children)) {
        const found = matches(child) ? child : inTree(child, matches);
        if (found) {
            return found;
        }
    }
    return null;
}
