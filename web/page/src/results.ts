// The verdict and the checks. Every word and every digit of a verdict is the core's.

import { h, put, type Child } from "./dom";
import type { Checked, Diagnostic, Finding, Member, Step } from "./replies";

const WORDS: Record<Member["status"], string> = { pass: "Pass", fail: "Fail", "not checked": "Not checked", refused: "Refused" };

/** How far a bar goes for a utilisation, in percent of the room. The limit is drawn at two thirds. */
const LIMIT = 66;
const share = (utilisation: number | null): number => (utilisation === null || !Number.isFinite(utilisation) ? 100 : Math.min(100, Math.max(0, utilisation * LIMIT)));

export class Verdict {
  readonly element = h("section", { class: "verdict", "aria-label": "Verdict", role: "status", "aria-live": "polite" });

  show(checked: Checked): void {
    const member = checked.members[0];
    const found = member?.status ?? "refused";
    const status = found === "pass" && !(checked.pass && checked.members.length === 1) ? "not checked" : found;
    const warnings = [...checked.diagnostics, ...(member?.diagnostics ?? [])].filter((one) => one.severity === "warning").length;
    this.element.dataset.status = status;
    delete this.element.dataset.stale;
    const facts = member?.section
      ? [member.section, member.grade, `class ${member.class ?? "–"}`, member.strength, checked.code].filter(Boolean).join(" · ")
      : checked.code;
    put(this.element,
      h("p", { class: "word" }, WORDS[status]),
      member && status !== "refused" ? h("p", { class: "ratio" }, member.utilisation) : null,
      h("div", { class: "why" },
        h("p", { class: "governing" }, this.reason(member, checked)),
        warnings > 0 ? h("p", { class: "warned" }, `${warnings} ${warnings === 1 ? "warning" : "warnings"}, below`) : null,
        member?.combination ? h("p", {}, member.combination) : null,
        h("p", { class: "quiet" }, facts)));
  }

  /** Says that there is no verdict of what is shown now. */
  fail(reason: string): void {
    this.element.dataset.status = "refused";
    delete this.element.dataset.stale;
    put(this.element, h("p", { class: "word" }, "Not checked"), h("div", { class: "why" }, h("p", { class: "governing" }, reason)));
  }

  /** What stands here is that of an earlier beam. */
  wait(): void {
    this.element.dataset.stale = "";
  }

  private reason(member: Member | undefined, checked: Checked): string {
    if (!member) return checked.diagnostics[0]?.message ?? "there is no member";
    if (member.status === "refused") {
      const errors = member.diagnostics.filter((one) => one.severity === "error").length;
      return errors === 0 ? "the member could not be read" : `${errors} ${errors === 1 ? "error" : "errors"} in what was entered`;
    }
    if (member.status === "not checked") return member.open || "nothing was evaluated";
    return member.open ? `${member.governing}; ${member.open}` : member.governing;
  }
}

interface Row { json: string; item: HTMLElement; refresh: () => void }

export type StepsOf = (finding: Finding) => Promise<Step[]>;

const key = (finding: Finding): string => [finding.rule, finding.clause, finding.place].join("|");

const GROUPS: { status: string; title: string }[] = [
  { status: "information", title: "Figures beside the rules" },
  { status: "not applicable", title: "Rules that do not apply" },
  { status: "outside the input", title: "Not part of this check" },
];

export class Checks {
  readonly element = h("section", { class: "checks", "aria-label": "Checks" });
  private readonly open = new Set<string>();
  private steps!: StepsOf;
  private isFirst = true;
  private rows = new Map<string, Row>();

  show(member: Member | undefined, steps: StepsOf): void {
    this.steps = steps;
    const focused = document.activeElement?.closest<HTMLElement>(".check-row")?.dataset.key;
    const findings = member?.findings ?? [];
    const isOpen = (finding: Finding): boolean => finding.status === "not evaluated";
    const evaluated = findings.filter((finding) => finding.status === "passed" || finding.status === "failed" || isOpen(finding));
    const rank = (finding: Finding): number => (finding.governing ? 3 : finding.status === "failed" ? 2 : isOpen(finding) ? 1 : 0);
    const worth = (finding: Finding): number => finding.utilisation ?? Infinity;
    const sorted = [...evaluated].sort((a, b) => rank(b) - rank(a) || worth(b) - worth(a));
    const governing = sorted.find((finding) => finding.governing);
    if (this.isFirst && governing) {
      this.open.add(key(governing));
      this.isFirst = false;
    }
    const used = sorted.filter((finding) => finding.status !== "passed" || worth(finding) > 0);
    const idle = sorted.filter((finding) => !used.includes(finding));
    const before = this.rows;
    this.rows = new Map();
    const items = used.map((finding) => this.item(finding, before));
    put(this.element,
      h("h2", {}, "Checks"),
      findings.length === 0 ? h("p", { class: "quiet" }, "No check was made.") : h("ol", { class: "bars" }, items),
      this.folded("Passed without a utilisation", idle),
      GROUPS.map((group) => this.folded(group.title, findings.filter((finding) => finding.status === group.status))));
    if (focused !== undefined) this.rows.get(focused)?.item.querySelector("summary")?.focus();
  }

