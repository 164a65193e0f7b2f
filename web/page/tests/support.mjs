// What the tests share: the core in Node, the command line, the page in Chromium.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { pathToFileURL } from "node:url";
import { transformSync } from "esbuild";
import { chromium } from "playwright-core";

export const path = (name) => {
  const value = process.env[name];
  if (!value) throw new Error(`${name} is not set: run web/test`);
  return value;
};
export const example = (name) => readFileSync(join(path("KELTRIX_EXAMPLES"), name));

/** A module of the page, as Node can run it. */
export async function moduleOfPage(name) {
  const folder = mkdtempSync(join(tmpdir(), "keltrix-page-"));
  try {
    const source = readFileSync(new URL(`../src/${name}.ts`, import.meta.url), "utf8");
    const file = join(folder, `${name}.mjs`);
    writeFileSync(file, transformSync(source, { loader: "ts" }).code);
    return await import(pathToFileURL(file));
  } finally {
    rmSync(folder, { recursive: true });
  }
}

export async function startCore() {
  const wasm = await moduleOfPage("wasm");
  const ask = await wasm.startCore(await WebAssembly.compile(readFileSync(path("KELTRIX_CORE"))));
  return Object.assign(ask, { Refused: wasm.Refused });
}

/** Standard output of the command line. */
export function ksteel(...args) {
  const done = spawnSync(path("KSTEEL"), args, { maxBuffer: 1 << 30 });
  if (done.error) throw done.error;
  return done.stdout.toString("utf8");
}

/** Replies of the core as it is built for this machine. */
export function nativeReplies(requests) {
  const parts = requests.flatMap(([request, bytes = Buffer.alloc(0)]) => {
    const words = Buffer.from(JSON.stringify(request));
    return [Buffer.from(`${words.length} ${bytes.length}\n`), words, bytes];
  });
  const done = spawnSync(path("KELTRIX_NATIVE_CORE"), [], { input: Buffer.concat(parts), maxBuffer: 1 << 30 });
  if (done.error) throw done.error;
  const replies = [];
  for (let at = 0; at < done.stdout.length; ) {
    const end = done.stdout.indexOf(10, at);
    const [code, length] = done.stdout.subarray(at, end).toString().split(" ").map(Number);
    replies.push({ code, text: done.stdout.subarray(end + 1, end + 1 + length).toString("utf8") });
    at = end + 1 + length;
  }
  return replies;
}

/** Members like an example, with other sections, grades and sizes of forces, and from place to place one that cannot be used. */
export function members(count, hasRefusals = false) {
  const examples = ["floor_beam.csv", "column.csv", "cantilever.csv", "continuous_beam.csv", "tie.csv"].map((name) => example(name).toString("utf8"));
  const sections = ["UB 457x191x67", "UB 533x210x92", "UC 254x254x89", "UB 305x165x40", "PFC 260x90x35", "RHS 250x150x8", "SHS 150x150x8", "CHS 219.1x8", "UB 610x229x101", "UC 152x152x30"];
  let seed = 20000501;
  const random = () => (seed = (seed * 48271) % 2147483647) / 2147483647;
  let text = "";
  for (let i = 0; i < count; ++i) {
    const factor = 0.05 + 1.4 * random();
    text += examples[i % examples.length]
      .replace(/^TITLE,.*$/m, `TITLE,Member ${i + 1}`)
      .replace(/^SECTION,[^,]*,/m, () => `SECTION,${hasRefusals && i % 500 === 250 ? "UB 1x2x3" : sections[Math.floor(random() * sections.length)]},`)
      .replace(/^GRADE,.*$/m, () => `GRADE,${random() < 0.5 ? "S275" : "S355"}`)
      .replace(/^SUBSPAN,(\d+),(.*)$/gm, (_, index, fields) => {
        const values = fields.split(",");
        for (let k = 0; k < 12; ++k) values[k] = String(Number(values[k]) * factor);
        return `SUBSPAN,${index},${values.join(",")}`;
      });
  }
  return text;
}

