// Compares the finished answers of requests with the lines that `next-steps batch` writes:
// compare.mjs PROGRAM REQUESTS, where each line of the file is a request.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";

import { finishText } from "next-steps";

const [program, file] = process.argv.slice(2);
const requests = readFileSync(file, "utf8").trimEnd().split("\n").map((line) => JSON.parse(line));
// A number in JavaScript is an integer when it has no fraction, so the program gets what JavaScript writes.
const input = requests.map((request) => JSON.stringify(request)).join("\n");
const expected = execFileSync(program, ["batch"], { input, encoding: "utf8", maxBuffer: 2 ** 30 }).trimEnd().split("\n");
const answers = await Promise.all(
  requests.map(({ response, tool, ...options }) => finishText(response, tool, options)));
answers.forEach((answer, line) => assert.equal(answer, expected[line], `line ${line + 1}`));
assert.equal(answers.length, expected.length);
console.log(`${answers.length} answers are equal`);
