// Sends the settings that the user changes to the program, one message at a time. Changes that are
// made while a message is sent are collected for later ones, with only the latest value of each
// setting.

import { showText } from "./elements.js";

const changes = new Map();  // not sent yet: setting and latest value
let isSending = false;
let mostBytes = Infinity;  // of a message; the state of the program contains this limit

/** Sets the size of the largest message that the program accepts. */
export function setMostBytes(bytes) {
    mostBytes = bytes;
}

/** Removes and returns the first changes, as many as fit into one message; at least one, even if it
    is too long. */
function takeForm() {
    const form = new URLSearchParams();
    for (const [name, value] of changes) {
        const longer = new URLSearchParams([...form, [name, value]]);
        if (form.size > 0 && longer.toString().length > mostBytes)
            break;
        form.set(name, value);
        changes.delete(name);
    }
    return form;
}

/** Changes a setting of the program; SqxViewSession.h lists the names and what their values are. */
export function change(name, value) {
    changes.delete(name);  // moves it to the end, since the order of changes matters
    changes.set(name, value);
    if (!isSending)
        send();
}

async function send() {
    isSending = true;
    while (changes.size > 0) {
        const form = takeForm();
        if (form.toString().length > mostBytes) {
            showText("refusal", `The value is too long: the program takes ${mostBytes} bytes at most`);
            continue;
        }
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

/** True if the program has not answered all changes yet. */
export function isChanging() {
    return changes.size > 0 || isSending;
}
