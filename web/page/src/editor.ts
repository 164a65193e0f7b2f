// The fields of the beam. Whatever is typed goes into the beam as it is; the core says what is wrong with it.

import { listOf, placesOf, renameCase, SHAPES, shapeOf, type Beam, type Shape, type Table, type Value } from "./beam";
import { h, put, type Child } from "./dom";
import type { Code, Diagnostic } from "./replies";
import type { Work } from "./state";

export type Edit = (what: string, change: (work: Work) => void) => void;

const SUPPORTS = ["Pinned", "Fixed", "Vertical"];
const RESTRAINTS = ["Top flange lateral", "Bottom flange lateral", "Both flanges lateral", "Torsion"];
const KINDS = ["permanent", "imposed", "snow", "snow-above-1000m", "wind"];
const CATEGORIES = ["", "A", "B", "C", "D", "E", "F", "G", "H"];
const COMBINATIONS = ["", "bs5950", "en1990", "en1990-uk", "en1990-610ab", "en1990-uk-610ab"];
const HEIGHTS = ["", "top flange", "bottom flange"];
const DIRECTIONS: [string, string][] = [["", "straight down"], ["major", "square to the member"], ["minor", "across the web"]];
const TYPES = ["", "rolled", "welded", "formed"];
const STATES = ["", "characteristic", "frequent", "quasi-permanent", "serviceability"];
const SPRINGS: [string, string, string][] = [
  ["vertical", "vertical", "kN/m"], ["rotation", "in the plane of the web", "kNm/rad"], ["lateral", "across the web", "kN/m"], ["lateral-rotation", "across the web, rotation", "kNm/rad"],
];
// Key, label, unit, what holds without it.
const FACTORS: [string, string, string, string][] = [
  ["net-to-gross", "Net to gross", "", "1"], ["plastic-to-elastic", "Plastic to elastic", "", "1.2"], ["shear-lag", "Shear lag", "", "0.7"], ["moment-factor", "Moment factor", "", "auto"],
];
const LENGTHS: [string, string][] = [["major", "major"], ["minor", "minor"], ["lt", "lateral-torsional"]];
const GRADE: [string, string, string][] = [["yield", "yield", "N/mm²"], ["ultimate", "ultimate", "N/mm²"], ["modulus", "modulus", "N/mm²"], ["factor", "material factor", ""]];
const OWN = "\u0000own";

type List = "support" | "restraint" | "case" | "load" | "combination";
const SHAPE_WORDS: Record<Shape, string> = { udl: "line load", point: "point load", trapezoid: "trapezoid", moment: "moment", axial: "axial", reaction: "reaction" };
const UNITS: Record<Shape, string> = { udl: "kN/m", point: "kN", trapezoid: "kN/m", moment: "kNm", axial: "kN", reaction: "kN" };

/**
 * What was typed: a number, several as a list, or the text as it stands where it is neither, for the core to refuse. "3,5" is such a text: it
 * could mean one number or two.
 */
export function read(text: string): Value | undefined {
  const one = (part: string): Value => (/^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i.test(part) && Number.isFinite(Number(part)) ? Number(part) : part);
  const trimmed = text.trim();
  if (trimmed === "") return undefined;
  const parts = trimmed.split(/;\s*|,\s+|\s+/).filter((part) => part !== "");
  const values = parts.map(one);
  if (values.some((value) => typeof value !== "number")) return trimmed;
  return values.length === 1 ? values[0] : values;
}
const shown = (value: Value | undefined): string => (value === undefined ? "" : Array.isArray(value) ? value.map(String).join(", ") : String(value));

function set(table: Table, key: string, value: Value | undefined): void {
  if (value === undefined) delete table[key];
  else table[key] = value;
}

export class Editor {
  readonly element = h("form", { class: "editor", "aria-label": "Beam", autocomplete: "off", onsubmit: (event: Event) => event.preventDefault() });
  private codes: Code[] = [];
  private work!: Work;
  private built = "";
  private readonly fields = new Map<string, { input: HTMLInputElement | HTMLSelectElement; value: () => string | boolean }>();
  private count = 0;
  private readonly opened = new Set<string>(); // parts that the user opened
  private next: (() => HTMLElement | null | undefined) | undefined; // what has the focus when fields come or go
  private clash = { at: -1, name: "", loadsUnder: "" }; // a case whose name is another's while it is typed

