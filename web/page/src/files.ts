// Files that come and go.

export function save(name: string, parts: BlobPart[], type: string): void {
  const url = URL.createObjectURL(new Blob(parts, { type }));
  const link = document.createElement("a");
  link.href = url;
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

/** Asks for a file. */
export function choose(accept: string, take: (file: File) => void): void {
  const input = document.createElement("input");
  input.type = "file";
  input.accept = accept;
  input.addEventListener("change", () => { if (input.files?.[0]) take(input.files[0]); });
  input.click();
}

/** A name for a file, from a title that may hold anything. */
export const fileName = (title: unknown, ending: string): string => `${String(title ?? "").toLowerCase().replace(/[^a-z0-9]+/g, "-").replace(/^-|-$/g, "").slice(0, 60) || "beam"}.${ending}`;
