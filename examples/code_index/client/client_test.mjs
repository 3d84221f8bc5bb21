// Drives a server as an agent's client does: node client_test.mjs SERVER INDEX
//
// The client checks each answer against its tool's output schema. Every step that an
// answer offers is called in turn, to a depth of three.
import assert from "node:assert/strict";
import { Client as StatelessClient } from "@modelcontextprotocol/client";
import { StdioClientTransport as StatelessTransport } from "@modelcontextprotocol/client/stdio";
import { Client } from "@modelcontextprotocol/sdk/client/index.js";
import { StdioClientTransport } from "@modelcontextprotocol/sdk/client/stdio.js";
import { AjvJsonSchemaValidator } from "@modelcontextprotocol/sdk/validation/ajv";
import { Ajv2020 } from "ajv/dist/2020.js";

const [command, index] = process.argv.slice(2);
const maxDepth = 3;

const validators = new AjvJsonSchemaValidator(new Ajv2020({ strict: true, allErrors: true }));
const client = new Client({ name: "client_test", version: "1.0.0" }, { jsonSchemaValidator: validators });
const transport = new StdioClientTransport({ command, args: [index], stderr: "pipe" });
let complaints = "";
transport.stderr.on("data", (text) => (complaints += text));
await client.connect(transport);
client.onerror = (error) => assert.fail(error);

const { tools } = await client.listTools();
assert.deepEqual(tools.map((tool) => tool.name), ["search", "symbol", "file", "files", "status"]);
const fits = new Map(tools.map((tool) => [tool.name, validators.getValidator(tool.outputSchema)]));

// Checks that the schema rejects faulty answers; otherwise the client's own checks prove nothing.
function checkThatFaultsAreNoticed(tool, answer) {
  const faulty = [{ ...answer, unexpected: 1 }, { ...answer, next_steps: [] }, { ...answer, freshness: {} }];
  const own = Object.keys(answer).filter((key) => key !== "next_steps");
  for (const key of own) faulty.push({ ...answer, [key]: { unexpected: 1 } });
  for (const each of faulty) assert(!fits.get(tool)(each).valid, `${tool} allows ${JSON.stringify(each)}`);
}

async function call(tool, args) {
  const result = await client.callTool({ name: tool, arguments: args });
  assert(!result.isError, `${tool} ${JSON.stringify(args)}: ${result.content[0].text}`);
  assert.deepEqual(JSON.parse(result.content[0].text), result.structuredContent);
  return result.structuredContent;
}

const followed = new Map();

async function explore(tool, args, depth = 0) {
  const answer = await call(tool, args);
  checkThatFaultsAreNoticed(tool, answer);
  if (depth === maxDepth) return answer;
  const source = answer.found === false ? `${tool}, miss` : tool;
  for (const step of answer.next_steps ?? []) {
    await explore(step.tool, step.args, depth + 1);
    followed.set(source, (followed.get(source) ?? 0) + 1);
  }
  return answer;
}

await explore("status", {});
for (const path of (await explore("files", {})).files) {
  await explore("file", { action: "symbols", path: `x${path}` });
  const { symbols } = await explore("file", { action: "symbols", path });
  for (const { name } of symbols) {
    await explore("search", { action: "symbols", query: name });
    await explore("symbol", { action: "detail", fqn: `vantrex.${name}s` });
  }
}
await explore("file", { action: "symbols", path: "no/such.thing" });
await explore("symbol", { action: "detail", fqn: "zz.Js" });

for (const args of [undefined, {}, { action: "symbols" }, { action: "symbols", query: 1 }]) {
  const result = await client.callTool({ name: "search", arguments: args });
  assert(result.isError && result.content[0].text.includes("must fit"), JSON.stringify(args));
}
await assert.rejects(client.callTool({ name: "tests" }), { code: -32602 });
await assert.rejects(client.request({ method: "resources/list" }, { parse: (any) => any }), { code: -32601 });
await client.ping();

// Without a handshake, the next generation of the client gets the same.
const stateless = new StatelessClient(
  { name: "client_test", version: "1.0.0" },
  { versionNegotiation: { mode: { pin: "2026-07-28" } } },
);
await stateless.connect(new StatelessTransport({ command, args: [index] }));
assert.deepEqual((await stateless.listTools()).tools, tools);
const files = await stateless.callTool({ name: "files", arguments: {} });
assert.deepEqual(files.structuredContent, await call("files", {}));
await stateless.close();
await client.close();

assert.equal(complaints, "", "the server wrote to standard error");
assert.deepEqual([...followed.keys()].sort(), ["file", "file, miss", "files", "search", "symbol, miss"]);
console.log("steps followed:", Object.fromEntries(followed));
