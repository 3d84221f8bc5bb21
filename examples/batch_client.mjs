// Uses `next-steps batch` as a co-process: node batch_client.mjs PROGRAM INDEX
import { spawn } from "node:child_process";

// A running `next-steps batch`. Requests may be made before earlier ones are answered.
class Batch {
  #waiting = []; // replies come in the order of the requests
  #unread = "";
  #requests = 0;

  constructor(program, ...args) {
    this.process = spawn(program, ["batch", ...args], { stdio: ["pipe", "pipe", "inherit"] });
    this.process.stdin.on("error", () => {}); // the replies are then missing, too
    this.process.stdout.setEncoding("utf8").on("data", (text) => this.#read(text));
    this.process.on("error", (error) => this.#end(error));
    this.process.on("close", (code, signal) => this.#end(new Error(`the program ended with ${signal ?? code}`)));
  }

  // Resolves to the answer; rejects for a wrong request, for one that is no JSON, and when the program ended.
  ask(request) {
    return new Promise((resolve, reject) => {
      if (this.ended) return reject(this.ended);
      const id = ++this.#requests; // first, so that the reply has it even if the line cannot be read
      this.process.stdin.write(`${JSON.stringify(Object.assign({ id }, request, { id }))}\n`);
      this.#waiting.push({ id, resolve, reject });
    });
  }

  #read(text) {
    const lines = (this.#unread + text).split("\n"); // readline would also split at U+2028
    this.#unread = lines.pop();
    for (const line of lines) {
      const { id, answer, error } = JSON.parse(line);
      const expected = this.#waiting[0]?.id;
      if (id !== expected) return this.#end(new Error(`a reply has the id ${id}, not ${expected}`));
      const { resolve, reject } = this.#waiting.shift();
      error ? reject(new Error(error.message)) : resolve(answer);
    }
  }

  #end(error) {
    this.ended ??= error;
    for (const { reject } of this.#waiting.splice(0)) reject(this.ended);
    this.process.kill();
  }
}

const [program, index] = process.argv.slice(2);
const batch = new Batch(program, "--index", index, "--serves", "search,symbol:detail");
const hit = { fqn: "pkg.mod.parse", kind: "function", doc: null };
const [, answer, cut, miss] = await Promise.allSettled([
  batch.ask({ tool: "search", response: { results: [1n] } }), // not sent: a BigInt is no JSON
  batch.ask({ tool: "search", response: { results: [hit] } }),
  batch.ask({ tool: "search", response: { results: ["\ud83d"] } }), // half an emoji
  batch.ask({ suggest: "symbol", wanted: "Repositry" }),
]);
console.log("answer:", JSON.stringify(answer.value));
console.log("error:", cut.reason.message);
console.log("miss:", JSON.stringify(miss.value.next_steps));
await batch.ask({ tool: "search", response: [hit] }).catch((error) => console.log("error:", error.message));
batch.process.kill();
await batch.ask({ tool: "search", response: {} }).catch((error) => console.log("end:", error.message));
