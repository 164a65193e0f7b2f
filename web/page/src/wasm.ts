// The core as a function: a request and the bytes of a file in, data out.

export type Request = { ask: string } & Record<string, unknown>;
export type Ask = (request: Request, bytes?: Uint8Array) => unknown;

/** What the core says of a request that it cannot take. Any other error is a fault, after which the core is not to be used. */
export class Refused extends Error {}

interface Exports {
  memory: WebAssembly.Memory;
  _initialize(): void;
  reserve(size: number): number;
  answer(length: number): number;
  reply_text(): number;
  reply_size(): number;
}

export async function startCore(module: WebAssembly.Module): Promise<Ask> {
  // The core opens no file and asks no system for anything: whatever the C library imports does nothing.
  const imports: Record<string, Record<string, () => number>> = {};
  for (const { module: from, name } of WebAssembly.Module.imports(module)) (imports[from] ??= {})[name] = () => 0;
  const core = (await WebAssembly.instantiate(module, imports)).exports as unknown as Exports;
  core._initialize();
  const encoder = new TextEncoder();
  const decoder = new TextDecoder();
  return (request, bytes = new Uint8Array()) => {
    const words = encoder.encode(JSON.stringify(request));
    const place = core.reserve(words.length + bytes.length);
    if (place === 0) throw new Refused("not enough memory");
    const room = new Uint8Array(core.memory.buffer, place, words.length + bytes.length);
    room.set(words);
    room.set(bytes, words.length);
    const code = core.answer(words.length);
    const text = decoder.decode(new Uint8Array(core.memory.buffer, core.reply_text(), core.reply_size()));
    if (code === 2) throw new Refused("not enough memory");
    if (code !== 0) throw new Refused(text);
    return JSON.parse(text);
  };
}