  constructor(private readonly edit: Edit, private readonly pick: () => void) {}

  setCodes(codes: Code[]): void {
    this.codes = codes;
    this.built = "";
  }

  /** Shows the work. Fields stay as they are where only values changed, so that typing is not disturbed. */
  show(work: Work): void {
    this.work = work;
    const frame = this.frame();
    const isNew = frame !== this.built;
    const active = document.activeElement;
    const focused = [...this.fields].find(([, field]) => field.input === active)?.[0];
    const caret = active instanceof HTMLInputElement && active.type === "text" ? [active.selectionStart, active.selectionEnd] : undefined;
    const typed = focused !== undefined && caret ? (active as HTMLInputElement).value : undefined;
    if (isNew) {
      this.built = frame;
      this.build();
    }
    for (const [place, { input, value }] of this.fields) {
      const now = value();
      if (typeof now === "boolean") (input as HTMLInputElement).checked = now;
      else if (place === focused && typed !== undefined && shown(read(typed)) === now) input.value = typed;
      else if (input.value !== now) input.value = now;
    }
    const input = isNew ? this.next?.() ?? (focused === undefined ? undefined : this.fields.get(focused)?.input) : undefined;
    this.next = undefined;
    input?.focus();
    if (input instanceof HTMLInputElement && input.type === "text" && caret && focused !== undefined) input.setSelectionRange(caret[0], caret[1]);
  }

  /** Puts messages beside the fields that they speak of. `places` says what stands in each line. Returns those that have no field. */
  mark(diagnostics: Diagnostic[], places: string[]): Diagnostic[] {
    for (const old of this.element.querySelectorAll(".fault")) old.remove();
    for (const { input } of this.fields.values()) {
      input.removeAttribute("aria-invalid");
      input.removeAttribute("aria-describedby");
    }
    return diagnostics.filter((one) => {
      if (one.severity !== "error") return true;
      const part = one.keyword.split(".").slice(1).join(".");
      const line = places[one.line] ?? "";
      const field = this.fields.get(`${line}.${part}`) ?? this.fields.get(line) ?? this.fields.get(one.keyword) ?? this.fields.get(`${line}.value`) ?? this.firstOf(line);
      if (!field) return true;
      const id = `fault-${++this.count}`;
      const words = one.got ? `got ${one.got}, expected ${one.expected}${one.advice ? `; ${one.advice}` : ""}` : one.advice || one.message;
      field.input.setAttribute("aria-invalid", "true");
      field.input.setAttribute("aria-describedby", id);
      (field.input.closest(".part, .row, .field") ?? field.input).append(h("span", { class: "fault", id }, words));
      return false;
    });
  }

  private firstOf(line: string) {
    if (line === "") return undefined;
    for (const [place, field] of this.fields) if (place.startsWith(`${line}.`)) return field;
    return undefined;
  }

  // What decides which fields there are.
  private frame(): string {
    const { beam, settings } = this.work;
    return JSON.stringify([
      this.codes.length, settings.code, typeof beam.grade, beam.deflection === false, beam.support.length, beam.restraint.map((one) => "at" in one),
      beam.case.map((one) => one.name), beam.load.map((load) => [shapeOf(load), load.case]), listOf(beam, "combination").length,
      this.hasDirections(),
    ]);
  }

  private build(): void {
    this.fields.clear();
    put(this.element, this.general(), this.supports(), this.restraints(), this.cases(), this.loads(), this.combinations(), this.limits(), this.code());
  }

  // --- Fields ---

  private input(place: string, label: string, get: () => Value | undefined, take: (text: string, work: Work) => void, more: Record<string, unknown> = {}): HTMLInputElement {
    const input = h("input", { type: "text", "aria-label": label, spellcheck: "false", ...more, oninput: () => this.edit(`field ${place}`, (work) => take(input.value, work)) });
    this.fields.set(place, { input, value: () => shown(get()) });
    return input;
  }

  private number(place: string, label: string, table: (beam: Beam) => Table, key: string, more: Record<string, unknown> = {}): HTMLInputElement {
    return this.input(place, label, () => table(this.work.beam)[key], (text, work) => set(table(work.beam), key, read(text)), { inputmode: "decimal", class: "number", ...more });
  }

