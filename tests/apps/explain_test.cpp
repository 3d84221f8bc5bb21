#include <string>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"

namespace vantrex::tests {
namespace {

TEST(Explain, TellsAPerson) {
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
room   320 bytes for hints and steps, which is the floor: 0.15 of 409 bytes are no more
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
  const Ran ran = run("next-steps explain --tool x | tail -6",
                      R"({"a\u009b\u001b[1m": {"note": 1}, "next_steps": [
    {"tool": "t\u001b", "args": {"\u007f": "\u0085"}, "reason": "\n\u009b2J"}, "\u009b", {"tool": 7}]})");
  EXPECT_EQ(ran.out, R"(           \n\u009b2J
           own, 54 bytes: fits the room
2 kept     "\u009b"
           own, 4 bytes: fits the room
3 kept     {"tool":7}
           own, 10 bytes: fits the room
)");
}

TEST(Explain, GivesTheSameAsData) {
  const std::string long_fields = R"({"fqn": "f", "total": 9, "note": ")" + std::string(300, 'n') +
                                  R"(", "text": ")" + std::string(2329, 't') + "\"}";
  for (const auto& row : table(R"(
# arguments | explanation
symbol --action callers | {"answer":{"bytes":2670,"hint_bytes":302,"hint_fields":[{"path":"note","bytes":302}],"step_bytes":116,"room":417.9,"room_from":"share"},"candidates":[{"step":{"tool":"quality","args":{"action":"impact","fqn":"f"},"reason":"9 callers: check the blast radius"},"from":"signal symbol:callers","bytes":100,"kept":true,"why":"over the room by 1 byte, but a signal always stays"},{"step":{"tool":"symbol","args":{"action":"references","fqn":"f"},"reason":"Every use of it"},"from":"usual symbol:callers","bytes":85,"kept":false,"why":"over the room by 74 bytes"}],"absent":[]}
git|grep -o '.absent.*' | "absent":[{"hint":{"tool":"tests","reason":"Tests to run for these files","action":"recommended","takes":"changed_files"},"why":"no files and no base branch"}]}
)"))
    EXPECT_EQ(run("next-steps explain --json --tool " + row.at(0), long_fields).out, row.at(1) + "\n");
}

TEST(Explain, IsColouredOnATerminalOnly) {
  if (!has_terminal()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  const std::string command = "next-steps explain --tool status examples/answers/detail.json";
  const std::string on_terminal = "script -qec '" + command + "' /dev/null";
  const std::string plain = run(command).out;
  EXPECT_EQ(plain.find('\x1b'), std::string::npos);
  EXPECT_EQ(run("NO_COLOR=1 " + on_terminal + " | tr -d '\\r'").out, plain);
  EXPECT_NE(run("NO_COLOR= " + on_terminal).out.find("1 \x1b[32mkept\x1b[0m     arch"), std::string::npos);
}

TEST(Catalogue, IsWhatTheDocumentShows) {
  const Ran ran = run("next-steps catalogue");
  EXPECT_EQ(ran.out, read_file(NEXT_STEPS_ROOT "/docs/catalogue.md"))
      << "the tables have changed: next-steps catalogue > docs/catalogue.md";
  EXPECT_EQ(ran.err + std::to_string(ran.status), "0");
}

}  // namespace
}  // namespace vantrex::tests