  // What did not change is not made again; the steps of an open row are asked for in any case.
  private item(finding: Finding, before: Map<string, Row>): HTMLElement {
    const id = key(finding);
    const json = JSON.stringify(finding);
    const old = before.get(id);
    const row = old?.json === json ? old : this.row(finding, json);
    if (row === old) row.refresh();
    this.rows.set(id, row);
    return row.item;
  }

  private row(finding: Finding, json: string): Row {
    const isOpen = finding.status === "not evaluated";
    const cls = ["check-row", finding.status === "failed" ? "failed" : isOpen ? "open" : "", finding.governing ? "governs" : ""].join(" ");
    const value = isOpen ? "not evaluated" : finding.shown;
    const body = h("div", { class: "steps" });
    const id = key(finding);
    const more = h("details", { class: cls, "data-key": id },
      h("summary", {},
        h("span", { class: "rule" }, finding.rule, " ", h("span", { class: "clause" }, finding.clause)),
        h("span", { class: "place" }, finding.place),
        h("span", { class: "bar", "aria-hidden": "true" }, h("span", { class: "fill", style: null })),
        h("span", { class: "value" }, value, finding.status === "failed" ? h("b", {}, " fails") : null)),
      body);
    const fill = more.querySelector<HTMLElement>(".fill");
    if (fill) fill.style.width = `${isOpen ? 0 : share(finding.utilisation)}%`;
    // The steps of an earlier beam are not shown while those of this one are on their way; their room is kept, so that nothing jumps.
    let run = 0;
    const fillBody = (): void => {
      const mine = ++run;
      if (body.isConnected) body.style.minHeight = `${body.offsetHeight}px`;
      put(body, this.words(finding));
      const end = (steps: Step[]): void => {
        if (mine !== run) return;
        put(body, this.words(finding), steps.length > 0 ? list(steps) : null);
        body.style.minHeight = "";
      };
      if (finding.combination && !isOpen) void this.steps(finding).then(end, () => end([]));
    };
    if (this.open.has(id)) {
      more.open = true;
      fillBody();
    }
    more.addEventListener("toggle", () => {
      if (more.open === this.open.has(id)) return;
      if (more.open) {
        this.open.add(id);
        fillBody();
      } else {
        this.open.delete(id);
      }
    });
    return { json, item: h("li", {}, more), refresh: () => { if (more.open) fillBody(); } };
  }

  private words(finding: Finding): Child {
    const resistance = finding.resistance ? `${finding.symbol ? `${finding.symbol} = ` : ""}${finding.resistance}` : "";
    return [finding.reason, resistance, finding.combination].filter(Boolean).map((words) => h("p", {}, words));
  }

  private folded(title: string, findings: Finding[]): Child {
    if (findings.length === 0) return null;
    return h("details", { class: "folded" }, h("summary", {}, `${title} (${findings.length})`),
      h("ul", {}, findings.map((finding) => h("li", {}, `${finding.rule} (${finding.clause})`, finding.reason ? h("span", { class: "quiet" }, ` ${finding.reason}`) : null))));
  }
}

function list(steps: Step[]): Child {
  return h("ul", { class: "calculation" }, steps.map((step) =>
    h("li", {}, h("span", {}, step.text), step.clause ? h("span", { class: "clause" }, step.clause) : null)));
}

/** Messages without a field of their own. */
export function messages(element: HTMLElement, diagnostics: Diagnostic[]): void {
  const words = { error: "Error", warning: "Warning", note: "Note" };
  const order = ["error", "warning", "note"];
  const sorted = [...diagnostics].sort((a, b) => order.indexOf(a.severity) - order.indexOf(b.severity));
  const loud = sorted.filter((one) => one.severity !== "note");
  const notes = sorted.filter((one) => one.severity === "note");
  const said = (one: Diagnostic): string => {
    const got = one.got ? `got ${one.got}, expected ${one.expected}` : "";
    return [one.keyword, [got, one.advice].filter(Boolean).join("; ")].filter(Boolean).join(": ") || one.message;
  };
  put(element,
    loud.map((one) => h("p", { class: `message ${one.severity}` }, h("b", {}, words[one.severity]), " ", said(one))),
    notes.length > 0 ? h("details", { class: "folded" }, h("summary", {}, `${notes.length} ${notes.length === 1 ? "note" : "notes"} to this calculation`), h("ul", {}, notes.map((one) => h("li", {}, said(one))))) : null);
}
