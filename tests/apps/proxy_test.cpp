#include <chrono>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"

namespace vantrex::tests {
namespace {

// What `next-steps proxy` prints when the client's and the server's lines are `lines`, in turn: the server,
// cat, sends back what it gets.
std::string passed(const std::string& options, const std::string& lines) {
  const Ran ran =
      run("cat >$(dirname $0)/catalogue <<'END'\n"
          R"({"next_steps": {"find": [{"tool": "open", "takes": "fqn", "reason": "Open"}], "act:go": [],
          "list": [{"tool": "act", "args": {"action": "go"}, "reason": "Go"}]}, "signals": {"other:x": null}})"
          "\nEND\n"
          "next-steps proxy --catalogue $(dirname $0)/catalogue " +
              options + " -- cat",
          lines);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(ran.err, "");
  return ran.out;
}

std::string call(const std::string& id, const std::string& tool, const std::string& arguments = "{}") {
  return R"({"params":{"name":")" + tool + R"(","arguments":)" + arguments +
         R"(},"method":"tools\/call","id":)" + id + "}\n";
}
std::string answer(const std::string& id, const std::string& result) {
  return R"({"result": )" + result + R"( , "id":)" + id + "}\r\n";
}

TEST(Proxy, FinishesTheAnswerOfAResult) {
  // The tool that was called, its result, and the new result; "=" for the same.
  for (const auto& row : table(R"(
find | {"structuredContent": {"fqn": "a", "n": null}, "x" : 1} | {"structuredContent": {"fqn":"a","next_steps":[{"tool":"open","args":{"fqn":"a"},"reason":"Open"}]}, "x" : 1}
find | {"content": [{"type": "text", "text": "{\n\"fqn\": \"a\\\"\"}" }]} | {"content": [{"type": "text", "text": "{\"fqn\":\"a\\\"\",\"next_steps\":[{\"tool\":\"open\",\"args\":{\"fqn\":\"a\\\"\"},\"reason\":\"Open\"}]}" }]}
act | {"content":[{"type":"image"},{"type":"text","text":"{\"b\":1,\"a\":2,\"c\":null}"}],"structuredContent":{"c":null,"a":2,"b":1}} | {"content":[{"type":"image"},{"type":"text","text":"{\"a\":2,\"b\":1}"}],"structuredContent":{"a":2,"b":1}}
act | {"content":[{"type":"text","text":"{}"}],"structuredContent":{"c":null},"resultType":"complete","isError":false} | {"content":[{"type":"text","text":"{}"}],"structuredContent":{},"resultType":"complete","isError":false}
act | {"structuredContent":{"c":null},"structured\u0043ontent": {"d":null} } | {"structuredContent":{"c":null},"structured\u0043ontent": {} }
act | {"content":[{"type":"text","text":"{\"d\":1}"}],"structuredContent":{"c":null}} | {"content":[{"type":"text","text":"{\"d\":1}"}],"structuredContent":{}}
other | {"structuredContent": {"n": null}} | =
find | {"structuredContent": {"n": null}, "isError": true} | =
find | {"structuredContent": {"n": null}, "resultType": "input_required"} | =
find | {"structuredContent": [{"n": null}]} | =
find | {"content": [{"type": "text", "text": "{}"}, {"type": "text", "text": "{\"n\": null}"}]} | =
find | {"content": [{"type": "text", "text": "[{}]"}]} | =
find | {"content": [{"type": "text", "text": "{} and more"}]} | =
find | {"structuredContent": {"n": null, "s": "\ud800"}} | =
find | null | =
)")) {
    const std::string sent = call("7", row[0]) + answer("7", row[1]);
    const std::string expected = call("7", row[0]) + answer("7", row[2] == "=" ? row[1] : row[2]);
    EXPECT_EQ(passed("--serves open", sent), expected);
  }
}

