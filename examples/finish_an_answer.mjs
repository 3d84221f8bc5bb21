import { finishText } from "next-steps";

console.log(await finishText({ results: [{ fqn: "pkg.mod.parse" }] }, "search"));
