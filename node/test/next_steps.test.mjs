import assert from "node:assert/strict";
import { setTimeout as sleep } from "node:timers/promises";
import { fileURLToPath } from "node:url";
import test from "node:test";

import { explain, finish, finishText, NextStepsError, Session } from "next-steps";

// The folder with the repository's examples, when the tests lie elsewhere.
const examples = process.env.NEXT_STEPS_EXAMPLES ?? fileURLToPath(new URL("../../examples", import.meta.url));
const index = `${examples}/index/models.json`;

test("finishes an answer", async () => {
  const answer = { results: [{ fqn: "a.b", doc: null }], note: "caf\u00e9 \u{1F600}" };
  const text = await finishText(answer, "search", { serves: ["symbol:detail"] });
  assert.equal(text, '{"results":[{"fqn":"a.b"}],"note":"caf\u00e9 \u{1F600}","next_steps":[{"tool":"symbol",' +
    '"args":{"action":"detail","fqn":"a.b"},"reason":"Details of the best hit"}]}');
  assert.deepEqual(await finish(answer, "search", { serves: ["symbol:detail"] }), JSON.parse(text));
  assert.equal((await explain({}, "status")).rows.usual, "status");
});

test("writes values as JSON.stringify does, and BigInts as integers", async () => {
  for (const [value, written] of [
    [12345678901234567890n, "12345678901234567890"], [[-5n, "5", 0.5], '[-5,"5",0.5]'], [new Date(0), '"1970-01-01T00:00:00.000Z"'],
    [{ toJSON: () => 7n }, "7"], ["\ud83d\ude00", '"\u{1F600}"']]) {
    assert.equal(await finishText({ a: value, n: NaN, u: undefined }, "x"), `{"a":${written}}`);
  }
  assert.equal(await finishText({ a: "\udcff" }, "x", { lossy: true }), '{"a":"\ufffd"}');
});

test("reports wrong requests", async () => {
  const circular = {};
  circular.a = circular;
  for (const [answer, options, message] of [
    [[], {}, /^"response" must be an object, not a list \(byte 20 of the request, near .*"response\\":\[\]/],
    [undefined, {}, /^"response" is missing/], [{ a: "\udcff" }, {}, /^The surrogate pair in string is invalid\. .*udcff/],
    [{ a: 10n ** 400n }, {}, /^Number too big/], [{}, { serves: ["a:"] }, /"a:" is neither TOOL nor TOOL:ACTION/],
    [{}, { actoin: "x", id: 7 }, /^"actoin" is no member of a request/]]) {
    await assert.rejects(finishText(answer, "x", options), (error) => error instanceof NextStepsError && message.test(error.message));
  }
  await assert.rejects(finishText(circular, "x"), TypeError);
});

test("reports wrong options", async () => {
  for (const [options, message] of [
    [{ index: "missing" }, /^missing: No such file/], [{ indx: 1 }, /^options:1:2: "indx" is no member/],
    [{ index, catalogue: index }, /models\.json:2:1: /]]) {
    await assert.rejects(Session.open(options), { name: "NextStepsError", message });
  }
});

test("answers misses, with a catalogue or without", async () => {
  const session = await Session.open({ index, serves: ["symbol"] });
  const answer = await session.suggestSymbols("Symbl", { action: "callers", answer: { note: null, kind: "class" } });
  assert.equal(answer.kind, "class");
  assert.equal(answer.did_you_mean[0].fqn, "vantrex::models::Symbol");
  assert.equal(answer.next_steps[0].args.action, "callers");
  assert.equal((await session.suggestPaths("models/respository.h")).next_steps, undefined);
  await assert.rejects(session.suggestSymbols("Symbol"), /the index holds this symbol/);
  await assert.rejects((await Session.open()).suggestPaths("a"), /"suggest" needs an index/);
  const issues = await Session.open({ catalogue: `${examples}/catalogues/issues.json` });
  assert.ok("next_steps" in (await issues.finish({ number: 7 }, "issue")));
});

test("leaves the event loop to others, and takes any number of calls at once", async () => {
  const large = { text: "x".repeat(50_000_000) };
  let ticks = 0;
  const ticking = setInterval(() => ++ticks, 1);
  await finishText(large, "x");
  clearInterval(ticking);
  assert.ok(ticks > 5, `${ticks} ticks`);
  const answers = await Promise.all(Array.from({ length: 5000 }, (_, number) => finish({ number }, "x")));
  assert.ok(answers.every(({ number }, place) => number === place));
});

test("needs no more memory for more calls", { skip: !global.gc && "needs --expose-gc" }, async () => {
  const run = async (count) => {
    for (let call = 0; call < count; ++call) {
      await finishText({ a: "x".repeat(1000) }, "x");
      await finishText([], "x").catch(() => {});
      if (call % 10 === 0) await Session.open({ serves: ["a"] });
      if (call % 1000 === 0) await sleep(1); // sessions are closed by then
    }
    global.gc();
    await sleep(50);
    return process.memoryUsage().rss;
  };
  const grown = -(await run(5000)) + (await run(20000));
  assert.ok(grown < 8e6, `${grown} bytes`); // 20 MB if the replies alone were kept
});
