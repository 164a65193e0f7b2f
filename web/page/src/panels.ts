// What is asked beside the check: lightest sections, both codes, the buckled shape, capacities.

import { drawing, h, put, s, type Child } from "./dom";
import type { Buckling, Capacities, CapacityChart, Checked, Choice, Code, SectionRow, Topic } from "./replies";
import type { Work } from "./state";
import type { Request } from "./wasm";

export interface Bench {
  work(): Work;
  text(): string;
  codes(): Code[];
  catalogue(): SectionRow[];
  /** A request about the beam as it stands, to the code that it is checked with unless the request says so. */
  ask<T>(request: Request): Promise<T>;
  take(section: string): void;
}

interface Panel { id: string; title: string; make(bench: Bench, body: HTMLElement, isCurrent: () => boolean): Promise<void> }

const table = (head: Child[], rows: Child[][], cls = ""): HTMLElement =>
  h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": "Table" }, h("table", { class: cls }, h("thead", {}, h("tr", {}, head.map((cell) => h("th", { scope: "col" }, cell)))), h("tbody", {}, rows.map((row) => h("tr", {}, row.map((cell) => h("td", {}, cell)))))));

// --- Lightest sections ---

let families = ["UB"];
let by = "mass";
let depth = "";

async function lightest(bench: Bench, body: HTMLElement, isCurrent: () => boolean): Promise<void> {
  const all = [...new Set(bench.catalogue().map((row) => row[1]))];
  const results = h("div", { "aria-live": "polite" }, h("p", { class: "quiet" }, "Trying sections…"));
  const again = (): void => { void search(); };
  put(body,
    h("div", { class: "controls" },
      h("fieldset", { class: "families" }, h("legend", {}, "Families"), all.map((family) => h("label", { class: "check" },
        h("input", { type: "checkbox", checked: families.includes(family), onchange: (event: Event) => {
          families = (event.target as HTMLInputElement).checked ? [...families, family] : families.filter((one) => one !== family);
          again();
        } }), family))),
      h("label", {}, "First ", h("select", { value: by, onchange: (event: Event) => { by = (event.target as HTMLSelectElement).value; again(); } }, h("option", { value: "mass" }, "the lightest"), h("option", { value: "depth" }, "the shallowest"))),
      h("label", {}, "Depth at most ", h("input", { type: "text", inputmode: "decimal", class: "number", value: depth, onchange: (event: Event) => { depth = (event.target as HTMLInputElement).value.trim(); again(); } }), " mm")),
    results);
  const search = async (): Promise<void> => {
    if (families.length === 0) return put(results, h("p", {}, "Choose a family."));
    if (depth !== "" && !(Number(depth) > 0)) return put(results, h("p", { class: "fault" }, "A depth in mm above 0."));
    put(results, h("p", { class: "quiet" }, "Trying sections…"));
    const choice = await bench.ask<Choice>({ ask: "lightest", families, by, depth: depth === "" ? null : Number(depth), count: 8 });
    if (!isCurrent()) return;
    const now = bench.work().beam.section;
    const row = (status: string) => (one: Choice["passing"][number]): Child[] => [
      status === "pass" ? h("button", { type: "button", class: "take", onclick: () => bench.take(one.section) }, one.section) : one.section,
      one.mass_text, one.depth_text, one.shown || "–",
      h("span", { class: one.status === "pass" ? "pass" : "fail" }, [one.status, one.warnings > 0 && `${one.warnings} ${one.warnings === 1 ? "warning" : "warnings"}`, one.section === now && "now"].filter(Boolean).join(", ")), one.governing,
    ];
    put(results,
      h("p", {}, choice.chosen ? [h("b", {}, choice.chosen), by === "mass" ? " is the lightest section that passes." : " is the shallowest section that passes."] : "No section of these passes."),
      choice.not_checked.length > 0 ? h("p", { class: "message warning" }, h("b", {}, "Not checked"), ` ${choice.not_checked.length} sections: ${choice.not_checked[0].governing}`) : null,
      table(["Section", "kg/m", "mm", "Utilisation", "Verdict", "Governing"], [...choice.lighter_failing.map(row("fail")), ...choice.passing.map(row("pass"))]));
  };
  await search();
}

