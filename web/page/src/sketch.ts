// The beam as it is drawn and dragged, and below it the diagrams on the same scale.

import { placesOf, round, shapeOf, type Beam, type Table, type Value } from "./beam";
import { s } from "./dom";
import type { Curve, Loads } from "./replies";

/** Changes of the drawing by hand. `what` names the thing that moves. */
export type Move = (what: string, change: (beam: Beam) => void) => void;

const SIDE = 46;
const STEP = 0.05; // m
const ARROW = 34;
const ROW = 58; // of the loads of one case

const LETTER = 5.8; // mean width of a letter of a size

const DEFLECTION = 36; // of the largest one

const SPRINGS = ["vertical", "rotation", "lateral", "lateral-rotation"];

const metres = (x: number): string => `${round(x)} m`;

class Scale {
  constructor(readonly length: number, readonly width: number) {}
  x(at: number): number { return SIDE + (at / this.length) * (this.width - 2 * SIDE); }
  at(x: number): number { return ((x - SIDE) / (this.width - 2 * SIDE)) * this.length; }
  snapped(x: number): number { return round(Math.min(this.length, Math.max(0, Math.round(this.at(x) / STEP) * STEP))); }
}

const number = (value: unknown): number | undefined => (typeof value === "number" && Number.isFinite(value) ? value : undefined);
const text = (x: number, y: number, words: string, cls = "", anchor = "middle"): SVGElement =>
  s("text", { x, y, class: cls, "text-anchor": anchor }, words);
const line = (x1: number, y1: number, x2: number, y2: number, cls: string): SVGElement => s("line", { x1, y1, x2, y2, class: cls });

export class Sketch {
  readonly element: SVGElement;
  private dragged = false;

  constructor(private readonly move: Move) {
    this.element = s("svg", { class: "sketch", role: "group", "aria-label": "The beam and its loads" });
  }

  get isBusy(): boolean { return this.dragged; }

  draw(beam: Beam, loads: Loads | undefined, width: number): void {
    const focused = document.activeElement instanceof SVGElement ? document.activeElement.getAttribute("data-handle") : null;
    const length = number(beam.length);
    if (length === undefined || !(length > 0)) {
      this.size(width, 120);
      this.element.replaceChildren(text(width / 2, 64, "A length above zero, and the beam is drawn here.", "quiet"));
      return;
    }
    const scale = new Scale(length, width);
    const parts: SVGElement[] = [];
    const cases = beam.case.map((one) => String(one.name));
    const rows = cases.filter((name) => beam.load.some((load) => sameCase(load, name)));
    rows.forEach((name, row) => parts.push(...this.loadsOf(beam, name, scale, 24 + row * ROW)));
    const y = 38 + rows.length * ROW;
    parts.push(...this.member(beam, scale, y), ...this.restraints(beam, scale, y), ...this.supports(beam, loads, scale, y));
    let bottom = y + (loads?.supports.some((support) => support.least.startsWith("-")) ? 86 : 74);
    parts.push(...dimension(beam, scale, bottom));
    bottom += 26;
    if (loads) {
      const diagrams: SVGElement[] = [];
      for (const curve of shown(loads.curves)) {
        diagrams.push(...diagram(curve, scale, bottom));
        bottom += 104;
      }
      if (loads.shape.length > 1) {
        const uplift = DEFLECTION * Math.max(0, -Math.min(...loads.shape.map(([, w]) => w)) / mostOf(loads));
        diagrams.push(...deflected(loads, scale, bottom, bottom + 22 + uplift));
        bottom += 78 + uplift;
      }
      parts.push(s("g", { class: "diagrams" }, diagrams));
    }
    this.size(width, bottom + 4);
    this.element.replaceChildren(...parts);
    if (focused) (this.element.querySelector(`[data-handle="${focused}"]`) as SVGElement | null)?.focus();
  }

  private size(width: number, height: number): void {
    this.element.setAttribute("viewBox", `0 0 ${width} ${height}`);
    this.element.setAttribute("width", String(width));
    this.element.setAttribute("height", String(height));
  }

  private member(beam: Beam, scale: Scale, y: number): SVGElement[] {
    const [x0, x1] = [scale.x(0), scale.x(scale.length)];
    const parts = [s("rect", { x: x0, y: y - 7, width: x1 - x0, height: 14, class: "web" }), line(x0, y - 7, x1, y - 7, "flange"), line(x0, y + 7, x1, y + 7, "flange")];
    placesOf(beam.hinges).forEach((at, k) => parts.push(
      s("circle", { cx: scale.x(at), cy: y, r: 5, class: "hinge" }),
      this.handle(`g${k}`, scale, at, y, "Hinge", (to) => (moved) => { moved.hinges = movedPlace(moved.hinges, k, to); }),
    ));
    if (beam.column === true) parts.push(text(x0, y + 60, "foot", "quiet"), text(x1, y + 60, "head", "quiet"));
    return parts;
  }

