#include <algorithm>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"

namespace vantrex::tests {
namespace {

TEST(Report, TellsWhichStepsAClientFollows) {
  for (const char* const seed : {"1", "2", "3"}) {
    const Ran ran = run("python3 tests/apps/proxy_log.py \"$(command -v next-steps)\" " + std::string(seed));
    EXPECT_EQ(ran.status, 0) << ran.err;
  }
}

TEST(Report, NamesEachWrongLineAndReadsTheRest) {
  const std::string bytes =
      R"("bytes_before":1,"bytes_after":2,"null_bytes":3,"space_bytes":-4,"hint_bytes":5)";
  const std::string good = "{" + bytes + R"(,"steps":[]})";
  // A line between two good ones, and the message.
  for (const auto& row : table(R"(
{"half | 1:7: Missing a closing quotation mark in string.
{} | 1:1: "bytes_before" is missing
{@,"null_bytes":"3","steps":[]} | 1:82: "null_bytes" must be an integer, not a string
{@,"hint_bytes":-9999999999999,"steps":[]} | 1:82: "hint_bytes" is out of range
{"followed":{}} | 1:1: "after" is missing
)")) {
    const std::string line = replaced(row[0], "@", bytes);
    const Ran ran = run("next-steps report --json -", line + "\n" + good + "\n" + line);
    EXPECT_EQ(ran.err, "<stdin>:" + row[1] + "\n");
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.out, R"({"answers":1,"without_steps":1,)" + bytes + R"(,"rows":[]})" + "\n");
  }
  const Ran whole = run("next-steps report --json -", good);
  EXPECT_TRUE(whole.out.starts_with("{\"answers\":1,")) << whole.err;
}

TEST(ProxyLog, HoldsOnlyTheCallsThatAnAnswerOffers) {
  const std::string steps =
      R"([{"tool":"a","args":{"x":1},"reason":"r"},{"tool":{"secret":1},"args":"secret"},
      {"tool":"b","args":{"action":"secret"},"reason":")" +
      std::string(400, 'x') + R"("}])";
  const std::string lines =
      "{\"method\":\"tools/call\",\"params\":{\"name\":\"\xFF\"},\"id\":0}\n"  // is no tool's name
      "{\"result\":{\"structuredContent\":{}},\"id\":0}\n"
      R"({"method":"tools/call","params":{"name":"t"},"id":1})"
      "\n"
      R"({"result":{"structuredContent":{"secret":null,"next_steps":)" +
      std::regex_replace(steps, std::regex("\n *"), " ") + R"(}},"id":1})" + "\n";
  const Ran ran =
      run("next-steps proxy --compact --log $(dirname $0)/log -- cat >&2; cat $(dirname $0)/log", lines);
  const values::JsonObject entry = parse_object(ran.out);
  EXPECT_EQ(entry["steps"], parse(R"([{"row":"own","tool":"a","args":{"x":1},"outcome":"kept"},
                                      {"row":"own","outcome":"kept"},{"row":"own","outcome":"no room"}])"));
  EXPECT_EQ(ran.out.find("secret"), std::string::npos);
  const auto bytes = [&](const char* key) { return *entry[key].integer<int>(); };
  EXPECT_EQ(bytes("bytes_before") - bytes("null_bytes") - bytes("space_bytes") + bytes("hint_bytes"),
            bytes("bytes_after"));
}

TEST(ProxyLog, EndsWithAWarningWhenItCannotBeWritten) {
  std::string lines;
  for (const std::string id : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    lines += R"({"method":"tools/call","params":{"name":"status"},"id":)" + id + "}\n";
    lines += R"({"result":{"structuredContent":{}},"id":)" + id + "}\n";
  }
  // The second log has room for half a line.
  for (const auto& row : table("/dev/full | No space left on device\n$(dirname $0)/log | File too large")) {
    const Ran ran =
        run("head -c 4194204 /dev/zero >$(dirname $0)/log; ulimit -f 4096\n"
            "next-steps proxy --log " +
                row[0] + " -- cat",
            lines);
    EXPECT_EQ(ran.status, 0);
    EXPECT_TRUE(ran.err.ends_with(": " + row[1] + ": the log ends here\n")) << ran.err;
    EXPECT_EQ(std::count(ran.err.begin(), ran.err.end(), '\n'), 1) << ran.err;
    EXPECT_EQ(ran.out, lines);
  }
  const Ran none = run("next-steps proxy --log $(dirname $0) -- cat");
  EXPECT_EQ(none.status, 3);
}

}  // namespace
}  // namespace vantrex::tests