// --- Both codes ---

async function bothCodes(bench: Bench, body: HTMLElement, isCurrent: () => boolean): Promise<void> {
  const { settings } = bench.work();
  const replies = await Promise.all(bench.codes().map((code) =>
    bench.ask<Checked>({ ask: "check", brief: true, code: code.id, ...(code.id === settings.code ? {} : { annex: "", options: {} }) })));
  if (!isCurrent()) return;
  const members = replies.map((reply) => reply.members[0]);
  const topics = [...new Set(members.flatMap((member) => member?.topics?.map((topic) => topic.topic) ?? []))];
  const cell = (topic: Topic | undefined): Child => {
    if (!topic) return "–";
    return [topic.shown ? h("span", { class: topic.failed ? "fail" : "" }, `${topic.shown} `) : null, topic.clause ? h("span", { class: "clause" }, topic.clause) : null, topic.open ? h("b", { class: "fail" }, " not evaluated") : null];
  };
  const line = (name: string, of: (i: number) => Child): Child[] => [name, ...members.map((_, i) => of(i))];
  put(body, table(["Matter", ...replies.map((reply) => reply.code)], [
    line("Status", (i) => h("b", { class: members[i]?.status === "pass" ? "pass" : "fail" }, members[i]?.status ?? "refused")),
    line("Utilisation", (i) => h("b", {}, members[i]?.utilisation || "–")),
    line("Governed by", (i) => members[i]?.governing || members[i]?.diagnostics.find((one) => one.severity === "error")?.message || "–"),
    line("Strength", (i) => members[i]?.strength ?? "–"),
    line("Class", (i) => members[i]?.class ?? "–"),
    ...topics.map((topic) => line(topic, (i) => cell(members[i]?.topics?.find((one) => one.topic === topic)))),
  ]));
}

// --- Buckled shape ---

async function buckling(bench: Bench, body: HTMLElement, isCurrent: () => boolean): Promise<void> {
  const found = await bench.ask<Buckling>({ ask: "buckling" });
  if (!isCurrent()) return;
  put(body,
    found.worst ? [h("p", {}, h("b", {}, found.verdict)), h("p", { class: "quiet" }, found.worst), drawing(found.svg)] : h("p", {}, "There is no elastic critical load."),
    table(["Combination", "Elastic critical load"], found.combinations.map((one) => [one.combination, h("span", { class: one.stable ? "" : "fail" }, one.verdict)])));
}

// --- Capacities ---

const LENGTHS = [1, 1.5, 2, 2.5, 3, 3.5, 4, 5, 6, 7, 8, 9, 10, 12, 14];

async function capacities(bench: Bench, body: HTMLElement, isCurrent: () => boolean): Promise<void> {
  const { beam } = bench.work();
  if (typeof beam.grade !== "string") return put(body, h("p", {}, "There are capacities of named grades alone."));
  const found = await bench.ask<Capacities>({ ask: "capacity", section: String(beam.section), grade: beam.grade, lengths: LENGTHS, type: typeof beam.type === "string" ? beam.type : "" });
  if (!isCurrent()) return;
  put(body,
    h("p", {}, h("b", {}, `${found.section} in ${beam.grade}`), `, ${found.strength}`),
    h("p", { class: "quiet" }, [found.classes, found.fabrication].filter(Boolean).join(", ")),
    found.notes.map((note) => h("p", { class: "message warning" }, h("b", {}, "Note"), ` ${note}`)),
    found.charts.length > 0 ? h("div", { class: "charts" }, found.charts.map(chart)) : null,
    found.tables.map(({ title, head, rows }) => [h("h3", {}, title), table(head, rows, "figures")]));
}

