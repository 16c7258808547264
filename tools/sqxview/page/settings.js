// The settings of the picture except the lights.

import { change } from "./changes.js";
import { colorControl, numberField, numbersControl, row } from "./controls.js";
import { byId, make } from "./elements.js";

let settingControls = null;

function countControl(label, most, changed) {
    const field = numberField(label, (number) => changed([number]));
    Object.assign(field.element, { min: 1, max: most, step: 1 });
    return { element: [field.element], show: (numbers) => field.show(numbers[0]) };
}

function shapeControl() {
    const select = make("select", { attributes: { "aria-label": "Shape" } },
        ...["sphere", "square", "torus"].map((shape) => make("option", {}, shape)));
    select.addEventListener("change", () => change("shape", select.value));
    return { element: [select], show: (shape) => { select.value = shape; } };
}

/** Fields for width and height, which are sent together. */
function sizeControl() {
    const numbers = numbersControl(["Width in pixels", "Height in pixels"], (size) => change("size", size.join("x")));
    for (const input of numbers.element)
        Object.assign(input, { min: 1, max: 8192, step: 1 });
    return numbers;
}

function makeSettingControls() {
    const color = (label, name) => colorControl(label, (values) => change(name, values.join(",")));
    const rows = [
        ["Shape", "what is shaded", shapeControl(), (s) => s.shape],
        ["Size", "width and height in pixels", sizeControl(), (s) => [s.width, s.height]],
        ["Samples", "along each edge of a pixel", countControl("Samples", 16, ([n]) => change("samples", n)), (s) => [s.samples]],
        ["Background", "beside and through the shape", color("Background", "background"), (s) => s.background],
        ["Cs", "color of the surface", color("Cs", "color"), (s) => s.color],
        ["Os", "opacity of the surface", color("Os", "opacity"), (s) => s.opacity],
    ];
    byId("settings").replaceChildren(...rows.map(([name, kind, control]) => row(name, kind, [{ control }])));
    return rows.map(([, , control, of]) => ({ control, of }));
}

/** Shows the settings, as the program lists them. */
export function showSettings(settings) {
    settingControls ??= makeSettingControls();
    for (const { control, of } of settingControls)
        control.show(of(settings));
}
