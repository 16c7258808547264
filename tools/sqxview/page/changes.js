// What is set on the page is sent to the program, one message at a time: what changes while one is on
// its way goes into the next, and of each setting only its latest value.

import { showText } from "./elements.js";

const changes = new Map();  // not sent yet; of each setting the latest value
let isSending = false;
let mostBytes = Infinity;  // of a message; the program says it

/** The program takes messages of so many bytes. */
export function setMostBytes(bytes) {
    mostBytes = bytes;
}

/** The changes that fit into one message, at least one; they are taken from those to send. */
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

/** Takes a setting and the value that it has from now on, in words of the command line. */
export function change(name, value) {
    changes.delete(name);  // the order of the changes counts
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

/** Whether the program does not know yet of all that is set here. */
export function isChanging() {
    return changes.size > 0 || isSending;
}
