// Checks schemas/catalogue.schema.json for scripts/client: node catalogue_schema.mjs
//
// The schema allows the catalogues of the examples and of the tests, and refuses the wrong ones of
// tests/tool_handlers/catalogue_test.cpp, except where it would have to compare names.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { Ajv2020 } from "ajv/dist/2020.js";

const read = (path) => readFileSync(path, "utf8");
const ajv = new Ajv2020({ strict: true, strictRequired: false });
const fits = ajv.compile(JSON.parse(read("schemas/catalogue.schema.json")));
const tests = read("tests/tool_handlers/catalogue_test.cpp");

for (const right of [read("examples/catalogues/issues.json"), tests.match(/kIssues = R"\((.*?)\)";/s)[1]]) {
  assert(fits(JSON.parse(right)), ajv.errorsText(fits.errors));
}
const wrong = [...tests.matchAll(/^(\{.*\}) \| (.*)$/gm)];
assert(wrong.length > 30);
for (const [, catalogue, error] of wrong) {
  const comparesNames = /unknown kind .* did you mean|the argument "x"/.test(error);
  assert.equal(fits(JSON.parse(catalogue)), comparesNames, catalogue);
}
