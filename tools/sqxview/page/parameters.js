// The parameters of all shaders. The controls of a shader are reused as long as the names, kinds
// and default values of its parameters are the same.

import { change } from "./changes.js";
import { colorControl, floatControl, matrixControl, row, textControl, tripleControl } from "./controls.js";
import { byId, make } from "./elements.js";

/** Returns a control for one element of a parameter. */
function elementControl(type, label, usual, changed) {
    switch (type) {
        case "float": return floatControl(label, usual ? usual[0] : null, changed);
        case "color": return colorControl(label, changed);
        case "string": return textControl(label, changed);
        case "matrix": return matrixControl(label, changed);
        default: return tripleControl(label, changed);
    }
}

/** Returns the number of numbers or texts in one element. */
function widthOf(type) {
    return { float: 1, string: 1, matrix: 16 }[type] ?? 3;
}

function kindOf(parameter) {
    const words = [parameter.output ? "output" : "", parameter.varying ? "varying" : "uniform",
        parameter.type + (parameter.length > 1 ? `[${parameter.length}]` : "")];
    const perPoint = parameter.default === null ? ", by default computed at each point" : "";
    return words.filter(Boolean).join(" ") + perPoint;
}

function parameterControl(number, parameter) {
    const width = widthOf(parameter.type);
    const isText = parameter.type === "string";
    let values = null;
    const elements = [...Array(parameter.length).keys()].map((index) => {
        const isArray = parameter.length > 1;
        const part = (all) => all && all.slice(index * width, (index + 1) * width);
        const label = isArray ? `${parameter.name}[${index}]` : parameter.name;
        const control = elementControl(parameter.type, label, part(parameter.default), (changed) => {
            values ??= Array(width * parameter.length).fill(isText ? "" : 0);
            values.splice(index * width, width, ...changed);
            change(`param.${number}.${parameter.name}`, values.join(","));
        });
        return { index: isArray ? index : undefined, control, part };
    });
    const element = row(parameter.name, kindOf(parameter), elements);
    const show = (now) => {
        values = now.value ?? now.default;
        values = values && [...values];
        element.classList.toggle("is-set", now.value !== undefined);
        for (const { control, part } of elements)
            control.show(part(values));
    };
    return { element, show };
}

// For each shader: its section and controls, and the parameters for which they were made.
const shaderParts = [];

/** Shows the values of all parameters, as the program lists them. */
export function showParameters(shaders) {
    shaders.forEach((shader, number) => {
        const kinds = shader.parameters.map((p) => [p.name, p.default, kindOf(p)]);
        const purpose = JSON.stringify([shader.path, kinds]);
        if (shaderParts[number]?.purpose !== purpose)
            shaderParts[number] = makeShaderPart(purpose, shader, number);
        const { controls, section } = shaderParts[number];
        controls.forEach((control, i) => control.show(shader.parameters[i]));
        section.querySelector(".reset").disabled = shader.parameters.every((p) => p.value === undefined);
    });
    const sections = shaderParts.map((part) => part.section);
    if (sections.some((section) => !section.isConnected))
        byId("parameters").replaceChildren(...sections);
}

function makeShaderPart(purpose, shader, number) {
    const controls = shader.parameters.map((parameter) => parameterControl(number, parameter));
    const reset = make("button", {
        type: "button", className: "reset", attributes: { "aria-label": `Reset ${shader.path} to the defaults` },
    }, "Reset");
    reset.addEventListener("click", () => {
        reset.focus();
        change("reset", String(number));
    });
    const none = controls.length === 0 ? [make("p", {}, "No parameters")] : [];
    const section = make("section", { className: "shader", attributes: { "aria-label": shader.path } },
        make("header", {}, make("h2", {}, shader.path), reset), ...none,
        ...controls.map((control) => control.element));
    return { purpose, controls, section };
}
