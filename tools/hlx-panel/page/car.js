// The car from above: doors, radar, cameras, steering wheel.
import { svg } from "./model.js";

// name, hinge x and y, length, degrees when open (closed: along the body)
const DOORS = [
  ["misc.door_front_left", "front left", 62, 112, 52, 55], ["misc.door_front_right", "front right", 138, 112, 52, -55],
  ["misc.door_rear_left", "rear left", 62, 168, 48, 55], ["misc.door_rear_right", "rear right", 138, 168, 48, -55],
];
const LIDS = [["misc.door_hood", "hood", 44, 12], ["misc.door_trunk", "trunk", 232, 250]];
const RADAR = ["left", "middle_left", "middle_right", "right"];
const NOTHING_NEAR = 255;

function radarArc(index, y, bulge) {
  const x = 62 + index * 20;
  return svg("path", { class: "radar", d: `M${x} ${y}q8 ${bulge} 16 0` });
}

// Near is red and close to the car, far is green; nothing in range is not drawn.
function showRadar(model, name, path) {
  model.watch(name, ({ raw }) => {
    const seen = raw !== null && raw !== NOTHING_NEAR;
    path.classList.toggle("seen", seen);
    if (!seen) return;
    const part = Math.min(raw, 150) / 150;
    path.style.stroke = `hsl(${Math.round(part * 120)} 75% 45%)`;
    path.style.translate = `0 ${Math.round(4 + part * 14)}px`;
  });
}

export function showCar(root, model) {
  const picture = svg("svg", { viewBox: "0 0 200 300", role: "img", "aria-label": "The car from above" },
    svg("path", { class: "body", d: "M68 60q32-22 64 0l6 40v110l-6 34q-32 14-64 0l-6-34V100z" }),
    svg("path", { class: "glass", d: "M72 104q28-16 56 0l-6 22q-22-8-44 0z" }),
    svg("path", { class: "glass", d: "M76 214q24 8 48 0l4 16q-28 10-56 0z" }));

  for (const [name, label, x, y, length, open] of DOORS) {
    const door = svg("line", { x1: x, y1: y, x2: x, y2: y + length, class: "door", "data-name": name },
      svg("title", {}, `Door ${label}`));
    door.style.transformOrigin = `${x}px ${y}px`;
    picture.append(door);
    model.watch(name, ({ raw }) => {
      door.classList.toggle("open", raw > 0);
      door.style.rotate = raw > 0 ? `${open}deg` : "0deg";
    });
  }
  for (const [name, label, closed, open] of LIDS) {
    const lid = svg("rect", { x: 74, y: closed, width: 52, height: 14, rx: 6, class: "door lid", "data-name": name },
      svg("title", {}, label));
    picture.append(lid);
    model.watch(name, ({ raw }) => {
      lid.classList.toggle("open", raw > 0);
      lid.style.translate = raw > 0 ? `0 ${(open - closed) / 4}px` : "none";
    });
  }
  RADAR.forEach((place, index) => {
    for (const prefix of ["misc.radar_", "misc.rear_radar_"]) {
      const path = radarArc(index, 258, 8);
      picture.append(path);
      showRadar(model, prefix + place, path);
    }
  });

  for (const [name, y] of [["misc.front_camera", 34], ["misc.rear_camera", 254]]) {
    const camera = svg("circle", { cx: 100, cy: y, r: 5, class: "camera", "data-name": name });
    picture.append(camera);
    model.watch(name, ({ raw }) => camera.classList.toggle("lit", raw > 0));
  }
  const wheel = svg("g", { class: "wheel" }, svg("circle", { cx: 84, cy: 140, r: 9 }), svg("path", { d: "M75 140h18M84 140v9" }));
  wheel.style.transformOrigin = "84px 140px";
  picture.append(wheel);
  model.watch("misc.steering_angle", ({ raw }) => { wheel.style.rotate = `${((raw ?? 0) * 5.4).toFixed(0)}deg`; });

  root.querySelector(".drawing").replaceChildren(picture);
  const said = root.querySelector(".said");
  const parts = [...DOORS, ...LIDS];
  model.watch(parts.map(([name]) => name), () => {
    const open = parts.filter(([name]) => model.raw(name) > 0).map(([, label]) => label);
    said.textContent = open.length ? `Open: ${open.join(", ")}` : "All closed";
  });
}
