// The accent colour as settings keep it: "#RRGGBB" or "#AARRGGBB"; "" stands for the theme's own.

// "" for what is no colour of this form.
export function accentHex(text) {
    const trimmed = text.trim();
    return /^#([0-9a-f]{6}|[0-9a-f]{8})$/i.test(trimmed) ? trimmed : "";
}
