// Requests to the library, and the answers in its replies. index.d.ts describes what is exported.
import { randomUUID } from "node:crypto";

import { NextStepsError, openSession, replyTo } from "./library.js";

export { NextStepsError };

const ANSWER = '{"id":0,"answer":';

// Returns the JSON text of a value. stringify() refuses a BigInt; it is then written as a marked text first.
function encoded(value) {
  try {
    return JSON.stringify(value);
  } catch {
    const mark = randomUUID();
    const text = JSON.stringify(value, (key, each) => (typeof each === "bigint" ? mark + each : each));
    return text.replace(new RegExp(`"${mark}(-?\\d+)"`, "g"), "$1");
  }
}

function errorOf(reply, request) {
  const { column, message } = JSON.parse(reply).error;
  const near = Buffer.from(request).subarray(Math.max(0, column - 31), column + 19).toString();
  return new NextStepsError(`${message} (byte ${column} of the request, near ${JSON.stringify(near)})`);
}

export class Session {
  #session;

  static async open(options = {}) {
    const made = new Session();
    made.#session = await openSession(encoded(options));
    return made;
  }

  async finish(answer, tool, options) {
    return JSON.parse(await this.finishText(answer, tool, options));
  }

  async finishText(answer, tool, options) {
    return this.#ask({ ...options, tool, response: answer });
  }

  async explain(answer, tool, options) {
    return JSON.parse(await this.#ask({ ...options, tool, explain: true, response: answer }));
  }

  async suggestSymbols(wanted, options) {
    return this.#suggest("symbol", wanted, options);
  }

  async suggestPaths(wanted, options) {
    return this.#suggest("path", wanted, options);
  }

  async #suggest(suggest, wanted, { answer, ...options } = {}) {
    return JSON.parse(await this.#ask({ ...options, suggest, wanted, response: answer }));
  }

  async #ask(members) {
    const request = encoded({ id: 0, ...members, id: 0 });
    const reply = await replyTo(this.#session, request, "suggest" in members);
    if (!reply.startsWith(ANSWER)) throw errorOf(reply, request);
    return reply.slice(ANSWER.length, -1);
  }
}

let shared;
const ofShared = (name) => async (...args) => (await (shared ??= Session.open()))[name](...args);
export const finish = ofShared("finish");
export const finishText = ofShared("finishText");
export const explain = ofShared("explain");
