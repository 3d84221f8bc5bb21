// Drives public tool servers through the proxy: node proxy_test.mjs NEXT_STEPS CATALOGUES
//
// - A server that uses all of the protocol gives the client the same with and without the proxy.
// - Every step of the memory server is followed, to a depth of three. The client checks each answer against the
//   schema that the tool lists.
// - Answers that fit a random schema fit the widened one when they are finished.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { mkdtempSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { Client } from "@modelcontextprotocol/sdk/client/index.js";
import { StdioClientTransport } from "@modelcontextprotocol/sdk/client/stdio.js";
import * as types from "@modelcontextprotocol/sdk/types.js";
import { Ajv2020 } from "ajv/dist/2020.js";

const [program, catalogues] = process.argv.slice(2);
const place = mkdtempSync(join(tmpdir(), "proxy_client"));
const require = createRequire(import.meta.url);
const memoryCatalogue = join(catalogues, "memory.json");

// Connects to a server of npm; without options, not through the proxy. What the server sends by itself is `heard`.
async function connect(server, options, environment = {}) {
  const start = [process.execPath, require.resolve(`@modelcontextprotocol/${server}/dist/index.js`)];
  const [command, ...args] = options === undefined ? start : [program, "proxy", ...options, "--", ...start];
  const capabilities = { sampling: {}, roots: {}, elicitation: { form: {} } };
  const client = new Client({ name: "proxy_test", version: "1.0.0" }, { capabilities });
  const heard = [];
  client.fallbackNotificationHandler = async ({ method }) => heard.push(method);
  client.setRequestHandler(types.ListRootsRequestSchema, () => ({ roots: [{ uri: "file:///a", name: "a" }] }));
  client.setRequestHandler(types.CreateMessageRequestSchema, ({ params }) => {
    return { model: "none", role: "assistant", content: { type: "text", text: `to ${params.messages.length}` } };
  });
  client.setRequestHandler(types.ElicitRequestSchema, () => ({ action: "decline" }));
  await client.connect(new StdioClientTransport({ command, args, env: { ...process.env, ...environment }, stderr: "ignore" }));
  return { client, heard };
}

// What the client gets from the server that uses all of the protocol.
async function everything(options) {
  const { client, heard } = await connect("server-everything", options);
  const seen = {};
  const note = async (name, promise) => (seen[name] = await promise.catch((error) => `${error}`));
  const tool = (name, args = {}, more = {}) =>
    note(`${name} ${JSON.stringify(args)}`, client.callTool({ name, arguments: args }, undefined, more));
  await note("tools", client.listTools());
  await note("prompts", client.listPrompts());
  for (const { name } of seen.prompts.prompts) {
    await note(name, client.getPrompt({ name, arguments: { city: "Paris", department: "Sales", name: "x", resourceId: "1", resourceType: "Text" } }));
  }
  await note("resources", client.listResources());
  await note("templates", client.listResourceTemplates());
  await note("resource", client.readResource({ uri: seen.resources.resources[0].uri }));
  await note("subscribed", client.subscribeResource({ uri: seen.resources.resources[0].uri }));
  await note("level", client.setLoggingLevel("debug"));
  await note("completion", client.complete({ ref: { type: "ref/prompt", name: "completable-prompt" }, argument: { name: "department", value: "S" } }));
  await tool("echo", { message: "é\u2028\"" });
  await tool("echo", { message: 1 });
  await tool("no-such-tool");
  await tool("get-sum", { a: 1, b: 2.5 });
  await tool("get-structured-content", { location: "New York" });
  for (const name of ["get-tiny-image", "get-resource-links", "get-annotated-message", "get-resource-reference", "get-roots-list"]) {
    await tool(name, { count: 2, messageType: "error", includeImage: true, resourceType: "Text", resourceId: 1 });
  }
  await tool("trigger-sampling-request", { prompt: "hello", maxTokens: 10 });
  await tool("trigger-elicitation-request");
  const progress = [];
  await tool("trigger-long-running-operation", { duration: 0.2, steps: 4 }, { onprogress: (step) => progress.push(step) });
  const cancelled = new AbortController();
  setTimeout(() => cancelled.abort("enough"), 100);
  await tool("trigger-long-running-operation", { duration: 1, steps: 2 }, { signal: cancelled.signal });
  await note("ping", client.ping());
  await client.close();
  const timeless = JSON.parse(JSON.stringify(seen).replace(/\d+:\d\d:\d\d/g, "TIME"));
  // The last report may come with the result, and is then dropped by the client.
  return { seen: timeless, progress: progress.slice(0, 3), heard: [...new Set(heard)].sort() };
}

