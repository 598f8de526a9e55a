// What eyes without one kind of cones see, by Machado, Oliveira and Fernandes, "A physiologically-based
// model for simulation of color vision deficiency", 2009, at full severity; on linear sRGB.

import { fromLinear, linearOf } from "../../qml/logic/color_difference.mjs";

const EYES = {
    common: [[1, 0, 0], [0, 1, 0], [0, 0, 1]],
    protanopia: [[0.152286, 1.052583, -0.204868], [0.114503, 0.786281, 0.099216],
                 [-0.003882, -0.048116, 1.051998]],
    deuteranopia: [[0.367322, 0.860646, -0.227968], [0.280085, 0.672501, 0.047413],
                   [-0.011820, 0.042940, 0.968881]],
    tritanopia: [[1.255528, -0.076749, -0.178779], [-0.078411, 0.930809, 0.147602],
                 [0.004733, 0.691367, 0.303900]]
};

export const eyes = Object.keys(EYES);

export function seenBy(eye, color) {
    const parts = linearOf(color);
    return fromLinear(EYES[eye].map(row => row.reduce((sum, part, i) => sum + part * parts[i], 0)));
}
