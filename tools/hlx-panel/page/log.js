// Events and calls as they come: newest first, filtered, paused, copied.
import { make } from "./model.js";

const KEPT = 500;

export class Log {
  #entries = []; // newest first
  #paused = false;
  #filter = "";
  #list;
  #words;

  // words(entry): what a line says, as [time, heading, details]
  constructor(root, words) {
    this.#list = root.querySelector(".log");
    this.#words = words;
    const form = root.querySelector("form");
    form.onsubmit = (event) => event.preventDefault();
    form.elements.filter.oninput = ({ currentTarget }) => {
      this.#filter = currentTarget.value.toLowerCase();
      this.#draw();
    };
    form.elements.pause.onclick = ({ currentTarget }) => {
      this.#paused = !this.#paused;
      currentTarget.setAttribute("aria-pressed", String(this.#paused));
      if (!this.#paused) this.#draw();
    };
    form.elements.copy.onclick = ({ currentTarget }) => this.#copy(currentTarget);
  }

  add(entries) {
    if (!entries?.length) return;
    this.#entries = [...entries.toReversed(), ...this.#entries].slice(0, KEPT);
    if (this.#paused) return;
    const lines = entries.filter((entry) => this.#matches(entry)).map((entry) => this.#line(entry));
    this.#list.prepend(...lines.reverse());
    while (this.#list.childElementCount > KEPT) this.#list.lastElementChild.remove();
  }

  note(text) {
    this.add([{ note: text, time: new Date().toISOString() }]);
  }

  #text(entry) {
    return entry.note ? [clock(entry.time), entry.note, ""] : this.#words(entry);
  }

  #matches(entry) {
    return !this.#filter || this.#text(entry).join(" ").toLowerCase().includes(this.#filter);
  }

  #line(entry) {
    const [time, heading, details] = this.#text(entry);
    return make("li", { class: entry.note ? "note" : "" }, make("time", {}, time), make("b", {}, heading), ` ${details}`);
  }

  #draw() {
    this.#list.replaceChildren(...this.#entries.filter((entry) => this.#matches(entry)).map((entry) => this.#line(entry)));
  }

  async #copy(button) {
    const lines = this.#entries.filter((entry) => this.#matches(entry)).map((entry) => JSON.stringify(entry)).toReversed();
    const before = button.textContent;
    try {
      await navigator.clipboard.writeText(`${lines.join("\n")}\n`);
      button.textContent = `${lines.length} copied`;
    } catch {
      button.textContent = "The browser refused";
    }
    setTimeout(() => { button.textContent = before; }, 1500);
  }
}

export const clock = (time) => new Date(time).toISOString().slice(11, 23);
export const eventWords = ({ time, area, event, values }) =>
  [clock(time), event, `${area} ${values.map(([name, text]) => `${name}: ${text}`).join(", ")}`];
export const callWords = ({ time, sender, method, arguments: given }) =>
  [clock(time), method, `${Object.entries(given).map(([name, value]) => `${name}: ${value}`).join(", ")} from ${sender}`];