async function checkEverything() {
  const direct = await everything();
  assert.equal(Object.keys(direct.seen).length, 27, Object.keys(direct.seen).join());
  assert.equal(direct.progress.length, 3);
  assert.deepEqual(await everything(["--catalogue", memoryCatalogue]), direct);
  console.log("the same with and without the proxy:", Object.keys(direct.seen).length, "results");
}

// The bytes of a result that an agent reads.
const bytes = (result) => Buffer.byteLength(result.content.map(({ text }) => text).join(""));

async function checkMemory() {
  const environment = { MEMORY_FILE_PATH: join(place, "memory.jsonl") };
  const direct = (await connect("server-memory", undefined, environment)).client;
  const { client } = await connect("server-memory", ["--catalogue", memoryCatalogue], environment);
  const { tools } = await client.listTools();
  const names = tools.map(({ name }) => name);
  const entity = (name, ...observations) => ({ name, entityType: "module", observations });
  const entities = [entity("parser", "reads JSON", "is fast"), entity("writer", "writes JSON"), entity("cache", "holds parsed files")];
  const relations = [{ from: "writer", to: "parser", relationType: "tests" }, { from: "cache", to: "parser", relationType: "uses" }];
  const followed = {};
  const sizes = [];

  async function explore(name, args, depth = 0) {
    const reads = tools.find((tool) => tool.name === name).annotations.readOnlyHint;
    const before = reads ? await direct.callTool({ name, arguments: args }) : undefined;
    const after = await client.callTool({ name, arguments: args });
    assert(!after.isError, JSON.stringify(after));
    const { next_steps: steps = [], ...rest } = after.structuredContent;
    if (reads) {
      assert.deepEqual(rest, before.structuredContent);
      assert.deepEqual(JSON.parse(after.content[0].text), after.structuredContent);
      sizes.push([name, bytes(before), bytes(after)]);
    }
    for (const step of depth < 3 ? steps : []) {
      assert(names.includes(step.tool), step.tool);
      followed[`${name} → ${step.tool}`] = (followed[`${name} → ${step.tool}`] ?? 0) + 1;
      await explore(step.tool, step.args, depth + 1);
    }
  }

  await explore("create_entities", { entities });
  await explore("create_relations", { relations });
  for (const query of ["JSON", "parser", "nothing"]) await explore("search_nodes", { query });
  await explore("read_graph", {});
  console.log("steps followed:", followed);
  console.log("bytes of the text before and after:", JSON.stringify(sizes.filter((_, i) => i < 4)));
  const kinds = JSON.parse(spawnSync(program, ["catalogue", "--json", "--catalogue", memoryCatalogue]).stdout);
  const expected = Object.entries(kinds.next_steps).flatMap(([tool, calls]) => calls.map((call) => `${tool} → ${call.tool}`));
  for (const [tool, signal] of Object.entries(kinds.signals)) expected.push(`${tool} → ${signal.tool}`);
  assert.deepEqual(Object.keys(followed).sort(), expected.sort(), "a step of the catalogue was not offered");
  await client.close();
  await direct.close();
}

let seed = 1;
const below = (count) => (seed = (seed * 48271) % 2147483647) % count;
const pick = (...values) => values[below(values.length)];