  // A cross where a flange is held at a place, a hatched band where it is held along a length.
  private restraints(beam: Beam, scale: Scale, y: number): SVGElement[] {
    return beam.restraint.flatMap((one, i) => {
      const holds = String(one.holds ?? "").toLowerCase();
      const sides = [/top|f1/.test(holds) && -7, /bottom|f2/.test(holds) && 7].filter((side): side is number => side !== false);
      const ys = (sides.length > 0 ? sides : [-7, 7]).map((side) => y + side);
      const name = `${String(one.holds ?? "restraint")}`;
      if (!("at" in one)) {
        const [from, to] = [number(one.from) ?? 0, number(one.to) ?? scale.length];
        const band = ys.map((side) => s("rect", { x: scale.x(from), y: side < y ? side - 5 : side, width: Math.max(0, scale.x(to) - scale.x(from)), height: 5, class: "held" }));
        return [
          ...band,
          this.handle(`r${i}f`, scale, from, ys[0], `${name} from`, (at) => (moved) => { moved.restraint[i].from = at; }),
          this.handle(`r${i}t`, scale, to, ys[0], `${name} to`, (at) => (moved) => { moved.restraint[i].to = at; }),
        ];
      }
      return placesOf(one.at).flatMap((at, k) => [
        ...ys.map((side) => s("path", { d: `M${scale.x(at) - 4},${side - 4}l8,8m0,-8l-8,8`, class: "cross" })),
        this.handle(`r${i}a${k}`, scale, at, ys[0], name, (to) => (moved) => setPlace(moved.restraint[i], k, to)),
      ]);
    });
  }

  private supports(beam: Beam, loads: Loads | undefined, scale: Scale, y: number): SVGElement[] {
    return beam.support.flatMap((one, i) => {
      const at = number(one.at);
      if (at === undefined) return [];
      const x = scale.x(at);
      const top = y + 8;
      const holds = String(one.holds ?? "Pinned");
      const shape = /fix|encastre/i.test(holds)
        ? s("path", { d: `M${x},${y - 18}V${y + 22}`, class: "wall" })
        : s("path", { d: `M${x},${top}l-10,17h20z`, class: /pin/i.test(holds) ? "support" : "support open" });
      const reaction = loads?.supports.find((support) => Math.abs(support.at - at) < 1e-9);
      const isSpring = SPRINGS.some((key) => key in one);
      return [
        shape,
        isSpring ? text(x + (edge(x, scale) === "end" ? -14 : 14), y + 24, "spring", "quiet spring", edge(x, scale) === "end" ? "end" : "start") : null,
        reaction ? text(x, y + 42, reaction.greatest, "value reaction", edge(x, scale)) : null,
        reaction && reaction.least.startsWith("-") ? text(x, y + 55, reaction.least, "value reaction uplift", edge(x, scale)) : null,
        this.handle(`s${i}`, scale, at, top + 8, `Support, ${holds}`, (to) => (moved) => { moved.support[i].at = to; }),
      ].filter((part): part is SVGElement => part !== null);
    });
  }

  private loadsOf(beam: Beam, name: string, scale: Scale, top: number): SVGElement[] {
    const bottom = top + ARROW;
    const sizes: [number, number, number][] = []; // left, right and lift of the sizes of point loads: those that would meet stand above each other
    const parts = [text(8, top - 4, name.length > 24 ? `${name.slice(0, 23)}…` : name, "case", "start")];
    beam.load.forEach((load, i) => {
      if (!sameCase(load, name)) return;
      const shape = shapeOf(load);
      if (shape === "udl" || shape === "trapezoid") parts.push(...this.lineLoad(load, i, scale, top + 20, bottom));
      else for (const [k, at] of placesOf(load.at).entries()) {
        const x = scale.x(at);
        const wide = LETTER * sizeWords(load).length + 8;
        const [left, right] = edge(x + 1, scale) === "end" ? [x - wide, x] : [x, x + wide];
        let lift = 0;
        while (sizes.some(([l, r, up]) => up === lift && l < right && left < r)) lift += 12;
        sizes.push([left, right, lift]);
        parts.push(...this.pointLoad(load, i, k, at, scale, top + 4, bottom, lift));
      }
    });
    return parts;
  }

