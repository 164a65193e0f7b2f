// The page: the beam and its fields, the drawing, the verdict, and what belongs around them.

import "./style.css";
import { Batch } from "./batch";
import { beamOf, isBeam, textOf, type Beam, type Table } from "./beam";
import { Core, Refusal } from "./core";
import { h, put } from "./dom";
import { Editor } from "./editor";
import { choose, fileName, save } from "./files";
import { Panels } from "./panels";
import { Picker } from "./picker";
import type { Checked, Code, Finding, Section, SectionRow, Step } from "./replies";
import { Checks, messages, Verdict } from "./results";
import { Sheet } from "./sheet";
import { Sketch } from "./sketch";
import { Forces } from "./forces";
import { forget, fresh, linkOf, State, workOf, type Settings, type Work } from "./state";
import type { Request } from "./wasm";

const NAME = "beam.toml";
const LATE = 120; // ms after which an old verdict looks old

class Page {
  private readonly core = new Core(); // checks at each keystroke
  private readonly aside = new Core(); // whatever takes longer
  private readonly state: State;
  private readonly verdict = new Verdict();
  private readonly checks = new Checks();
  private readonly editor: Editor;
  private readonly sketch: Sketch;
  private readonly panels: Panels;
  private readonly picker: Picker;
  private readonly sheet = new Sheet();
  private readonly batch: Batch;
  private readonly forces: Forces;
  private readonly results = h("div", { id: "results", class: "results", tabindex: -1 });
  private readonly says = h("div", { class: "messages", role: "status" });
  private readonly notice = h("p", { class: "notice", role: "alert" });
  private readonly title = h("p", { class: "print-title" });
  private readonly paper = h("div", { class: "paper" });
  private readonly undo = this.button("Undo", "Ctrl+Z", () => this.state.undo());
  private readonly redo = this.button("Redo", "Ctrl+Y", () => this.state.redo());
  private codes: Code[] = [];
  private catalogue: SectionRow[] = [];
  private checked: Checked | undefined;
  private isChecking = false;
  private isWanted = false;
  private isFrameDue = false;
  private width = 0; // of the paper; to ask for it at each drawing would lay the page out once more

  constructor() {
    this.state = new State(() => this.changed());
    const edit = (what: string, change: (work: Work) => void): void => this.state.edit(what, change);
    this.editor = new Editor(edit, () => this.picker.open(String(this.work.beam.section ?? "")));
    this.sketch = new Sketch((what, change) => edit(what, (work) => change(work.beam)));
    this.picker = new Picker((section) => this.aside.ask<Section>({ ask: "section", section }), (section) => this.take(section));
    this.panels = new Panels({
      work: () => this.work, text: () => textOf(this.work.beam).text, codes: () => this.codes, catalogue: () => this.catalogue,
      ask: <T>(request: Request) => this.aside.ask<T>({ name: NAME, ...this.settings, ...request }, textOf(this.work.beam).text),
      take: (section) => this.take(section),
    });
    this.batch = new Batch((bytes, name, settings) => this.openSheet(bytes, name, settings));
    this.forces = new Forces((request, bytes) => this.aside.ask(request, bytes), (file) => void this.batch.open(file, this.settings));
    this.layOut();
    this.listen();
    void this.start();
  }

  private get work(): Work { return this.state.work; }
  private get settings(): Settings { return this.work.settings; }

  private take(section: string): void {
    this.state.edit("", (work) => {
      work.beam.section = section;
      delete work.beam.type;
    });
  }

  // --- Layout ---

  private button(words: string, title: string, act: () => void, cls = ""): HTMLButtonElement {
    return h("button", { type: "button", title, class: cls, onclick: act }, words);
  }

