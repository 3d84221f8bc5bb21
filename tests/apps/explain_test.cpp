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
- absent   tests {"action":"for_file"} takes "path"
           Its file's tests
           no path in any hit
)");
  EXPECT_EQ(ran.err + std::to_string(ran.status), "0");
}

TEST(Explain, PrintsNoControlCharacters) {
  const Ran ran =
      run("next-steps explain --tool x | tee /dev/stderr | "
          "LC_ALL=C grep -aP '[\\x01-\\x09\\x0b-\\x1f\\x7f]|\\xc2[\\x80-\\x9f]'",
          R"({"a\u009b\u001b[1m": {"note": 1}, "next_steps": [
    {"tool": "t\u001b", "args": {"\u007f": "\u0085"}, "reason": "\n\u009b2J"}, "\u009b", {"tool": 7}]})");
  EXPECT_EQ(ran.out, "");
  for (const std::string escaped :
       {R"(["a\u009b\u001b[1m"].note)", R"(t\x1b {"\x7f":"\u0085"})", R"( \n\u009b2J)"})
    EXPECT_NE(ran.err.find(escaped), std::string::npos) << ran.err;
}

TEST(Explain, PrintsJson) {
  const std::string long_fields = R"({"fqn": "f", "total": 9, "note": ")" + std::string(300, 'n') +
                                  R"(", "text": ")" + std::string(2329, 't') + "\"}";
  for (const auto& row : table(R"x(
# arguments | explanation
symbol --action callers | {"answer":{"bytes":2670,"hint_bytes":302,"hint_fields":[{"path":"note","bytes":302}],"more_hint_fields":0,"step_bytes":116,"room":417.9,"room_from":"share","room_text":"417 bytes (15 % of 2786)"},"rows":{"usual":"symbol:callers","usual_of_tool":false,"signal":"symbol:callers"},"candidates":[{"step":{"tool":"quality","args":{"action":"impact","fqn":"f"},"reason":"9 callers: check the blast radius"},"from":"signal symbol:callers","bytes":100,"kept":true,"why":"over the room by 1 byte, but a signal always stays"},{"step":{"tool":"symbol","args":{"action":"references","fqn":"f"},"reason":"Every use of it"},"from":"usual symbol:callers","bytes":85,"kept":false,"why":"over the room by 74 bytes"}],"absent":[],"silent":[],"remarks":[]}
git|grep -o '.absent.*' | "absent":[{"hint":{"tool":"tests","args":{"action":"recommended"},"takes":"changed_files","reason":"Tests to run for these files"},"why":"no files and no base branch"}],"silent":[],"remarks":[]}
saerch --action code --serves symbol|grep -o '.rows.*' | "rows":{"usual":null,"usual_of_tool":false,"signal":null},"candidates":[],"absent":[],"silent":[],"remarks":["unknown tool \"saerch\"; did you mean \"search\"?"]}
tests --action for_file|grep -o '.silent.*.remarks' | "silent":[{"signal":"tests:for_file","why":"9 hits, not 0, no path"}],"remarks
)x"))
    EXPECT_EQ(run("next-steps explain --json --tool " + row.at(0), long_fields).out, row.at(1) + "\n");
  EXPECT_EQ(run("next-steps batch", R"({"explain":true,"response":{"note":1},"tool":"files"})").out,
            run("next-steps explain --json --tool files", R"({"note":1})").out);
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
  const std::string command = "(next-steps catalogue --graph; echo; next-steps catalogue)";
  const Ran ran = run(command);
  EXPECT_EQ(ran.out, read_file(NEXT_STEPS_ROOT "/docs/catalogue.md"))
      << "the tables have changed: " << command << " >docs/catalogue.md";
  EXPECT_EQ(ran.err + std::to_string(ran.status), "0");
}

TEST(Catalogue, HasAPictureWithAnyNames) {
  const Ran ran = run("next-steps catalogue --graph --catalogue - | grep '\\[' | cut -d: -f1",
                      R"({"next_steps":{"é_1.a-b":[{"tool":"end","reason":"r"},{"tool":"]\"\n","reason":"r"}],
                          "style:x#y":[{"tool":"`<b>`;","reason":"r"}]}})");
  EXPECT_EQ(ran.out, R"(  a0["é_1.a-b"] --> c1["end"]
  a0 --> c2["#93;#34;#92;n"]
  a3["style#58;x#35;y"] --> c4["#96;#60;b#62;#96;#59;"]
)");
}

TEST(Catalogue, IsThatOfTheServer) {
  const Ran ran =
      run("next-steps catalogue --serves search,symbol:detail,file:symbols,mine,mine:x,mine"
          " | grep '^[|-] `[^A-Z]'");
  EXPECT_EQ(ran.out, R"(| `search` | `symbol` `detail` | `fqn` | Details of the best hit |
| `search:code` | `file` `symbols` | `path` | Symbols of the first file |
| `symbol:detail` | none |  |  |
| `file` | `symbol` `detail` | `fqn` | Details of the best hit |
| `search:symbols` | 0 hits | `search` `semantic` | `query` from `asked_query` | No hits: search by meaning |
| `search:code` | 0 hits | `search` `semantic` | `query` from `asked_query` | No hits: search by meaning |
| `search:definition` | 0 hits | `search` `semantic` | `query` from `asked_query` | No hits: search by meaning |
- `mine`
- `mine` `x`
- `symbol` `detail`
)");
}

}  // namespace
}  // namespace vantrex::tests
