import { Session } from "next-steps";

const session = await Session.open({ index: "examples/index/models.json", serves: ["search", "symbol:detail"] });
console.log(await session.finishText({ results: [] }, "search", { action: "symbols", arguments: { query: "parse" } }));
const missed = await session.suggestSymbols("Repositry.indexedRevision", { action: "detail" });
console.log(missed.did_you_mean[0].fqn);

const tracker = await Session.open({ catalogue: "examples/catalogues/issues.json" });
console.log(await tracker.finishText({ issues: [{ number: 3 }] }, "issues"));
