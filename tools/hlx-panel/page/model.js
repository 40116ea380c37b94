// The values of the unit: what they are called, what they are now, and who wants to know.

export class Model {
  values = new Map(); // full name -> { name, label, group, area, kind, unit, words, least, most, raw, text }
  commands = [];
  #watchers = new Map();
  #everybody = new Set();

  describe({ values, commands }) {
    this.values = new Map(values.map((value) => [value.name, { ...value, raw: null, text: "" }]));
    this.commands = commands;
  }

  // { "power.acc": [1, "on"] }
  apply(changes) {
    for (const [name, [raw, text]] of Object.entries(changes)) {
      const value = this.values.get(name);
      if (!value) continue;
      value.raw = raw;
      value.text = text;
      for (const watcher of this.#watchers.get(name) ?? []) watcher(value);
      for (const watcher of this.#everybody) watcher(value);
    }
  }

  watch(names, watcher) {
    for (const name of [names].flat()) {
      if (!this.#watchers.has(name)) this.#watchers.set(name, new Set());
      this.#watchers.get(name).add(watcher);
      if (this.values.has(name)) watcher(this.values.get(name));
    }
  }

  watchAll(watcher) {
    this.#everybody.add(watcher);
  }

  raw(name) {
    return this.values.get(name)?.raw ?? null;
  }

  forgetWatchers() {
    this.#watchers.clear();
    this.#everybody.clear();
  }
}

// An element with attributes and children; text stays text.
export function make(tag, attributes = {}, ...children) {
  const svg = attributes.svg ? "http://www.w3.org/2000/svg" : "http://www.w3.org/1999/xhtml";
  const element = document.createElementNS(svg, tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (name === "svg") continue;
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
    else if (value !== null && value !== false) element.setAttribute(name, value === true ? "" : value);
  }
  element.append(...children);
  return element;
}

export const svg = (tag, attributes = {}, ...children) => make(tag, { ...attributes, svg: true }, ...children);
