// The picture and its status.

import { byId } from "./elements.js";

let shownPicture = 0;

/** Replaces the picture only when the new one has arrived, so that nothing flickers. */
export async function showPicture(state) {
    const { number } = state.picture;
    if (number === 0 || number === shownPicture)
        return;
    shownPicture = number;
    const next = new Image();
    next.src = `picture.png?number=${number}`;
    try {
        await next.decode();
    } catch {
        if (shownPicture === number)
            shownPicture = 0;  // the next state requests it again
        return;
    }
    if (number !== shownPicture)
        return;
    Object.assign(byId("picture"), { src: next.src, hidden: false });
    byId("picture").dataset.number = number;
}

function statusOf(state) {
    const { picture, shaders } = state;
    if (shaders.some((shader) => !shader.isCompiled))
        return "Compiling";
    if (shaders.some((shader) => shader.isRefused))
        return "Not compiled";
    if (picture.fault !== "")
        return "The picture could not be finished";
    if (picture.isWhole)
        return `Whole after ${picture.milliseconds} ms`;
    return `Drawing, for ${state.timeLimit} s at most`;
}

/** Shows the names of the shaders, the status of the picture, whether the picture is outdated, and
    the command that makes it. */
export function showLook(state) {
    const { picture, shaders } = state;
    const names = shaders.map((shader) => shader.path.split("/").at(-1)).join(" + ");
    const isStale = shaders.some((shader) => shader.isRefused) || (picture.fault !== "" && !picture.isShown);
    document.title = `${isStale ? "! " : ""}${names} - sqxview`;
    byId("names").textContent = names;
    if (byId("status").textContent !== statusOf(state))
        byId("status").textContent = statusOf(state);
    byId("picture").classList.toggle("stale", isStale);
    byId("picture").alt = `${state.settings.shape} shaded by ${names}`;
    byId("stale").hidden = !isStale || picture.number === 0;
    byId("command").textContent = state.command;
    byId("keep").setAttribute("aria-disabled", String(!picture.isWhole || isStale));
}
