// The catalogue: search, drawing, properties.

import { drawing, h, put } from "./dom";
import type { Section, SectionRow } from "./replies";

const MOST = 60;
const plain = (text: string): string => text.toLowerCase().replaceAll("×", "x").replace(/\s+/g, "");

export class Picker {
  private readonly search = h("input", { type: "search", "aria-label": "Search sections", placeholder: "457x191, UC, RHS 200 …", spellcheck: "false" });
  private readonly family = h("select", { "aria-label": "Family" });
  private readonly list = h("ul", { class: "sections", role: "listbox", "aria-label": "Sections", tabindex: 0 });
  private readonly detail = h("div", { class: "detail" });
  private readonly dialog: HTMLDialogElement;
  private catalogue: SectionRow[] = [];
  private found: SectionRow[] = [];
  private chosen = "";
  private run = 0;

  constructor(private readonly about: (name: string) => Promise<Section>, private readonly take: (name: string) => void) {
    this.dialog = h("dialog", { class: "picker", "aria-label": "Catalogue of sections" },
      h("div", { class: "bar-row" }, this.search, this.family, h("button", { type: "button", onclick: () => this.dialog.close() }, "Close")),
      h("div", { class: "columns" }, this.list, this.detail));
    document.body.append(this.dialog);
    this.search.addEventListener("input", () => this.filter());
    this.family.addEventListener("change", () => this.filter());
    for (const element of [this.search, this.list]) element.addEventListener("keydown", (event: Event) => this.keys(event as KeyboardEvent));
  }

  setCatalogue(catalogue: SectionRow[]): void {
    this.catalogue = catalogue;
    const families = [...new Set(catalogue.map((row) => row[1]))];
    put(this.family, h("option", { value: "" }, "All families"), families.map((family) => h("option", { value: family }, family)));
  }

  open(section: string): void {
    const known = this.catalogue.find((row) => plain(row[0]) === plain(section));
    this.search.value = "";
    this.family.value = known?.[1] ?? "";
    this.chosen = known?.[0] ?? "";
    this.filter();
    this.dialog.showModal();
    this.search.focus();
    this.list.querySelector("[aria-selected=true]")?.scrollIntoView({ block: "center" });
  }

  private filter(): void {
    const words = this.search.value.trim().toLowerCase().replaceAll("×", "x").split(/\s+/);
    this.found = this.catalogue.filter((row) => (this.family.value === "" || row[1] === this.family.value) && words.every((word) => row[0].toLowerCase().includes(word)));
    if (!this.found.some((row) => row[0] === this.chosen)) this.chosen = this.found[0]?.[0] ?? "";
    const at = Math.max(0, this.found.findIndex((row) => row[0] === this.chosen) - MOST / 2);
    const shown = this.found.slice(at, at + MOST);
    put(this.list, shown.map((row) => h("li", {
      role: "option", "aria-selected": String(row[0] === this.chosen), id: `section-${plain(row[0])}`,
      onclick: () => this.choose(row[0]), ondblclick: () => this.accept(),
    }, h("span", {}, row[0]), h("span", { class: "quiet" }, `${row[2]} kg/m`))),
    this.found.length > MOST ? h("li", { class: "quiet", role: "presentation" }, `${this.found.length} sections; search to see the others`) : null,
    this.found.length === 0 ? h("li", { class: "quiet", role: "presentation" }, "No section has these words.") : null);
    void this.show();
  }

  private choose(name: string): void {
    this.chosen = name;
    for (const one of this.list.querySelectorAll("[role=option]")) one.setAttribute("aria-selected", String(one.id === `section-${plain(name)}`));
    this.list.querySelector("[aria-selected=true]")?.scrollIntoView({ block: "nearest" });
    void this.show();
  }

  private accept(): void {
    if (this.chosen === "") return;
    this.dialog.close();
    this.take(this.chosen);
  }

  private keys(event: KeyboardEvent): void {
    const step = event.key === "ArrowDown" ? 1 : event.key === "ArrowUp" ? -1 : 0;
    if (event.key === "Enter") {
      event.preventDefault();
      this.accept();
    } else if (step !== 0) {
      event.preventDefault();
      const at = this.found.findIndex((row) => row[0] === this.chosen) + step;
      const next = this.found[Math.min(this.found.length - 1, Math.max(0, at))];
      if (next) this.choose(next[0]);
    }
  }

  private async show(): Promise<void> {
    const run = ++this.run;
    if (this.chosen === "") return put(this.detail);
    const section = await this.about(this.chosen);
    if (run !== this.run) return;
    const rows = [...section.dimensions, ...section.properties].map((value) => h("tr", {}, h("th", { scope: "row", title: value.meaning }, value.symbol), h("td", {}, value.value), h("td", { class: "quiet" }, value.unit), h("td", { class: "quiet meaning" }, value.meaning)));
    put(this.detail,
      h("div", { class: "bar-row" }, h("h2", {}, section.name), h("span", { class: "quiet" }, `${section.mass} kg/m`), h("button", { type: "button", class: "primary", onclick: () => this.accept() }, "Take it")),
      drawing(section.svg, ".steel { fill: var(--steel); stroke: var(--ink); } .axis { stroke: var(--muted); } .plastic { stroke: var(--warn); } .principal { stroke: var(--link); } .centroid, text { fill: var(--ink); } svg { height: 15rem; width: auto; }"),
      h("table", {}, h("tbody", {}, rows)));
  }
}
