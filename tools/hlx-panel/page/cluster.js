// Speed and engine speed as dials, the trip computer, and the tell-tales.
import { make, svg } from "./model.js";

const SWEEP = 240; // degrees
const READINGS = ["misc.total_mile", "misc.stage_a_mile", "misc.stage_b_mile", "misc.endurance_mile",
                  "misc.current_fuel", "misc.average_fuel", "misc.outside_temperature", "time.time"];
const TELL_TALES = [
  ["power.acc", "ACC"], ["power.screen", "Screen"], ["power.head_lights", "Head lights"], ["misc.parking", "Parking"],
  ["misc.reverse", "Reverse"], ["misc.urgent_mute", "Mute"],
];

const at = (degrees, radius) => {
  const angle = ((degrees - SWEEP / 2 - 90) * Math.PI) / 180;
  return [100 + radius * Math.cos(angle), 100 + radius * Math.sin(angle)].map((n) => n.toFixed(1));
};

function arc(from, to, radius) {
  const [x1, y1] = at(from, radius);
  const [x2, y2] = at(to, radius);
  return `M${x1} ${y1}A${radius} ${radius} 0 ${to - from > 180 ? 1 : 0} 1 ${x2} ${y2}`;
}

function dial(model, name, label, most, step) {
  const filled = svg("path", { class: "filled" });
  const number = svg("text", { x: 100, y: 108, class: "number" }, "–");
  const picture = svg("svg", { viewBox: "0 0 200 172", role: "img", class: "dial" },
    svg("path", { class: "track", d: arc(0, SWEEP, 84) }), filled, number,
    svg("text", { x: 100, y: 132, class: "label" }, label));
  for (let mark = 0; mark <= most; mark += step) {
    const [x, y] = at((mark / most) * SWEEP, 64);
    picture.append(svg("text", { x, y, class: "mark" }, step >= 1000 ? mark / 1000 : mark));
  }
  model.watch(name, ({ raw, text, unit }) => {
    const part = Math.min(Math.max((raw ?? 0) / most, 0), 1);
    filled.setAttribute("d", part > 0.002 ? arc(0, part * SWEEP, 84) : "");
    number.textContent = raw ?? "–";
    picture.setAttribute("aria-label", `${label}: ${raw === null ? "not known" : text} ${text.endsWith(unit) ? "" : unit}`);
  });
  return picture;
}

export function showCluster(root, model) {
  root.querySelector(".gauges").replaceChildren(
    dial(model, "misc.car_speed", "speed", 240, 40),
    dial(model, "misc.engine_speed", "1/min × 1000", 8000, 1000));

  root.querySelector(".readings").replaceChildren(...READINGS.filter((name) => model.values.has(name)).map((name) => {
    const shown = make("dd", {}, "–");
    model.watch(name, ({ raw, text }) => { shown.textContent = raw === null ? "–" : text; });
    return make("div", {}, make("dt", {}, model.values.get(name).label), shown);
  }));

  const light = make("li", { class: "tell-tale" });
  model.watch("power.screen_light", ({ text }) => { light.textContent = text || "–"; });
  root.querySelector(".tell-tales").replaceChildren(...TELL_TALES.map(([name, label]) => {
    const lamp = make("li", { class: "tell-tale", "data-name": name }, label);
    model.watch(name, ({ raw, text }) => {
      lamp.classList.toggle("lit", raw > 0);
      lamp.setAttribute("aria-label", `${label}: ${text || "not known"}`);
    });
    return lamp;
  }), light);
}
