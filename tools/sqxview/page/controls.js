// Controls for values. Each has "element", an array of its HTML elements, and "show", a function
// that gets an array of the numbers or texts to show, or null if there are none. After a change by
// the user, "changed" is called with an array of all values. Only a number field has one element
// and one number in place of arrays. A control with the focus is not updated by "show": the user is
// changing it.

import { colorNumbers, colorWord } from "./colors.js";
import { make } from "./elements.js";

/** A field for one number. While its text is no number, it is marked as invalid and "changed" is
    not called. */
export function numberField(label, changed) {
    const input = make("input", { type: "number", step: "any", attributes: { "aria-label": label } });
    input.addEventListener("input", () => {
        const isNumber = input.value !== "" && Number.isFinite(input.valueAsNumber);
        input.setAttribute("aria-invalid", String(!isNumber));
        if (isNumber)
            changed(input.valueAsNumber);
    });
    const show = (number) => {
        if (document.activeElement === input)
            return;  // the user is typing
        input.value = number === null ? "" : Number(number.toPrecision(6));
        input.setAttribute("aria-invalid", "false");
    };
    return { element: input, show };
}

/** Fields for several numbers, side by side. */
export function numbersControl(labels, changed) {
    let values = labels.map(() => 0);
    const fields = labels.map((label, i) => numberField(label, (number) => {
        values[i] = number;
        changed([...values]);
    }));
    const show = (numbers) => {
        if (numbers)
            values = [...numbers];
        fields.forEach((field, i) => field.show(numbers ? numbers[i] : null));
    };
    return { element: fields.map((field) => field.element), show };
}

/** Returns the range from 0 to twice the default value, or to 1 if the default is 0, extended to
    include the current value. If one of the values is negative, the range is symmetric about 0. */
function sliderRange(usual, number) {
    const reach = Math.max(usual === 0 ? 1 : 2 * Math.abs(usual), Math.abs(number));
    return [usual < 0 || number < 0 ? -reach : 0, reach];
}

/** A number field and a slider, whose range depends on the current value and on the default value
    `usual`, which may be null. */
export function floatControl(label, usual, changed) {
    const field = numberField(label, (number) => {
        showSlider(number);
        changed([number]);
    });
    const slider = make("input", { type: "range", attributes: { "aria-label": label + ", slider" } });
    slider.addEventListener("input", () => {
        const number = Number(slider.valueAsNumber.toPrecision(4));
        field.show(number);
        changed([number]);
    });
    const showSlider = (number) => {
        const [low, high] = sliderRange(usual ?? 0, number);
        Object.assign(slider, { min: low, max: high, step: (high - low) / 200, value: number });
    };
    const show = (numbers) => {
        field.show(numbers ? numbers[0] : null);
        if (document.activeElement !== slider)
            showSlider(numbers ? numbers[0] : 0);
    };
    return { element: [slider, field.element], show };
}

/** Fields for three numbers, and the browser's color picker. */
export function colorControl(label, changed) {
    const numbers = numbersControl(["red", "green", "blue"].map((part) => `${label}, ${part}`), (values) => {
        picker.value = colorWord(values);
        changed(values);
    });
    const picker = make("input", { type: "color", attributes: { "aria-label": label } });
    picker.addEventListener("input", () => {
        const values = colorNumbers(picker.value);
        numbers.show(values);
        changed(values);
    });
    const show = (values) => {
        numbers.show(values);
        if (values && document.activeElement !== picker)
            picker.value = colorWord(values);
    };
    return { element: [picker, ...numbers.element], show };
}

export function tripleControl(label, changed) {
    return numbersControl(["x", "y", "z"].map((part) => `${label}, ${part}`), changed);
}

export function matrixControl(label, changed) {
    const places = [...Array(16).keys()].map((i) => `${label}, row ${Math.floor(i / 4) + 1} column ${i % 4 + 1}`);
    const numbers = numbersControl(places, changed);
    return { element: [make("div", { className: "matrix" }, ...numbers.element)], show: numbers.show };
}

export function textControl(label, changed) {
    const input = make("input", { type: "text", attributes: { "aria-label": label } });
    input.addEventListener("input", () => changed([input.value]));
    const show = (texts) => {
        if (document.activeElement !== input)
            input.value = texts ? texts[0] : "";
    };
    return { element: [input], show };
}

/** A row for a parameter or a setting: its name, a text about its kind, and a control for each
    element. */
export function row(name, kind, elements) {
    const lines = elements.map(({ index, control }) => make("div", { className: "element" },
        ...(index === undefined ? [] : [make("span", { className: "index" }, `[${index}]`)]),
        ...control.element));
    return make("div", { className: "row", attributes: { role: "group", "aria-label": name } },
        make("div", { className: "name" }, make("b", {}, name), make("span", { className: "kind" }, kind)),
        make("div", {}, ...lines));
}
