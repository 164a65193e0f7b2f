// What the user made, its history, and where it is kept between visits.

import { EXAMPLE, isBeam, type Beam } from "./beam";

export interface Settings { code: string; annex: string; options: Record<string, string> }
export interface Work { beam: Beam; settings: Settings }

const KEPT = "keltrix-steel";
const MOST_STEPS = 200;
const SAME_EDIT = 900; // ms

const clone = <T>(value: T): T => JSON.parse(JSON.stringify(value)) as T;
export const fresh = (): Work => ({ beam: clone(EXAMPLE), settings: { code: "bs5950", annex: "", options: {} } });

export function isWork(value: unknown): value is Work {
  const work = value as Partial<Work> | null;
  const settings = work?.settings;
  return (
    typeof work === "object" && isBeam(work?.beam) && typeof settings === "object" && settings !== null &&
    typeof settings.code === "string" && typeof settings.annex === "string" && typeof settings.options === "object" &&
    settings.options !== null && Object.values(settings.options).every((option) => typeof option === "string")
  );
}

export class State {
  work: Work;
  private past: string[] = [];
  private future: string[] = [];
  private lastEdit = { what: "", when: 0 };

  constructor(private readonly changed: () => void) {
    this.work = kept() ?? fresh();
  }

  /** Changes the work. Edits of one thing shortly after one another are one step of the history. */
  edit(what: string, change: (work: Work) => void): void {
    const now = performance.now();
    const before = JSON.stringify(this.work);
    change(this.work);
    if (JSON.stringify(this.work) === before) return;
    const goesOn = what !== "" && what === this.lastEdit.what && now - this.lastEdit.when < SAME_EDIT;
    if (!goesOn) this.past = [...this.past.slice(-MOST_STEPS + 1), before];
    this.future = [];
    this.lastEdit = { what, when: now };
    this.tell();
  }

  replace(work: Work): void {
    const { beam, settings } = clone(work);
    this.edit("", (mine) => {
      mine.beam = beam;
      mine.settings = { code: settings.code, annex: settings.annex, options: settings.options };
    });
  }

  get canUndo(): boolean { return this.past.length > 0; }
  get canRedo(): boolean { return this.future.length > 0; }
  undo(): void { this.step(this.past, this.future); }
  redo(): void { this.step(this.future, this.past); }

  private step(from: string[], to: string[]): void {
    const work = from.pop();
    if (work === undefined) return;
    to.push(JSON.stringify(this.work));
    this.work = JSON.parse(work) as Work;
    this.lastEdit = { what: "", when: 0 };
    this.tell();
  }

  private tell(): void {
    keep(this.work);
    this.changed();
  }
}

// A tab has its own beam, which a reload finds again whatever other tabs do; a new tab begins with the one that was changed last. A browser
// may forbid its stores; then nothing is kept.
const STORES: (() => Storage)[] = [() => sessionStorage, () => localStorage];

function kept(): Work | undefined {
  for (const store of STORES)
    try {
      const work: unknown = JSON.parse(store().getItem(KEPT) ?? "null");
      if (isWork(work)) return work;
    } catch {
      continue;
    }
  return undefined;
}

// Rather nothing than an earlier beam where there is no room for this one.
function keep(work: Work): void {
  for (const store of STORES)
    try {
      store().setItem(KEPT, JSON.stringify(work));
    } catch {
      forget(store);
    }
}

export function forget(...stores: (() => Storage)[]): void {
  for (const store of stores.length > 0 ? stores : STORES)
    try {
      store().removeItem(KEPT);
    } catch {
      continue;
    }
}

// --- Links: the work in the fragment of the address ---

const LARGEST_LINK = 1 << 20;
const LARGEST_WORK = 1 << 22; // unpacked: a link of a few kilobytes can unpack into gigabytes

async function through(bytes: Uint8Array, stream: CompressionStream | DecompressionStream): Promise<Uint8Array> {
  const parts: Uint8Array[] = [];
  let size = 0;
  const reader = new Blob([bytes]).stream().pipeThrough(stream).getReader();
  for (;;) {
    const { done, value } = await reader.read();
    if (done) break;
    size += value.length;
    if (size > LARGEST_WORK) {
      void reader.cancel();
      throw new Error("too large");
    }
    parts.push(value);
  }
  return new Uint8Array(await new Blob(parts).arrayBuffer());
}

export async function linkOf(work: Work): Promise<string> {
  const packed = await through(new TextEncoder().encode(JSON.stringify(work)), new CompressionStream("deflate-raw"));
  let text = "";
  for (const byte of packed) text += String.fromCharCode(byte);
  return `#beam=${btoa(text).replaceAll("+", "-").replaceAll("/", "_").replaceAll("=", "")}`;
}

/** The work of a fragment; nothing where it holds none. */
export async function workOf(fragment: string): Promise<Work | undefined> {
  const packed = /^#beam=([A-Za-z0-9_-]+)$/.exec(fragment)?.[1];
  if (packed === undefined || packed.length > LARGEST_LINK) return undefined;
  try {
    const bytes = Uint8Array.from(atob(packed.replaceAll("-", "+").replaceAll("_", "/")), (letter) => letter.charCodeAt(0));
    const work: unknown = JSON.parse(new TextDecoder().decode(await through(bytes, new DecompressionStream("deflate-raw"))));
    return isWork(work) ? work : undefined;
  } catch {
    return undefined;
  }
}
