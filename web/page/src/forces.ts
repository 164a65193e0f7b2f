// Forces of another program: a table of them and one of members become members, which are checked as those of a file.

import { h, put } from "./dom";
import type { Convention, Imported } from "./replies";
import type { Request } from "./wasm";

const MOST_SHOWN = 100;

export class Forces {
  private readonly dialog: HTMLDialogElement;
  private readonly forces = h("input", { type: "file", accept: ".csv,.txt,text/*", "aria-label": "Table of forces" });
  private readonly members = h("input", { type: "file", accept: ".csv,.txt,text/*", "aria-label": "Table of members" });
  private readonly signs = h("select", { "aria-label": "Signs" });
  private readonly meaning = h("p", { class: "quiet" });
  private readonly map = h("input", { type: "text", "aria-label": "What the captions do not say", placeholder: "T=none  force=kN  My=\u201cM yy\u201d", spellcheck: "false" });
  private readonly repeats = h("input", { type: "checkbox" });
  private readonly says = h("div", { class: "messages", role: "status" });
  private readonly go = h("button", { type: "submit", class: "primary" }, "Check the members");
  private conventions: Convention[] = [];

  constructor(private readonly ask: <T>(request: Request, bytes?: Uint8Array) => Promise<T>, private readonly check: (file: File) => void) {
    const field = (label: string, input: HTMLElement): HTMLElement => h("label", { class: "field" }, h("span", { class: "label" }, label), input);
    const form = h("form", { class: "import", onsubmit: (event: Event) => { event.preventDefault(); void this.take(); } },
      field("Table of forces", this.forces), field("Table of members", this.members), field("Signs", this.signs), this.meaning,
      field("Besides", this.map), h("label", { class: "check" }, this.repeats, "rows of a station may be repeated"), h("div", {}, this.go), this.says);
    this.dialog = h("dialog", { class: "forces", "aria-label": "Forces of another program" },
      h("div", { class: "bar-row" }, h("h2", {}, "Forces of another program"), h("button", { type: "button", onclick: () => this.dialog.close() }, "Close")),
      h("p", { class: "quiet" }, "Two tables with captions: forces at stations by member and case, and what the members are."), form);
    this.signs.addEventListener("change", () => this.explain());
    document.body.append(this.dialog);
  }

  open(): void {
    put(this.says);
    this.dialog.showModal();
    void this.fill();
  }

  private async fill(): Promise<void> {
    if (this.conventions.length === 0) this.conventions = await this.ask<Convention[]>({ ask: "conventions" });
    if (this.signs.options.length === 0) put(this.signs, h("option", { value: "" }, "choose"), this.conventions.map(({ name }) => h("option", { value: name }, name)));
    this.explain();
  }

  private explain(): void {
    this.meaning.textContent = this.conventions.find(({ name }) => name === this.signs.value)?.meaning ?? "The signs of the program that the forces come from. Forces that do not balance in them are refused.";
  }

  private async take(): Promise<void> {
    const [forces, members] = [this.forces.files?.[0], this.members.files?.[0]];
    if (!forces || !members || this.signs.value === "") return put(this.says, h("p", { class: "message error" }, h("b", {}, "Missing"), " Both tables and the signs are needed."));
    put(this.says, h("p", { class: "quiet" }, "Working…"));
    try {
      const bytes = new Uint8Array(await new Blob([forces, members]).arrayBuffer());
      const map = [this.signs.value, ...words(this.map.value)];
      const made = await this.ask<Imported>({ ask: "import", forces: forces.name, members: members.name, split: forces.size, map, repeats: this.repeats.checked }, bytes);
      const said = made.findings.slice(0, MOST_SHOWN).map(({ severity, text }) => h("p", { class: `message ${severity}` }, text));
      const rest = made.findings.length - said.length;
      put(this.says,
        made.refused ? h("p", { class: "message error" }, h("b", {}, "No member was made."))
        : h("p", {}, `${made.members} ${made.members === 1 ? "member" : "members"}, ${made.cases} ${made.cases === 1 ? "case" : "cases"}. `, h("button", { type: "button", class: "link", onclick: () => this.show(made) }, "Show them")),
        said, rest > 0 ? h("p", {}, `and ${rest} more`) : null);
      // Warnings are read first.
      if (!made.refused && made.findings.every(({ severity }) => severity === "note")) this.show(made);
    } catch (failure) {
      put(this.says, h("p", { class: "message error" }, h("b", {}, "Refused"), ` ${failure instanceof Error ? failure.message : String(failure)}`));
    }
  }

  private show(made: Imported): void {
    this.dialog.close();
    this.check(new File([made.text], "forces.csv", { type: "text/csv" }));
  }
}

// KEY=VALUE by blanks, a value with blanks in quotes.
const words = (text: string): string[] => [...text.matchAll(/[^\s"“”]*["“”][^"“”]*["“”]|[^\s"“”]+/g)].map(([word]) => word.replace(/["“”]/g, ""));
