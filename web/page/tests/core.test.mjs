// The core: the digits of the command line, and the same bytes from both builds.
import assert from "node:assert/strict";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { example, ksteel, members, nativeReplies, startCore } from "./support.mjs";

const ask = await startCore();

function firstDifference(a, b) {
  const [left, right] = [a.split("\n"), b.split("\n")];
  const line = left.findIndex((one, i) => one !== right[i]);
  if (line < 0) return `${left.length} and ${right.length} lines`;
  const at = [...left[line]].findIndex((letter, i) => letter !== right[line]?.[i]);
  return `line ${line + 1}: ${left[line].slice(Math.max(0, at - 80), at + 60)} and ${right[line]?.slice(Math.max(0, at - 80), at + 60)}`;
}

for (const code of ["bs5950", "ec3"]) {
  test(`1,000 members to ${code}: the JSON of the command line, byte by byte`, () => {
    const folder = mkdtempSync(join(tmpdir(), "keltrix-page-"));
    try {
      const file = join(folder, "members.csv");
      const text = members(1000);
      writeFileSync(file, text);
      const native = ksteel("check", file, "--code", code, "--format", "jsonl").replaceAll(folder + "/", "");
      const page = ask({ ask: "lines", name: "members.csv", code }, Buffer.from(text)).lines;
      assert.equal(native.split("\n").length, 1001);
      assert.ok(native === page, firstDifference(native, page));
    } finally {
      rmSync(folder, { recursive: true });
    }
  });
}

test("a batch in pieces gives a row for each member, refused ones included", () => {
  const bytes = Buffer.from(members(1000, true));
  ask({ ask: "begin batch", name: "members.csv" });
  const rows = [];
  for (let at = 0; at < bytes.length; at += 10007)
    rows.push(...ask({ ask: "add to batch", last: at + 10007 >= bytes.length }, bytes.subarray(at, at + 10007)));
  assert.equal(rows.length, 1000);
  assert.deepEqual(rows.map(({ row }) => row.title), Array.from({ length: 1000 }, (_, i) => `Member ${i + 1}`));
  const refused = rows.filter(({ row }) => row.status === "refused");
  assert.equal(refused.length, 2);
  assert.match(refused[0].row.errors[0], /members\.csv:\d+: .*SECTION.*UB 1x2x3/);
  for (const { row, from, bytes: size } of rows.slice(0, 20)) assert.match(bytes.subarray(from, from + size).toString(), new RegExp(`TITLE,${row.title}\n[^]*END`));
});

test("every request gets the same bytes from both builds", () => {
  const beams = ["floor_beam.toml", "two_span.toml", "column.toml", "rafter.toml", "brace.toml", "chord.toml"];
  const requests = [[{ ask: "codes" }], [{ ask: "sections" }], [{ ask: "section", section: "L 150x75x10" }], [{ ask: "nothing" }], [{ ask: "capacity", section: "UB 457x191x67", grade: "S275", lengths: [1, 4, 9] }]];
  for (const name of beams)
    for (const request of [{ ask: "document" }, { ask: "check" }, { ask: "check", code: "ec3" }, { ask: "sheet" }, { ask: "buckling" }])
      requests.push([{ ...request, name }, example(name)]);
  requests.push([{ ask: "lightest", name: "floor_beam.toml", families: ["UB"], count: 3 }, example("floor_beam.toml")]);
  requests.push([{ ask: "steps", name: "floor_beam.toml", combination: "dead and imposed: 1.4 Dead" }, example("floor_beam.toml")]);
  requests.push([{ ask: "capacity", code: "ec3", section: "UB 457x191x67", grade: "S355", lengths: [2, 3.5] }], [{ ask: "conventions" }]);
  const [forces, parts] = [example("frame/forces.csv"), example("frame/members.csv")];
  for (const signs of ["z-down", "sagging", "no signs"]) requests.push([{ ask: "import", map: [signs], forces: "forces.csv", members: "members.csv", split: forces.length }, Buffer.concat([forces, parts])]);
  const native = nativeReplies(requests);
  assert.equal(native.length, requests.length);
  requests.forEach(([request, bytes], i) => {
    let reply;
    try {
      reply = { code: 0, text: JSON.stringify(ask(request, bytes)) };
    } catch (failure) {
      if (!(failure instanceof ask.Refused)) throw failure;
      reply = { code: 1, text: failure.message };
    }
    // Through JSON once more, because the core's own spelling of a number need not be JavaScript's.
    const expected = native[i].code === 0 ? JSON.stringify(JSON.parse(native[i].text)) : native[i].text;
    assert.equal(reply.code, native[i].code, JSON.stringify(request));
    assert.ok(reply.text === expected, `${JSON.stringify(request)}: ${firstDifference(expected, reply.text)}`);
  });
});

test("what no request is, and hostile bytes, are refused in a sentence", () => {
  assert.throws(() => ask({ ask: "check", code: "no code" }, example("floor_beam.toml")), /no code/);
  assert.throws(() => ask({ ask: "document", name: "x.toml" }, Buffer.from("a = [\n")), /x\.toml:\d+: .*no TOML/);
  assert.throws(() => ask({ ask: "document", name: "x.toml" }, Buffer.from("a = [".padEnd(5000, "["))), ask.Refused);
  const { members: [member] } = ask({ ask: "check", name: "x.toml" }, Buffer.from([0x5b, 0xff, 0xfe]));
  assert.equal(member?.status ?? "refused", "refused");
});
