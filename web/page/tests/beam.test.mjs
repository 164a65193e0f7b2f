// The page's beam: what is opened is checked as the file is, and lines know what stands in them.
import assert from "node:assert/strict";
import { test } from "node:test";
import { example, moduleOfPage, startCore } from "./support.mjs";

const ask = await startCore();
const { beamOf, textOf, EXAMPLE, isBeam } = await moduleOfPage("beam");

// What does not depend on where in the file a thing stands.
const essence = (reply) => reply.members.map(({ diagnostics, warnings, ...member }) => ({ ...member, messages: diagnostics.map(({ severity, advice }) => `${severity} ${advice}`).filter((one) => !one.startsWith("note not given: pinned")).sort() }));

for (const name of ["floor_beam.toml", "two_span.toml", "column.toml", "rafter.toml", "brace.toml", "chord.toml"]) {
  test(`${name} opened and written again is checked alike`, () => {
    const { keys } = ask({ ask: "document", name }, example(name));
    const beam = beamOf(keys);
    assert.ok(isBeam(beam));
    const text = textOf(beam).text;
    const again = beamOf(ask({ ask: "document", name }, Buffer.from(text)).keys);
    assert.deepEqual(again, beam); // whatever the order of the keys
    const [before, after] = [example(name), Buffer.from(text)].map((bytes) => ask({ ask: "check", name }, bytes));
    assert.deepEqual(essence(after), essence(before));
  });
}

test("the line of an error is that of the thing that is wrong", () => {
  const beam = structuredClone(EXAMPLE);
  beam.load[1].at = "3,5 m";
  const { text, places } = textOf(beam);
  const [{ status, diagnostics }] = ask({ ask: "check", name: "beam.toml" }, Buffer.from(text)).members;
  assert.equal(status, "refused");
  const error = diagnostics.find((one) => one.severity === "error");
  assert.equal(error.keyword, "load.at");
  assert.equal(places[error.line], "load.1");
});

test("hostile texts stay texts of the file", () => {
  const title = "</title><script>alert(1)</script> \"quoted\" \\ \u0001 \u007f \u2028 end\nof line";
  const { keys } = ask({ ask: "document", name: "x.toml" }, Buffer.from(textOf({ ...structuredClone(EXAMPLE), title, "a.b \"c\"": 1 }).text));
  assert.equal(keys.title, title);
  assert.equal(keys["a.b \"c\""], 1);
});

test("a beam without supports is not one with supports that nobody asked for", () => {
  const [{ status }] = ask({ ask: "check", name: "x.toml" }, Buffer.from(textOf({ ...structuredClone(EXAMPLE), support: [] }).text)).members;
  assert.equal(status, "refused");
});
