// The shared library libnext_steps_c: where it is, and calls of its functions on other threads.
import { existsSync, readdirSync, realpathSync } from "node:fs";
import { delimiter, dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

import koffi from "koffi";

const NAME = "libnext_steps_c.so.1";

// Yields the library's files below a prefix, in lib, lib64 and lib/x86_64-linux-gnu.
function* under(prefix) {
  for (const lib of ["lib", "lib64"].map((folder) => join(prefix, folder)).filter(existsSync)) {
    yield* [lib, ...readdirSync(lib).map((folder) => join(lib, folder))].map((folder) => join(folder, NAME)).filter(existsSync);
  }
}

// Yields where the library may be; a name without a folder is for the system's loader.
function* places() {
  if (process.env.NEXT_STEPS_LIBRARY) return yield process.env.NEXT_STEPS_LIBRARY;
  const beside = fileURLToPath(new URL(NAME, import.meta.url));
  if (existsSync(beside)) yield beside;
  yield NAME;
  const programs = (process.env.PATH ?? "").split(delimiter).map((folder) => join(folder, "next-steps"));
  for (const program of programs.filter(existsSync)) yield* under(dirname(dirname(realpathSync(program))));
  yield* under("/usr/local");
}

function loaded() {
  const errors = [];
  for (const place of places()) {
    try {
      return koffi.load(place);
    } catch (error) {
      errors.push(`${place}: ${error.message}`);
    }
  }
  throw new Error(`libnext_steps_c cannot be loaded; NEXT_STEPS_LIBRARY may name its file: ${errors.join("; ")}`);
}

const library = loaded();
const open = library.func("void *next_steps_open(const uint8_t *options, size_t size)");
const close = library.func("void next_steps_close(void *session)");
// A reply ends with a null byte. It becomes a string and is freed.
koffi.disposable("next_steps_text", "str", library.func("void next_steps_free(void *reply)"));
const reply = library.func(
  "next_steps_text next_steps_reply(void *session, const uint8_t *request, size_t size, void *reply_size)");
const lastError = library.func("const char *next_steps_last_error()");

/** A wrong request or wrong options. The message is the library's, and says where the error is. */
export class NextStepsError extends Error {
  name = "NextStepsError";
}

// koffi refuses more calls at once than some hundreds, so others wait here.
const MAX_RUNNING = 64;
const waiting = new Set();
let running = 0;

function start() {
  for (const call of waiting) {
    if (running >= MAX_RUNNING) return;
    waiting.delete(call);
    ++running;
    call();
  }
}

// Calls a function on another thread. What `kept` refers to is kept until then.
function called(kept, func, ...args) {
  return new Promise((resolve, reject) => {
    const end = (error, result) => {
      --running;
      start();
      return error ? reject(error) : resolve(result, kept);
    };
    waiting.add(() => {
      try {
        func.async(...args, end);
      } catch (error) {
        end(error);
      }
    });
    start();
  });
}

// Throws the reason of a null pointer, which only the thread of its call knows. So a call that failed on another
// thread is repeated on this one: it fails for the same reason.
function checked(result) {
  if (result === null) throw new NextStepsError(lastError());
  return result;
}

const sessions = new FinalizationRegistry(close);

/** Returns a session, which is closed when nothing refers to it. */
export async function openSession(options) {
  const bytes = Buffer.from(options);
  const session = { pointer: checked((await called(null, open, bytes, bytes.length)) ?? open(bytes, bytes.length)) };
  sessions.register(session, session.pointer);
  return session;
}

// To hand over a request takes the event loop longer than to answer one that has no more bytes.
const MAX_SMALL = 2048;

/** Returns the reply to a request, both as text. One that may wait for a file is always handed over. */
export async function replyTo(session, request, mayWait) {
  const bytes = Buffer.from(request);
  const args = [session.pointer, bytes, bytes.length, null];
  const isSmall = bytes.length <= MAX_SMALL && !mayWait;
  return checked((isSmall ? null : await called(session, reply, ...args)) ?? reply(...args));
}
