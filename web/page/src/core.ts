// The page's side of the worker.

import CoreWorker from "./worker?worker&inline";
import type { Done, Job } from "./worker";
import type { Request } from "./wasm";

/** A request that the core refused, with its reason. */
export class Refusal extends Error {}

type Waiting = { resolve: (reply: unknown) => void; reject: (reason: Error) => void; rows?: (rows: unknown[], share: number) => void };

function packedCore(): Uint8Array {
  const text = atob(document.getElementById("core")!.textContent!);
  return Uint8Array.from(text, (letter) => letter.charCodeAt(0));
}

export class Core {
  private readonly worker = new CoreWorker();
  private readonly waiting = new Map<number, Waiting>();
  private count = 0;

  constructor() {
    this.worker.onmessage = ({ data }: MessageEvent<Done>) => this.take(data);
    this.worker.onerror = (event) => {
      for (const one of this.waiting.values()) one.reject(new Refusal(`the program failed: ${event.message}`));
      this.waiting.clear();
    };
    const core = packedCore();
    this.worker.postMessage({ core }, [core.buffer]);
  }

  ask<T>(request: Request, text?: string | Uint8Array): Promise<T> {
    const bytes = typeof text === "string" ? new TextEncoder().encode(text) : text;
    return this.send({ request, bytes }) as Promise<T>;
  }

  /** Works through a file of members and hands over rows as they come. */
  batch(request: Request, file: Blob, rows: (rows: unknown[], share: number) => void): Promise<unknown> {
    return this.send({ request, file }, rows);
  }

  /** Stops whatever it does. It is of no use afterwards. */
  end(): void {
    this.worker.terminate();
  }

  private send(job: Omit<Job, "id">, rows?: Waiting["rows"]): Promise<unknown> {
    const id = ++this.count;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { resolve, reject, rows });
      this.worker.postMessage({ id, ...job });
    });
  }

  private take({ id, reply, refused, rows, share }: Done): void {
    const one = this.waiting.get(id);
    if (!one) return;
    if (rows) return one.rows?.(rows, share ?? 0);
    this.waiting.delete(id);
    if (refused !== undefined) one.reject(new Refusal(refused));
    else one.resolve(reply);
  }
}
