#include <string>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"

namespace vantrex::tests {
namespace {

TEST(Explain, PrintsText) {
  const Ran ran = run("next-steps explain --tool symbol --action detail", R"({
    "fqn": "f", "kind": null, "tip": ")" + std::string(60, 't') + R"(",
    "results": [{"note": "\u009b1m"}, [{"notes": 1}]], "a": [{"tip": 2}, {"tip": 3}, {"tip": 4}, {"tip": 5},
    {"tip": 6}, {"tip": 7}, {"tip": 8}, {"tip": 9}, {"tip": 0}]})");
  EXPECT_EQ(ran.out, R"(answer 218 bytes, of which 78 are hints
        62  tip
         6  results[0].note
         1  results[1][0].notes
         1  a[0].tip
         1  a[1].tip
         1  a[2].tip
         1  a[3].tip
         1  a[4].tip
         1  a[5].tip
         1  a[6].tip
         2  in 2 more
steps  191 bytes
room   320 bytes (the floor; 15 % of 409 is 61) for hints and steps
rows   usual symbol:detail
1 kept     symbol {"action":"callers","fqn":"f"}
           Who calls the best hit
           usual symbol:detail, 89 bytes: fits the room
2 kept     symbol {"action":"references","fqn":"f"}
           Every use of it
           usual symbol:detail, 85 bytes: fits the room
- absent   tests for_file with path
           Its file's tests
           no path in any hit
)");
  EXPECT_EQ(ran.err + std::to_string(ran.status), "0");
}

TEST(Explain, PrintsNoControlCharacters) {
  const Ran ran = run("next-steps explain --tool x",
                      R"({"a\u009b\u001b[1m": {"note": 1}, "next_steps": [
    {"tool": "t\u001b", "args": {"\u007f": "\u0085"}, "reason": "\n\u009b2J"}, "\u009b", {"tool": 7}]})");
  EXPECT_EQ(ran.out, R"(answer 27 bytes, of which 1 are hints
         1  ["a\u009b\u001b[1m"].note
steps  86 bytes
room   320 bytes (the floor; 15 % of 113 is 16) for hints and steps
rows   none
1 kept     t\x1b {"\x7f":"\u0085"}
           \n\u009b2J
           own, 54 bytes: fits the room
2 kept     "\u009b"
           own, 4 bytes: fits the room
3 kept     {"tool":7}
           own, 10 bytes: fits the room
! remark   next_steps[1] is sent as it is, but is no step: it is no object
! remark   next_steps[2] is sent as it is, but is no step: it has no "tool" that is a string
)");
}

TEST(Explain, TellsANewcomerOfMistakes) {
  const std::string lists =
      "symbols, results, matches, definitions, callers, references, dead_symbols, files, tests, components";
  for (const auto& row : table(R"(
# arguments | answer | the lines "rows", "- absent", "- silent" and "! remark", joined by commas
serach | {} | none, unknown tool "serach"; did you mean "search"?
xyz | {} | none, unknown tool "xyz"; known are architecture, context, explore, file, files, git, quality, search, status, symbol, tests
explore | {} | none
xyz --serves xyz:a | {} | none
search --action symbols | {"symbols":[{"fqn":"f"}],"total":12,"query":"q"} | usual search (the row of the tool; the action has no row), signal search:symbols, signal search:symbols: 12 hits, not 0
search --action semantic | {"results":[]} | usual search (the row of the tool; the action has no row), signal search:semantic, symbol detail with fqn, symbol callers with fqn, signal search:semantic: no query
symbol --action callers --arguments '{"fqn":"f"}' | {"total":7} | usual symbol:callers, signal symbol:callers, signal symbol:callers: 7 callers, 8 are needed
symbol --action references | {"total":true,"fqn":"f"} | usual symbol:references, signal symbol:references, signal symbol:references: 1 reference, 8 are needed
symbol --action callers | {"fqn":"f","total":0} | usual symbol:callers, signal symbol:callers, symbol references with fqn, signal symbol:callers: 0 callers, 8 are needed
symbol --action callers | {"fqn":"f"} | usual symbol:callers, signal symbol:callers, signal symbol:callers: no count of hits
file | {"hits":[{"fqn":"f"}]} | usual file, symbol detail with fqn, file imports with path, no hits: the answer has no list with one of the names LISTS
file --serves search | {"hits":[{"fqn":"f"}]} | usual file
git | {"total":0} | usual git, tests recommended with changed_files
files | {"next_steps":{"tool":"x"},"files":["a"]} | usual files, "next_steps" is ignored: it is no list
x | {"next_steps":[{"tool":"x","args":[]},{"tool":"x","args":{}},{"tool":"x","args":{},"reason":"r"}]} | none, next_steps[0] is sent as it is, but is no step: it has no "args" that is an object, next_steps[1] is sent as it is, but is no step: it has no "reason" that is a string
)")) {
    const Ran ran = run("next-steps explain --tool " + row.at(0) +
                            " | sed -nE 's/^(rows  |- absent|- silent|! remark) +//p' | paste -sd, | sed "
                            "'s/,/, /g; s/,  /, /g'",
                        row.at(1));
    std::string expected = row.at(2);
    if (const std::size_t at = expected.find("LISTS"); at != std::string::npos)
      expected.replace(at, 5, lists);
    EXPECT_EQ(ran.out, expected + "\n") << row.at(0);
  }
}

