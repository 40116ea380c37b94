// One form for each command of the catalogue.
import { make } from "./model.js";

const LARGEST_SLIDER = 255;

// An input for a parameter or a value: switch and words as a choice, small ranges as a slider, the rest as text.
export function input(description, name) {
  const { kind, words = [], least, most, decimals = 0 } = description;
  if ((kind === "flag" || kind === "named") && words.length) {
    return make("select", { name }, ...words.map(([, word]) => make("option", { value: word }, word)));
  }
  const numeric = ["count", "number", "decimal", "flag", "named", "code", "bits", "zone"].includes(kind);
  if (numeric && least !== undefined && most - least <= LARGEST_SLIDER) {
    const shown = make("output", {}, String(least));
    const slider = make("input", { name, type: "range", min: least, max: most, value: least, step: decimals ? 0.5 : 1,
      oninput: () => { shown.textContent = slider.value; } });
    return make("span", { class: "slider" }, slider, shown);
  }
  if (numeric && least !== undefined) return make("input", { name, type: "number", min: least, max: most, step: decimals ? "any" : 1, value: Math.max(least, Math.min(0, most)), required: true });
  return make("input", { name, type: "text", autocomplete: "off", placeholder: { date: "2027-02-28", clock: "23:59:30", moment: "2027-02-28 12:30:05" }[kind] ?? "" });
}

export function outcome(answer) {
  if (!answer.ok) return answer.error;
  const followed = answer.event ? `, ${answer.event} after ${answer.event_ms.toFixed(1)} ms` : "";
  return `ok in ${answer.took_ms.toFixed(1)} ms${followed}`;
}

function commandForm(command, connection) {
  const said = make("output", { class: "said" });
  const send = make("button", { type: "submit" }, command.confirm ? "Send…" : "Send");
  const form = make("form", { class: "command", "data-command": `${command.area} ${command.name}`, title: command.method,
    onsubmit: async (event) => {
      event.preventDefault();
      if (command.confirm && !window.confirm(`${command.help}?\nThe unit may end its work.`)) return;
      send.disabled = true;
      said.textContent = "…";
      const answer = await connection.request({ type: "command", area: command.area, name: command.name,
        arguments: command.parameters.map((_, index) => form.elements[`p${index}`].value),
        confirmed: command.confirm });
      send.disabled = false;
      said.textContent = outcome(answer);
      said.classList.toggle("failed", !answer.ok);
    } },
    make("span", { class: "what" }, command.help),
    ...command.parameters.map((parameter, index) => make("label", {}, make("span", {}, parameter.name.replaceAll("_", " ")), input(parameter, `p${index}`))),
    send, said);
  return form;
}

export function showControls(root, model, connection) {
  root.querySelectorAll("details").forEach((old) => old.remove());
  for (const area of new Set(model.commands.map((command) => command.area))) {
    root.append(make("details", { name: "controls", open: area === "power" }, make("summary", {}, area),
      ...model.commands.filter((command) => command.area === area).map((command) => commandForm(command, connection))));
  }
}
