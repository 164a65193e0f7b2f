// The fields of the beam. Whatever is typed goes into the beam as it is; the core says what is wrong with it.

import { placesOf, SHAPES, shapeOf, type Beam, type Shape, type Table, type Value } from "./beam";
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
const SHAPE_WORDS: Record<Shape, string> = { udl: "line load", point: "point load", trapezoid: "trapezoid", moment: "moment", axial: "axial", reaction: "reaction" };
const UNITS: Record<Shape, string> = { udl: "kN/m", point: "kN", trapezoid: "kN/m", moment: "kNm", axial: "kN", reaction: "kN" };

/**
 * What was typed: a number, several as a list, or the text as it stands where it is neither, for the core to refuse. "3,5" is such a text: it
 * could mean one number or two.
 */
export function read(text: string): Value | undefined {
  const one = (part: string): Value => (/^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i.test(part) ? Number(part) : part);
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

  constructor(private readonly edit: Edit, private readonly pick: () => void) {}

  setCodes(codes: Code[]): void {
    this.codes = codes;
    this.built = "";
  }

  /** Shows the work. Fields stay as they are where only values changed, so that typing is not disturbed. */
  show(work: Work): void {
    this.work = work;
    const frame = this.frame();
    if (frame !== this.built) {
      const focused = document.activeElement?.closest("[data-place]")?.getAttribute("data-place");
      this.built = frame;
      this.build();
      if (focused) this.fields.get(focused)?.input.focus();
    }
    for (const { input, value } of this.fields.values()) {
      const now = value();
      if (typeof now === "boolean") (input as HTMLInputElement).checked = now;
      else if (input.value !== now && (input !== document.activeElement || shown(read(input.value)) !== now)) input.value = now;
    }
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
      (field.input.closest(".row, .field") ?? field.input).append(h("span", { class: "fault", id }, words));
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
      this.codes.length, settings.code, beam.support.length, beam.restraint.map((one) => "at" in one), beam.case.map((one) => one.name), beam.load.map((load) => [shapeOf(load), load.case]),
    ]);
  }

  private build(): void {
    this.fields.clear();
    put(this.element, this.general(), this.supports(), this.restraints(), this.cases(), this.loads(), this.limits(), this.code());
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

  private adder(words: string, add: (beam: Beam) => void): HTMLElement {
    return h("button", { type: "button", class: "add", onclick: () => this.edit("", (work) => add(work.beam)) }, words);
  }

  private remover(what: string, list: "support" | "restraint" | "case" | "load", i: number): HTMLElement {
    return h("button", { type: "button", class: "remove", "aria-label": `Remove ${what} ${i + 1}`, onclick: () => this.edit("", (work) => { work.beam[list].splice(i, 1); }) }, "×");
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
        typeof beam().grade === "object" ? h("span", { class: "quiet" }, "of the file’s own") : this.select("grade", "Grade", grades, () => String(beam().grade ?? ""), (value, work) => { work.beam.grade = value; }),
        this.check("column", "column", () => beam().column === true, (value, work) => set(work.beam, "column", value || undefined))),
      this.field("Length", "length", this.number("length", "Length, m", (it) => it, "length"), this.unit("m")));
  }

  private supports(): HTMLElement {
    const rows = this.work.beam.support.map((_, i) => h("div", { class: "row", "data-place": `support.${i}.at` },
      this.select(`support.${i}.holds`, `Support ${i + 1}`, SUPPORTS, () => String(this.work.beam.support[i]?.holds ?? "Pinned"), (value, work) => { work.beam.support[i].holds = value; }),
      h("span", {}, "at"), this.number(`support.${i}.at`, `Place of support ${i + 1}, m`, (beam) => beam.support[i] ?? {}, "at"), this.unit("m"), this.remover("support", "support", i)));
    return this.group("Supports", this.adder("Support", (beam) => { beam.support.push({ at: Number(beam.length) / 2 || 0, holds: "Pinned" }); }), rows);
  }

  private restraints(): HTMLElement {
    const rows = this.work.beam.restraint.map((one, i) => h("div", { class: "row", "data-place": `restraint.${i}.at` },
      this.select(`restraint.${i}.holds`, `Restraint ${i + 1}`, RESTRAINTS, () => String(this.work.beam.restraint[i]?.holds ?? ""), (value, work) => { work.beam.restraint[i].holds = value; }),
      "at" in one
        ? [h("span", {}, "at"), this.number(`restraint.${i}.at`, `Places of restraint ${i + 1}, m`, (beam) => beam.restraint[i] ?? {}, "at")]
        : [this.number(`restraint.${i}.from`, `Restraint ${i + 1} from, m`, (beam) => beam.restraint[i] ?? {}, "from", { placeholder: "0" }), h("span", {}, "to"), this.number(`restraint.${i}.to`, `Restraint ${i + 1} to, m`, (beam) => beam.restraint[i] ?? {}, "to", { placeholder: "end" })],
      this.unit("m"), this.remover("restraint", "restraint", i)));
    return this.group("Held between supports", [
      this.adder("At places", (beam) => { beam.restraint.push({ at: Number(beam.length) / 2 || 0, holds: "Top flange lateral" }); }),
      this.adder("Along a length", (beam) => { beam.restraint.push({ from: 0, to: Number(beam.length) || 1, holds: "Top flange lateral" }); }),
    ], rows);
  }

  private cases(): HTMLElement {
    const rows = this.work.beam.case.map((_, i) => {
      const one = (): Table => this.work.beam.case[i] ?? {};
      const rename = (text: string, work: Work): void => {
        const old = String(work.beam.case[i].name).toLowerCase();
        for (const load of work.beam.load) if (String(load.case).toLowerCase() === old) load.case = text;
        work.beam.case[i].name = text;
      };
      return h("div", { class: "row", "data-place": `case.${i}.name` },
        h("span", { class: "grow" }, this.input(`case.${i}.name`, `Name of case ${i + 1}`, () => one().name, rename)),
        this.select(`case.${i}.kind`, `Kind of case ${i + 1}`, KINDS, () => String(one().kind ?? "permanent"), (value, work) => { work.beam.case[i].kind = value; }, "kind"),
        this.select(`case.${i}.category`, `Category of case ${i + 1}`, CATEGORIES, () => String(one().category ?? ""), (value, work) => set(work.beam.case[i], "category", value || undefined), "category"),
        this.remover("case", "case", i));
    });
    return this.group("Load cases", this.adder("Case", (beam) => { beam.case.push({ name: `Case ${beam.case.length + 1}`, kind: "imposed" }); }), rows);
  }

  private loads(): HTMLElement {
    const names = this.work.beam.case.map((one) => String(one.name));
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
          this.select(`load.${i}.height`, `Height of ${label}`, HEIGHTS.map((height): [string, string] => [height, height || "shear centre"]), () => shown(load(this.work.beam).height), (value, work) => set(load(work.beam), "height", value === "" ? undefined : read(value)))));
    });
    const add = (load: Table) => (beam: Beam): void => {
      if (beam.case.length === 0) beam.case.push({ name: "Dead", kind: "permanent" });
      beam.load.push({ case: beam.case[beam.case.length - 1].name, ...load });
    };
    return this.group("Loads, downwards above zero", [
      this.adder("Line load", add({ udl: 5 })), this.adder("Point load", (beam) => add({ point: 10, at: Number(beam.length) / 2 || 0 })(beam)), this.adder("Moment", add({ moment: 10, at: 0 })),
    ], rows);
  }

  private limits(): HTMLElement {
    const limits = (beam: Beam): Table => {
      if (typeof beam.deflection !== "object" || Array.isArray(beam.deflection)) return {};
      return beam.deflection;
    };
    const ratio = (key: string, label: string): HTMLElement => this.input(`deflection.${key}`, label, () => limits(this.work.beam)[key], (text, work) => {
      const now = { ...limits(work.beam) };
      set(now, key, read(text));
      set(work.beam, "deflection", Object.keys(now).length > 0 ? now : undefined);
    }, { inputmode: "decimal", class: "number", placeholder: key === "imposed" ? "360" : "–" });
    return this.group("Combinations and limits", null,
      this.field("Combinations", "combinations", this.select("combinations", "Combinations", COMBINATIONS.map((name): [string, string] => [name, name || "of the design code"]), () => String(this.work.beam.combinations ?? ""), (value, work) => set(work.beam, "combinations", value || undefined))),
      this.field("Patterns", "pattern", this.check("pattern", "imposed loads on some spans alone", () => this.work.beam.pattern !== false, (value, work) => set(work.beam, "pattern", value ? undefined : false))),
      this.field("Self weight", "self-weight", this.check("self-weight", "of the section", () => this.work.beam["self-weight"] !== false, (value, work) => set(work.beam, "self-weight", value ? undefined : false))),
      this.field("Deflection", "deflection", h("span", {}, "variable L/"), ratio("imposed", "Deflection under variable loads, span over"), h("span", {}, "all L/"), ratio("total", "Deflection under all loads, span over")));
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