function value(depth) {
  if (depth === 0) return pick(null, 1, "x", true, 2.5);
  return pick(() => value(0), () => [value(0), value(depth - 1), null], () => object(depth - 1), () => object(depth - 1))();
}
function object(depth) {
  return Object.fromEntries(["a", "b", "c", "next"].filter(() => below(2)).map((key) => [key, value(depth)]));
}
// A random schema, in which `refs` may be referred to.
function schema(depth, refs) {
  if (depth === 0) return pick({}, { type: "null" }, { type: ["string", "null"] }, { type: "integer" }, { enum: [null, "x", 1] }, true);
  const sub = () => schema(depth - 1, refs);
  const keywords = {
    properties: () => ({ a: sub(), b: sub() }), required: () => ["a"], minProperties: () => below(3), maxProperties: () => 2 + below(3),
    additionalProperties: () => pick(false, sub()), unevaluatedProperties: () => pick(false, sub()), propertyNames: () => ({ maxLength: 4 }),
    patternProperties: () => ({ "^n": sub() }), dependentRequired: () => ({ a: ["b"] }), dependentSchemas: () => ({ a: sub() }),
    not: () => ({ required: [pick("a", "b")] }), if: sub, then: sub, else: sub, oneOf: () => [sub(), { required: ["a"] }], anyOf: () => [sub(), sub()],
    allOf: () => [sub()], items: sub, uniqueItems: () => true, contains: sub, ...(refs.length > 0 && { $ref: () => pick(...refs) }),
  };
  const names = Object.keys(keywords).filter(() => below(7) === 0);
  return Object.fromEntries(names.map((name) => [name, keywords[name]()]));
}

function checkWidening() {
  const ajv = new Ajv2020({ strict: false, logger: false });
  const fits = (whole) => {
    const check = ajv.compile(whole);
    return (answer) => {
      try {
        return check(answer);
      } catch (error) {
        // The validator fails on some schemas with "unevaluatedProperties", and on references that lead in a circle.
        assert(error instanceof TypeError || error instanceof RangeError);
        return false;
      }
    };
  };
  const lines = [];
  const cases = [];
  while (cases.length < 3000) {
    const inner = ["#/oneOf/0", "#/anyOf/1", "#/allOf/0", "#/items", "#/properties/a", "#/properties/next_steps", "#/$defs/d/oneOf/0"];
    const $defs = { d: schema(1, ["#/$defs/e"]), e: schema(1, below(2) ? inner : []) };
    const whole = { ...schema(3, ["#/$defs/d", "#/$defs/e"]), type: "object", $defs };
    if (below(4) === 0) whole.properties = { ...whole.properties, next_steps: schema(2, ["#/$defs/d"]) };
    let check;
    try {
      check = fits(whole);
    } catch (error) {
      assert.match(error.message, /can't resolve reference/);
      continue;
    }
    const answer = Array.from({ length: 20 }, () => object(2)).find(check);
    if (answer === undefined) continue;
    const id = cases.push({ whole, answer });
    const tools = [{ name: "tool", outputSchema: whole }];
    lines.push({ id: `l${id}`, method: "tools/list" }, { id: `l${id}`, result: { tools } });
    lines.push({ id, method: "tools/call", params: { name: "tool" } }, { id, result: { structuredContent: answer } });
  }
  const catalogue = join(place, "catalogue.json");
  writeFileSync(catalogue, JSON.stringify({ next_steps: { tool: [{ tool: "tool", reason: "Next" }] } }));
  const options = { input: lines.map((line) => `${JSON.stringify(line)}\n`).join(""), maxBuffer: 1 << 30 };
  const { stdout } = spawnSync(program, ["proxy", "--catalogue", catalogue, "--serves", "tool", "--", "cat"], options);
  const results = stdout.toString().trim().split("\n").map(JSON.parse).filter(({ result }) => result);
  for (const [i, { whole, answer }] of cases.entries()) {
    const widened = results[2 * i].result.tools[0].outputSchema;
    const finished = results[2 * i + 1].result.structuredContent;
    assert.equal(finished.next_steps?.length, 1);
    const check = ajv.compile(widened);
    assert(check(finished), JSON.stringify({ whole, widened, answer, finished, errors: check.errors }));
  }
  console.log("finished answers that fit a widened schema:", cases.length);
}

checkWidening();
await checkMemory();
await checkEverything();
