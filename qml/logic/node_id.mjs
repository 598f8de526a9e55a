// Names for what a person keeps: "n_mgx1k2ab_4f9z0q". Unique enough within one store.

export function newNodeId() {
    const random = Math.floor(Math.random() * 36 ** 6).toString(36).padStart(6, "0");
    return `n_${Date.now().toString(36)}_${random}`;
}
