// What only a simulated unit lets one do: set values, press keys, play scenarios, inject faults, insert sticks, reboot.
import { make } from "./model.js";
import { input, outcome } from "./controls.js";

export class Unit {
  #connection;
  #root;
  #progress = make("progress", { max: 1, value: 0, "aria-label": "Progress of the scenario" });
  #playing = make("span", { class: "said" });
  #inbox = make("dl", { class: "inbox" });

  constructor(root, model, connection, lists) {
    this.#root = root;
    this.#connection = connection;
    root.querySelectorAll("fieldset").forEach((old) => old.remove());
    root.append(this.#values(model), this.#keys(), this.#scenarios(lists.scenario ?? []), this.#faults(lists.fault ?? []),
      this.#buttons("Update stick", [...(lists.stick ?? []), ["remove", "Take it out"]].map(([kind, help]) => [kind, help, "Stick", [kind]])),
      this.#buttons("Reboot", [["cold", "As after the battery was off", "Reboot", ["cold"]],
        ["acc", "As by the ignition", "Reboot", ["acc"]], ["reset", "As by a reset", "Reboot", ["reset"]]]),
      make("fieldset", {}, make("legend", {}, "Inbox: what applications have sent"), this.#inbox));
  }

  // What applications have sent and no record keeps.
  inbox(values) {
    this.#inbox.replaceChildren(...Object.entries(values).map(([name, value]) =>
      make("div", {}, make("dt", {}, name), make("dd", {}, String(value)))));
  }

  status({ state, label, warning, position, length, error }) {
    this.#progress.value = length > 0 ? position / length : 0;
    this.#playing.textContent = [state, label, warning, error].filter(Boolean).join(": ");
  }

  async #send(verb, given, said) {
    const answer = await this.#connection.request({ type: "unit", verb, arguments: given });
    said.textContent = outcome(answer);
    said.classList.toggle("failed", !answer.ok);
  }

  #form(title, parts, submit) {
    const said = make("output", { class: "said" });
    const form = make("form", { class: "command", onsubmit: (event) => {
      event.preventDefault();
      submit(form.elements, said);
    } }, ...parts, said);
    return make("fieldset", {}, make("legend", {}, title), form);
  }

  #values(model) {
    const settable = [...model.values.values()].filter((value) => value.settable);
    const choice = make("select", { name: "value" }, ...settable.map(({ name, label }) => make("option", { value: name }, `${label} (${name})`)));
    const holder = make("label", {}, make("span", {}, "to"));
    const change = () => holder.replaceChildren(make("span", {}, "to"), input(model.values.get(choice.value), "to"));
    choice.onchange = change;
    if (settable.length) change();
    return this.#form("Set a value", [make("label", {}, make("span", {}, "value"), choice), holder, make("button", { type: "submit" }, "Set")],
      (fields, said) => this.#send("Set", [fields.value.value, fields.to.value], said));
  }

  #keys() {
    const code = make("input", { name: "code", type: "text", value: "0x01", pattern: "0[xX][0-9a-fA-F]{1,2}|[0-9]{1,3}", required: true });
    return this.#form("Press a key", [make("label", {}, make("span", {}, "code"), code), make("button", { type: "submit" }, "Press")],
      async (fields, said) => {
        await this.#send("Emit", ["KeyStateChangeSignal", fields.code.value, "1"], said);
        await this.#send("Emit", ["KeyStateChangeSignal", fields.code.value, "0"], said);
      });
  }

  #scenarios(scenarios) {
    const choice = make("select", { name: "file" }, ...scenarios.map(([name, help]) => make("option", { value: name, title: help }, name)));
    const speed = make("select", { name: "speed" }, ...[["1", "as it is"], ["10", "10 times"], ["0", "as fast as it goes"]].map(([value, text]) => make("option", { value }, text)));
    const stop = make("button", { type: "button", onclick: ({ currentTarget }) =>
      this.#send("Stop", [], currentTarget.closest("form").querySelector("output")) }, "Stop");
    return this.#form("Play a scenario", [make("label", {}, make("span", {}, "scenario"), choice), make("label", {}, make("span", {}, "speed"), speed),
      make("button", { type: "submit" }, "Play"), stop, this.#progress, this.#playing],
      (fields, said) => this.#send("Play", [fields.file.value, fields.speed.value], said));
  }

  #faults(faults) {
    const words = make("input", { name: "words", list: "fault-list", autocomplete: "off", required: true, placeholder: faults[0]?.[0] ?? "" });
    const list = make("datalist", { id: "fault-list" }, ...faults.map(([form, help]) => make("option", { value: form }, help)));
    const clear = make("button", { type: "button", onclick: ({ currentTarget }) =>
      this.#send("ClearFaults", [], currentTarget.closest("form").querySelector("output")) }, "Clear all");
    return this.#form("Inject a fault", [make("label", {}, make("span", {}, "fault"), words), list, make("button", { type: "submit" }, "Inject"), clear],
      (fields, said) => this.#send("Fault", fields.words.value.trim().split(/\s+/), said));
  }

  #buttons(title, buttons) {
    const said = make("output", { class: "said" });
    return make("fieldset", {}, make("legend", {}, title), ...buttons.map(([text, help, verb, given]) =>
      make("button", { type: "button", title: help, onclick: () => this.#send(verb, given, said) }, text)), said);
  }
}