  private layOut(): void {
    put(document.getElementById("page")!,
      h("a", { class: "skip", href: "#results" }, "To the results"),
      h("header", {},
        h("h1", {}, "Keltrix ", h("span", {}, "Steel")),
        h("nav", { "aria-label": "File" },
          this.undo, this.redo,
          this.button("New", "The beam of the first visit", () => this.state.replace(fresh())),
          this.button("Open", "A beam file or a member file; or drop it on the page", () => choose(".toml,.csv,.txt,text/*", (file) => void this.open(file))),
          this.button("Forces", "Members from a table of forces of another program", () => this.forces.open()),
          this.button("Save", "As a beam file", () => save(fileName(this.work.beam.title, "toml"), [textOf(this.work.beam).text], "application/toml")),
          this.button("Link", "The whole beam in the address", () => void this.link()),
          this.button("Clear", "Forget what this browser keeps of this page", () => this.clear()),
          this.button("Calculation sheet", "To print or to save", () => this.openSheet(), "primary"))),
      this.notice,
      h("main", {},
        this.editor.element,
        this.results),
      h("footer", {}, h("p", {}, "Everything happens in this browser: nothing is sent anywhere. The digits are those of the command line ", h("code", {}, "ksteel"), ".")));
    put(this.results, this.title, this.verdict.element, this.says, this.paper, this.checks.element, this.panels.element);
    put(this.paper, this.sketch.element);
    new ResizeObserver(([entry]) => {
      this.width = Math.floor(entry.contentRect.width);
      this.drawSoon();
    }).observe(this.paper);
  }

  private listen(): void {
    addEventListener("keydown", (event) => {
      if (!(event.ctrlKey || event.metaKey) || event.altKey || document.querySelector("dialog[open]")) return;
      const key = event.key.toLowerCase();
      if (key !== "z" && key !== "y") return;
      event.preventDefault();
      if (key === "y" || event.shiftKey) this.state.redo();
      else this.state.undo();
    });
    addEventListener("dragover", (event) => event.preventDefault());
    addEventListener("drop", (event) => {
      event.preventDefault();
      const file = event.dataTransfer?.files[0];
      if (file) void this.open(file);
    });
    addEventListener("hashchange", () => void this.takeLink());
  }

  private async start(): Promise<void> {
    await this.takeLink();
    this.changed();
    try {
      [this.codes, this.catalogue] = await Promise.all([this.core.ask<Code[]>({ ask: "codes" }), this.core.ask<SectionRow[]>({ ask: "sections" })]);
      this.picker.setCatalogue(this.catalogue);
      this.editor.setCodes(this.codes);
      this.editor.show(this.work);
      this.markFaults();
      this.panels.refresh();
    } catch (failure) {
      this.tell(`This browser cannot run the checks: ${failure instanceof Error ? failure.message : String(failure)}`);
    }
  }

  // --- The beam has changed ---

  private changed(): void {
    this.undo.setAttribute("aria-disabled", String(!this.state.canUndo)); // not "disabled", which would take the focus away
    this.redo.setAttribute("aria-disabled", String(!this.state.canRedo));
    if (this.linked !== "" && JSON.stringify(this.work) !== this.linked) this.unlink();
    this.editor.show(this.work);
    this.title.textContent = String(this.work.beam.title ?? "");
    document.title = this.work.beam.title ? `${String(this.work.beam.title)} – Keltrix Steel` : "Keltrix Steel";
    this.panels.refresh();
    this.isWanted = true;
    void this.check();
  }

  private drawSoon(): void {
    if (this.isFrameDue) return;
    this.isFrameDue = true;
    requestAnimationFrame(() => {
      this.isFrameDue = false;
      this.draw();
    });
  }

  private draw(): void {
    const { beam } = this.work;
    const loads = this.checked?.members[0]?.loads;
    // Diagrams of another length are not drawn: they are those of an earlier beam.
    this.sketch.draw(beam, loads && loads.length === beam.length ? loads : undefined, Math.max(280, this.width));
  }

  // One check at a time, of the newest beam.
  private async check(): Promise<void> {
    if (this.isChecking) return;
    this.isChecking = true;
    while (this.isWanted) {
      this.isWanted = false;
      const { text, places } = textOf(this.work.beam);
      const late = setTimeout(() => this.wait(), LATE);
      const start = performance.now();
      try {
        this.checked = await this.core.ask<Checked>({ ask: "check", name: NAME, ...this.settings }, text);
        this.places = places;
        this.show();
        if (this.isWanted) this.wait(); // the beam has changed since
      } catch (failure) {
        this.checked = undefined;
        delete this.results.dataset.stale;
        this.verdict.fail(failure instanceof Refusal ? failure.message : String(failure));
        this.checks.show(undefined, async () => []);
        messages(this.says, []);
        this.editor.mark([], []);
        this.draw();
      }
      clearTimeout(late);
      performance.measure("keltrix-check", { start });
    }
    this.isChecking = false;
  }

  private places: string[] = [];

  // What stands here is that of an earlier beam.
  private wait(): void {
    this.verdict.wait();
    this.results.dataset.stale = "";
    this.drawSoon();
  }