TEST(Proxy, KnowsWhichCallIsAnswered) {
  const std::string before = R"({"structuredContent": {"n": null}})";
  const std::string after = R"({"structuredContent": {}})";
  const std::string cancelled = R"({"method":"notifications/cancelled","params":{"requestId":"1"}})"
                                "\n";
  std::string both = "[" + call(R"("\ud800")", "act") + "," + call("1", "act") + "]";
  std::erase(both, '\n');
  struct Row {
    std::string client, id;
    bool is_finished;
  };
  for (const Row& row :
       {Row{call("1", "act"), "1", true},
        {call("\"1\"", "act"), "1", false},
        {call(R"("\u00e9\/")", "act"), "\"é/\"", true},
        {call("1", "act") + cancelled, "1", true},
        {call("\"1\"", "act") + cancelled, "\"1\"", false},
        {call("1", "act") + answer("1", before).replace(2, 6, "error"), "1", false},
        {call("1", "act") + "[{\"id\":1}]\n", "1", true},
        {call("1", "act") + "[{\"id\":1,\"error\":0}]\n", "1", false},
        {call("1", "act") + "{\"method\":\"ping\",\"id\":1,\"result\":1}\n", "1", true},
        {call("1", "act"), "1.0", true},
        {call("1", "act") + call("1", "other"), "1", false},
        {call("1", "act") + "[" + cancelled.substr(0, cancelled.size() - 1) + "]\n", "1", true},
        {call("\"1\"", "act") + "[" + cancelled.substr(0, cancelled.size() - 1) + "]\n", "\"1\"", false},
        {both + "\n", "1", true},
        {call("null", "act") + call("true", "act"), "null", false}}) {
    const std::string end = answer(row.id, row.is_finished ? after : before);
    EXPECT_TRUE(passed("", row.client + answer(row.id, before)).ends_with("\n" + end)) << row.client;
  }
}

TEST(Proxy, ServesTheToolsOfTheLastCompleteList) {
  const auto list = [](const std::string& id, const std::string& cursor) {
    return R"({"method":"tools/list","params":{)" + cursor + R"(},"id":)" + id + "}\n";
  };
  const std::string page =
      R"({"tools":[{"name":"x"},{"name":"act","inputSchema":{"properties":{"action":{"enum":["go"]}}}}])";
  const std::string none = R"({"tools":[])";
  const std::string question = call("9", "list") + answer("9", R"({"structuredContent":{}})");
  const std::string next = R"(,"nextCursor":"c"})";
  const std::string second = R"("cursor":"c")";
  struct Row {
    std::string options, lines;
    bool has_step;
  };
  for (const Row& row :
       {Row{"", "", false},
        {"--serves act:go", "", true},
        {"--serves act:stop", list("1", "") + answer("1", page + "}"), false},
        {"", list("1", "") + answer("1", page + "}"), true},
        {"", list("1", "") + answer("1", page + next), false},
        {"", list("1", "") + answer("1", page + next) + list("2", second) + answer("2", none + "}"), true},
        {"", list("1", second) + answer("1", page + "}"), false},
        {"", list("1", "") + answer("1", page + R"(,"nextCursor":""})"), true},
        {"", list("1", "") + answer("1", page + "}") + list("2", "") + answer("2", none + next), true},
        {"", list("1", "") + answer("1", page + "}") + list("2", "") + answer("2", none + "}"), false}}) {
    EXPECT_EQ(passed(row.options, row.lines + question).find("next_steps") != std::string::npos, row.has_step)
        << row.lines;
  }
}

TEST(Proxy, WidensTheSchemasOfFinishedTools) {
  for (const auto& row : table(R"(
{"required":["a"],"properties":{"required":{"oneOf":[{"minProperties":1}],"additionalProperties":false}},"additionalProperties":false} | {"properties":{"required":{"additionalProperties":false,"anyOf":[{}]},@}}
{"$ref":"#/$defs/a","$defs":{"a":{"maxProperties":1,"allOf":[{"propertyNames":{}}]},"b":{"maxProperties":1}}} | {"$ref":"#/$defs/a","$defs":{"a":{"allOf":[{}]},"b":{"maxProperties":1}},"properties":{@}}
{"anyOf":[{"const":1}],"oneOf":[{"not":{}},{}],"items":{"enum":[{"a":null}],"default":{"not":1}}} | {"anyOf":[{}],"items":{"enum":[{}],"default":{"not":1}},"properties":{@}}
{"properties":{"next_steps":{"type":"null"}},"items":{"maxProperties":1}} | {"properties":{@},"items":{"maxProperties":1}}
{"properties":{"next_steps":{"items":{"properties":{"a":{"oneOf":[{}]},"b":{"$ref":"#/items"}}}}},"items":{}} | {"properties":{@},"items":{}}
{"$ref":"#/items","items":{"$ref":"#/anyOf/1","const":1},"allOf":[{}],"anyOf":[{},{}]} | {"$ref":"#/items","items":{"$ref":"#/anyOf/1"},"allOf":[{}],"anyOf":[{},{}],"properties":{@}}
{"items":{"$ref":"#/oneOf/0"},"oneOf":[{}]} | {"type":"object","properties":{@}}
{"items":{"$ref":"#/anyOf/x"},"anyOf":[{}]} | {"type":"object","properties":{@}}
{"items":{"$ref":"#/properties/oneOf"},"properties":{"oneOf":{"not":1}}} | {"items":{"$ref":"#/properties/oneOf"},"properties":{"oneOf":{},@}}
{"items":{"$ref":"#/not"},"not":{}} | {"type":"object","properties":{@}}
{"items":{"$ref":"#/additionalProperties"},"additionalProperties":{}} | {"type":"object","properties":{@}}
{"items":{"$ref":"#there"}} | {"type":"object","properties":{@}}
{"items":{"$id":"there"}} | {"type":"object","properties":{@}}
)")) {
    const std::string request = R"({"method":"tools/list","id":1})"
                                "\n";
    const auto tools = [](const std::string& schema) {
      return answer("1", R"({"tools":[{"name":"other","outputSchema":{"required":[]}}, {"outputSchema": )" +
                             schema + R"( ,"name":"act"}]})");
    };
    const std::string wide = replaced(
        row[1], "@",
        R"("next_steps":{"description":"Calls that may be made next: a list of {tool, args, reason}"})");
    EXPECT_EQ(passed("", request + tools(row[0])), request + tools(wide));
  }
}

