// What is set on the page is sent to the program, one message at a time: what changes while one is on
// its way goes into the next, and of each setting only its latest value.

import { showText } from "./elements.js";

const changes = new Map();  // not sent yet; of each setting the latest value
let isSending = false;

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

/** Whether the program does not know yet of all that is set here. */
export function isChanging() {
    return changes.size > 0 || isSending;
}
