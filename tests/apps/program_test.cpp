#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/naive.h"
#include "support/random_tree.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tests {
namespace {

using namespace std::string_literals;

TEST(Program, AnswersAndExitStatuses) {
  struct Row {
    std::string command;
    std::string input;
    int status;
    std::string out;  // all of it
    std::string err;  // a part of it
  };
  const std::string usage = "Run with --help for more information.\n";
  const Row table[] = {
      {"next-steps finish --tool x", R"({"b": null, "a": [null]})", 0, "{\"a\":[null]}\n", ""},
      {"next-steps finish --tool x --pretty -", R"({"a": 1})", 0, "{\n  \"a\": 1\n}\n", ""},
      {"next-steps finish --tool x --freshness '{\"a\":null}' --arguments null", "{}", 0,
       "{\"freshness\":{\"a\":null}}\n", ""},
      {"next-steps finish --tool symbol:callers --arguments '{}'", R"({"fqn": "f"})", 0,
       R"({"fqn":"f","next_steps":[{"tool":"symbol","args":{"action":"references","fqn":"f"},)"
       "\"reason\":\"Every use of it\"}]}\n",
       ""},
      {"next-steps finish --tool $'\\xff'", "{}", 0, "{}\n", ""},

      {"next-steps finish --tool x", "{\"a\":\n1e999}", 1, "", "<stdin>:2:1: number out of range\n"},
      {"next-steps finish --tool x", " [1]", 1, "", "<stdin>:1:2: an answer must be an object, not a list\n"},
      {"echo '{' >$TMPDIR/a.json; next-steps finish --tool x $TMPDIR/a.json", "", 1, "", "/a.json:2:1: "},
      {"next-steps finish --tool x --arguments '{\"a\":]'", "{}", 1, "", "--arguments:1:6: "},
      {"next-steps finish --tool x --freshness '[]'", "{}", 1, "",
       "--freshness:1:1: the value of --freshness must be an object, not a list\n"},

      {"next-steps", "", 2, "", usage},
      {"next-steps nonsense", "", 2, "", usage},
      {"next-steps finish", "{}", 2, "", "--tool is required"},
      {"next-steps finish --tool x a b", "", 2, "", usage},
      {"next-steps --version", "", 0, "next-steps " NEXT_STEPS_VERSION "\n", ""},
      {"next-steps batch --help | head -1", "", 0, "Finish the answers of a stream of JSON lines\n", ""},

      {"next-steps finish --tool x /no/such/file", "", 3, "", "/no/such/file: No such file or directory\n"},
      {"next-steps batch /", "", 3, "", "/: Is a directory\n"},
      {"next-steps finish --tool x <&-", "", 3, "", "<stdin>: Bad file descriptor\n"},
      {"next-steps finish --tool x >/dev/full", "{}", 3, "", "standard output: No space left on device\n"},
      {"next-steps --help >/dev/full", "", 3, "", "standard output: No space left on device\n"},
      {"yes '{\"response\":{},\"tool\":\"x\"}' | next-steps batch | true; exit ${PIPESTATUS[1]}", "", 3, "",
       "standard output: Broken pipe\n"},
      {"script -qec 'next-steps finish --tool x' /dev/null | grep -o 'waiting for .* input'", "\4", 0,
       "waiting for an answer on standard input\n", ""},
  };
  for (const Row& row : table) {
    const Ran ran = run("export TMPDIR=$(dirname $0)\n" + row.command, row.input);
    EXPECT_EQ(ran.status, row.status) << row.command;
    EXPECT_EQ(ran.out, row.out) << row.command;
    EXPECT_NE(ran.err.find(row.err), std::string::npos) << row.command << " said: " << ran.err;
    EXPECT_EQ(ran.err.empty(), row.err.empty()) << row.command << " said: " << ran.err;
  }
}

TEST(Batch, AnswersEachLineInItsPlace) {
  struct Row {
    std::string line;
    std::string column;  // of the error; empty for a request
    std::string rest;    // the answer, or the error's message as it is escaped
  };
  const Row table[] = {
      {R"({"response":{"a":1},"tool":"x"})", "", R"({"a":1})"},
      {R"(  {"tool":"x","action":null,"arguments":null,"freshness":null,"response":{}})"
       "\r",
       "", "{}"},
      {R"({"response":{},"tool":"x","freshness":{"a":null}})", "", R"({"freshness":{"a":null}})"},
      {R"({"response":{},"tool":1,"tool":"x"})", "", "{}"},
      {"", "1",
       "syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal"},
      {"\xEF\xBB\xBF{}", "1", "byte-order mark before the document"},
      {R"( [1])", "2", "a request must be an object, not a list"},
      {R"( {"tool":"x"})", "2", R"(\"response\" is missing)"},
      {R"({"response":{}})", "1", R"(\"tool\" is missing)"},
      {R"({"response":[],"tool":"x"})", "2", R"(\"response\" must be an object, not a list)"},
      {R"({"tool":"x","response":{"tool":1},"tool":null})", "35", R"(\"tool\" must be a string, not null)"},
      {R"({"response":{},"tool":"x","action":1.5})", "27",
       R"(\"action\" must be a string or null, not a float)"},
      {R"({"response":{},"tool":"x","arguments":""})", "27",
       R"(\"arguments\" must be an object or null, not a string)"},
      {R"({"response":{},"tool":"x","freshness":true})", "27",
       R"(\"freshness\" must be an object or null, not a boolean)"},
      {R"({"response":{},"tool":"x","a\"\\":0})", "27", R"(\"a\\\"\\\\\" is no member of a request)"},
      {R"({"response":{},"tool":"x"} {})", "28",
       "syntax error while parsing value - unexpected '{'; expected end of input"},
      {R"({"response":{"b":2},"tool":"x"})", "", R"({"b":2})"},
  };
  std::string input;
  std::string expected;
  std::size_t number = 0;
  for (const Row& row : table) {
    if (number++ > 0) input += '\n';
    input += row.line;
    expected += row.column.empty() ? row.rest
                                   : R"({"error":{"line":)" + std::to_string(number) + R"(,"column":)" +
                                         row.column + R"(,"message":")" + row.rest + "\"}}";
    expected += '\n';
  }
  const Ran ran = run("next-steps batch", input);
  EXPECT_EQ(ran.out, expected);
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(
      ran.err,
      "<stdin>:5:1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
      "literal (lines rejected: 12)\n");
  EXPECT_EQ(run("next-steps batch").status, 0);
}

