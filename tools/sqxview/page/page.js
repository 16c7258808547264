// The page shows the state of the program and sends changes to the program, which stores all values
// and settings. The program answers a request for the state when the state changes, or after some
// seconds; the page then sends the next request.

import { isChanging, setMostBytes } from "./changes.js";
import { showCode, takeShaders } from "./code.js";
import { byId } from "./elements.js";
import { addLight, showLights } from "./lights.js";
import { showParameters } from "./parameters.js";
import { showLook, showPicture } from "./picture.js";
import { showFaults } from "./reports.js";
import { showSettings } from "./settings.js";

function show(now) {
    setMostBytes(now.mostBytes);
    showLook(now);
    showPicture(now);
    showFaults(now);
    takeShaders(now.shaders);
    if (isChanging())
        return;  // the state does not contain all changes of the user yet
    showParameters(now.shaders);
    showSettings(now.settings);
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
    byId("add-light").addEventListener("click", addLight);
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