TEST(Proxy, EndsWithItsServer) {
  for (const auto& row : table(R"(
# the server | its input | the status | the output
sh -c 'exit 7' |  | 7
sh -c 'kill -9 $$' |  | 137
sh -c 'printf "{\"half"; exit 3' | x | 3 | {"half
sh -c 'sleep 100 & echo here' |  | 0 | here
printf '<%s>' '[a,b]' '' --serves finish |  | 0 | <[a,b]><><--serves><finish>
sh -c 'trap "" TERM; exec >&-; while :; do sleep 0.1; done' |  | 137
sh -c 'trap "exit 5" TERM; while :; do sleep 0.1; done' | x | 5
no-such-program |  | 3
)")) {
    const auto begin = std::chrono::steady_clock::now();
    const Ran ran = run("next-steps proxy -- " + row[0], row[1]);
    EXPECT_EQ(std::to_string(ran.status), row[2]) << row[0] << ran.err;
    EXPECT_EQ(ran.out.substr(0, ran.out.find('\n')), row.size() == 4 ? row[3] : "") << row[0];
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4)) << row[0];
  }
  const Ran told =
      run("mkfifo $(dirname $0)/open; exec 3<>$(dirname $0)/open\n"
          "next-steps proxy -- sh -c 'trap \"exit 6\" TERM; while :; do sleep 0.1; done' <&3 &\n"
          "sleep 0.5; kill -TERM $!; wait $!");
  EXPECT_EQ(told.status, 6) << told.err;
}

TEST(Proxy, EndsWithItsClient) {
  struct Row {
    const char* command;
    const char* out;
  };
  for (const Row& row : {
           // The client ends while the server reads nothing.
           Row{"(yes & sleep 0.3; kill $!) | (next-steps proxy -- sleep 60; echo $?)", "143\n"},
           // The client reads nothing after the server's end.
           Row{"mkfifo $(dirname $0)/full; exec 3<>$(dirname $0)/full; echo | (next-steps proxy -- "
               "sh -c 'head -c 150000 /dev/zero; exit 7' >&3; echo $?)",
               "7\n"},
           // The client reads late, but is still there.
           Row{"sleep 2.5 | next-steps proxy -- sh -c 'yes | head -c 300000; exit 3' | (sleep 1.5; wc -c)",
               "300000\n"},
           // The client reads no more: first the server's input ends.
           Row{"mkfifo $(dirname $0)/open; exec 3<>$(dirname $0)/open; (next-steps proxy -- "
               "sh -c 'echo; cat; echo ended >&2' <&3 | true) 2>&1",
               "ended\n"},
       }) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(run(row.command).out, row.out) << row.command;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4)) << row.command;
  }
}

TEST(Proxy, PassesALineThatMemoryCannotHold) {
  if (NEXT_STEPS_SANITIZED) GTEST_SKIP() << "the sanitizer needs address space";
  const Ran ran = run("ulimit -v 150000; head -c 200000000 /dev/zero | next-steps proxy -- cat | wc -c");
  EXPECT_EQ(ran.out, "200000000\n");
  const std::string warning = "next-steps: a line is passed on as it came: std::bad_alloc\n";
  EXPECT_EQ(ran.err, warning + warning);  // once for each direction
}

TEST(Proxy, PassesEachLineOnInTime) {
  for (const char* const seed : {"1", "2", "3"}) {
    const Ran ran =
        run("python3 tests/apps/proxy_peers.py \"$(command -v next-steps)\" " + std::string(seed));
    EXPECT_EQ(ran.status, 0) << ran.err;
  }
}

}  // namespace
}  // namespace vantrex::tests
