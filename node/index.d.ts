/** A wrong request or wrong options. The message is the library's, and says where the error is. */
export class NextStepsError extends Error {}

/** A JSON object. A BigInt is an integer, toJSON() is honoured, and NaN is null, as JSON.stringify writes it. */
export type JsonObject = Record<string, unknown>;

/** What a server has. */
export interface SessionOptions {
  /** The file of an index of Universal Ctags, for misses. It is read again when the file is replaced. */
  index?: string | null;
  /** The file of the server's own catalogue. */
  catalogue?: string | null;
  /** The tools and actions that the server has: ["search", "symbol:detail"]. Absent for all. */
  serves?: readonly string[] | null;
}

export interface AnswerOptions {
  /** The action of the call. */
  action?: string | null;
  /** The arguments of the call. */
  arguments?: JsonObject | null;
  /** The freshness block. */
  freshness?: JsonObject | null;
  /** Replaces that of the session. */
  serves?: readonly string[] | null;
  /** Replaces lone surrogates by U+FFFD; otherwise they are errors. */
  lossy?: boolean | null;
}

export interface MissOptions extends AnswerOptions {
  /** The answer so far. */
  answer?: JsonObject | null;
}

/** Answers requests, any number at once. The work is done on other threads, except that of answers of up to 2 KB, which
 *  takes less time than to hand them over. Rejects with NextStepsError for a wrong request. */
export class Session {
  private constructor();

  /** Rejects with NextStepsError for a wrong file or list. */
  static open(options?: SessionOptions): Promise<Session>;

  /** Returns the finished answer of `tool` as a new object. Integers beyond 2^53 lose digits there. */
  finish(answer: object, tool: string, options?: AnswerOptions): Promise<JsonObject>;
  /** Returns the finished answer as the compact JSON text that is sent. Faster than finish(). */
  finishText(answer: object, tool: string, options?: AnswerOptions): Promise<string>;
  /** Returns why the answer gets its steps, as `next-steps explain --json` prints it. */
  explain(answer: object, tool: string, options?: AnswerOptions): Promise<JsonObject>;
  /** Returns the answer to a call for the symbol `wanted`, which the index does not hold: with the nearest ones. */
  suggestSymbols(wanted: string, options?: MissOptions): Promise<JsonObject>;
  /** The same for the path of a file. */
  suggestPaths(wanted: string, options?: MissOptions): Promise<JsonObject>;
}

/** The calls of a session without options. */
export const finish: Session["finish"];
export const finishText: Session["finishText"];
export const explain: Session["explain"];
