// The page under hostile files, links, stores and hands; and what it must never lose or show.
import assert from "node:assert/strict";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, test } from "node:test";
import { deflateRawSync } from "node:zlib";
import { axe, browser, drop, example, field, ksteel, moduleOfPage, openPage, pageTester, saved, startCore, type, until } from "./support.mjs";

const chromium = await browser();
after(() => chromium.close());
const folder = mkdtempSync(join(tmpdir(), "keltrix-page-"));
after(() => rmSync(folder, { recursive: true }));
const pageTest = pageTester(chromium);
const ask = await startCore();
const { EXAMPLE, beamOf, renameCase, textOf } = await moduleOfPage("beam");

const verdict = (page) => page.locator(".verdict .word").textContent();
const utilisation = (page) => page.locator(".verdict .ratio").textContent();
const keysOf = (text) => ask({ ask: "document", name: "beam.toml" }, Buffer.from(text)).keys;
const settings = { code: "bs5950", annex: "", options: {} };
const linkOf = (bytes) => `#beam=${deflateRawSync(bytes).toString("base64url")}`;

// --- Links and stores ---

const HOSTILE_WORKS = {
  "no JSON": "{", "an empty text": "", "null": "null", "a list": "[]", "no settings": JSON.stringify({ beam: EXAMPLE }),
  "null in a load": JSON.stringify({ beam: { ...EXAMPLE, load: [{ case: "Dead", udl: null }] }, settings }),
  "a grade of null": JSON.stringify({ beam: { ...EXAMPLE, grade: null }, settings }),
  "a number beyond all": JSON.stringify({ beam: EXAMPLE, settings }).replace('"length":9', '"length":1e999'),
  "tables without end": `{"beam":{"a":${'{"a":'.repeat(5000)}1${"}".repeat(5000)}},"settings":{}}`,
  "another version": JSON.stringify({ version: 2, member: {}, settings: { code: 5 } }),
};

for (const [name, text] of Object.entries(HOSTILE_WORKS)) {
  pageTest(`a store or a link with ${name} does no harm`, async (page) => {
    for (const store of ["sessionStorage", "localStorage"]) await page.evaluate(([store, text]) => globalThis[store].setItem("keltrix-steel", text), [store, text]);
    await page.reload();
    await page.settled();
    assert.equal(await field(page, "Title").inputValue(), "Floor beam");
    assert.equal(await verdict(page), "Pass");
    await page.evaluate((hash) => { location.hash = hash; }, linkOf(text));
    await page.locator(".notice", { hasText: "no beam that can be read" }).waitFor();
    await type(page, "Size of point load 2, kN", "31");
    assert.equal(await verdict(page), "Pass");
  });
}

pageTest("names of prototypes are names", async (page) => {
  const text = JSON.stringify({ beam: { ...EXAMPLE, title: "constructor", case: [{ name: "__proto__", kind: "permanent" }], load: [{ case: "__proto__", udl: 5 }] }, settings }).replace("{", '{"__proto__":{"beam":1},"constructor":1,');
  await page.evaluate((hash) => { location.hash = hash; }, linkOf(text));
  await until(page, () => document.querySelector("[aria-label=Title]").value === "constructor");
  await page.settled();
  assert.equal(await verdict(page), "Pass");
  assert.equal(await page.evaluate(() => ({}).beam), undefined);
});

for (const [name, fragment] of [["1 MB of fragment", `#beam=${"A".repeat(1 << 20)}`], ["gigabytes packed into a megabyte", linkOf(Buffer.alloc(300 << 20, 32))], ["no base64", "#beam=%%%"]]) {
  pageTest(`a link of ${name} is refused`, async (page) => {
    await page.locator(".notice", { hasText: "no beam that can be read" }).waitFor();
    assert.equal(await field(page, "Title").inputValue(), "Floor beam");
    assert.equal(new URL(page.url()).hash, "");
  }, {}, fragment);
}