  private lineLoad(load: Table, i: number, scale: Scale, top: number, bottom: number): SVGElement[] {
    const values = Array.isArray(load.trapezoid) ? load.trapezoid.map(Number) : [Number(load.udl), Number(load.udl)];
    const [from, to] = [number(load.from) ?? 0, number(load.to) ?? scale.length];
    const most = Math.max(...values.filter(Number.isFinite).map(Math.abs), 1e-9);
    const [x0, x1] = [scale.x(from), scale.x(to)];
    const [t0, t1] = values.map((value) => (Number.isFinite(value) ? bottom - ((bottom - top) * Math.abs(value)) / most : top));
    const parts = [s("path", { d: `M${x0},${bottom}V${t0}L${x1},${t1}V${bottom}Z`, class: "udl" })];
    const count = Math.max(1, Math.round((x1 - x0) / 26));
    const up = values[0] + values[1] < 0;
    for (let k = 0; k <= count; ++k) {
      const x = x0 + ((x1 - x0) * k) / count;
      parts.push(arrow(x, t0 + ((t1 - t0) * k) / count, bottom, up, "thin"));
    }
    const words = values[0] === values[1] ? `${values[0]} kN/m` : `${values[0]} to ${values[1]} kN/m`;
    // Left of the middle, where the sizes of point loads seldom stand.
    parts.push(text(x0 + 6, Math.min(t0, t1) - 4, `${words}${heightWords(load)}`, "size", "start"));
    parts.push(
      this.handle(`l${i}f`, scale, from, bottom - 8, "Line load from", (at) => (moved) => { moved.load[i].from = at; }),
      this.handle(`l${i}t`, scale, to, bottom - 8, "Line load to", (at) => (moved) => { moved.load[i].to = at; }),
      ...this.heightOf(load, i, 0, x0 + 24, bottom - 9, "line load"),
    );
    return parts;
  }

  private pointLoad(load: Table, i: number, k: number, at: number, scale: Scale, top: number, bottom: number, lift: number): SVGElement[] {
    const shape = shapeOf(load);
    const value = Number(load[shape]);
    const x = scale.x(at);
    const anchor = edge(x + 1, scale);
    const dx = anchor === "middle" ? 5 : anchor === "start" ? 5 : -5;
    const parts = [text(x + dx, top + 3 - lift, sizeWords(load), "size", anchor === "end" ? "end" : "start")];
    if (shape === "moment") parts.push(s("path", { d: `M${x - 9},${bottom - 8}a9,9 0 1 ${value < 0 ? 0 : 1} 18,0m-4,-3l4,4l3,-5`, class: "load" }));
    else if (shape === "axial") parts.push(s("path", { d: value < 0 ? `M${x + 26},${bottom - 6}h-24m6,-4l-6,4l6,4` : `M${x - 26},${bottom - 6}h24m-6,-4l6,4l-6,4`, class: "load" }));
    else parts.push(arrow(x, top + 6, bottom, value < 0, "load"));
    const label = `${shape} load of ${String(load[shape])} ${unitOf(shape)}`;
    parts.push(
      this.handle(`l${i}a${k}`, scale, at, bottom - 12, label, (to) => (moved) => setPlace(moved.load[i], k, to)),
      ...this.heightOf(load, i, k, x + (anchor === "end" ? -18 : 18), bottom - 9, label),
    );
    return parts;
  }

  // A place on the beam that a pointer drags and arrow keys move.
  private handle(id: string, scale: Scale, at: number, y: number, label: string, change: (at: number) => (beam: Beam) => void): SVGElement {
    const step = (event: KeyboardEvent): number => (event.shiftKey ? 0.01 : 0.1);
    const left = (): number => this.element.getBoundingClientRect().left;
    return this.grip(id, { cx: scale.x(at), cy: y, r: 11, class: "handle", "aria-orientation": "horizontal" }, {
      label, value: at, words: metres(at), least: 0, most: scale.length,
      byKey: (event) => round(at + (/Left|Down/.test(event.key) ? -step(event) : step(event))),
      byPointer: (_, now) => scale.snapped(now.clientX - left()),
      change,
    });
  }