  private select(place: string, label: string, choices: (string | [string, string])[], get: () => string, take: (value: string, work: Work) => void, cls = ""): HTMLSelectElement {
    const now = get();
    const known = choices.some((choice) => (typeof choice === "string" ? choice : choice[0]) === now);
    const all = known ? choices : [...choices, now];
    const input = h(
      "select", { "aria-label": label, class: cls, onchange: () => this.edit("", (work) => take(input.value, work)) },
      all.map((choice) => { const [value, words] = typeof choice === "string" ? [choice, choice || "–"] : choice; return h("option", { value }, words); }),
    );
    this.fields.set(place, { input, value: get });
    return input;
  }

  private check(place: string, label: string, get: () => boolean, take: (value: boolean, work: Work) => void): HTMLElement {
    const input = h("input", { type: "checkbox", onchange: () => this.edit("", (work) => take(input.checked, work)) });
    this.fields.set(place, { input, value: get });
    return h("label", { class: "check" }, input, label);
  }

  private field(label: string, place: string, ...inputs: Child[]): HTMLElement {
    return h("div", { class: "field", "data-place": place }, h("span", { class: "label", "aria-hidden": "true" }, label), h("div", { class: "inputs" }, inputs));
  }

  private group(title: string, add: Child, ...rows: Child[]): HTMLElement {
    return h("fieldset", {}, h("legend", {}, title), rows, add ? h("div", { class: "adds" }, add) : null);
  }

  // A new row has the focus, in its first field.
  private adder(words: string, list: List, add: (beam: Beam) => void): HTMLElement {
    const act = (): void => {
      this.next = () => this.firstOf(`${list}.${listOf(this.work.beam, list).length - 1}`)?.input;
      this.edit("", (work) => add(work.beam));
    };
    return h("button", { type: "button", class: "add", "data-adds": list, onclick: act }, h("span", { "aria-hidden": "true" }, "+ "), words);
  }

  // Next has the focus what stands where the row stood.
  private remover(what: string, list: List, i: number): HTMLElement {
    const act = (): void => {
      this.next = () => this.element.querySelectorAll<HTMLElement>(`[data-removes=${list}]`)[Math.min(i, listOf(this.work.beam, list).length - 1)] ?? this.element.querySelector<HTMLElement>(`[data-adds=${list}]`);
      this.edit("", (work) => {
        (work.beam[list] as Table[]).splice(i, 1);
        if (list === "combination" && listOf(work.beam, list).length === 0) delete work.beam[list];
      });
    };
    return h("button", { type: "button", class: "remove", "data-removes": list, "aria-label": `Remove ${what} ${i + 1}`, onclick: act }, "×");
  }

  // What few beams have. Open where this one has any of it.
  private more(id: string, words: string, isOpen: boolean, ...children: Child[]): HTMLElement {
    const details = h("details", { class: "more", open: isOpen || this.opened.has(id) }, h("summary", {}, words), children);
    details.addEventListener("toggle", () => { if (details.open) this.opened.add(id); else this.opened.delete(id); });
    return details;
  }

  // A key of a table that stands in the beam, the table gone with its last key.
  private within(name: string, key: string, label: string, more: Record<string, unknown> = {}): HTMLInputElement {
    const table = (beam: Beam): Table => (typeof beam[name] === "object" && !Array.isArray(beam[name]) ? (beam[name] as Table) : {});
    const take = (text: string, work: Work): void => {
      const now = { ...table(work.beam) };
      set(now, key, read(text));
      set(work.beam, name, Object.keys(now).length > 0 || name === "grade" ? now : undefined);
    };
    return this.input(`${name}.${key}`, label, () => table(this.work.beam)[key], take, { inputmode: "decimal", class: "number", ...more });
  }

  private unit(words: string): HTMLElement { return h("span", { class: "unit" }, words); }

  // --- Groups ---