TEST(Batch, AnswersBeforeTheNextLineIsWaitedFor) {
  const Ran ran = run(R"(
    coproc next-steps batch
    for tool in x y z; do
      echo '{"response":{"from":"'$tool'"},"tool":"'$tool'"}' >&"${COPROC[1]}"
      read -r -t 20 -u "${COPROC[0]}" answer || exit 9
      echo "$answer"
    done)");
  EXPECT_EQ(ran.out, "{\"from\":\"x\"}\n{\"from\":\"y\"}\n{\"from\":\"z\"}\n");
  EXPECT_EQ(ran.status, 0) << ran.err;
}

TEST(Batch, NeedsNoMoreMemoryForMoreLines) {
  // 60 MB of requests in 30 MB of memory.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizers need more memory than the limit";
#endif
  const Ran ran = run(R"(
    ulimit -v 30000
    request=$(printf '{"response":{"a":"%1000s"},"tool":"x"}')
    yes "$request" | head -60000 | next-steps batch | wc -l
    exit ${PIPESTATUS[2]})");
  EXPECT_EQ(ran.out, "60000\n");
  EXPECT_EQ(ran.status, 0) << ran.err;
}

TEST(Batch, EqualsTheNaiveReading) {
  constexpr std::uint64_t kRequests = 20000;
  std::string input;
  std::string expected;
  for (std::uint64_t seed = 0; seed < kRequests; ++seed) {
    Random random(seed, Domain::json);
    const Request request = random.request();
    values::JsonObject line{{"response", request.answer}, {"tool", request.tool}};
    if (request.action) line.set("action", *request.action);
    if (request.arguments) line.set("arguments", *request.arguments);
    line.set("freshness", request.freshness);
    input += naive::json_text(line) + '\n';
    expected += naive::json_text(naive::finish(request).answer) + '\n';
  }
  const Ran ran = run("next-steps batch", input);
  EXPECT_EQ(ran.status, 0) << ran.err;
  std::istringstream requests(input), answers(ran.out), right_answers(expected);
  for (std::string request, answer, right; std::getline(requests, request);) {
    std::getline(answers, answer);
    std::getline(right_answers, right);
    ASSERT_EQ(answer, right) << request;
  }
  EXPECT_EQ(ran.out.size(), expected.size());
}

}  // namespace
}  // namespace vantrex::tests