pageTest("the address never holds another beam than the one that is shown", async (page) => {
  await page.getByRole("button", { name: "Link" }).click();
  await page.locator(".notice", { hasText: "link" }).waitFor();
  assert.match(page.url(), /#beam=/);
  await type(page, "Length, m", "8.5");
  assert.doesNotMatch(page.url(), /#/);
  await page.reload();
  await page.settled();
  assert.equal(await field(page, "Length, m").inputValue(), "8.5");
});

pageTest("each of two tabs keeps its own beam; a new one has the last", async (page) => {
  const other = await page.context().newPage();
  await other.goto(page.url());
  await until(other, () => document.querySelector("[aria-label=Title]") !== null);
  await type(page, "Title", "First");
  await other.getByLabel("Title", { exact: true }).fill("Second");
  await page.reload();
  await page.settled();
  assert.equal(await field(page, "Title").inputValue(), "First");
  const third = await page.context().newPage();
  await third.goto(page.url());
  await until(third, () => document.querySelector("[aria-label=Title]")?.value === "Second");
});

// --- Files ---

const FLOOR = example("floor_beam.toml").toString();
const OPENED = { "CRLF line ends": FLOOR.replaceAll("\n", "\r\n"), "a byte order mark": `\ufeff${FLOOR}` };
for (const [name, text] of Object.entries(OPENED)) {
  pageTest(`a beam file with ${name} is opened`, async (page) => {
    await drop(page, "beam.toml", text);
    await until(page, () => document.querySelector("[aria-label=Title]").value === "Primary floor beam");
    await page.settled();
    assert.equal(await utilisation(page), "0.781");
  });
}

const HEAD = 'title = "Odd"\nsection = "UB 457x191x67"\ngrade = "S275"\n';
const REFUSED = {
  "a load that is no table": `${HEAD}length = 6\nload = [{ kind = "imposed", udl = 5 }, 7]\n`,
  "a restraint that is a number": `${HEAD}length = 6\nrestraint = 5\nload = [{ kind = "imposed", udl = 5 }]\n`,
  "a title that is a date": `${HEAD.replace('"Odd"', "2024-01-01")}length = 6\nload = [{ kind = "imposed", udl = 5 }]\n`,
  "a case that is a number": `${HEAD}length = 6\nload = [{ case = 5, kind = "imposed", udl = 5 }]\n`,
  "an unknown key of the page's own": `${HEAD}length = 6\nsupport = [{ at = 0 }]\nload = [{ kind = "imposed", udl = 5 }]\n`,
};
for (const [name, text] of Object.entries(REFUSED)) {
  pageTest(`a beam file with ${name} never becomes one without`, async (page) => {
    await drop(page, "odd.toml", text);
    // Either it is not opened, or it is and is refused as the file is.
    await until(page, () => document.querySelector(".notice").textContent !== "" || document.querySelector(".verdict .word").textContent === "Refused");
    await page.settled();
    if ((await field(page, "Title").inputValue()) === "Floor beam") assert.match(await page.locator(".notice").textContent(), /odd\.toml was not opened: .+/);
    else assert.equal(await verdict(page), "Refused");
  });
}

for (const [name, line] of [["nan", "length = nan"], ["inf", "length = inf"], ["no length", ""], ["spans of texts", 'spans = ["a", 4]']]) {
  pageTest(`a beam file with ${name} is opened to be mended`, async (page) => {
    await drop(page, "odd.toml", `${HEAD}${line}\nload = [{ kind = "imposed", udl = 5 }]\n`);
    await until(page, () => document.querySelector("[aria-label=Title]").value === "Odd" || document.querySelector(".notice").textContent !== "");
    await page.settled();
    if ((await field(page, "Title").inputValue()) !== "Odd") return;
    assert.equal(await verdict(page), "Refused");
    await type(page, "Title", "Odd again");
    await page.getByRole("button", { name: "Undo" }).click();
    await page.settled();
    assert.equal(await verdict(page), "Refused");
  });
}

pageTest("files that are none are said to be none", async (page) => {
  await drop(page, "large.toml", Buffer.alloc((1 << 20) + 1, 35));
  await page.locator(".notice", { hasText: "at most 1 MiB" }).waitFor();
  for (const [name, bytes] of [["empty.csv", ""], ["binary.csv", Buffer.from(Array.from({ length: 4000 }, (_, i) => (i * 7919) % 256))], ["nul.csv", Buffer.alloc(3000)]]) {
    await drop(page, name, bytes);
    await until(page, () => /not opened/.test(document.querySelector(".notice").textContent) || (document.querySelector("dialog.batch").open && !/checking/.test(document.querySelector(".batch p").textContent)));
    if (await page.locator("dialog.batch").isVisible()) {
      assert.doesNotMatch(await page.locator(".batch p").first().textContent(), / pass/);
      await page.locator("dialog.batch").getByRole("button", { name: "Close" }).click();
    }
  }
  await drop(page, "empty.toml", "");
  await until(page, () => document.querySelector(".verdict .word").textContent === "Refused" || /empty\.toml/.test(document.querySelector(".notice").textContent));
});

pageTest("50 MB of noise end in a sentence while the page goes on", async (page) => {
  await page.evaluate(() => {
    const bytes = new Uint8Array(50 << 20);
    for (let i = 0; i < bytes.length; ++i) bytes[i] = i % 97 === 0 ? 10 : 33 + ((i * 31) % 90);
    const data = new DataTransfer();
    data.items.add(new File([bytes], "noise.csv"));
    dispatchEvent(new DragEvent("drop", { dataTransfer: data, bubbles: true, cancelable: true }));
  });
  await page.locator("dialog.batch").waitFor();
  await until(page, () => !/checking/.test(document.querySelector(".batch p").textContent), 80_000);
  assert.doesNotMatch(await page.locator(".batch p").first().textContent(), / pass/);
  await page.locator("dialog.batch").getByRole("button", { name: "Close" }).click();
  await type(page, "Size of point load 2, kN", "31");
  assert.equal(await verdict(page), "Pass");
});

// --- What is typed ---

pageTest("what is no number is refused as it was typed", async (page) => {
  for (const text of ["NaN", "1e999", "-1e999", "inf", "9,5", "9 m", "0x10", "１２", "", "-9", "0", "1e-400"]) {
    await type(page, "Length, m", text);
    assert.equal(await verdict(page), "Refused", text);
    assert.equal(await page.locator(".verdict .ratio").count(), 0, text);
    assert.equal(await page.locator(".check-row, .diagrams, .reaction").count(), 0, text);
    assert.equal(await field(page, "Length, m").inputValue(), text);
    await page.getByRole("button", { name: "Undo" }).click();
    await page.settled();
    assert.equal(await verdict(page), "Pass", `after undoing ${text}`);
  }
});

const SLOW = () => {
  const post = Worker.prototype.postMessage;
  Worker.prototype.postMessage = function (message, ...more) {
    if (globalThis.isSlow && message.request?.ask === "check" && !message.request.brief) setTimeout(() => post.call(this, message, ...more), 900);
    else post.call(this, message, ...more);
  };
};

pageTest("no verdict, check or diagram of an earlier beam looks like one of this", async (page) => {
  await page.addInitScript(SLOW);
  await page.reload();
  await page.settled();
  await page.evaluate(() => { globalThis.isSlow = true; });
  await field(page, "Length, m").fill("30");
  await page.waitForTimeout(350);
  assert.notEqual(await page.locator(".verdict").getAttribute("data-stale"), null);
  assert.notEqual(await page.locator(".results").getAttribute("data-stale"), null);
  assert.match(await page.evaluate(() => getComputedStyle(document.querySelector(".verdict .word")).textDecorationLine), /line-through/);
  assert.ok(Number(await page.evaluate(() => getComputedStyle(document.querySelector(".checks")).opacity)) < 0.5);
  assert.equal(await page.locator(".diagrams").count(), 0); // they are of another length
  // Typed while a check is on its way: its result is that of an earlier beam.
  await field(page, "Length, m").fill("31");
  await page.waitForTimeout(700);
  assert.notEqual(await page.locator(".verdict").getAttribute("data-stale"), null);
  await page.waitForTimeout(1500);
  await page.settled();
  assert.equal(await page.locator(".verdict").getAttribute("data-stale"), null);
  assert.equal(await verdict(page), "Fail");
});

pageTest("a verdict with warnings says so", async (page) => {
  await field(page, "Combinations").selectOption("en1990");
  await page.settled();
  assert.match(await page.locator(".verdict").textContent(), /1 warning, below/);
  assert.equal(await page.locator(".message.warning").count(), 1);
  await drop(page, "none.toml", `${HEAD}length = 6\ndeflection = false\nload = [{ kind = "imposed", udl = 5 }]\n`);
  await page.getByText("No deflection is checked.").waitFor();
});

pageTest("uplift at a support is shown", async (page) => {
  await drop(page, "overhang.toml", `${HEAD}length = 9\nsupports = [{ at = 0 }, { at = 6 }]\nload = [{ kind = "imposed", point = 80, at = 9 }]\n`);
  await page.locator(".uplift").waitFor();
  assert.match(await page.locator(".uplift").first().textContent(), /^-\d.* kN$/);
});

// --- Names of cases ---

test("a case whose name is another's for a moment keeps its own loads", () => {
  const beam = { ...structuredClone(EXAMPLE), case: [{ name: "Dead", kind: "permanent" }, { name: "Dead2", kind: "imposed" }], load: [{ case: "Dead", udl: 1 }, { case: "Dead2", udl: 2 }], combination: [{ name: "a", factors: { Dead: 1, Dead2: 1.5 } }] };
  let under = "Dead2";
  for (const text of ["Dead", "Deadl", "Deadli"]) under = renameCase(beam, 1, text, under);
  assert.deepEqual(beam.load, [{ case: "Dead", udl: 1 }, { case: "Deadli", udl: 2 }]);
  assert.deepEqual(beam.combination[0].factors, { Dead: 1, Deadli: 1.5 });
});

pageTest("renaming a case through the name of another moves no load, and the caret stays", async (page) => {
  await type(page, "Name of case 2", "Dead2");
  const name = field(page, "Name of case 2");
  await name.focus();
  await page.keyboard.press("End");
  await page.keyboard.press("Backspace");
  await page.settled();
  assert.equal(await verdict(page), "Refused");
  await page.keyboard.type("line");
  await page.settled();
  assert.equal(await name.inputValue(), "Deadline");
  assert.equal(await field(page, "Case of point load 2").inputValue(), "Dead");
  assert.equal(await field(page, "Case of point load 3").inputValue(), "Deadline");
  assert.equal(await verdict(page), "Pass");
  for (let i = 0; i < 4; ++i) await page.keyboard.press("ArrowLeft");
  await page.keyboard.type("ly ");
  await page.settled();
  assert.equal(await name.inputValue(), "Deadly line");
});

// --- Nothing is lost ---

const ALL = `title = "All"
section = "UB 533x210x92"
type = "rolled"
grade = { yield = 265, ultimate = 410, modulus = 205000, factor = 1.05 }
net-to-gross = 0.9
plastic-to-elastic = 1.3
shear-lag = 0.6
moment-factor = 1.0
effective-lengths = { major = 8.0, minor = 4.0, lt = 4.5 }
spans = [8.0, 6.0]
supports = [{ at = 8.0, holds = "Pinned", vertical = 20000, rotation = 500, lateral = 1000, lateral-rotation = 20 }]
hinges = [9.5]
axially-held-at = 8
inclination = 5
combinations = "bs5950"
pattern = false
self-weight = false
brittle = false
camber = [0.01, 0.0]
deflection = { imposed = 300, total = 200, cantilever = 180, total-cantilever = 125 }
restraint = [{ from = 0, to = 6, holds = "Top flange lateral" }, { at = [6.0, 7.5], holds = "Bottom flange lateral" }]
case = [{ name = "Dead", kind = "permanent" }, { name = "Floor", kind = "imposed", category = "B", by-span = false }]
load = [
  { case = "Dead", udl = 5, major = true },
  { case = "Floor", trapezoid = [2, 5], from = 1, to = 4, height = "top flange" },
  { case = "Floor", point = 3, at = [2, 3], minor = true, height = 0.2 },
  { case = "Dead", moment = 10, at = 14 },
  { case = "Dead", axial = -15, at = 14 },
]
combination = [
  { name = "strength", factors = { Dead = [1.35, 1.0], Floor = 1.5 } },
  { name = "use", state = "characteristic", factors = { Dead = 1.0, Floor = 1.0 } },
]
`;

pageTest("all that a beam file says is kept through opening, editing and saving, and has a field", async (page) => {
  await drop(page, "all.toml", ALL);
  await until(page, () => document.querySelector("[aria-label=Title]").value === "All" || document.querySelector(".notice").textContent !== "");
  assert.equal(await page.locator(".notice").textContent(), "");
  await type(page, "Title", "All of it");
  const expected = beamOf(keysOf(ALL));
  assert.deepEqual(beamOf(keysOf(await saved(page, "Save"))), { ...expected, title: "All of it" });
  assert.deepEqual(await page.locator(".sketch .hinge, .sketch .spring").evaluateAll((all) => all.map((one) => one.tagName)), ["circle", "text"]);
  assert.match(await page.locator(".sketch").textContent(), /3 kN, across the web, 0\.2 m up/);
  const shown = {
    "Grade, yield, N/mm²": "265", "Grade, material factor": "1.05", "Hinges, m": "9.5", "Camber, m": "0.01, 0", "Inclination, °": "5", "Axially held, m": "8", "How the section is made": "rolled",
    "Net to gross": "0.9", "Plastic to elastic": "1.3", "Shear lag": "0.6", "Moment factor": "1", "Effective length, lateral-torsional, m": "4.5",
    "Spring of support 2, vertical, kN/m": "20000", "Spring of support 2, in the plane of the web, kNm/rad": "500", "Spring of support 2, across the web, kN/m": "1000", "Spring of support 2, across the web, rotation, kNm/rad": "20",
    "Direction of line load 1": "major", "Direction of point load 3": "minor", "Height of point load 3": "0.2", "Size of trapezoid 2, kN/m": "2, 5",
    "Factor of Dead in combination 1": "1.35, 1", "Factor of Floor in combination 1": "1.5", "State of combination 2": "characteristic", "Combinations": "bs5950", "Deflection limit, variable loads, span over": "300", "Deflection limit, cantilever, all, span over": "125",
  };
  for (const [label, value] of Object.entries(shown)) assert.equal(await field(page, label).inputValue(), value, label);
  for (const label of ["imposed loads on some spans alone", "of the section", "brittle", "may act on some spans alone"]) assert.equal(await field(page, label).isChecked(), false, label);
  // Each field changes its key and no other.
  await type(page, "Hinges, m", "9.25");
  await type(page, "Spring of support 2, vertical, kN/m", "");
  await type(page, "Factor of Dead in combination 1", "1.2");
  await type(page, "Grade, yield, N/mm²", "275");
  const changed = structuredClone(expected);
  Object.assign(changed, { title: "All of it", hinges: 9.25 });
  delete changed.support[1].vertical;
  changed.combination[0].factors.Dead = 1.2;
  changed.grade.yield = 275;
  assert.deepEqual(beamOf(keysOf(await saved(page, "Save"))), changed);
});

test("the keys of the reference beam are those of the schema", async () => {
  const { readFileSync } = await import("node:fs");
  const schema = JSON.parse(readFileSync(new URL("../../../docs/beam-file.schema.json", import.meta.url), "utf8"));
  const known = Object.keys(schema.properties).filter((name) => !["length", "column"].includes(name)); // "spans" and "inclination" stand in their places
  assert.deepEqual(known.filter((name) => !(name in keysOf(ALL))), []);
});

pageTest("own combinations take the place of those of the standard, and none has a factor that nobody typed", async (page) => {
  await page.getByRole("button", { name: "Own combination" }).click();
  await page.settled();
  assert.equal(await verdict(page), "Refused");
  assert.equal(await page.evaluate(() => document.activeElement.getAttribute("aria-label")), "Name of combination 1");
  await type(page, "Factor of Dead in combination 1", "1.35, 1");
  await type(page, "Factor of Imposed in combination 1", "1.5");
  assert.match(await page.locator(".verdict").textContent(), /Combination 1/);
  await page.getByRole("button", { name: "Remove combination 1" }).click();
  await page.settled();
  assert.equal(await utilisation(page), "0.890");
});

// --- Every edit, there and back ---

const EDITS = [
  (page) => type(page, "Title", "Other"), (page) => type(page, "Section", "UC 254x254x89"), (page) => field(page, "Grade").selectOption("S355"),
  (page) => page.getByRole("button", { name: "Support", exact: true }).click(), (page) => type(page, "Place of support 3, m", "4"), (page) => field(page, "Support 3").selectOption("Fixed"),
  (page) => page.getByRole("button", { name: "Remove support 3" }).click(), (page) => page.getByRole("button", { name: "Along a length" }).click(), (page) => field(page, "Restraint 1").selectOption("Torsion"),
  (page) => page.getByRole("button", { name: "Case", exact: true }).click(), (page) => type(page, "Name of case 3", "Wind"), (page) => field(page, "Kind of case 3").selectOption("wind"),
  (page) => page.getByRole("button", { name: "Point load", exact: true }).click(), (page) => field(page, "Kind of load 4").selectOption("moment"), (page) => field(page, "Kind of load 4").selectOption("trapezoid"),
  (page) => page.getByRole("button", { name: "Remove load 4" }).click(), (page) => page.getByRole("button", { name: "Own combination" }).click(), (page) => type(page, "Factor of Dead in combination 1", "1.4"),
  (page) => field(page, "checked").uncheck(), (page) => field(page, "of the section").uncheck(), (page) => field(page, "column").check(), (page) => field(page, "Design code").selectOption("ec3"),
  (page) => page.locator("[data-handle=s1]").press("ArrowLeft"), (page) => page.getByRole("button", { name: "New" }).click(), (page) => drop(page, "floor.toml", FLOOR).then(() => until(page, () => document.querySelector("[aria-label=Title]").value === "Primary floor beam")),
];

pageTest("every kind of edit is undone and done again", async (page) => {
  const now = () => page.evaluate(() => sessionStorage.getItem("keltrix-steel"));
  await type(page, "Length, m", "9.1"); // from here on something is kept
  const states = [await now()];
  for (const edit of EDITS) {
    await edit(page);
    await page.settled();
    const state = await now();
    if (state !== states[states.length - 1]) states.push(state);
    await page.waitForTimeout(10);
  }
  assert.ok(states.length >= EDITS.length, `${states.length} states`);
  await page.evaluate(() => document.activeElement.blur());
  for (const state of states.slice(0, -1).reverse()) {
    await page.keyboard.press("Control+z");
    assert.equal(await now(), state);
  }
  for (const state of states.slice(1)) {
    await page.keyboard.press("Control+Shift+z");
    assert.equal(await now(), state);
  }
  await page.settled();
  assert.equal(await utilisation(page), "0.781");
});

// --- Keys alone ---

pageTest("every control is reached by keys, and the focus is seen", async (page) => {
  for (const words of ["Hinges, camber, factors", "Options"]) await page.getByText(words, { exact: true }).click();
  await page.evaluate(() => { document.activeElement.blur(); scrollTo(0, 0); });
  const missing = new Set(await page.evaluate(() => {
    const all = [...document.querySelectorAll("#page :is(button, input, select, summary, [tabindex='0'])")].filter((one) => one.tabIndex >= 0 && one.checkVisibility());
    all.forEach((one, i) => { one.dataset.reach = String(i); });
    return all.map((one) => one.dataset.reach);
  }));
  assert.ok(missing.size > 60, `${missing.size}`);
  const unseen = [];
  for (let i = 0; i < 250 && missing.size > 0; ++i) {
    await page.keyboard.press("Tab");
    const [reach, isSeen, html] = await page.evaluate(() => {
      const one = document.activeElement;
      const style = getComputedStyle(one);
      return [one.dataset.reach, (style.outlineStyle !== "none" && parseFloat(style.outlineWidth) >= 2) || (one instanceof SVGElement && style.stroke !== "none"), one.outerHTML.slice(0, 120)];
    });
    missing.delete(reach);
    if (!isSeen && !html.startsWith("<body")) unseen.push(html);
  }
  assert.deepEqual(unseen, []);
  assert.deepEqual(await page.evaluate((left) => left.map((reach) => document.querySelector(`[data-reach="${reach}"]`)?.outerHTML.slice(0, 120)), [...missing]), []);
});

pageTest("the focus stays with what was done", async (page) => {
  const focus = () => page.evaluate(() => document.activeElement.getAttribute("aria-label") ?? document.activeElement.textContent.trim());
  await page.getByRole("button", { name: "Point load", exact: true }).press("Enter");
  await page.settled();
  assert.match(await focus(), /point load 4|load 4/);
  await page.getByRole("button", { name: "Remove load 4" }).press("Enter");
  await page.settled();
  assert.equal(await focus(), "Remove load 3");
  await page.getByRole("button", { name: "Remove restraint 1" }).press("Enter");
  await page.settled();
  assert.match(await focus(), /At places$/);
  for (const times of [1, 2, 3]) {
    await page.getByRole("button", { name: "Undo" }).press("Enter");
    await page.settled();
    assert.equal(await focus(), "Undo", `${times}`);
  }
  const summary = page.locator(".check-row summary").nth(2);
  await summary.focus();
  const row = await focus();
  await page.keyboard.press("Control+y");
  await page.settled();
  assert.equal((await focus()).slice(0, 20), row.slice(0, 20));
  await page.getByRole("tab", { name: "Lightest sections" }).click();
  await page.locator(".take").nth(1).press("Enter");
  await page.settled();
  await until(page, () => document.querySelector(".panels[data-stale]") === null);
  assert.notEqual(await page.evaluate(() => document.activeElement.tagName), "BODY");
});

// --- Forces of another program ---

pageTest("a table of forces becomes members, which are checked", async (page) => {
  await page.getByRole("button", { name: "Forces" }).click();
  const dialog = page.locator("dialog.forces");
  const put = async (label, name, text) => field(page, label).setInputFiles({ name, mimeType: "text/csv", buffer: Buffer.from(text) });
  await put("Table of forces", "forces.csv", example("frame/forces.csv"));
  await put("Table of members", "members.csv", example("frame/members.csv"));
  await dialog.getByRole("button", { name: "Check the members" }).click();
  await dialog.getByText("Both tables and the signs are needed").waitFor();
  await field(page, "Signs").selectOption("sagging");
  await dialog.getByRole("button", { name: "Check the members" }).click();
  await dialog.locator(".message.error", { hasText: "do not balance as sagging" }).waitFor();
  await field(page, "Signs").selectOption("z-down");
  await dialog.getByRole("button", { name: "Check the members" }).click();
  await until(page, () => document.querySelector("dialog.batch").open || document.querySelector("dialog.forces .link") !== null);
  if (await dialog.isVisible()) await dialog.getByRole("button", { name: "Show them" }).click();
  await page.locator(".batch p", { hasText: "4 members" }).waitFor();
  await until(page, () => !/checking/.test(document.querySelector(".batch p").textContent));
  assert.deepEqual(await page.locator(".batch tbody td:first-child").allTextContents(), ["0.730", "0.675", "0.614", "0.608"]);
});

// --- The digits of the command line ---

pageTest("50 random beams have the verdicts and figures of the command line", async (page) => {
  let seed = Number(process.env.SEED ?? Date.now() % 1e6);
  console.log(`# SEED=${seed}`);
  const random = () => (seed = (seed * 48271 + 11) % 2147483647) / 2147483647;
  const of = (list) => list[Math.floor(random() * list.length)];
  const seen = new Set();
  await page.getByRole("button", { name: "Moment" }).click();
  for (let i = 0; i < 50; ++i) {
    const length = (4 + 8 * random()).toFixed(2);
    const at = (share) => (Number(length) * share).toFixed(2);
    const code = of(["bs5950", "ec3"]);
    for (const [label, text] of [
      ["Length, m", length], ["Place of support 2, m", at(of([1, 0.8]))], ["Section", of(["UB 457x191x67", "UB 533x210x82", "UC 254x254x89", "PFC 260x90x35", "RHS 250x150x8", "UB 305x165x40", "GI 600x200x250x10x14x20"])],
      ["Places of restraint 1, m", `${at(0.3)}, ${at(0.6)}`], ["Size of line load 1, kN/m", (20 * random() - 4).toFixed(2)], ["Size of point load 2, kN", (60 * random()).toFixed(1)], ["Places of point load 2, m", at(random())],
      ["Size of point load 3, kN", (80 * random() - 10).toFixed(1)], ["Places of point load 3, m", at(random())], ["Size of moment 4, kNm", (40 * random() - 20).toFixed(1)], ["Places of moment 4, m", at(of([0, 1, 0.5]))],
    ]) await field(page, label).fill(text);
    await field(page, "Grade").selectOption(of(["S275", "S355"]));
    await field(page, "Height of point load 3").selectOption(of(["", "top flange", "bottom flange"]));
    await field(page, "Design code").selectOption(code);
    await page.settled();
    const file = join(folder, "typed.toml");
    writeFileSync(file, await saved(page, "Save"));
    const [, line] = ksteel("check", file, "--code", code, "--report", "table").trim().split("\n");
    const word = (await verdict(page)).toLowerCase();
    if (line === undefined) {
      assert.equal(word, "refused", `beam ${i}`);
      continue;
    }
    const [figure, status] = line.trim().split(/\s{2,}/);
    const told = `beam ${i}: ${line}`;
    assert.equal(word, status.replace(/,.*/, "").toLowerCase(), told);
    const warnings = /(\d+) warning/.exec(status)?.[1];
    assert.equal(/(\d+) warning/.exec(await page.locator(".verdict").textContent())?.[1], warnings, told);
    assert.equal(await utilisation(page), figure, told);
    if (word === "fail" || word === "pass") assert.ok(line.includes((await page.locator(".verdict .governing").textContent()).split(" (")[0]), told);
    seen.add(word);
  }
  assert.ok(seen.has("pass") && seen.has("fail"), [...seen].join());
});

pageTest("capacities are those of the command line, to the digit, with its notes", async (page) => {
  await page.getByRole("tab", { name: "Capacities" }).click();
  await page.locator(".panel figure").first().waitFor();
  const lines = ksteel("capacity", "UB 533x210x82", "--width", "200", "--LE", "1,1.5,2,2.5,3,3.5,4,5,6,7,8,9,10,12,14").split("\n").map((line) => line.trim().split(/\s+/).join(" ").replaceAll(/(^| )-(?= |$)/g, "$1–"));
  const rows = await page.locator(".panel tbody tr").evaluateAll((all) => all.map((row) => [...row.cells].map((cell) => cell.textContent.replace(/, kN.*/, "")).join(" ")));
  assert.ok(rows.length > 16, `${rows.length}`);
  assert.deepEqual(rows.filter((row) => !lines.includes(row)).slice(0, 3), []);
});

test("what is just below 1 is not shown as 1", () => {
  const beam = (size) => Buffer.from(textOf({ ...structuredClone(EXAMPLE), load: [{ case: "Dead", udl: size }], "self-weight": false }).text);
  const size = 10 / ask({ ask: "check", name: "b.toml" }, beam(10)).members[0].ratio;
  const { passing } = ask({ ask: "lightest", name: "b.toml", families: ["UB"], count: 40 }, beam(size * 0.9998));
  assert.equal(passing.find(({ section }) => section === EXAMPLE.section).shown, "0.9998");
});

// --- As it looks ---

pageTest("200 % zoom, and fields of all kinds at 360 px, need no scrolling to the side", async (page) => {
  await drop(page, "all.toml", ALL);
  await until(page, () => document.querySelector("[aria-label=Title]").value === "All");
  await page.settled();
  for (const width of [720, 512, 360, 320]) {
    await page.setViewportSize({ width, height: 500 });
    await page.settled();
    assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), width);
    const out = await page.evaluate(() => [...document.querySelectorAll(".editor :is(input, select, button, .label)")].filter((one) => one.checkVisibility() && one.getBoundingClientRect().right > innerWidth).map((one) => one.outerHTML.slice(0, 80)));
    assert.deepEqual(out, [], `${width}`);
  }
});