  private general(): HTMLElement {
    const beam = (): Beam => this.work.beam;
    const grades = this.codes.find((code) => code.id === this.work.settings.code)?.grades.map((grade) => grade.name).filter((name) => name !== "User_defined") ?? [];
    return this.group("Member", null,
      this.field("Title", "title", this.input("title", "Title", () => beam().title, (text, work) => { work.beam.title = text; })),
      this.field("Section", "section",
        this.input("section", "Section", () => beam().section, (text, work) => { work.beam.section = text; }),
        h("button", { type: "button", class: "small", onclick: () => this.pick() }, "Catalogue")),
      this.field("Grade", "grade",
        this.select("grade", "Grade", [...grades, [OWN, "own strengths"]], () => (typeof beam().grade === "object" ? OWN : String(beam().grade ?? "")), (value, work) => { work.beam.grade = value === OWN ? {} : value; }),
        this.check("column", "column", () => beam().column === true, (value, work) => set(work.beam, "column", value || undefined))),
      typeof beam().grade === "object"
        ? h("div", { class: "field stack" }, GRADE.map(([key, label, unit]) => h("label", { class: "part" }, h("span", { class: "label" }, label), this.within("grade", key, `Grade, ${label}${unit && `, ${unit}`}`), this.unit(unit))))
        : null,
      this.field("Length", "length", this.number("length", "Length, m", (it) => it, "length"), this.unit("m")),
      this.further());
  }

  private further(): HTMLElement {
    const beam = (): Beam => this.work.beam;
    const keys = ["type", "inclination", "hinges", "axially-held-at", "camber", "effective-lengths", ...FACTORS.map(([key]) => key)];
    const line = (key: string, label: string, unit: string, empty: string): HTMLElement =>
      this.field(label, key, this.number(key, `${label}${unit && `, ${unit}`}`, (it) => it, key, { placeholder: empty }), this.unit(unit));
    return this.more("further", "Hinges, camber, factors", keys.some((key) => key in beam()),
      line("hinges", "Hinges", "m", "none"), line("camber", "Camber", "m", "none"), line("inclination", "Inclination", "°", "0"), line("axially-held-at", "Axially held", "m", "1st"),
      this.field("Made", "type", this.select("type", "How the section is made", TYPES.map((type): [string, string] => [type, type || "as in the catalogue"]), () => String(beam().type ?? ""), (value, work) => set(work.beam, "type", value || undefined))),
      FACTORS.map(([key, label, unit, empty]) => line(key, label, unit, empty)),
      h("p", { class: "quiet" }, "Effective lengths in the place of those of the restraints, m"),
      h("div", { class: "field stack" }, LENGTHS.map(([key, label]) => h("label", { class: "part" }, h("span", { class: "label" }, label), this.within("effective-lengths", key, `Effective length, ${label}, m`), this.unit("m")))));
  }

  private supports(): HTMLElement {
    const rows = this.work.beam.support.map((_, i) => h("div", { class: "row", "data-place": `support.${i}.at` },
      this.select(`support.${i}.holds`, `Support ${i + 1}`, SUPPORTS, () => String(this.work.beam.support[i]?.holds ?? "Pinned"), (value, work) => { work.beam.support[i].holds = value; }),
      h("span", {}, "at"), this.number(`support.${i}.at`, `Place of support ${i + 1}, m`, (beam) => beam.support[i] ?? {}, "at"), this.unit("m"), this.remover("support", "support", i), this.springs(i)));
    return this.group("Supports", this.adder("Support", "support", (beam) => { beam.support.push({ at: Number(beam.length) / 2 || 0, holds: "Pinned" }); }), rows);
  }

  private springs(i: number): HTMLElement {
    const support = (beam: Beam): Table => beam.support[i] ?? {};
    return this.more(`springs ${i}`, "Springs", SPRINGS.some(([key]) => key in support(this.work.beam)),
      h("div", { class: "stack" }, SPRINGS.map(([key, label, unit]) => h("label", { class: "part" }, h("span", { class: "label" }, label), this.number(`support.${i}.${key}`, `Spring of support ${i + 1}, ${label}, ${unit}`, support, key, { placeholder: "rigid" }), this.unit(unit)))));
  }

  private restraints(): HTMLElement {
    const rows = this.work.beam.restraint.map((one, i) => h("div", { class: "row", "data-place": `restraint.${i}.at` },
      this.select(`restraint.${i}.holds`, `Restraint ${i + 1}`, RESTRAINTS, () => String(this.work.beam.restraint[i]?.holds ?? ""), (value, work) => { work.beam.restraint[i].holds = value; }),
      "at" in one
        ? [h("span", {}, "at"), this.number(`restraint.${i}.at`, `Places of restraint ${i + 1}, m`, (beam) => beam.restraint[i] ?? {}, "at")]
        : [this.number(`restraint.${i}.from`, `Restraint ${i + 1} from, m`, (beam) => beam.restraint[i] ?? {}, "from", { placeholder: "0" }), h("span", {}, "to"), this.number(`restraint.${i}.to`, `Restraint ${i + 1} to, m`, (beam) => beam.restraint[i] ?? {}, "to", { placeholder: "end" })],
      this.unit("m"), this.remover("restraint", "restraint", i)));
    return this.group("Held between supports", [
      this.adder("At places", "restraint", (beam) => { beam.restraint.push({ at: Number(beam.length) / 2 || 0, holds: "Top flange lateral" }); }),
      this.adder("Along a length", "restraint", (beam) => { beam.restraint.push({ from: 0, to: Number(beam.length) || 1, holds: "Top flange lateral" }); }),
    ], rows);
  }

