#include <string>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"
#include "vantrex/version.h"

namespace vantrex::tests {
namespace {

// Replaces each "\n" in `cell` by a line feed.
std::string lines(const std::string& cell) {
  return replaced(cell, "\\n", "\n");
}

TEST(Program, AnswersAndExitStatuses) {
  for (const auto& row : table(R"(
# command | standard input | exit status | output | a part of the error
next-steps finish --tool x | {"b": null, "a": [null]} | 0 | {"a":[null]} | 
next-steps finish --tool x --pretty= - | {"a": []} | 0 | {\n  "a": []\n} | 
next-steps finish --tool x --freshness '{"a":null}' --arguments null | {} | 0 | {"freshness":{"a":null}} | 
next-steps finish --tool symbol:callers --arguments '{}' | {"fqn": "f"} | 0 | {"fqn":"f","next_steps":[{"tool":"symbol","args":{"action":"references","fqn":"f"},"reason":"Every use of it"}]} | 
next-steps finish --tool $'\xff' | {} | 0 | {} | 
next-steps -V |  | 0 | next-steps )" NEXT_STEPS_VERSION R"( | 
next-steps|head -1 |  | 0 | Finishes the answers of a code-index tool server | 
next-steps finish --tool status --serves search,architecture:components | {} | 0 | {"next_steps":[{"tool":"architecture","args":{"action":"components"},"reason":"The components of the code"}]} | 
next-steps batch --serves architecture:dependencies | {"response":{},"tool":"status"} | 0 | {} | 
next-steps batch --help|head -1 |  | 0 | Answer a stream of requests, one per line | 

next-steps finish --tool x | {"a": 1e999} | 1 |  | <stdin>:1:7: Number too big to be stored in double.\n
next-steps finish --tool x |  [1] | 1 |  | <stdin>:1:2: an answer must be an object, not a list\n
echo '{' >$TMPDIR/a.json; next-steps finish --tool x $TMPDIR/a.json |  | 1 |  | /a.json:2:1: 
next-steps finish --tool x --arguments '{"a":]' | {} | 1 |  | --arguments:1:6: 
next-steps finish --tool x --freshness '[]' | {} | 1 |  | --freshness:1:1: the value of --freshness must be an object, not a list\n
next-steps suggest symbol x --index examples/index/models.json - | [] | 1 |  | <stdin>:1:1: an answer must be an object, not a list\n

next-steps finish --tool x --serves a:b,,c | {} | 2 |  | --serves: "" is neither TOOL nor TOOL:ACTION\n
next-steps batch --serves symbol: |  | 2 |  | --serves: "symbol:" is neither
next-steps suggest symbol '' --index - |  | 2 |  | WANTED: must not be empty
next-steps finish | {} | 2 |  | --tool is required\nRun with --help for more information.\n
next-steps finish --tool= | {} | 2 |  | --tool: must not be empty
next-steps finish --pretty --pretty --tool x --action a --action b | {} | 2 |  | --action: At Most 1 required but received 2\n
next-steps finsh --tool x --weird | {} | 2 |  | unknown subcommand "finsh"; did you mean "finish"?\n
next-steps finish --tol=search --serves : | {} | 2 |  | unknown option "--tol"; did you mean "--tool"?\n
next-steps --tool x finish | {} | 2 |  | --tool must follow a subcommand\n
next-steps finish --tool x -- - $'\x1b' | {} | 2 |  | unexpected argument \x1b\n
next-steps suggest symbol x |  | 2 |  | --index is required
next-steps suggest symbol x --index - - |  | 2 |  | --index: the index and the answer cannot both be standard input

next-steps finish --tool x --action= /no/such/file |  | 3 |  | /no/such/file: No such file or directory\n
next-steps batch / |  | 3 |  | /: Is a directory\n
next-steps finish --tool x <&- |  | 3 |  | <stdin>: Bad file descriptor\n
next-steps batch --index examples/index/models.json <&- |  | 3 |  | <stdin>: Bad file descriptor\n
next-steps finish --tool x >/dev/full | {} | 3 |  | standard output: No space left on device\n
yes '{"response":{},"tool":"x"}'|next-steps batch|true; exit ${PIPESTATUS[1]} |  | 141 |  | 
)")) {
    const Ran ran = run("export TMPDIR=$(dirname $0)\n" + row.at(0), row.at(1));
    EXPECT_EQ(std::to_string(ran.status), row.at(2)) << row.at(0);
    EXPECT_EQ(ran.out, row.at(3).empty() ? "" : lines(row.at(3)) + "\n") << row.at(0);
    EXPECT_NE(ran.err.find(lines(row.at(4))), std::string::npos) << row.at(0) << " said: " << ran.err;
    EXPECT_EQ(ran.err.empty(), row.at(4).empty()) << row.at(0) << " said: " << ran.err;
  }
}

TEST(Program, SaysOnATerminalThatItWaits) {
  if (!has_terminal()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  EXPECT_EQ(run("script -qec 'next-steps finish --tool x' /dev/null | grep -o 'waiting.*input'", "\4").out,
            "waiting for an answer on standard input\n");
}

std::string repeated(const std::string& text, std::size_t times) {
  std::string all;
  for (; times > 0; --times) all += text;
  return all;
}

TEST(Program, HandlesDepthAndSizeOnASmallStack) {
  // The sanitizers need larger frames and more memory for each thread.
  const std::string stack = NEXT_STEPS_SANITIZED ? "ulimit -s 1024\n" : "ulimit -s 256\n";
  const std::string steps = repeated(R"({"tool":"t","args":{},"reason":"r"},)", 10'000);
  std::string fields;
  for (int each = 0; each < 1'000'000; ++each) fields += '"' + std::to_string(each) + "\":1,";
  const std::string deep = repeated(R"({"a":[)", 500'000) + "1" + repeated("]}", 500'000);
  EXPECT_EQ(run(stack + "next-steps explain --tool x", deep).status, 0);
  for (const std::string& answer :
       {deep, "{" + fields + R"("a":1})",
        R"({"a":")" + std::string(3'000'000, 'a') + R"(","next_steps":[)" + steps + "{}]}"}) {
    const Ran ran = run(stack + "next-steps finish --tool x", answer);
    EXPECT_TRUE(ran.out == answer + "\n") << answer.substr(0, 20) << ": " << ran.status << " " << ran.err;
  }
  EXPECT_EQ(run(stack + "(echo '{\"a\":\"'; yes | head -c 200000000; echo '\"}') | tr -d '\\n' | "
                        "next-steps finish --tool x | wc -c")
                .out,
            "100000009\n");
  EXPECT_EQ(run("next-steps finish --tool x", R"({"a":)" + std::string(1'000'000, '7') + "}").err,
            "<stdin>:1:6: Number too big to be stored in double.\n");
  if (NEXT_STEPS_SANITIZED) return;  // the sanitizers need more memory than the limit
  const Ran ran = run("ulimit -v 60000\nnext-steps finish --tool x </dev/zero");
  EXPECT_EQ(ran.err + std::to_string(ran.status), "next-steps: out of memory\n3");
}

}  // namespace
}  // namespace vantrex::tests
