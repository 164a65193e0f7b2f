// Builds one HTML file: script, styles and the core in it, and a policy that allows no network.
import { createHash } from "node:crypto";
import { readFileSync } from "node:fs";
import { gzipSync } from "node:zlib";
import { defineConfig } from "vite";

const core = process.env.KELTRIX_CORE;
if (!core) throw new Error("KELTRIX_CORE: the path of keltrix-core.wasm is needed");

function oneFile() {
  return {
    name: "one-file",
    enforce: "post",
    generateBundle(_, bundle) {
      const page = bundle["index.html"];
      let script = "";
      let style = "";
      for (const [name, part] of Object.entries(bundle)) {
        if (part.type === "chunk") script += part.code;
        else if (name.endsWith(".css")) style += part.source;
        else continue;
        delete bundle[name];
      }
      script = script.replaceAll("</script", "<\\/script").trim();
      const hash = createHash("sha256").update(script).digest("base64");
      const policy = [
        "default-src 'none'", `script-src 'sha256-${hash}' 'wasm-unsafe-eval'`, "style-src 'unsafe-inline'", "worker-src blob:",
        "img-src data: blob:", "connect-src 'none'", "form-action 'none'", "base-uri 'none'",
      ].join("; ");
      const wasm = gzipSync(readFileSync(core), { level: 9 }).toString("base64");
      page.source = page.source
        .replace(/<script type="module"[^>]*><\/script>\s*/, "")
        .replace(/<link rel="stylesheet"[^>]*>\s*/, "")
        .replace("<!-- policy -->", () => `<meta http-equiv="Content-Security-Policy" content="${policy}">`)
        .replace("<!-- style -->", () => `<style>${style}</style>`)
        .replace("<!-- script -->", () => `<script type="text/plain" id="core">${wasm}</script>\n<script type="module">${script}</script>`);
    },
  };
}

export default defineConfig({
  plugins: [oneFile()],
  worker: { format: "iife" },
  build: {
    outDir: process.env.KELTRIX_PAGE_OUT ?? "dist", emptyOutDir: true, target: "es2022", modulePreload: false, cssCodeSplit: false, assetsInlineLimit: 1e8,
    reportCompressedSize: false,
  },
});