  private cases(): HTMLElement {
    const rows = this.work.beam.case.map((_, i) => {
      const one = (): Table => this.work.beam.case[i] ?? {};
      const rename = (text: string, work: Work): void => {
        const now = String(work.beam.case[i].name);
        const under = this.clash.at === i && this.clash.name === now ? this.clash.loadsUnder : now;
        this.clash = { at: i, name: text, loadsUnder: renameCase(work.beam, i, text, under) };
      };
      return h("div", { class: "row", "data-place": `case.${i}.name` },
        h("span", { class: "grow" }, this.input(`case.${i}.name`, `Name of case ${i + 1}`, () => one().name, rename)),
        this.select(`case.${i}.kind`, `Kind of case ${i + 1}`, KINDS, () => String(one().kind ?? "permanent"), (value, work) => { work.beam.case[i].kind = value; }, "kind"),
        this.select(`case.${i}.category`, `Category of case ${i + 1}`, CATEGORIES, () => String(one().category ?? ""), (value, work) => set(work.beam.case[i], "category", value || undefined), "category"),
        this.remover("case", "case", i),
        "by-span" in one() ? this.check(`case.${i}.by-span`, `may act on some spans alone`, () => one()["by-span"] === true, (value, work) => { work.beam.case[i]["by-span"] = value; }) : null);
    });
    return this.group("Load cases", this.adder("Case", "case", (beam) => { beam.case.push({ name: `Case ${beam.case.length + 1}`, kind: "imposed" }); }), rows);
  }

  private loads(): HTMLElement {
    const names = this.work.beam.case.map((one) => String(one.name));
    const hasDirections = this.hasDirections();
    const rows = this.work.beam.load.map((now, i) => {
      const load = (beam: Beam): Table => beam.load[i] ?? {};
      const shape = shapeOf(now);
      const isLine = shape === "udl" || shape === "trapezoid";
      const label = `${SHAPE_WORDS[shape]} ${i + 1}`;
      return h("div", { class: "row load", "data-place": `load.${i}.${shape}` },
        this.select(`load.${i}.case`, `Case of ${label}`, names, () => String(load(this.work.beam).case ?? ""), (value, work) => { load(work.beam).case = value; }),
        this.select(`load.${i}.shape`, `Kind of load ${i + 1}`, SHAPES.map((one): [string, string] => [one, SHAPE_WORDS[one]]), () => shapeOf(load(this.work.beam)), (value, work) => reshape(load(work.beam), value as Shape, work.beam)),
        this.number(`load.${i}.${shape}`, `Size of ${label}, ${UNITS[shape]}`, load, shape), this.unit(UNITS[shape]), this.remover("load", "load", i),
        h("span", { class: "where" },
          isLine
            ? [h("span", {}, "from"), this.number(`load.${i}.from`, `${label} from, m`, load, "from", { placeholder: "0" }), h("span", {}, "to"), this.number(`load.${i}.to`, `${label} to, m`, load, "to", { placeholder: "end" })]
            : [h("span", {}, "at"), this.number(`load.${i}.at`, `Places of ${label}, m`, load, "at")],
          this.unit("m"),
          shape === "reaction" ? this.offsets(i, label) : null,
          this.select(`load.${i}.height`, `Height of ${label}`, HEIGHTS.map((height): [string, string] => [height, height || "shear centre"]), () => shown(load(this.work.beam).height), (value, work) => set(load(work.beam), "height", value === "" ? undefined : read(value))),
          hasDirections && shape !== "axial" && shape !== "reaction" ? this.direction(i, label) : null));
    });
    const add = (load: Table) => (beam: Beam): void => {
      if (beam.case.length === 0) beam.case.push({ name: "Dead", kind: "permanent" });
      beam.load.push({ case: beam.case[beam.case.length - 1].name, ...load });
    };
    return this.group("Loads, downwards above zero", [
      this.adder("Line load", "load", add({ udl: 5 })), this.adder("Point load", "load", (beam) => add({ point: 10, at: Number(beam.length) / 2 || 0 })(beam)), this.adder("Moment", "load", add({ moment: 10, at: 0 })),
      h("label", { class: "check" }, h("input", { type: "checkbox", checked: hasDirections, onchange: (event: Event) => this.showDirections((event.target as HTMLInputElement).checked) }), "directions"),
    ], rows);
  }

