// The lights of the picture. All lights are sent together, written as on the command line. Their
// controls are reused as long as the lights have the same kinds.

import { change } from "./changes.js";
import { colorControl, floatControl, row, tripleControl } from "./controls.js";
import { byId, make } from "./elements.js";

let lights = [];
let lightControls = [];

/** Returns a light as written on the command line. */
function lightWord(light) {
    const places = { point: ["from"], distant: ["from", "to"], ambient: [] }[light.kind];
    return [light.kind, ...places.map((place) => `${place}=${light[place].join(",")}`),
        `color=${light.color.join(",")}`, `intensity=${light.intensity}`].join(":");
}

function sendLights() {
    change("lights", lights.map(lightWord).join(" "));
}

function lightControl(light, number) {
    const title = `Light ${number + 1}`;
    const set = (name) => (values) => {
        lights[number][name] = name === "intensity" ? values[0] : values;
        sendLights();
    };
    const kind = make("select", { attributes: { "aria-label": `${title}, kind` } },
        ...["point", "distant", "ambient"].map((word) => make("option", {}, word)));
    kind.value = light.kind;
    kind.addEventListener("change", () => {
        const from = kind.value === "ambient" ? [0, 0, 0] : [-2.5, 3, -4];
        Object.assign(lights[number], { kind: kind.value, from, to: [0, 0, 0] });
        sendLights();
    });
    const rows = [["from", "where it stands", tripleControl(`${title}, from`, set("from")), light.kind !== "ambient"],
        ["to", "where it points", tripleControl(`${title}, to`, set("to")), light.kind === "distant"],
        ["color", "", colorControl(`${title}, color`, set("color")), true],
        ["intensity", "", floatControl(`${title}, intensity`, 1, set("intensity")), true]]
        .filter(([, , , isThere]) => isThere);
    const remove = make("button", { type: "button", attributes: { "aria-label": `Remove light ${number + 1}` } }, "Remove");
    remove.addEventListener("click", () => {
        lights.splice(number, 1);
        sendLights();
        byId("add-light").focus();
    });
    const element = make("fieldset", {}, make("legend", {}, title),
        make("div", { className: "fields" }, make("label", {}, "Kind ", kind), remove),
        ...rows.map(([name, what, control]) => row(name, what, [{ control }])));
    const show = (now) => rows.forEach(([name, , control]) =>
        control.show(name === "intensity" ? [now.intensity] : now[name]));
    return { element, show, kind: light.kind };
}

/** Shows the lights that the program lists. */
export function showLights(now, hasLightShader) {
    lights = now.map((light) => ({ ...light }));
    if (lightControls.length !== lights.length || lightControls.some((c, i) => c.kind !== lights[i].kind)
        || lights.length === 0) {
        lightControls = lights.map(lightControl);
        const none = make("p", {}, hasLightShader ? "The light shaders light the shape."
            : "The default lights light the shape: from the upper left, from the right, and a little from everywhere.");
        byId("lights").replaceChildren(...(lights.length ? lightControls.map((c) => c.element) : [none]));
    }
    lightControls.forEach((control, i) => control.show(lights[i]));
}

/** Adds a light of the most common kind. */
export function addLight() {
    lights.push({ kind: "point", from: [-2.5, 3, -4], to: [0, 0, 0], color: [1, 1, 1], intensity: 1 });
    sendLights();
}