  // Where a load acts on the depth of the section: a small section beside the load, with a dot that a pointer or arrow keys move.
  private heightOf(load: Table, i: number, k: number, x: number, y: number, label: string): SVGElement[] {
    const level = levelOf(load);
    if (level === undefined) return [];
    const half = 6;
    const to = (now: number): number => Math.min(2, Math.max(0, Math.round(now)));
    return [
      s("circle", { cx: x, cy: y, r: 8.5, class: "behind" }),
      s("path", { d: `M${x - 4},${y - half}h8M${x},${y - half}v${2 * half}M${x - 4},${y + half}h8`, class: "depth" }),
      s("circle", { cx: x, cy: y + half * (1 - level), r: 2.6, class: "dot" }),
      this.grip(`h${i}a${k}`, { cx: x, cy: y, r: 10, class: "handle upright", "aria-orientation": "vertical" }, {
        label: `Height of ${label}`, value: level, words: typeof load.height === "number" ? metres(load.height) : LEVELS[level], least: 0, most: 2,
        byKey: (event) => to(/Left|Down/.test(event.key) ? Math.ceil(level) - 1 : Math.floor(level) + 1),
        byPointer: (down, now) => to(level + (down.clientY - now.clientY) / 14),
        change: (height) => (moved) => {
          if (height === 1) delete moved.load[i].height; // as the field has it
          else moved.load[i].height = LEVELS[height];
        },
      }),
    ];
  }

  private grip(id: string, shape: Record<string, string | number>, slide: Slide): SVGElement {
    const { label, value, words, least, most, change } = slide;
    const element = s("circle", {
      ...shape, tabindex: 0, role: "slider", "data-handle": id, "aria-label": label, "aria-valuemin": least, "aria-valuemax": most, "aria-valuenow": value, "aria-valuetext": words,
    });
    const go = (to: number, from: number): void => { if (to !== from) this.move(`drag ${id}`, change(to)); };
    element.addEventListener("keydown", (event) => {
      const key = (event as KeyboardEvent).key;
      if (!/^(Arrow(Left|Right|Up|Down)|Home|End)$/.test(key)) return;
      event.preventDefault();
      const to = key === "Home" ? least : key === "End" ? most : slide.byKey(event as KeyboardEvent);
      go(Math.min(most, Math.max(least, to)), value);
    });
    element.addEventListener("pointerdown", (event) => {
      const down = event as PointerEvent;
      down.preventDefault();
      element.focus();
      this.dragged = true;
      let last = value;
      const follow = (now: PointerEvent): void => {
        const to = slide.byPointer(down, now);
        go(to, last);
        last = to;
      };
      const end = (): void => {
        this.dragged = false;
        removeEventListener("pointermove", follow);
        removeEventListener("pointerup", end);
        removeEventListener("pointercancel", end);
      };
      addEventListener("pointermove", follow);
      addEventListener("pointerup", end);
      addEventListener("pointercancel", end);
    });
    return element;
  }
}

// What a grip moves: its value between least and most, by arrow keys and by a pointer that went down and is somewhere now.
interface Slide {
  label: string;
  value: number;
  words: string;
  least: number;
  most: number;
  byKey(event: KeyboardEvent): number;
  byPointer(down: PointerEvent, now: PointerEvent): number;
  change(to: number): (beam: Beam) => void;
}

const LEVELS = ["bottom flange", "shear centre", "top flange"];

// The place in LEVELS of a load across the depth; between two of them where the height is a length. None for loads that press on no flange.
function levelOf(load: Table): number | undefined {
  if (load.minor === true || !["udl", "trapezoid", "point"].includes(shapeOf(load))) return undefined;
  if (load.height === undefined) return 1;
  if (typeof load.height === "number") return 1 + 0.5 * Math.sign(load.height);
  const level = LEVELS.indexOf(String(load.height).toLowerCase());
  return level < 0 ? undefined : level;
}

const mostOf = (loads: Loads): number => Math.max(...loads.shape.map(([, w]) => Math.abs(w)), 1e-12);
const sameCase = (load: Table, name: string): boolean => String(load.case ?? "").toLowerCase() === name.toLowerCase();
const edge = (x: number, scale: Scale): string => (x < SIDE + 8 ? "start" : x > scale.width - SIDE - 30 ? "end" : "middle");

const unitOf = (shape: string): string => (shape === "moment" ? "kNm" : "kN");
const sizeWords = (load: Table): string => `${String(load[shapeOf(load)])} ${unitOf(shapeOf(load))}${heightWords(load)}`;

// Where and how a load acts, as far as an arrow does not show it.
function heightWords(load: Table): string {
  const direction = load.minor === true ? ", across the web" : load.major === true ? ", square to the member" : "";
  if (load.height === undefined) return direction;
  return `${direction}${typeof load.height === "number" ? `, ${load.height} m up` : `, ${String(load.height)}`}`;
}

// The k-th number of a list, as `placesOf` counts them, or the one place that there is.
function movedPlace(places: Value | undefined, k: number, at: number): Value {
  let numbers = -1;
  return Array.isArray(places) ? places.map((old) => (placesOf(old).length === 1 && ++numbers === k ? at : old)) : at;
}