  // Where the reaction of a beam acts beside a column's centre line: from its face, or from the centre.
  private offsets(i: number, label: string): Child {
    const load = (beam: Beam): Table => beam.load[i] ?? {};
    return [
      h("span", {}, "face"), this.number(`load.${i}.face`, `Face of ${label}, m`, load, "face", { placeholder: "–" }), this.unit("m"),
      h("span", {}, "or eccentricity"), this.number(`load.${i}.eccentricity`, `Eccentricity of ${label}, m`, load, "eccentricity", { placeholder: "–" }), this.unit("m"),
    ];
  }

  // Most beams have loads straight down alone: the fields are there where one has another, or where they are asked for.
  private hasDirections(): boolean {
    return this.opened.has("directions") || this.work.beam.load.some((load) => "minor" in load || "major" in load);
  }

  private showDirections(isWanted: boolean): void {
    if (isWanted) this.opened.add("directions");
    else this.opened.delete("directions");
    this.next = () => this.element.querySelector<HTMLElement>(".adds .check input");
    this.show(this.work);
  }

  private direction(i: number, label: string): HTMLElement {
    const load = (beam: Beam): Table => beam.load[i] ?? {};
    return this.select(`load.${i}.direction`, `Direction of ${label}`, DIRECTIONS, () => (load(this.work.beam).minor === true ? "minor" : load(this.work.beam).major === true ? "major" : ""), (value, work) => {
      delete load(work.beam).minor;
      delete load(work.beam).major;
      if (value !== "") load(work.beam)[value] = true;
    });
  }

  // Combinations of a standard, or the beam's own.
  private combinations(): HTMLElement {
    const names = [...new Set(this.work.beam.case.map((one) => String(one.name)))];
    const rows = listOf(this.work.beam, "combination").map((_, i) => {
      const one = (beam: Beam): Table => listOf(beam, "combination")[i] ?? {};
      const factors = (beam: Beam): Table => (typeof one(beam).factors === "object" && !Array.isArray(one(beam).factors) ? (one(beam).factors as Table) : {});
      const known = Object.keys(factors(this.work.beam));
      const keyOf = (name: string): string => known.find((key) => key.toLowerCase() === name.toLowerCase()) ?? name;
      const others = known.filter((key) => !names.some((name) => name.toLowerCase() === key.toLowerCase()));
      const factor = (name: string): HTMLElement => h("label", { class: "part" }, h("span", { class: "label" }, name),
        this.input(`combination.${i}.factors.${name}`, `Factor of ${name} in combination ${i + 1}`, () => factors(this.work.beam)[name], (text, work) => {
          const now = { ...factors(work.beam) };
          set(now, name, read(text));
          one(work.beam).factors = now;
        }, { inputmode: "decimal", class: "number", placeholder: "none" }));
      return h("div", { class: "row", "data-place": `combination.${i}.name` },
        h("span", { class: "grow" }, this.input(`combination.${i}.name`, `Name of combination ${i + 1}`, () => one(this.work.beam).name, (text, work) => { one(work.beam).name = text; })),
        this.select(`combination.${i}.state`, `State of combination ${i + 1}`, STATES.map((state): [string, string] => [state, state || "ultimate"]), () => (one(this.work.beam).state === "ultimate" ? "" : String(one(this.work.beam).state ?? "")), (value, work) => set(one(work.beam), "state", value || undefined)),
        this.remover("combination", "combination", i),
        h("div", { class: "stack" }, [...names.map(keyOf), ...others].map(factor)));
    });
    const add = (beam: Beam): void => {
      // Without factors, for the core to ask for: none can be guessed.
      beam.combination = [...listOf(beam, "combination"), { name: `Combination ${rows.length + 1}`, factors: {} }];
    };
    return this.group("Combinations", this.adder("Own combination", "combination", add),
      this.field("Of", "combinations", this.select("combinations", "Combinations", COMBINATIONS.map((name): [string, string] => [name, name || (rows.length > 0 ? "no standard, the own alone" : "the design code")]), () => String(this.work.beam.combinations ?? ""), (value, work) => set(work.beam, "combinations", value || undefined))),
      this.field("Patterns", "pattern", this.check("pattern", "imposed loads on some spans alone", () => this.work.beam.pattern !== false, (value, work) => set(work.beam, "pattern", value ? undefined : false))),
      this.field("Self weight", "self-weight", this.check("self-weight", "of the section", () => this.work.beam["self-weight"] !== false, (value, work) => set(work.beam, "self-weight", value ? undefined : false))),
      rows,
      rows.length > 0 ? h("p", { class: "quiet" }, "A factor, or that of an unfavourable and of a favourable action: 1.35, 1.") : null);
  }