  private show(): void {
    const checked = this.checked!;
    delete this.results.dataset.stale;
    this.verdict.show(checked);
    this.checks.show(checked.members[0], (finding) => this.steps(finding));
    this.markFaults();
    this.draw();
  }

  private markFaults(): void {
    if (!this.checked) return;
    const member = this.checked.members[0];
    const all = [...this.checked.diagnostics, ...(member?.diagnostics ?? [])];
    messages(this.says, this.editor.mark(all, this.places));
  }

  // The steps of a rule come from the combination that governs it.
  private async steps(finding: Finding): Promise<Step[]> {
    const found = await this.aside.ask<Finding[]>({ ask: "steps", name: NAME, ...this.settings, combination: finding.combination }, textOf(this.work.beam).text);
    const same = (one: Finding): boolean => one.rule === finding.rule && one.clause === finding.clause && one.place === finding.place && one.shown === finding.shown;
    return found.find(same)?.steps ?? [];
  }

  // --- Files and links ---

  private async open(file: File): Promise<void> {
    this.tell("");
    const isSmall = file.size <= 1 << 20;
    if (!isSmall && file.name.toLowerCase().endsWith(".toml")) return this.tell(`${file.name} was not opened: a beam file holds at most 1 MiB.`);
    const bytes = isSmall ? new Uint8Array(await file.arrayBuffer()) : undefined;
    try {
      const read = bytes ? await this.aside.ask<{ kind: string; keys?: Table }>({ ask: "document", name: file.name }, bytes) : { kind: "member file" };
      if (read.kind !== "beam file") return await this.batch.open(file, this.settings);
      const beam = beamOf((read as { keys: Table }).keys);
      const difference = await this.difference(file.name, bytes!, beam);
      if (difference !== "") return this.tell(`${file.name} was not opened: ${difference}`);
      this.state.edit("", (work) => { work.beam = beam; });
    } catch (failure) {
      this.tell(`${file.name} was not opened: ${failure instanceof Error ? failure.message : String(failure)}`);
    }
  }

  // The beam that the page would have must be that of the file: what became of both is compared. A file with errors is opened to be mended.
  private async difference(name: string, bytes: Uint8Array, beam: Beam): Promise<string> {
    if (!isBeam(beam)) return "it holds what the page cannot show";
    const ask = (text: Uint8Array | string): Promise<Checked> => this.aside.ask<Checked>({ ask: "check", brief: true, name, ...this.settings }, text);
    const [file, page] = await Promise.all([ask(bytes), ask(textOf(beam).text)]);
    const of = ({ pass, members }: Checked): string => JSON.stringify([pass, members.map((one) => [one.status, one.ratio, one.governing, one.combination, one.open])]);
    if (of(file) === of(page)) return "";
    const errors = [...file.diagnostics, ...file.members.flatMap((one) => one.diagnostics)].filter((one) => one.severity === "error");
    return errors[0]?.message ?? "the page cannot show all of it; ksteel checks it";
  }

  private linked = ""; // the work that the address holds

  private unlink(): void {
    this.linked = "";
    history.replaceState(null, "", location.pathname + location.search);
  }

  private async link(): Promise<void> {
    const address = new URL(location.href);
    address.hash = await linkOf(this.work);
    history.replaceState(null, "", address);
    this.linked = JSON.stringify(this.work);
    try {
      await navigator.clipboard.writeText(address.href);
      this.tell("The link with the whole beam was copied.");
    } catch {
      this.tell("The link with the whole beam stands in the address.");
    }
  }

  private async takeLink(): Promise<void> {
    if (!location.hash.startsWith("#beam=")) return;
    const work = await workOf(location.hash);
    if (work) {
      this.state.replace(work);
      this.linked = JSON.stringify(this.work);
    } else {
      this.tell("The link holds no beam that can be read.");
      this.unlink();
    }
  }

  private clear(): void {
    forget();
    this.unlink();
    this.tell("This browser keeps nothing of this page now. The next change is kept again.");
  }

  private openSheet(bytes?: Uint8Array, name = NAME, settings: Settings = this.settings): void {
    const html = this.aside.ask<{ html: string }>({ ask: "sheet", name, ...settings }, bytes ?? textOf(this.work.beam).text);
    void this.sheet.open(html, fileName(bytes ? name : this.work.beam.title, "html"));
  }

  private tell(words: string): void {
    this.notice.textContent = words;
  }
}

new Page();

