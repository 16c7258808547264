// Elements of the page: existing ones, and new ones.

/** The element of the page with this id. */
export const byId = (id) => document.getElementById(id);

/** An element with properties, attributes (under "attributes") and children. */
export function make(tag, { attributes = {}, ...properties } = {}, ...children) {
    const element = Object.assign(document.createElement(tag), properties);
    for (const [name, value] of Object.entries(attributes))
        element.setAttribute(name, value);
    element.append(...children);
    return element;
}

/** Puts a text into an element, which is hidden if there is none. */
export function showText(id, text) {
    byId(id).textContent = text;
    byId(id).hidden = text === "";
}
