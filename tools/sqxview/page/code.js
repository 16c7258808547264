// Shows the byte-code and the listing of the parameters.

import { byId, make, showText } from "./elements.js";

let shaders = [];
let shownCode = "";

/** Updates the list of shaders and the listing, and the byte-code if it is visible. */
export function takeShaders(now) {
    shaders = now;
    showCode();
    showListing();
}

/** Shows the byte-code of the selected shader and level and the counts of all levels, unless they
    are hidden or shown already. */
export async function showCode() {
    if (shaders.length === 0)
        return;  // no state has arrived yet
    const options = shaders.map((shader) => shader.path);
    const select = byId("code-shader");
    if (select.options.length !== options.length)
        select.replaceChildren(...options.map((path, value) => make("option", { value }, path)));
    const number = Number(select.value);
    const level = Number(byId("code-level").value);
    const wanted = JSON.stringify([number, level, shaders[number].version]);
    if (byId("code").hidden || wanted === shownCode)
        return;
    shownCode = wanted;
    try {
        const answer = await (await fetch(`code?shader=${number}&level=${level}`)).json();
        if (wanted !== shownCode)
            return;
        showText("code-fault", answer.fault);
        byId("code-text").textContent = answer.text ?? "";
        byId("counts").replaceChildren(...(answer.counts ?? []).map((count, i) =>
            make("tr", { attributes: { "aria-current": String(i === level) } },
                make("th", { scope: "row" }, `-O${i}`), make("td", {}, count.instructions),
                make("td", {}, count.parallelRuns), make("td", {}, count.locals))));
    } catch {
        shownCode = "";
    }
}

function showListing() {
    byId("listing").replaceChildren(...shaders.map((shader) => make("section", {},
        make("h2", {}, shader.path), make("pre", {}, shader.listing || "Not compiled yet"))));
}