function setPlace(one: Table, k: number, at: number): void {
  one.at = movedPlace(one.at, k, at);
}

function arrow(x: number, from: number, to: number, up: boolean, cls: string): SVGElement {
  const d = up ? `M${x},${to}V${from}m-3.5,6l3.5,-6l3.5,6` : `M${x},${from}V${to}m-3.5,-6l3.5,6l3.5,-6`;
  return s("path", { d, class: cls });
}

function dimension(beam: Beam, scale: Scale, y: number): SVGElement[] {
  const places = new Set([0, scale.length]);
  for (const support of beam.support) for (const at of placesOf(support.at)) places.add(at);
  const stops = [...places].filter((at) => at >= 0 && at <= scale.length).sort((a, b) => a - b);
  const parts = [line(scale.x(0), y, scale.x(scale.length), y, "dimension")];
  stops.forEach((at, i) => {
    const x = scale.x(at);
    parts.push(s("path", { d: `M${x},${y - 7}v14M${x - 4},${y + 4}l8,-8`, class: "dimension" }));
    if (i > 0) parts.push(text((scale.x(stops[i - 1]) + x) / 2, y - 5, metres(at - stops[i - 1]), "size"));
  });
  return parts;
}

// Bending and shear always, the rest where there is any.
const shown = (curves: Curve[]): Curve[] => curves.filter((curve, i) => i < 2 || !curve.isZero);

const TITLES: Record<string, string> = { moment: "Moment", shear: "Shear", "axial force": "Axial force", "minor-axis moment": "Minor-axis moment", "minor-axis shear": "Minor-axis shear" };

// Greatest and least values over the ultimate combinations; moments on the side in tension.
function diagram(curve: Curve, scale: Scale, top: number): SVGElement[] {
  const isMoment = curve.action.includes("moment");
  const [high, low] = [Math.max(0, curve.greatest.value), Math.min(0, curve.least.value)];
  const range = high - low || 1;
  const height = 56;
  const y = (value: number): number => top + 24 + (isMoment ? value - low : high - value) / range * height;
  const path = (k: 1 | 2): string => curve.samples.map((sample, i) => `${i === 0 ? "M" : "L"}${scale.x(sample[0]).toFixed(1)},${y(sample[k]).toFixed(1)}`).join("");
  const zero = y(0);
  const parts = [text(8, top + 4, TITLES[curve.action] ?? curve.action, "case", "start")];
  if (curve.samples.length > 1) {
    const close = `L${scale.x(curve.samples[curve.samples.length - 1][0])},${zero}L${scale.x(curve.samples[0][0])},${zero}Z`;
    for (const k of [1, 2] as const) parts.push(s("path", { d: path(k) + close, class: "area" }));
    for (const k of [1, 2] as const) parts.push(s("path", { d: path(k), class: "curve" }));
  }
  parts.push(line(scale.x(0), zero, scale.x(scale.length), zero, "axis"));
  for (const extreme of [curve.greatest, curve.least]) {
    if (extreme.combination < 0 || extreme.value === 0) continue;
    const x = scale.x(extreme.at);
    const below = isMoment === extreme.value > 0;
    parts.push(s("circle", { cx: x, cy: y(extreme.value), r: 2.5, class: "dot" }));
    parts.push(text(x, y(extreme.value) + (below ? 13 : -6), extreme.text, "value", edge(x, scale)));
  }
  return parts;
}

function deflected(loads: Loads, scale: Scale, top: number, zero: number): SVGElement[] {
  const check = loads.deflections[loads.shapeOf];
  const y = (w: number): number => zero + (w / mostOf(loads)) * DEFLECTION;
  const points = loads.shape.map(([at, w], i) => `${i === 0 ? "M" : "L"}${scale.x(at).toFixed(1)},${y(w).toFixed(1)}`).join("");
  const parts = [text(8, top + 4, `Deflection${check ? `, ${check.limit}` : ""}`, "case", "start"), line(scale.x(0), zero, scale.x(scale.length), zero, "axis"), s("path", { d: points, class: "curve" })];
  const at = loads.deflectionTexts[loads.shapeOf];
  if (at && at.at !== null) {
    const near = loads.shape.reduce((best, one) => (Math.abs(one[0] - at.at!) < Math.abs(best[0] - at.at!) ? one : best));
    parts.push(text(scale.x(at.at), y(near[1]) + (near[1] < 0 ? -6 : 14), at.text, "value", edge(scale.x(at.at), scale)));
  }
  return parts;
}