TEST(Explain, PrintsJson) {
  const std::string long_fields = R"({"fqn": "f", "total": 9, "note": ")" + std::string(300, 'n') +
                                  R"(", "text": ")" + std::string(2329, 't') + "\"}";
  for (const auto& row : table(R"x(
# arguments | explanation
symbol --action callers | {"answer":{"bytes":2670,"hint_bytes":302,"hint_fields":[{"path":"note","bytes":302}],"more_hint_fields":0,"step_bytes":116,"room":417.9,"room_from":"share","room_text":"417 bytes (15 % of 2786)"},"rows":{"usual":"symbol:callers","usual_of_tool":false,"signal":"symbol:callers"},"candidates":[{"step":{"tool":"quality","args":{"action":"impact","fqn":"f"},"reason":"9 callers: check the blast radius"},"from":"signal symbol:callers","bytes":100,"kept":true,"why":"over the room by 1 byte, but a signal always stays"},{"step":{"tool":"symbol","args":{"action":"references","fqn":"f"},"reason":"Every use of it"},"from":"usual symbol:callers","bytes":85,"kept":false,"why":"over the room by 74 bytes"}],"absent":[],"silent":[],"remarks":[]}
git|grep -o '.absent.*' | "absent":[{"hint":{"tool":"tests","reason":"Tests to run for these files","action":"recommended","takes":"changed_files"},"why":"no files and no base branch"}],"silent":[],"remarks":[]}
saerch --action code --serves symbol|grep -o '.rows.*' | "rows":{"usual":null,"usual_of_tool":false,"signal":null},"candidates":[],"absent":[],"silent":[],"remarks":["unknown tool \"saerch\"; did you mean \"search\"?"]}
tests --action for_file|grep -o '.silent.*' | "silent":[{"signal":"tests:for_file","why":"9 hits, not 0, no path"}],"remarks":["no hits: the answer has no list with one of the names symbols, results, matches, definitions, callers, references, dead_symbols, files, tests, components"]}
)x"))
    EXPECT_EQ(run("next-steps explain --json --tool " + row.at(0), long_fields).out, row.at(1) + "\n");
}

TEST(Explain, IsColouredOnATerminalOnly) {
  if (!has_terminal()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  const std::string command = "next-steps explain --tool status examples/answers/detail.json";
  const std::string on_terminal = "script -qec '" + command + "' /dev/null";
  const std::string plain = run(command).out;
  EXPECT_EQ(plain.find('\x1b'), std::string::npos);
  for (const char* setting : {"NO_COLOR=1 ", "TERM=dumb "}) {
    EXPECT_EQ(run(setting + on_terminal + " | tr -d '\\r'").out, plain);
  }
  EXPECT_NE(run("NO_COLOR= TERM=xterm " + on_terminal).out.find("1 \x1b[32mkept\x1b[0m     arch"),
            std::string::npos);
}

TEST(Catalogue, IsWhatTheDocumentsShow) {
  const Ran ran = run("next-steps catalogue");
  EXPECT_EQ(ran.out, read_file(NEXT_STEPS_ROOT "/docs/catalogue.md"))
      << "the tables have changed: next-steps catalogue > docs/catalogue.md";
  EXPECT_EQ(run("next-steps catalogue --graph").out, read_file(NEXT_STEPS_ROOT "/docs/catalogue.svg"))
      << "the tables have changed: next-steps catalogue --graph > docs/catalogue.svg";
  EXPECT_EQ(ran.err + std::to_string(ran.status), "0");
}

TEST(Catalogue, IsThatOfTheServer) {
  const Ran ran =
      run("next-steps catalogue --serves search,symbol:detail,file:symbols,mine,quality:circular_deps"
          " | grep '^[|-] `[^A-Z]'");
  EXPECT_EQ(ran.out, R"(| `search` | `symbol` `detail` | `fqn` | Details of the best hit |
| `search:code` | `file` `symbols` | `path` | Symbols of the first file |
| `symbol:detail` | none |  |  |
| `file` | `symbol` `detail` | `fqn` | Details of the best hit |
| `quality:circular_deps` | none |  |  |
| `search:symbols` | 0 hits and `query` | `search` | `{"action":"semantic","query":"QUERY"}` | No hits: search by meaning |
| `search:code` | 0 hits and `query` | `search` | `{"action":"semantic","query":"QUERY"}` | No hits: search by meaning |
| `search:definition` | 0 hits and `query` | `search` | `{"action":"semantic","query":"QUERY"}` | No hits: search by meaning |
- `symbol` `detail`
- `mine`
- `quality` `circular_deps`
)");
}

}  // namespace
}  // namespace vantrex::tests
