// Puts the page together.
import { showCar } from "./car.js";
import { showCluster } from "./cluster.js";
import { Connection } from "./connection.js";
import { showControls } from "./controls.js";
import { callWords, eventWords, Log } from "./log.js";
import { Model } from "./model.js";
import { Plot } from "./plot.js";
import { Unit } from "./unit.js";
import { showValues } from "./values.js";

const $ = (id) => document.getElementById(id);
const model = new Model();
const connection = new Connection();
const events = new Log($("events"), eventWords);
const calls = new Log($("calls"), callWords);
let unit = null;

function state(id, what, text, good) {
  const pill = $(id);
  if (pill.dataset.now === text) return;
  pill.dataset.now = text;
  pill.textContent = `${what}: ${text}`;
  pill.classList.toggle("good", good);
  pill.classList.toggle("bad", !good);
}

function service(there) {
  document.body.classList.toggle("stale", !there);
  state("service-state", "service", there ? "there" : "lost", there);
  $("notice").textContent = there ? "" : "The service is not there: values are as they were last known.";
}

connection.addEventListener("hello", ({ detail }) => {
  model.forgetWatchers();
  model.describe(detail);
  showValues($("values").querySelector(".groups"), model);
  showCluster($("cluster"), model);
  showCar($("car"), model);
  $("plot").querySelector(".legend").replaceChildren();
  new Plot($("plot"), model);
  showControls($("controls"), model, connection);
  state("panel-state", "panel", "connected", true);
});

connection.addEventListener("update", ({ detail }) => {
  if (detail.values) model.apply(detail.values);
  if (detail.lost) events.note(`${detail.lost} events were left out: the browser was too slow`);
  events.add(detail.events);
  calls.add(detail.calls);
  if ("service" in detail) {
    service(detail.service);
    events.note(detail.service ? "service there" : "service lost");
  }
  if ("unit" in detail) {
    document.body.classList.toggle("with-unit", detail.unit !== null);
    state("unit-state", "simulated unit", detail.unit ? "there" : "none", detail.unit !== null);
    unit = detail.unit && new Unit($("unit"), model, connection, detail.unit);
  }
  if (detail.played) unit?.status(detail.played);
  if (detail.inbox) unit?.inbox(detail.inbox);
});

connection.addEventListener("lost", () => {
  document.body.classList.add("stale");
  state("panel-state", "panel", "lost", false);
  $("notice").textContent = "The panel's process is not there: values are as they were last known. If it was started again, open the address that it printed.";
});

connection.open();
