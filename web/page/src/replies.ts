// What the core replies.

export interface Diagnostic { severity: "error" | "warning" | "note"; line: number; code: string; keyword: string; field: string; got: string; expected: string; advice: string; message: string }
export interface Step { text: string; clause: string }
export interface Finding {
  rule: string; clause: string; topic: string; status: string; reason: string; place: string; start: number | null; end: number | null;
  utilisation: number | null; shown: string; symbol: string; resistance: string; demand: string; governing: boolean; combination: string; steps: Step[];
}
export interface Topic { topic: string; shown: string; clause: string; failed: boolean; open: boolean }
export interface Extreme { at: number; value: number; text: string; combination: number }
export interface Curve { action: string; isZero: boolean; greatest: Extreme; least: Extreme; samples: [number, number, number][] }
export interface Deflection { limit: string; status: string; at: number | null; deflection: number | null; allowed: number | null; combination: number | null }
export interface Loads {
  length: number; inclination: number; combinations: { number: number; name: string; limit_state: string }[]; curves: Curve[]; shape: [number, number][];
  shapeOf: number; deflections: Deflection[]; deflectionTexts: { at: number | null; text: string }[]; supports: { at: number; greatest: string; least: string }[];
  cases: { name: string; kind: string }[];
}
export interface Member {
  title: string; status: "pass" | "fail" | "not checked" | "refused"; utilisation: string; ratio: number | null; governing: string; diagnostics: Diagnostic[];
  section?: string; grade?: string; class?: number; strength?: string; combination?: string; open?: string; flags?: string[];
  warnings?: { severity: string; code: string; line: number; text: string }[]; topics?: Topic[]; findings?: Finding[]; loads?: Loads;
}
export interface Checked { code: string; pass: boolean; members: Member[]; diagnostics: Diagnostic[] }

export interface CodeOption { name: string; kind: "flag" | "choice" | "length"; meaning: string; values: { name: string; meaning: string }[]; least: number | null; most: number | null }
export interface Code { id: string; title: string; edition: string; scope: string; grades: { name: string }[]; annexes: { name: string; meaning: string }[]; options: CodeOption[] }

export type SectionRow = [name: string, family: string, mass: number, depth: number, width: number];
export interface SectionValue { symbol: string; value: string; unit: string; meaning: string }
export interface Section { name: string; shape: string; mass: string; dimensions: SectionValue[]; properties: SectionValue[]; svg: string }

export interface Candidate { section: string; mass_text: string; depth_text: string; shown: string; status: string; warnings: number; governing: string }
export interface Choice { chosen: string | null; passing: Candidate[]; lighter_failing: Candidate[]; not_checked: Candidate[] }
export interface Buckling { combinations: { combination: string; verdict: string; stable: boolean; answered: boolean }[]; worst: string; verdict: string; svg: string }

export interface CapacityChart { title: string; points: [number, number][]; most: number; most_text: string }
export interface Capacities {
  section: string; strength: string; classes: string; fabrication: string; notes: string[]; tables: { title: string; head: string[]; rows: string[][] }[]; charts: CapacityChart[];
}
export interface Convention { name: string; meaning: string }
export interface Imported { text: string; members: number; cases: number; refused: boolean; findings: { severity: string; text: string }[] }

export interface Row {
  line: number; title: string; section?: string; grade?: string; status: string; overall?: number | null; class?: number; errors?: string[]; warnings?: unknown[];
  governing?: { rule: string; clause: string; start: number | null; end: number | null } | null;
}
export interface BatchRow { from: number; bytes: number; text: string; row: Row | null; shown: string; governing: string }
