// Colours as `{r, g, b}` of sRGB, 0 to 1: how far apart two of them are to the eye.

function toLinear(part) {
    return part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
}

function toGamma(part) {
    return part <= 0.0031308 ? 12.92 * part : 1.055 * part ** (1 / 2.4) - 0.055;
}

export function linearOf(color) {
    return [color.r, color.g, color.b].map(toLinear);
}

// What is out of reach is cut off.
export function fromLinear(parts) {
    const [r, g, b] = parts.map(part => toGamma(Math.min(1, Math.max(0, part))));
    return {r: r, g: g, b: b};
}

// CIELAB under D65.
function labOf(color) {
    const [r, g, b] = linearOf(color);
    const [x, y, z] = [
        (0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047,
        0.2126729 * r + 0.7151522 * g + 0.0721750 * b,
        (0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883
    ].map(t => t > 216 / 24389 ? Math.cbrt(t) : (24389 / 27 * t + 16) / 116);
    return {l: 116 * y - 16, a: 500 * (x - y), b: 200 * (y - z)};
}

function cosine(degrees) {
    return Math.cos(degrees * Math.PI / 180);
}

function hueOf(a, b) {
    return (Math.atan2(b, a) * 180 / Math.PI + 360) % 360;
}

// CIEDE2000 of two CIELAB colours, by Sharma, Wu and Dalal, "The CIEDE2000 color-difference formula:
// implementation notes, supplementary test data, and mathematical observations", 2005.
export function labDifference(one, other) {
    const highPart = chroma => Math.sqrt(chroma ** 7 / (chroma ** 7 + 25 ** 7));
    const meanPlain = (Math.hypot(one.a, one.b) + Math.hypot(other.a, other.b)) / 2;
    const stretch = 1.5 - highPart(meanPlain) / 2;
    const [c1, c2] = [one, other].map(lab => Math.hypot(stretch * lab.a, lab.b));
    const [h1, h2] = [one, other].map(lab => hueOf(stretch * lab.a, lab.b));
    const gray = c1 * c2 === 0;

    let turn = gray ? 0 : h2 - h1;
    turn -= Math.abs(turn) > 180 ? 360 * Math.sign(turn) : 0;
    let hue = gray ? h1 + h2 : (h1 + h2) / 2;
    if (!gray && Math.abs(h1 - h2) > 180) {
        hue += h1 + h2 < 360 ? 180 : -180;
    }
    const l = (one.l + other.l) / 2;
    const c = (c1 + c2) / 2;
    const t = 1 - 0.17 * cosine(hue - 30) + 0.24 * cosine(2 * hue) + 0.32 * cosine(3 * hue + 6)
        - 0.20 * cosine(4 * hue - 63);
    const dl = (other.l - one.l) / (1 + 0.015 * (l - 50) ** 2 / Math.sqrt(20 + (l - 50) ** 2));
    const dc = (c2 - c1) / (1 + 0.045 * c);
    const dh = 2 * Math.sqrt(c1 * c2) * Math.sin(turn * Math.PI / 360) / (1 + 0.015 * c * t);
    const rotation = -2 * highPart(c) * Math.sin(Math.PI / 3 * Math.exp(-(((hue - 275) / 25) ** 2)));
    return Math.sqrt(dl ** 2 + dc ** 2 + dh ** 2 + rotation * dc * dh);
}

// CIEDE2000. 1 is about what can just be seen side by side.
export function difference(one, other) {
    return labDifference(labOf(one), labOf(other));
}

// From OKLCh (B. Ottosson, "A perceptual color space for image processing", 2020): lightness 0 to 1, chroma,
// hue in degrees. A chroma that the screen does not reach is lowered until it does.
export function fromOklch(lightness, chroma, hue) {
    const isShown = some => oklchToLinear(lightness, some, hue)
        .every(part => part >= -1e-4 && part <= 1.0001);
    let reached = isShown(chroma) ? chroma : 0;
    for (let above = chroma; above - reached > 1e-4;) {
        const middle = (reached + above) / 2;
        if (isShown(middle)) {
            reached = middle;
        } else {
            above = middle;
        }
    }
    return fromLinear(oklchToLinear(lightness, reached, hue));
}

function oklchToLinear(lightness, chroma, hue) {
    const a = chroma * cosine(hue);
    const b = chroma * cosine(hue - 90);
    const l = (lightness + 0.3963377774 * a + 0.2158037573 * b) ** 3;
    const m = (lightness - 0.1055613458 * a - 0.0638541728 * b) ** 3;
    const s = (lightness - 0.0894841775 * a - 1.2914855480 * b) ** 3;
    return [
        4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
        -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
        -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s
    ];
}
