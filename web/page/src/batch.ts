// A file of members: a table, worst first, filled while the members are checked beside the page.

import { Core } from "./core";
import { h, put } from "./dom";
import { fileName, save } from "./files";
import type { BatchRow, Row } from "./replies";
import type { Settings } from "./state";

const SHOWN = 200;
interface Line { row: Row; shown: string; governing: string; from: number; bytes: number }
type Column = { name: string; cls?: string; value: (line: Line) => string | number; shown: (line: Line) => string };

// What failed without a number and what was refused are worse than any utilisation.
const worst = ({ row }: Line): number => (row.status === "refused" ? Infinity : row.overall ?? Infinity);
const COLUMNS: Column[] = [
  { name: "Utilisation", cls: "n", value: worst, shown: ({ row, shown }) => (row.status === "refused" ? "–" : shown || "–") },
  { name: "Status", value: ({ row }) => row.status, shown: ({ row }) => row.status },
  { name: "Section", value: ({ row }) => row.section ?? "", shown: ({ row }) => row.section ?? "" },
  { name: "Grade", value: ({ row }) => row.grade ?? "", shown: ({ row }) => row.grade ?? "" },
  { name: "Governing", value: ({ governing }) => governing, shown: ({ row, governing }) => (row.errors ? row.errors.join("; ") : governing) },
  { name: "Member", value: ({ row }) => row.title, shown: ({ row }) => row.title },
  { name: "Line", cls: "n", value: ({ row }) => row.line, shown: ({ row }) => String(row.line) },
];

export class Batch {
  private readonly dialog = h("dialog", { class: "batch", "aria-label": "Members of a file" });
  private rows: Line[] = [];
  private order = { column: 0, isDown: true };
  private core: Core | undefined;
  private file!: File;
  private settings!: Settings;
  private timer = 0;
  private readonly head = h("p", { role: "status" });
  private readonly bar = h("progress", { max: 1, value: 0, "aria-label": "Progress" });
  private readonly body = h("tbody", {});
  private readonly heads: HTMLElement[];
  private readonly note = h("p", { class: "quiet" });
  private isComplete = false;

  constructor(private readonly sheet: (bytes: Uint8Array, name: string, settings: Settings) => void) {
    this.heads = COLUMNS.map((column, i) => h("th", { scope: "col", class: column.cls }, h("button", { type: "button", onclick: () => this.sortBy(i) }, column.name)));
    put(this.dialog,
      h("div", { class: "bar-row" }, h("h2", {}, "Members"), this.head, this.bar,
        h("button", { type: "button", onclick: () => void this.saveJson() }, "Save JSON"), h("button", { type: "button", onclick: () => this.saveCsv() }, "Save CSV"),
        h("button", { type: "button", onclick: () => this.dialog.close() }, "Close")),
      h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": "Members" }, h("table", {}, h("thead", {}, h("tr", {}, this.heads)), this.body)), this.note);
    this.dialog.addEventListener("close", () => { this.core?.end(); this.core = undefined; });
    document.body.append(this.dialog);
  }

  async open(file: File, settings: Settings): Promise<void> {
    this.core?.end();
    this.file = file;
    this.settings = settings;
    this.rows = [];
    this.order = { column: 0, isDown: true };
    this.isComplete = false;
    this.core = new Core();
    this.dialog.showModal();
    this.show(0);
    try {
      await this.core.batch({ ask: "begin batch", name: file.name, ...settings }, file, (rows, share) => {
        for (const { row, ...line } of rows as BatchRow[]) if (row) this.rows.push({ row, ...line });
        this.bar.value = share;
        this.timer ||= window.setTimeout(() => { this.timer = 0; this.show(share); }, 120);
      });
      this.isComplete = true;
      this.show(1);
    } catch (failure) {
      put(this.head, h("b", { class: "fail" }, `Stopped: ${failure instanceof Error ? failure.message : String(failure)}; members after these were not checked.`));
    }
  }

  private sortBy(column: number): void {
    this.order = { column, isDown: this.order.column === column ? !this.order.isDown : column === 0 };
    this.show(this.isComplete ? 1 : this.bar.value);
  }

  private sorted(): Line[] {
    const { value } = COLUMNS[this.order.column];
    const sign = this.order.isDown ? -1 : 1;
    return [...this.rows].sort((a, b) => {
      const [x, y] = [value(a), value(b)];
      return x === y ? a.row.line - b.row.line : x < y ? -sign : sign;
    });
  }

  private show(share: number): void {
    const count = (status: string): number => this.rows.filter(({ row }) => row.status === status).length;
    const counts = ["pass", "fail", "not checked", "refused"].map((status) => [status, count(status)] as const).filter(([, number]) => number > 0);
    this.bar.hidden = share >= 1;
    put(this.head, `${this.file.name}: ${this.rows.length} members`, counts.map(([status, number]) => [", ", h("b", { class: status === "pass" ? "pass" : "fail" }, `${number} ${status}`)]), this.isComplete ? "" : ", checking…");
    this.heads.forEach((head, i) => {
      if (i === this.order.column) head.setAttribute("aria-sort", this.order.isDown ? "descending" : "ascending");
      else head.removeAttribute("aria-sort");
    });
    put(this.body, this.sorted().slice(0, SHOWN).map((one) => h("tr", {}, COLUMNS.map((column, i) => h("td", { class: column.cls },
      i === 1 ? h("b", { class: one.row.status === "pass" ? "pass" : "fail" }, one.row.status)
      : i === 5 ? h("button", { type: "button", class: "link", onclick: () => void this.openSheet(one.from, one.bytes) }, column.shown(one) || "Sheet")
      : column.shown(one))))));
    put(this.note, this.rows.length > SHOWN ? `The first ${SHOWN} in this order are shown; saved files hold all ${this.rows.length}.` : "");
  }

  private async openSheet(from: number, bytes: number): Promise<void> {
    this.sheet(new Uint8Array(await this.file.slice(from, from + bytes).arrayBuffer()), this.file.name, this.settings);
  }

  // All that was found, a line for each member, as the command line writes it.
  private async saveJson(): Promise<void> {
    const core = new Core();
    const parts: string[] = [];
    try {
      await core.batch({ ask: "begin batch", name: this.file.name, full: true, ...this.settings }, this.file, (rows, share) => {
        for (const { text } of rows as BatchRow[]) parts.push(text);
        this.bar.hidden = share >= 1;
        this.bar.value = share;
      });
      save(fileName(this.file.name.replace(/\.[^.]*$/, ""), "jsonl"), parts, "application/x-ndjson");
    } catch (failure) {
      put(this.head, h("b", { class: "fail" }, `Nothing was saved: ${failure instanceof Error ? failure.message : String(failure)}`));
    } finally {
      core.end();
    }
  }

  // A field that a spreadsheet would take for a formula gets an apostrophe.
  private saveCsv(): void {
    const field = (value: string): string => `"${(/^[=+@\t\r-]/.test(value) && Number.isNaN(Number(value)) ? `'${value}` : value).replaceAll('"', '""')}"`;
    const lines = [COLUMNS.map((column) => column.name).join(","), ...this.sorted().map((line) => COLUMNS.map((column) => field(column.shown(line))).join(","))];
    if (!this.isComplete) lines.push(field("incomplete: not all members were checked"));
    save(fileName(this.file.name.replace(/\.[^.]*$/, ""), "csv"), ["\ufeff", lines.join("\r\n"), "\r\n"], "text/csv");
  }
}