for (const width of [360, 1400]) {
  pageTest(`no figure of a drawing stands on another, ${width} px`, async (page) => {
    await drop(page, "column.toml", example("column.toml"));
    await until(page, () => document.querySelector("[aria-label=column], .check input").checked && document.querySelector(".diagrams") !== null);
    await page.settled();
    const overlaps = await page.evaluate(() => {
      const boxes = [...document.querySelectorAll(".paper .sketch text")].map((one) => [one.textContent, one.getBoundingClientRect()]);
      const shares = (a, b) => Math.min(a.right, b.right) - Math.max(a.left, b.left) > 2 && Math.min(a.bottom, b.bottom) - Math.max(a.top, b.top) > 5;
      return boxes.flatMap(([words, box], i) => boxes.slice(i + 1).filter(([, other]) => shares(box, other)).map(([others]) => `${words} | ${others}`));
    });
    assert.deepEqual(overlaps, []);
  }, { viewport: { width, height: 900 } });
}

for (const colorScheme of ["light", "dark"]) {
  pageTest(`accessible with fields of all kinds, ${colorScheme}`, async (page) => {
    await drop(page, "all.toml", ALL);
    await until(page, () => document.querySelector("[aria-label=Title]").value === "All");
    await page.settled();
    await axe(page, "all fields");
    await type(page, "Factor of Dead in combination 1", "x");
    await axe(page, "a wrong factor");
    await page.getByRole("button", { name: "Forces" }).click();
    await page.locator("dialog.forces option").nth(1).waitFor({ state: "attached" });
    await axe(page, "forces");
  }, { colorScheme, bypassCSP: true });
}

pageTest("nothing moves by itself where that is not wanted", async (page) => {
  assert.equal(await page.evaluate(() => getComputedStyle(document.querySelector(".fill")).transitionDuration), "0s");
}, { reducedMotion: "reduce" });
