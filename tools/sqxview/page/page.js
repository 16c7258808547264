// The page shows what the program says and sends what is changed; it keeps nothing by itself. It
// asks for the state and gets it once there is a new one, so one question is always on its way.
"use strict";

const byId = (id) => document.getElementById(id);

/** An element with properties, attributes (under "attributes") and children. */
function make(tag, { attributes = {}, ...properties } = {}, ...children) {
    const element = Object.assign(document.createElement(tag), properties);
    for (const [name, value] of Object.entries(attributes))
        element.setAttribute(name, value);
    element.append(...children);
    return element;
}

// ---- What is sent.

const changes = new Map();  // not sent yet; of each setting the latest value
let isSending = false;

function change(name, value) {
    changes.delete(name);  // the order of the changes counts
    changes.set(name, value);
    if (!isSending)
        send();
}

async function send() {
    isSending = true;
    while (changes.size > 0) {
        const form = new URLSearchParams([...changes]);
        changes.clear();
        try {
            const response = await fetch("change", { method: "POST", body: form });
            const answer = await response.json();
            showText("refusal", response.ok ? "" : answer.fault);
        } catch {
            showText("refusal", "The program did not take this value");
        }
    }
    isSending = false;
}

function showText(id, text) {
    byId(id).textContent = text;
    byId(id).hidden = text === "";
}

// ---- Controls for values. Each has a field "element", and "show" which takes the numbers or texts
// to show, or null if there are none. They call "changed" with all of them.

/** The same as the program's: screens show sRGB, shaders compute with linear values. */
function toScreen(value) {
    const v = Math.min(Math.max(value, 0), 1);
    return v <= 0.0031308 ? v * 12.92 : 1.055 * v ** (1 / 2.4) - 0.055;
}

function fromScreen(value) {
    return value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
}

function colorWord(numbers) {
    return "#" + numbers.map((n) => Math.round(toScreen(n) * 255).toString(16).padStart(2, "0")).join("");
}

function colorNumbers(word) {
    const parts = [1, 3, 5].map((i) => parseInt(word.slice(i, i + 2), 16) / 255);
    return parts.map((part) => Number(fromScreen(part).toPrecision(4)));
}

/** A text field for one number. */
function numberField(label, changed) {
    const input = make("input", { type: "number", step: "any", attributes: { "aria-label": label } });
    input.addEventListener("input", () => {
        const isNumber = input.value !== "" && Number.isFinite(input.valueAsNumber);
        input.setAttribute("aria-invalid", String(!isNumber));
        if (isNumber)
            changed(input.valueAsNumber);
    });
    const show = (number) => {
        if (document.activeElement === input)
            return;  // somebody is typing
        input.value = number === null ? "" : Number(number.toPrecision(6));
        input.setAttribute("aria-invalid", "false");
    };
    return { element: input, show };
}

