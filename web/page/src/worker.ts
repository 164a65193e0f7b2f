// The core at work beside the page.

import { Refused, startCore, type Ask, type Request } from "./wasm";

export interface Job { id: number; request: Request; bytes?: Uint8Array; file?: Blob }
export interface Done { id: number; reply?: unknown; refused?: string; rows?: unknown[]; share?: number }

const reply = (done: Done): void => (self as unknown as { postMessage(done: Done): void }).postMessage(done);

const PIECE = 1 << 18;
let module: Promise<WebAssembly.Module>;
let core: Promise<Ask> | undefined;

async function unpack(packed: Uint8Array): Promise<WebAssembly.Module> {
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
  return WebAssembly.compile(await new Response(stream).arrayBuffer());
}

// A file of members, piece by piece; rows leave as they come.
async function workThrough(ask: Ask, { id, request, file }: Job): Promise<void> {
  const whole = file!;
  ask(request);
  for (let at = 0; at < whole.size || at === 0; at += PIECE) {
    const bytes = new Uint8Array(await whole.slice(at, at + PIECE).arrayBuffer());
    const last = at + PIECE >= whole.size;
    const rows = ask({ ask: "add to batch", last }, bytes) as unknown[];
    reply({ id, rows, share: Math.min(1, (at + PIECE) / whole.size) });
  }
  reply({ id, reply: {} });
}

async function work(job: Job): Promise<void> {
  try {
    core ??= module.then(startCore);
    const ask = await core;
    if (job.file) await workThrough(ask, job);
    else reply({ id: job.id, reply: ask(job.request, job.bytes) });
  } catch (failure) {
    const isFault = !(failure instanceof Refused);
    if (isFault) core = undefined;
    const text = failure instanceof Error ? failure.message : String(failure);
    reply({ id: job.id, refused: isFault ? `the program failed: ${text}` : text });
  }
}

let queue: Promise<void> = Promise.resolve();
onmessage = ({ data }: MessageEvent<{ core: Uint8Array } | Job>) => {
  if ("core" in data) module = unpack(data.core);
  else queue = queue.then(() => work(data));
};