  private limits(): HTMLElement {
    const isOff = this.work.beam.deflection === false;
    const limit = (key: string, label: string): HTMLElement => h("label", { class: "part" }, h("span", { class: "label" }, label, " span/"), this.within("deflection", key, `Deflection limit, ${label}, span over`, { placeholder: "–" }));
    return this.group("Deflection", null,
      this.field("Limits", "deflection", this.check("deflection", "checked", () => this.work.beam.deflection !== false, (value, work) => set(work.beam, "deflection", value ? undefined : false))),
      isOff ? h("p", { class: "told" }, "No deflection is checked.") : [
        h("div", { class: "field stack" }, limit("imposed", "variable loads"), limit("total", "all loads"), limit("cantilever", "cantilever, variable"), limit("total-cantilever", "cantilever, all")),
        this.field("Finishes", "brittle", this.check("brittle", "brittle", () => this.work.beam.brittle !== false, (value, work) => set(work.beam, "brittle", value ? undefined : false))),
        h("p", { class: "quiet" }, "Empty: that of the standard for variable loads, where it has one; none for all loads."),
      ]);
  }

  private code(): HTMLElement {
    const settings = (): Work["settings"] => this.work.settings;
    const code = this.codes.find((one) => one.id === settings().code);
    const options = (code?.options ?? []).map((option) => {
      const place = `option.${option.name}`;
      const get = (): string => settings().options[option.name] ?? "";
      const take = (value: string | undefined, work: Work): void => {
        if (value === undefined) delete work.settings.options[option.name];
        else work.settings.options[option.name] = value;
      };
      const input =
        option.kind === "flag" ? this.check(place, option.name, () => option.name in settings().options, (value, work) => take(value ? "" : undefined, work))
        : option.kind === "choice" ? this.select(place, option.name, [["", "–"], ...option.values.map((value): [string, string] => [value.name, value.name])], get, (value, work) => take(value || undefined, work))
        : this.input(place, `${option.name}, m`, get, (text, work) => take(text.trim() || undefined, work), { inputmode: "decimal", class: "number" });
      return h("div", { class: "field option", "data-place": place }, h("span", { class: "label", title: option.meaning }, option.name), h("div", { class: "inputs" }, input, option.kind === "length" ? this.unit("m") : null), h("p", { class: "quiet" }, option.meaning));
    });
    return this.group("Design code", null,
      this.field("Code", "code", this.select("code", "Design code", this.codes.map((one): [string, string] => [one.id, one.title]), () => settings().code, (value, work) => { work.settings = { code: value, annex: "", options: {} }; })),
      code && code.annexes.length > 0 ? this.field("Annex", "annex", this.select("annex", "National annex", code.annexes.map((annex): [string, string] => [annex.name, annex.meaning]), () => settings().annex || code.annexes[0].name, (value, work) => { work.settings.annex = value; })) : null,
      h("details", {}, h("summary", {}, "Options"), options));
  }
}

// Another kind of load of the same size, with the places that it needs.
function reshape(load: Table, shape: Shape, beam: Beam): void {
  const old = shapeOf(load);
  const size = Array.isArray(load[old]) ? (load[old] as Value[])[0] : load[old];
  delete load[old];
  load[shape] = shape === "trapezoid" ? [size ?? 0, size ?? 0] : size ?? 0;
  if (shape === "udl" || shape === "trapezoid") {
    delete load.at;
  } else {
    delete load.from;
    delete load.to;
    if (placesOf(load.at).length === 0) load.at = Number(beam.length) / 2 || 0;
  }
}