function chart({ title, points, most, most_text: words }: CapacityChart): HTMLElement {
  const [w, height, left, bottom] = [240, 130, 44, 20];
  const far = Math.max(...points.map(([x]) => x), 1e-9);
  const x = (at: number): number => left + (at / far) * (w - left - 10);
  const y = (value: number): number => height - bottom - (value / (most || 1)) * (height - bottom - 14);
  const text = (at: number, to: number, label: string, anchor: string): SVGElement => s("text", { x: at, y: to, "text-anchor": anchor, class: "quiet" }, label);
  return h("figure", {}, s("svg", { viewBox: `0 0 ${w} ${height}`, class: "sketch chart", role: "img", "aria-label": `${title} by effective length` },
    s("path", { d: `M${left},14V${height - bottom}H${w - 10}`, class: "axis" }),
    s("path", { d: points.map(([at, value], i) => `${i ? "L" : "M"}${x(at).toFixed(1)},${y(value).toFixed(1)}`).join(""), class: "curve" }),
    text(left - 4, 18, words, "end"), text(left - 4, height - bottom, "0", "end"), text(w - 10, height - 6, `${far} m`, "end")), h("figcaption", {}, title));
}

// --- The tabs ---

const PANELS: Panel[] = [
  { id: "lightest", title: "Lightest sections", make: lightest },
  { id: "codes", title: "Both codes", make: bothCodes },
  { id: "buckling", title: "Buckled shape", make: buckling },
  { id: "capacity", title: "Capacities", make: capacities },
];

export class Panels {
  readonly element: HTMLElement;
  private readonly body = h("div", { class: "panel", role: "tabpanel", id: "panel", tabindex: -1 });
  private readonly tabs: HTMLButtonElement[];
  private current = PANELS[1];
  private run = 0;
  private timer = 0;

  constructor(private readonly bench: Bench) {
    this.tabs = PANELS.map((panel) => h("button", { type: "button", role: "tab", id: `tab-${panel.id}`, "aria-controls": "panel", onclick: () => this.open(panel) }, panel.title));
    const list = h("div", { role: "tablist", "aria-label": "More about this beam", class: "tabs", onkeydown: (event: Event) => this.keys(event as KeyboardEvent) }, this.tabs);
    this.element = h("section", { class: "panels", "aria-label": "More" }, list, this.body);
    this.mark();
  }

  /** The beam has changed. */
  refresh(): void {
    if (this.bench.codes().length === 0) return;
    clearTimeout(this.timer);
    this.element.dataset.stale = "";
    this.timer = window.setTimeout(() => void this.make(), 180);
  }

  private open(panel: Panel): void {
    this.current = panel;
    this.element.dataset.stale = "";
    this.mark();
    put(this.body, h("p", { class: "quiet" }, "Working…"));
    void this.make();
  }

  private mark(): void {
    PANELS.forEach((panel, i) => {
      this.tabs[i].setAttribute("aria-selected", String(panel === this.current));
      this.tabs[i].tabIndex = panel === this.current ? 0 : -1;
    });
    this.body.setAttribute("aria-labelledby", `tab-${this.current.id}`);
  }

  private keys(event: KeyboardEvent): void {
    const step = event.key === "ArrowRight" ? 1 : event.key === "ArrowLeft" ? -1 : 0;
    if (step === 0) return;
    event.preventDefault();
    const next = (PANELS.indexOf(this.current) + step + PANELS.length) % PANELS.length;
    this.open(PANELS[next]);
    this.tabs[next].focus();
  }

  private async make(): Promise<void> {
    const run = ++this.run;
    const isCurrent = (): boolean => run === this.run;
    const hasFocus = this.body.contains(document.activeElement);
    try {
      await this.current.make(this.bench, this.body, isCurrent);
    } catch (failure) {
      if (isCurrent()) put(this.body, h("p", { class: "message error" }, h("b", {}, "Not available"), ` ${failure instanceof Error ? failure.message : String(failure)}`));
    }
    if (!isCurrent()) return;
    delete this.element.dataset.stale;
    // What had the focus is gone with the earlier contents.
    if (hasFocus && !this.body.contains(document.activeElement) && document.activeElement === document.body) this.body.focus();
  }
}
