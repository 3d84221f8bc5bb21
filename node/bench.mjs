// Measures a call of finishText beside its parts, for answers of 1 KB and 33 KB: bench.mjs PROGRAM
//
// The limit is the time of JSON.stringify for the same answer, that of a request in a long run of `next-steps batch`,
// and 20 us. A call is awaited alone, or 50 at once. The last column is the same call through the pipe of
// `next-steps batch`, awaited alone. Each time is the best mean of rounds.
import { spawn, execFileSync } from "node:child_process";
import { closeSync, mkdtempSync, openSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";

import { finishText } from "next-steps";

const [program] = process.argv.slice(2);
const words = "parse index symbol file reader writer token stream buffer cache node tree value list".split(" ");

function answerOf(hits, codeWords) {
  let seed = 1;
  const word = () => words[(seed = (seed * 48271) % 2147483647) % words.length];
  const name = () => `${word()}_${word()}_${word()}`;
  return { query: "parse", results: Array.from({ length: hits }, (_, line) => ({
    fqn: `pkg.${name()}.${name()}`, kind: "function", file: `src/${name()}.py`, line: 37 * line, score: (line + 1) / 128,
    doc: null, code: Array.from({ length: codeWords }, word).join(" ") })) };
}

async function bestMicroseconds(count, run, rounds = 15) {
  let best = Infinity;
  for (let round = 0; round < rounds; ++round) {
    const start = performance.now();
    await run(count);
    best = Math.min(best, (performance.now() - start) * 1e3 / count);
  }
  return best;
}

const inTurn = (call) => async (count) => { for (let done = 0; done < count; ++done) await call(); };
const atOnce = (call) => async (count) => {
  for (let done = 0; done < count; done += 50) await Promise.all(Array.from({ length: 50 }, call));
};

async function byThroughput(line, count) {
  const folder = mkdtempSync(join(tmpdir(), "next_steps."));
  const run = (lines) => {
    writeFileSync(join(folder, "requests"), line.repeat(lines));
    return bestMicroseconds(1, () => {
      const input = openSync(join(folder, "requests"));
      execFileSync(program, ["batch"], { stdio: [input, "ignore", "inherit"] });
      closeSync(input);
    }, 5);
  };
  const time = (await run(count + 1) - await run(1)) / count; // without the start and the end of the process
  rmSync(folder, { recursive: true });
  return time;
}

console.log("   bytes   stringify       batch       limit  finishText     at once        pipe  in us");
for (const [hits, codeWords, count] of [[6, 0, 3000], [60, 65, 500]]) {
  const answer = answerOf(hits, codeWords);
  const line = JSON.stringify({ tool: "search", response: answer }) + "\n";
  const child = spawn(program, ["batch"], { stdio: ["pipe", "pipe", "inherit"] });
  const replies = createInterface({ input: child.stdout })[Symbol.asyncIterator]();
  const stringify = await bestMicroseconds(count, inTurn(() => JSON.stringify(answer)));
  const finish = await bestMicroseconds(count, inTurn(() => finishText(answer, "search")));
  const together = await bestMicroseconds(count, atOnce(() => finishText(answer, "search")));
  const pipe = await bestMicroseconds(count, inTurn(() => {
    child.stdin.write(JSON.stringify({ id: 0, tool: "search", response: answer }) + "\n");
    return replies.next();
  }));
  child.stdin.end();
  const batch = await byThroughput(line, 10 * count);
  console.log([line.length, ...[stringify, batch, stringify + batch + 20, finish, together, pipe].map((time) => time.toFixed(1))]
    .map((cell, place) => String(cell).padStart(place === 0 ? 8 : 12)).join(""));
}