/** Several numbers side by side. */
function numbersControl(labels, changed) {
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

/** From 0 to twice the default value, or as far as the value that is set. */
function sliderRange(usual, number) {
    const reach = Math.max(usual === 0 ? 1 : 2 * Math.abs(usual), Math.abs(number));
    return [usual < 0 || number < 0 ? -reach : 0, reach];
}

function floatControl(label, usual, changed) {
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

function colorControl(label, changed) {
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

function tripleControl(label, changed) {
    return numbersControl(["x", "y", "z"].map((part) => `${label}, ${part}`), changed);
}

function matrixControl(label, changed) {
    const places = [...Array(16).keys()].map((i) => `${label}, row ${Math.floor(i / 4) + 1} column ${i % 4 + 1}`);
    const numbers = numbersControl(places, changed);
    return { element: [make("div", { className: "matrix" }, ...numbers.element)], show: numbers.show };
}

function textControl(label, changed) {
    const input = make("input", { type: "text", attributes: { "aria-label": label } });
    input.addEventListener("input", () => changed([input.value]));
    const show = (texts) => {
        if (document.activeElement !== input)
            input.value = texts ? texts[0] : "";
    };
    return { element: [input], show };
}

/** For one element of a parameter. */
function elementControl(type, label, usual, changed) {
    switch (type) {
        case "float": return floatControl(label, usual ? usual[0] : null, changed);
        case "color": return colorControl(label, changed);
        case "string": return textControl(label, changed);
        case "matrix": return matrixControl(label, changed);
        default: return tripleControl(label, changed);
    }
}

/** How many numbers or texts one element has. */
function widthOf(type) {
    return { float: 1, string: 1, matrix: 16 }[type] ?? 3;
}

/** A parameter, or one of the picture's settings: its name and a control for each element. */
function row(name, kind, elements) {
    const lines = elements.map(({ index, control }) => make("div", { className: "element" },
        ...(index === undefined ? [] : [make("span", { className: "index" }, `[${index}]`)]),
        ...control.element));
    return make("div", { className: "row", attributes: { role: "group", "aria-label": name } },
        make("div", { className: "name" }, make("b", {}, name), make("span", { className: "kind" }, kind)),
        make("div", {}, ...lines));
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

// ---- The parameters of all shaders. The controls stay as long as the parameters are the same.

const shaderParts = [];  // of each shader: what its controls are for, and the controls

function showParameters(shaders) {
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

// ---- The picture's settings.

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

/** Width and height, which are sent together. */
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

// ---- Lights: all are sent together, as the command line takes them.

let lights = [];
let lightControls = [];

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

function showLights(now, hasLightShader) {
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

// ---- Reports.

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

function showFaults(state) {
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
        return;  // what stands there is not read out again
    shownFaults = text;
    byId("faults").replaceChildren(...parts.map(([title, isFault, report, excerpts]) =>
        reportPart(title, isFault, report, ...excerpts.map(excerptPart))));
}

// ---- The picture.

let shownPicture = 0;

/** A new picture takes the place of the old one when it has arrived, so that nothing flickers. */
async function showPicture(state) {
    const { number } = state.picture;
    if (number === 0 || number === shownPicture)
        return;
    shownPicture = number;
    const next = new Image();
    next.src = `picture.png?number=${number}`;
    try {
        await next.decode();
    } catch {
        return;  // the next state asks again
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

function showLook(state) {
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

// ---- Byte-code and listing.

let state = null;
let shownCode = "";

async function showCode() {
    const options = state.shaders.map((shader) => shader.path);
    const select = byId("code-shader");
    if (select.options.length !== options.length)
        select.replaceChildren(...options.map((path, value) => make("option", { value }, path)));
    const number = Number(select.value);
    const level = Number(byId("code-level").value);
    const wanted = JSON.stringify([number, level, state.shaders[number].version]);
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

function showListing(shaders) {
    byId("listing").replaceChildren(...shaders.map((shader) => make("section", {},
        make("h2", {}, shader.path), make("pre", {}, shader.listing || "Not compiled yet"))));
}

// ---- All of it.

function show(now) {
    state = now;
    settingControls ??= makeSettingControls();
    showLook(now);
    showPicture(now);
    showFaults(now);
    showListing(now.shaders);
    showCode();
    if (changes.size > 0 || isSending)
        return;  // it does not know yet what is set here
    showParameters(now.shaders);
    for (const { control, of } of settingControls)
        control.show(of(now.settings));
    showLights(now.settings.lights, now.shaders.some((shader) => shader.listing.startsWith("light")));
}

async function follow() {
    let version = null;
    for (;;) {
        try {
            const response = await fetch(version === null ? "state" : `state?after=${version}`);
            if (!response.ok)
                throw new Error(response.statusText);
            const now = await response.json();
            version = now.version;
            show(now);
        } catch {
            version = null;
            byId("status").textContent = "The program does not answer; trying again";
            await new Promise((resolve) => setTimeout(resolve, 1000));
        }
    }
}

function showTab(chosen) {
    for (const tab of document.querySelectorAll("[role=tab]")) {
        const isChosen = tab === chosen;
        tab.setAttribute("aria-selected", String(isChosen));
        tab.tabIndex = isChosen ? 0 : -1;
        byId(tab.getAttribute("aria-controls")).hidden = !isChosen;
    }
    if (state)
        showCode();
}

function setUp() {
    const tabs = [...document.querySelectorAll("[role=tab]")];
    tabs.forEach((tab, i) => {
        tab.addEventListener("click", () => showTab(tab));
        tab.addEventListener("keydown", (event) => {
            const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
            if (!step)
                return;
            const next = tabs[(i + step + tabs.length) % tabs.length];
            next.focus();
            showTab(next);
        });
    });
    byId("code-level").addEventListener("change", showCode);
    byId("code-shader").addEventListener("change", showCode);
    byId("add-light").addEventListener("click", () => {
        lights.push({ kind: "point", from: [-2.5, 3, -4], to: [0, 0, 0], color: [1, 1, 1], intensity: 1 });
        sendLights();
    });
    byId("keep").addEventListener("click", (event) => {
        if (byId("keep").getAttribute("aria-disabled") === "true")
            event.preventDefault();
    });
    byId("copy").addEventListener("click", async () => {
        try {
            await navigator.clipboard.writeText(byId("command").textContent);
            byId("status").textContent = "The command line is copied";
        } catch {
            getSelection().selectAllChildren(byId("command"));
            byId("status").textContent = "The command line is selected; copy it by hand";
        }
    });
    follow();
}

setUp();
