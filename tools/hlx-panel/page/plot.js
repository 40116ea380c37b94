// Numeric values over the last two minutes, each in a scale of its own.
import { make } from "./model.js";

const SPAN_MS = 120_000;
const COLORS = ["plot-1", "plot-2", "plot-3", "plot-4", "plot-5", "plot-6"]; // classes
const NUMERIC = ["count", "number", "decimal", "flag"];

export class Plot {
  #series = new Map(); // name -> { value, points: [[time, number]], color, entry in the legend }
  #paused = 0;
  #canvas;
  #legend;
  #model;

  constructor(root, model) {
    this.#model = model;
    this.#canvas = root.querySelector("canvas");
    this.#legend = root.querySelector(".legend");
    const form = root.querySelector("form");
    form.elements.value.replaceChildren(...[...model.values.values()]
      .filter(({ kind }) => NUMERIC.includes(kind))
      .map(({ name, label }) => make("option", { value: name }, `${label} (${name})`)));
    form.onsubmit = (event) => {
      event.preventDefault();
      this.add(form.elements.value.value);
    };
    form.elements.pause.onclick = ({ currentTarget }) => {
      this.#paused = this.#paused ? 0 : performance.now();
      currentTarget.setAttribute("aria-pressed", String(this.#paused > 0));
    };
    model.watchAll((value) => this.#note(value));
    this.add("misc.car_speed");
    this.add("misc.engine_speed");
    this.#canvas.plot = this;
    const draw = () => {
      if (this.#canvas.plot !== this) return; // the panel came back, and another plot with it
      this.#draw();
      requestAnimationFrame(draw);
    };
    requestAnimationFrame(draw);
  }

  add(name) {
    const value = this.#model.values.get(name);
    if (!value || this.#series.has(name) || this.#series.size === COLORS.length) return;
    const used = new Set([...this.#series.values()].map(({ color }) => color));
    const color = COLORS.find((candidate) => !used.has(candidate));
    const entry = make("li", { class: color }, value.label, make("button", {
      type: "button", "aria-label": `Remove ${value.label}`, onclick: () => {
        this.#series.delete(name);
        entry.remove();
      } }, "×"));
    this.#legend.append(entry);
    this.#series.set(name, { value, points: [], color, entry });
    this.#note(value);
  }

  #note({ name, raw }) {
    const points = this.#series.get(name)?.points;
    if (!points || typeof raw !== "number") return;
    const now = performance.now();
    points.push([now, raw]);
    while (points.length > 1 && points[1][0] < now - SPAN_MS) points.shift();
  }

  #draw() {
    const canvas = this.#canvas;
    const scale = devicePixelRatio;
    const width = canvas.clientWidth;
    const height = canvas.clientHeight;
    if (canvas.width !== Math.round(width * scale)) canvas.width = Math.round(width * scale);
    if (canvas.height !== Math.round(height * scale)) canvas.height = Math.round(height * scale);
    const context = canvas.getContext("2d");
    const style = getComputedStyle(canvas);
    const now = this.#paused || performance.now();
    const x = (time) => width * (1 - (now - time) / SPAN_MS);
    context.setTransform(scale, 0, 0, scale, 0, 0);
    context.clearRect(0, 0, width, height);
    context.font = "11px system-ui";
    context.lineWidth = 1;
    context.strokeStyle = style.borderTopColor;
    context.fillStyle = style.color;
    for (let back = 0; back < SPAN_MS; back += 30_000) {
      context.strokeRect(x(now - back), 0, 0, height);
      if (back) context.fillText(`${back / 1000} s ago`, x(now - back) + 3, height - 4);
    }
    for (const { points, entry } of this.#series.values()) this.#line(context, points, getComputedStyle(entry).color, x, height, now);
  }

  // Values hold until the next one: steps, not slopes.
  #line(context, points, color, x, height, now) {
    const seen = points.filter(([time]) => time <= now);
    if (!seen.length) return;
    const numbers = seen.map(([, number]) => number);
    const least = Math.min(0, ...numbers);
    const most = Math.max(least + 1, ...numbers);
    const y = (number) => 6 + (height - 24) * (1 - (number - least) / (most - least));
    context.beginPath();
    context.strokeStyle = color;
    context.lineWidth = 2;
    context.moveTo(x(seen[0][0]), y(seen[0][1]));
    for (let i = 1; i < seen.length; ++i) {
      context.lineTo(x(seen[i][0]), y(numbers[i - 1]));
      context.lineTo(x(seen[i][0]), y(numbers[i]));
    }
    context.lineTo(x(now), y(numbers[numbers.length - 1]));
    context.stroke();
  }
}