// --- The page ---

export async function browser() {
  return chromium.launch({ executablePath: path("CHROMIUM").includes("/") ? path("CHROMIUM") : `/usr/bin/${path("CHROMIUM")}`, args: process.getuid() === 0 ? ["--no-sandbox"] : [] });
}

/** A page of its own, with everything it says on the console and asks of a network. */
export async function openPage(chromiumBrowser, options = {}, fragment = "") {
  const context = await chromiumBrowser.newContext({ viewport: { width: 1440, height: 1000 }, acceptDownloads: true, ...options });
  const page = await context.newPage();
  page.setDefaultTimeout(10_000);
  const said = [];
  const asked = [];
  page.on("console", (message) => said.push(message.text()));
  page.on("pageerror", (error) => said.push(error.message));
  context.on("request", (request) => { if (!/^(file|blob|data|about):/.test(request.url())) asked.push(request.url()); });
  await page.goto(pathToFileURL(path("KELTRIX_PAGE")).href + fragment);
  return Object.assign(page, { said, asked, settled: () => settled(page) });
}

/** Waits until a condition holds in the page. Playwright's own waiting evaluates texts, which the page's policy forbids. */
export async function until(page, condition, most = 20_000) {
  const end = Date.now() + most;
  while (!(await page.evaluate(condition))) {
    if (Date.now() > end) throw new Error(`never came true: ${condition}`);
    await page.waitForTimeout(40);
  }
}

/** Waits for the verdict of what is shown. */
export async function settled(page) {
  await page.waitForSelector(".verdict[data-status]:not([data-stale])");
  await until(page, () => document.querySelector("[aria-label='Design code']") !== null);
  let last = -1;
  for (;;) {
    const now = await page.evaluate(() => performance.getEntriesByName("keltrix-check").length);
    if (now === last && now > 0) return;
    last = now;
    await page.waitForTimeout(60);
  }
}

/** Tests with a page each, which must have been silent and alone at their end. */
export function pageTester(chromiumBrowser) {
  return (name, work, options, fragment) => {
    test(name, { timeout: 90_000 }, async () => {
      const page = await openPage(chromiumBrowser, options, fragment);
      try {
        await page.settled();
        await work(page);
        assert.deepEqual(page.said, []);
        assert.deepEqual(page.asked, []);
      } finally {
        await page.context().close();
      }
    });
  };
}

export const field = (page, label) => page.getByLabel(label, { exact: true });

export async function type(page, label, text) {
  await field(page, label).fill(text);
  await page.settled();
}

export async function drop(page, name, bytes) {
  await page.evaluate(({ name, bytes }) => {
    const data = new DataTransfer();
    data.items.add(new File([Uint8Array.from(atob(bytes), (letter) => letter.charCodeAt(0))], name));
    dispatchEvent(new DragEvent("drop", { dataTransfer: data, bubbles: true, cancelable: true }));
  }, { name, bytes: Buffer.from(bytes).toString("base64") });
}

/** What the page saves. */
export async function saved(page, button) {
  const download = page.waitForEvent("download");
  await page.getByRole("button", { name: button, exact: true }).click();
  return readFileSync(await (await download).path(), "utf8");
}

const AXE = readFileSync(new URL("../node_modules/axe-core/axe.min.js", import.meta.url), "utf8");
export async function axe(page, where) {
  // The policy of the page allows no other script: the test's own is let in by the browser.
  await page.evaluate(AXE);
  const { violations } = await page.evaluate(() => globalThis.axe.run(document, { runOnly: ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa", "best-practice"] }));
  assert.deepEqual(violations.map((one) => `${where}: ${one.id}: ${one.nodes.slice(0, 3).map((node) => node.html.slice(0, 160)).join(" | ")}`), []);
}
