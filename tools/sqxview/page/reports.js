// The reports of the compiler, hints about dropped values, errors while rendering the picture, and
// the texts that shaders print.

import { byId, make } from "./elements.js";

function excerptPart(excerpt) {
    const digits = String(excerpt.lines.at(-1).number).length;
    const lines = excerpt.lines.map((line) => make("span", { className: line.marked ? "marked" : "" },
        `${line.marked ? ">" : " "} ${String(line.number).padStart(digits)}  ${line.text}\n`));
    return make("div", { className: "excerpt" }, make("h3", {}, excerpt.file), make("pre", {}, ...lines));
}

function reportPart(title, isFault, text, ...more) {
    return make("section", { className: isFault ? "report is-fault" : "report" },
        make("h2", {}, title), make("pre", {}, text), ...more);
}

let shownFaults = "";

/** Shows all reports of the state, unless they are shown already. */
export function showFaults(state) {
    const parts = [];
    for (const shader of state.shaders) {
        if (shader.report !== "")
            parts.push([shader.isRefused ? `${shader.path} does not compile` : `Warnings for ${shader.path}`,
                shader.isRefused, shader.report, shader.excerpts]);
        if (shader.hint !== "")
            parts.push([`Values of ${shader.path}`, false, shader.hint, []]);
    }
    if (state.picture.fault !== "")
        parts.push(["The picture could not be finished", true, state.picture.fault, []]);
    if (state.picture.notes !== "")
        parts.push(["What the shaders say", false, state.picture.notes, []]);
    const text = JSON.stringify(parts);
    if (text === shownFaults)
        return;  // a screen reader must not read the same report again
    shownFaults = text;
    byId("faults").replaceChildren(...parts.map(([title, isFault, report, excerpts]) =>
        reportPart(title, isFault, report, ...excerpts.map(excerptPart))));
}
