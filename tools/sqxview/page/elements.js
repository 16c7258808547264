// Finds and creates elements of the page.

/** Returns the element of the page with this id. */
export const byId = (id) => document.getElementById(id);

/** Creates an element with properties, attributes (under "attributes") and children. */
export function make(tag, { attributes = {}, ...properties } = {}, ...children) {
    const element = Object.assign(document.createElement(tag), properties);
    for (const [name, value] of Object.entries(attributes))
        element.setAttribute(name, value);
    element.append(...children);
    return element;
}

/** Sets the text of an element, and hides the element if the text is empty. */
export function showText(id, text) {
    byId(id).textContent = text;
    byId(id).hidden = text === "";
}
