// Converts colors between the numbers of shaders and the notation of browsers.

/** Converts a linear value of a shader to sRGB for the screen, as the program does. */
function toScreen(value) {
    const v = Math.min(Math.max(value, 0), 1);
    return v <= 0.0031308 ? v * 12.92 : 1.055 * v ** (1 / 2.4) - 0.055;
}

function fromScreen(value) {
    return value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
}

/** Converts three linear numbers to "#rrggbb", the value of a color field. */
export function colorWord(numbers) {
    return "#" + numbers.map((n) => Math.round(toScreen(n) * 255).toString(16).padStart(2, "0")).join("");
}

/** Converts "#rrggbb" to three linear numbers. */
export function colorNumbers(word) {
    const parts = [1, 3, 5].map((i) => parseInt(word.slice(i, i + 2), 16) / 255);
    return parts.map((part) => Number(fromScreen(part).toPrecision(4)));
}
