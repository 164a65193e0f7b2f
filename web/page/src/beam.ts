// A beam as its file has it, its text, and where in the text each part stands.

export type Value = string | number | boolean | Value[] | { [key: string]: Value };
export type Table = { [key: string]: Value };

export interface Beam extends Table {
  support: Table[];
  restraint: Table[];
  case: Table[];
  load: Table[];
}

export const SHAPES = ["udl", "point", "trapezoid", "moment", "axial", "reaction"] as const;
export type Shape = (typeof SHAPES)[number];
export const shapeOf = (load: Table): Shape => SHAPES.find((shape) => shape in load) ?? "udl";

export const EXAMPLE: Beam = {
  title: "Floor beam", section: "UB 533x210x82", grade: "S275", length: 9,
  support: [{ at: 0, holds: "Pinned" }, { at: 9, holds: "Pinned" }],
  restraint: [{ at: [3, 6], holds: "Top flange lateral" }],
  case: [{ name: "Dead", kind: "permanent" }, { name: "Imposed", kind: "imposed", category: "B" }],
  load: [
    { case: "Dead", udl: 3.5 },
    { case: "Dead", point: 30, at: [3, 6] },
    { case: "Imposed", point: 45, at: [3, 6] },
  ],
  deflection: { imposed: 360, total: 250 },
};

// --- Text ---

function written(value: Value): string {
  if (typeof value === "string") return JSON.stringify(value).replaceAll("\u007f", "\\u007f");
  if (Array.isArray(value)) return `[${value.map(written).join(", ")}]`;
  if (typeof value === "object") return `{ ${pairs(value).join(", ")} }`;
  return String(value);
}

const key = (name: string): string => (/^[A-Za-z0-9_-]+$/.test(name) ? name : JSON.stringify(name));
const pairs = (table: Table): string[] => Object.entries(table).map(([name, value]) => `${key(name)} = ${written(value)}`);
const isList = (value: Value): value is Table[] =>
  Array.isArray(value) && value.length > 0 && value.every((one) => typeof one === "object" && !Array.isArray(one));

/** A beam file, and what stands in each of its lines, counted from 1: "length", "load.0". */
export function textOf(beam: Beam): { text: string; places: string[] } {
  const lines: string[] = [];
  const places = [""];
  const add = (line: string, place: string): void => {
    lines.push(line);
    places.push(place);
  };
  const order = ["title", "section", "type", "grade", "length", "column", "support", "restraint", "case", "load"];
  const names = [...order.filter((name) => name in beam), ...Object.keys(beam).filter((name) => !order.includes(name))];
  for (const name of names) {
    const value = beam[name];
    const inFile = name === "support" ? "supports" : name;
    if (isList(value)) {
      add(`${key(inFile)} = [`, name);
      value.forEach((one, i) => add(`  ${written(one)},`, `${name}.${i}`));
      add("]", name);
    } else if (name === "support" || !(Array.isArray(value) && value.length === 0)) {
      add(`${key(inFile)} = ${written(value)}`, name);
    }
  }
  return { text: lines.join("\n") + "\n", places };
}

// --- From the keys of a file ---

const tables = (value: Value | undefined): Table[] =>
  value === undefined ? [] : Array.isArray(value) ? (value as Table[]) : [value as Table];
const isTable = (value: unknown): value is Table => typeof value === "object" && value !== null && !Array.isArray(value);

// Lengths of spans and what holds their ends become a length and supports at their places.
function supportsOf(keys: Table): Table[] {
  const listed = Array.isArray(keys.supports) ? (keys.supports as Table[]) : [];
  const all = typeof keys.supports === "string" ? keys.supports : "Pinned";
  const spans = Array.isArray(keys.spans) ? (keys.spans as number[]) : undefined;
  if (!spans && listed.length > 0) return listed;
  const places = [0];
  for (const span of spans ?? [keys.length]) {
    const end = round(places[places.length - 1] + Number(span));
    if (Number.isFinite(end)) places.push(end);
  }
  const ends = places.filter((at) => !listed.some((one) => one.at === at)).map((at): Table => ({ at, holds: all }));
  return [...ends, ...listed].sort((a, b) => Number(a.at) - Number(b.at));
}

// Each case has a table of its own, whatever says its kind in the file.
function takeCases(keys: Table, loads: Table[]): Table[] {
  const cases = tables(keys.case).map((one) => ({ ...one }));
  for (const load of loads) {
    const name = String(load.case ?? load.kind ?? "permanent");
    let known = cases.find((one) => String(one.name).toLowerCase() === name.toLowerCase());
    if (!known) cases.push((known = { name }));
    for (const part of ["kind", "category", "by-span"])
      if (part in load) {
        known[part] ??= load[part];
        delete load[part];
      }
    load.case = known.name;
  }
  return cases;
}

/** The beam that the keys of a file make. Keys that the page does not know stay as they are. */
export function beamOf(keys: Table): Beam {
  const { spans, supports, load, restraint, case: cases, ...others } = keys;
  void supports, cases;
  const loads = tables(load).filter(isTable).map((one) => ({ ...one }));
  const sum = Array.isArray(spans) ? round((spans as number[]).reduce((all, span) => all + Number(span), 0)) : NaN;
  const length = Array.isArray(spans) ? (Number.isFinite(sum) ? sum : undefined) : keys.length;
  return {
    ...others, ...(length === undefined ? {} : { length }), support: supportsOf(keys), restraint: tables(restraint).filter(isTable),
    case: takeCases(keys, loads), load: loads,
  };
}

// What a beam file can hold: texts, finite numbers, true and false, lists and tables of these.
function isValue(value: unknown, depth = 0): value is Value {
  if (typeof value === "number") return Number.isFinite(value);
  if (typeof value === "string" || typeof value === "boolean") return true;
  if (typeof value !== "object" || value === null || depth > 20) return false;
  return Object.values(value).every((one) => isValue(one, depth + 1));
}

/** What the page needs to be there, whatever a link or the browser's store held. */
export function isBeam(value: unknown): value is Beam {
  if (!isTable(value) || !isValue(value)) return false;
  return ["support", "restraint", "case", "load"].every((name) => Array.isArray(value[name]) && (value[name] as Value[]).every(isTable));
}

export const round = (metres: number): number => Math.round(metres * 1e6) / 1e6;

/** A list of tables under a key of the beam; empty where there is none. */
export const listOf = (beam: Beam, name: string): Table[] => (Array.isArray(beam[name]) ? (beam[name] as Value[]).filter(isTable) : []);

/**
 * Another name for a case and the loads in it. While the name is that of another case the loads keep the old one, so that those of the two
 * are never mixed; what is returned is the name under which they are, for the next change.
 */
export function renameCase(beam: Beam, i: number, text: string, loadsUnder: string): string {
  const same = (a: Value | undefined, b: string): boolean => String(a).toLowerCase() === b.toLowerCase();
  beam.case[i].name = text;
  if (beam.case.some((one, k) => k !== i && same(one.name, text))) return loadsUnder;
  for (const load of beam.load) if (same(load.case, loadsUnder)) load.case = text;
  for (const one of listOf(beam, "combination")) {
    const factors = one.factors;
    if (!isTable(factors)) continue;
    one.factors = Object.fromEntries(Object.entries(factors).map(([name, value]) => [same(name, loadsUnder) ? text : name, value]));
  }
  return text;
}

/** Places of a load or restraint as numbers; what is no number is left out. */
export function placesOf(value: Value | undefined): number[] {
  const list = Array.isArray(value) ? value : value === undefined ? [] : [value];
  return list.filter((one): one is number => typeof one === "number" && Number.isFinite(one));
}
