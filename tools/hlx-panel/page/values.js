// Every value, in groups, as the catalogue has them.
import { make } from "./model.js";

const LONGEST_FLASH_MS = 700;

function tile(value, model) {
  const shown = make("dd", { "data-name": value.name }, "–");
  model.watch(value.name, ({ raw, text, kind }) => {
    shown.textContent = raw === null ? "–" : text;
    shown.classList.toggle("lit", kind === "flag" && raw > 0);
    shown.getAnimations().forEach((animation) => animation.cancel());
    if (!matchMedia("(prefers-reduced-motion: reduce)").matches) {
      shown.animate([{ background: "var(--flash)" }, {}], LONGEST_FLASH_MS);
    }
  });
  return make("div", { class: value.kind === "flag" ? "flag" : "" }, make("dt", { title: value.name }, value.label), shown);
}

export function showValues(root, model) {
  const groups = new Map();
  for (const value of model.values.values()) {
    const key = `${value.area}/${value.group}`;
    if (!groups.has(key)) groups.set(key, []);
    groups.get(key).push(value);
  }
  root.replaceChildren(
    ...[...groups].map(([key, values]) => {
      const [area, group] = key.split("/");
      return make(
        "section",
        { class: "card group", "aria-label": `${area}: ${group}` },
        make("h3", {}, group, make("small", {}, area)),
        make("dl", {}, ...values.map((value) => tile(value, model))),
      );
    }),
  );
}
