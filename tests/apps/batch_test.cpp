#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <regex>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"
#include "support/table.h"

namespace vantrex::tests {
namespace {

TEST(Batch, AnswersEachLineInItsPlace) {
  std::string input;
  std::string expected;
  std::size_t number = 0;
  for (const auto& row : table(R"x(
# line | column of the error, empty if the line is accepted | the reply, or the escaped message of the error | the id in the error
{"response":{"a":1},"tool":"x"} |  | {"a":1}
  {"tool":"x","action":null,"arguments":null,"freshness":null,"serves":null,"explain":null,"response":{}} |  | {}
{"response":{},"tool":"x","freshness":{"a":null}} |  | {"freshness":{"a":null}}
{"response":{},"tool":"status","id":null} |  | {"id":null,"answer":{"next_steps":[{"tool":"architecture","args":{"action":"components"},"reason":"The components of the code"}]}}
{"response":{},"tool":"status","serves":["file:symbols"],"id":[1,{"a":2.0}]} |  | {"id":[1,{"a":2.0}],"answer":{}}
{"id":"s","suggest":"symbol","wanted":"Symbl","action":"callers","response":{"found":1,"note":null},"freshness":{"a":1}} |  | {"id":"s","answer":{"found":false,"did_you_mean":[{"fqn":"vantrex::models::Symbol","name":"Symbol","kind":"struct","file":"src/vantrex/models/symbol.h","line":31}],"freshness":{"a":1},"next_steps":[{"tool":"symbol","args":{"action":"callers","fqn":"vantrex::models::Symbol"},"reason":"The nearest indexed symbol to Symbl is vantrex::models::Symbol"}]}}
{"suggest":"path","wanted":"zz"} |  | {"found":false,"did_you_mean":[],"next_steps":[{"tool":"files","args":{},"reason":"No indexed file is near zz"}]}
 | 1 | The document is empty.
 {"tool":"x"} | 2 | \"response\" is missing
{"response":{},"id":7} | 1 | \"tool\" is missing | 7
{"response":[],"tool":"x"} | 2 | \"response\" must be an object, not a list
{"tool":"x","response":{"tool":1},"tool":null} | 35 | \"tool\" must be a string, not null
{"response":{},"tool":"x","arguments":"","id":null} | 27 | \"arguments\" must be an object or null, not a string | null
{"response":{},"tool":"x","a\"\\":0} | 27 | \"a\\\"\\\\\" is no member of a request
{"response":{},"tool":"x","id":1} {} | 35 | The document root must not be followed by other values. | 1
{"id":{"a":[7]},"response":{"a":tru} | 36 | Invalid value. | {"a":[7]}
{"id":7,"response":{} "tool":"x"} | 23 | Missing a comma or '}' after an object member. | 7
{"id":7,} | 9 | Missing a name for object member. | 7
{"id":7 | 8 | Missing a comma or '}' after an object member.
{"id":6,"id":7 | 15 | Missing a comma or '}' after an object member.
{"a":{"id":7},"b" | 18 | Missing a colon after a name of object member.
{"id":1,"response":{"a":"\udc00"},"tool":"x","lossy":null} | 29 | The surrogate pair in string is invalid. | 1
{"response":{},"tool":"x","lossy":1} | 27 | \"lossy\" must be a boolean or null, not an integer
{"response":{},"tool":"x","serves":["a",1]} | 27 | \"serves\" must be a list of strings
{"response":{},"tool":"x","serves":["a:"]} | 27 | \"serves\" is wrong: \"a:\" is neither TOOL nor TOOL:ACTION
{"suggest":"file","wanted":"x"} | 2 | \"suggest\" must be \"symbol\" or \"path\"
{"suggest":"path","wanted":""} | 19 | \"wanted\" must not be empty
{"suggest":"symbol","wanted":"view"} | 21 | \"wanted\" is no miss: the index holds this symbol
{"suggest":"symbol","wanted":"x","tool":"symbol"} | 34 | \"tool\" is no member of a request
{"response":{"b":2},"tool":"x"} |  | {"b":2}
)x")) {
    if (number++ > 0) input += '\n';
    input += row.at(0) + (row.at(1).empty() ? "\r" : "");  // accepted lines end in CR LF
    const std::string id = row.size() > 3 ? "\"id\":" + row.at(3) + "," : "";
    expected += row.at(1).empty() ? row.at(2)
                                  : "{" + id + R"("error":{"line":)" + std::to_string(number) +
                                        R"(,"column":)" + row.at(1) + R"(,"message":")" + row.at(2) + "\"}}";
    expected += '\n';
  }
  const Ran ran = run("next-steps batch --index examples/index/models.json", input);
  EXPECT_EQ(ran.out, expected);
  const std::regex line_number(R"("line":\d+,"column")");  // to the C interface, each line is the first
  EXPECT_EQ(run(NEXT_STEPS_C_BATCH R"( '{"index":"examples/index/models.json"}')", input).out,
            std::regex_replace(expected, line_number, R"("line":1,"column")"));
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err.substr(0, 11) + ran.err.substr(ran.err.find(" (")), "<stdin>:8:1 (lines rejected: 22)\n");
  EXPECT_EQ(run("next-steps batch", R"({"suggest":"path","wanted":"x"})").out,
            R"({"error":{"line":1,"column":2,"message":"\"suggest\" needs an index; the option --index, or )"
            "\\\"index\\\" of a session, names its file\"}}\n");
}

TEST(Batch, ReplacesIllFormedTextIfARequestIsLossy) {
  const std::string lines =
      R"x({"id":"~","response":{"a~":"~b~~","a\uFFFD":[{"~":1}]},"tool":"~","action":"~","lossy":true}
{"lossy":true,"suggest":"path","wanted":"~/~","no~":1}
{"lossy":true,"response":{"a":"~"},"tool":7}
{"id":1,"response":{},"tool":"~","lossy":true,"b"}
)x";
  for (const auto& [ill, well] : std::initializer_list<std::pair<std::string, std::string>>{
           {"\xFF", "\uFFFD"},
           {"\xE2\x82", "\uFFFD"},
           {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
           {"\\udC00", "\uFFFD"},
           {"\\ud800", "\uFFFD"},
           {"\\ud800\\ud83d\\ude00", "\uFFFD\U0001F600"},
           {"\\ud800\\u0041", "\uFFFDA"}}) {
    const std::string command = R"(next-steps batch | sed 's/"column":[0-9]*/"column":0/')";
    const std::string input = replaced(lines, "~", ill);
    EXPECT_EQ(run(command, input).out, run(command, replaced(lines, "~", well)).out) << input;
  }
  EXPECT_EQ(run("next-steps batch --lossy",
                "{\"response\":{\"a\":\"\xFF\xFF\\udc00\"},\"tool\":\"x\",\"b\":1}\n"
                R"({"response":{"a":"\udc00"},"tool":"x","lossy":false})")
                .out,
            R"({"error":{"line":1,"column":41,"message":"\"b\" is no member of a request"}}
{"error":{"line":2,"column":22,"message":"The surrogate pair in string is invalid."}}
)");
}

TEST(Batch, AgreesWithTheNaiveImplementation) {
  std::string input;
  std::string expected;
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    const fuzz::Request request = fuzz::Random(seed, fuzz::Domain::json).request();
    input += fuzz::naive::request_text(request) + '\n';
    expected += fuzz::naive::json_text(fuzz::naive::finish(request).answer) + '\n';
  }
  const std::string out = run("next-steps batch", input).out;
  // The built-in tables as a catalogue of the server's own.
  const char* with_own =
      "own=$(dirname $0)/own; next-steps catalogue --json >$own; next-steps batch --catalogue $own";
  EXPECT_TRUE(run(with_own, input).out == out);
  EXPECT_TRUE(run(NEXT_STEPS_C_BATCH, input).out == out);
  const auto equal = std::ranges::mismatch(out, expected).in1 - out.begin();
  EXPECT_TRUE(out == expected) << "they differ in line "
                               << 1 + std::count(out.begin(), out.begin() + equal, '\n');
}

// The client writes each line in two parts, with a pause between them, and waits for the answer.
TEST(Batch, AnswersEachLineAtOnceAndReadsAReplacedIndexAgain) {
  const Ran ran = run(R"(
    index=$(dirname $0)/index
    write() { echo '{"_type":"tag","name":"'$1'","path":"a.c"}' >$index.new; mv $index.new $index; }
    write first
    coproc next-steps batch --index $index 2>&1
    ask() {
      printf '{"suggest":"symbol",' >&"${COPROC[1]}"; sleep 0.05
      echo '"wanted":"'$1'"}' >&"${COPROC[1]}"
      until read -r -t 20 -u "${COPROC[0]}" line && [[ $line == {* ]]; do
        [[ $line == *error:* ]] || echo "${line##*; }"
      done
      grep -o 'symbol to.*is [a-z]*' <<<"$line"
    }
    ask firs
    write other && ask othr
    echo '{' >$index && ask othr; ask oter
    rm $index && ask oher; ask othe
    write third && ask thrd
    rm $index && mkfifo $index && ask thir; ask hird)");
  EXPECT_EQ(ran.out, R"(symbol to firs is first
symbol to othr is other
the index that was read before stays in use
symbol to othr is other
symbol to oter is other
the index that was read before stays in use
symbol to oher is other
symbol to othe is other
symbol to thrd is third
the index that was read before stays in use
symbol to thir is third
symbol to hird is third
)");
}

TEST(Batch, NeedsNoMoreMemoryForMoreLines) {
  // 1,000,000 requests in 30 MB of memory. The reader starts late.
  if (NEXT_STEPS_SANITIZED) GTEST_SKIP() << "the sanitizers need more memory than the limit";
  for (const std::string command : {"next-steps batch", NEXT_STEPS_C_BATCH}) {
    const Ran ran = run(R"x(
      ulimit -v 30000
      printf '{"response":{"a":"%200s"},"tool":"x","id":%d}\n[\n{"response":{}}' x 7 >$(dirname $0)/lines
      yes "$(<$(dirname $0)/lines)" | head -1000000 | )x" +
                        command + " | (sleep 1; wc -l)\n exit ${PIPESTATUS[2]}");
    EXPECT_EQ(ran.out, "1000000\n");
    EXPECT_EQ(ran.status, command == "next-steps batch" ? 1 : 0) << ran.err;
  }
}

TEST(Batch, WaitsWhenStandardInputAndOutputDoNotBlock) {
  const Ran ran = run(R"x(
    nonblocking() { perl -MFcntl -e 'fcntl($_, F_SETFL, O_NONBLOCK) or die for *STDIN, *STDOUT; exec @ARGV' "$@"; }
    lines() { yes '{"response":{},"tool":"x"}' | head -$1; }
    (sleep 0.2; lines 50; sleep 0.2; lines 200000) | nonblocking next-steps batch | (sleep 0.5; wc -l)
    exit ${PIPESTATUS[1]})x");
  EXPECT_EQ(ran.out + ran.err, "200050\n");
  EXPECT_EQ(ran.status, 0);
}

TEST(Batch, HasClientsInOtherLanguages) {
  bool any_ran = false;
  for (const std::string command : {"python3 examples/batch_client.py", "node examples/batch_client.mjs"}) {
    if (run("command -v " + command.substr(0, command.find(' '))).status != 0) continue;
    any_ran = true;
    const Ran ran =
        run(command + R"( $(command -v next-steps) examples/index/models.json | sed 's/\([:,]\) /\1/g')");
    EXPECT_EQ(
        ran.out.substr(0, ran.out.find("with ")),
        R"(answer:{"results":[{"fqn":"pkg.mod.parse","kind":"function"}],"next_steps":[{"tool":"symbol",)"
        R"("args":{"action":"detail","fqn":"pkg.mod.parse"},"reason":"Details of the best hit"}]}
error:The surrogate pair in string is invalid.
miss:[{"tool":"symbol","args":{"action":"detail","fqn":"vantrex::models::Repository"},"reason":"The nearest )"
        R"(indexed symbol to Repositry is vantrex::models::Repository"}]
error:"response" must be an object,not a list
end:the program ended )")
        << ran.err;
    const Ran mixed_up = run(R"(cd $(dirname $0) && echo $'#!/bin/sh\nsed -u \'s/.*/{"id":9}/\'' >server &&
chmod +x server && cd - >/dev/null && )" +
                             command + " $(dirname $0)/server - 2>&1");
    EXPECT_NE(mixed_up.out.find("a reply has the id 9, not 2"), std::string::npos) << mixed_up.out;
  }
  if (!any_ran) GTEST_SKIP() << "neither python3 nor node is installed";
}

}  // namespace
}  // namespace vantrex::tests
