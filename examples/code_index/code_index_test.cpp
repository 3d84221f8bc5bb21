#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/version.h"

namespace vantrex::tests {
namespace {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

constexpr const char* kCopyOfIndex =
    "index=$(dirname $0)/index; cp examples/index/models.json $index; touch -d @1700000000 $index; ";

// Runs commands in a shell where $server is the example and $index a copy of the small index.
Ran with_server(const std::string& commands, std::string_view input = "") {
  return run(std::string("server=") + NEXT_STEPS_CODE_INDEX + "; " + kCopyOfIndex + commands, input);
}

std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST(CodeIndex, AnswersTheRecordedSession) {
  std::string sent;
  std::vector<std::string> recorded;
  for (const std::string& line : lines_of(read_file("examples/code_index/session.txt"))) {
    if (line.starts_with("> ")) sent += (sent.empty() ? "" : "\n") + line.substr(2);
    if (line.starts_with("< ")) recorded.push_back(line.substr(2));
  }
  const Ran ran = with_server("$server $index | sed 's/\"" NEXT_STEPS_VERSION "\"/\"VERSION\"/'", sent);
  EXPECT_EQ(lines_of(ran.out), recorded);
  EXPECT_EQ(ran.err, "");
}

TEST(CodeIndex, OutlivesHostileLines) {
  const auto rows = table(R"(
# command that writes the line | code of the error
head -c 1000000 <(tr '\0' '[' </dev/zero) | -32700
head -c 100000000 <(tr '\0' '[' </dev/zero) | -32600
printf '"\377"' | -32700
true | -32700
)");
  for (const auto& row : rows) {
    const Ran ran = with_server("{ " + row.at(0) + R"(; echo; echo '{"jsonrpc":"2.0","id":1,"method":"ping"}'
printf '{"id":'; } | $server $index)");
    const auto lines = lines_of(ran.out);
    ASSERT_EQ(lines.size(), 3U) << row.at(0);
    EXPECT_NE(lines[0].find(R"("id":null,"error":{"code":)" + row.at(1)), std::string::npos) << lines[0];
    EXPECT_EQ(lines[1], R"({"jsonrpc":"2.0","id":1,"result":{}})");
    EXPECT_NE(lines[2].find("-32700"), std::string::npos) << "the input ends in this message";
    EXPECT_EQ(ran.err, "");
  }
}

TEST(CodeIndex, SaysThatTheIndexHasChanged) {
  const auto rows = table(R"(
# what happens to the index | the revision that freshness names
true | none
echo >>$index; touch -d @1700000001.5 $index | changed at 1700000001 s 500000000 ns, 3227 bytes
rm $index | no index file
)");
  for (const auto& row : rows) {
    const Ran ran = with_server(R"(coproc $server $index
ask() { echo '{"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"files"}}' >&${COPROC[1]}; }
ask; read -r <&${COPROC[0]}; )" +
                                row.at(0) + "; ask; head -n 1 <&${COPROC[0]}");
    const JsonObject answer = parse_object(ran.out);
    const JsonValue& present = answer["result"]["structuredContent"]["freshness"]["present_revision"];
    EXPECT_EQ(present.string().value_or("none"), row.at(1)) << ran.out;
  }
}

TEST(CodeIndex, ListsAHundredFilesAndCountsTheOthers) {
  for (const std::int64_t count : {100, 101}) {
    const std::string write = "seq " + std::to_string(count) + R"( | sed 's/.*/{"path":"&"}/' >$index; )";
    const Ran ran =
        with_server(write + "$server $index",
                    R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"files"}})");
    const JsonObject response = parse_object(ran.out);
    const JsonObject& answer = *response["result"]["structuredContent"].object();
    EXPECT_EQ(answer["files"].list()->size(), 100U);
    EXPECT_EQ((*answer["files"].list())[1].string(), "10") << "in order";
    EXPECT_EQ(answer["total_count"], count);
    EXPECT_EQ(answer.contains("files_omitted") ? answer["files_omitted"] : JsonValue(0), count - 100);
  }
}

JsonObject call(const char* tool, const char* action, const char* name, const std::string& argument) {
  return {{"tool", tool}, {"args", JsonObject{{"action", action}, {name, argument}}}};
}

// The requests for `calls`, which are steps; the id of each is the call itself.
std::string requests(const std::vector<JsonObject>& calls) {
  std::string lines;
  for (const JsonObject& each : calls) {
    lines += compact_text(
                 JsonObject{{"jsonrpc", "2.0"},
                            {"id", each},
                            {"method", "tools/call"},
                            {"params", JsonObject{{"name", each["tool"]}, {"arguments", each["args"]}}}}) +
             "\n";
  }
  return lines;
}

// The kind of answer that offered a step: the tool, and for a miss whether a name was near.
std::string source_of(const JsonObject& call, const JsonObject& answer) {
  const std::string tool(*call["tool"].string());
  const JsonList* near = answer["did_you_mean"].list();
  return near == nullptr ? tool : tool + (near->empty() ? ", nothing near" : ", near miss");
}

// Continues from an answer as an agent may: follows its steps, and asks for what it lists by right and by
// misspelt names.
class Explorer {
 public:
  void explore(std::vector<JsonObject> calls) {
    while (!calls.empty()) {
      next_.clear();
      const Ran ran = run("ctags --output-format=json --fields=+nl -R -f $(dirname $0)/index src apps && " +
                              std::string(NEXT_STEPS_CODE_INDEX) + " $(dirname $0)/index",
                          requests(calls));
      const auto lines = lines_of(ran.out);
      ASSERT_EQ(lines.size(), calls.size()) << ran.err;
      for (const std::string& line : lines) take(parse_object(line));
      calls = next_;
    }
  }

  // How many steps of each source were called and answered.
  std::map<std::string, int> followed;

 private:
  void take(const JsonObject& response) {
    const JsonObject& made = *response["id"].object();
    const JsonObject* result = response["result"].object();
    ASSERT_TRUE(result != nullptr && (*result)["isError"] == false) << compact_text(response);
    const JsonObject& answer = *(*result)["structuredContent"].object();
    if (const auto offered = offered_by_.find(compact_text(made)); offered != offered_by_.end()) {
      EXPECT_FALSE(answer["found"] == false) << compact_text(made) << " leads to a miss";
      ++followed[offered->second];
    }
    if (const JsonList* steps = answer["next_steps"].list()) {
      for (const JsonValue& step : *steps) offer(*step.object(), source_of(made, answer));
    }
    call_what_is_listed(answer);
  }

  void offer(const JsonObject& step, const std::string& source) {
    const JsonObject offered{{"tool", step["tool"]}, {"args", step["args"]}};
    if (offered_by_.emplace(compact_text(offered), source).second) next_.push_back(offered);
  }

  void call_what_is_listed(const JsonObject& answer) {
    if (const JsonList* files = answer["files"].list()) {
      for (const JsonValue& file : *files) {
        next_.push_back(call("file", "symbols", "path", std::string(*file.string())));
        next_.push_back(call("file", "symbols", "path", "x" + std::string(*file.string())));
      }
    }
    if (!answer.contains("file") || !answer.contains("symbols")) return;
    for (const JsonValue& symbol : *answer["symbols"].list()) {
      const std::string name(*symbol["name"].string());
      next_.push_back(call("search", "symbols", "query", name));
      next_.push_back(call("symbol", "detail", "fqn", "vantrex." + name + "s"));
    }
  }

  std::map<std::string, std::string> offered_by_;  // the source by the call
  std::vector<JsonObject> next_;
};

TEST(CodeIndex, EveryStepThatItOffersCanBeFollowed) {
  Explorer explorer;
  explorer.explore({{{"tool", "files"}, {"args", JsonObject()}},
                    {{"tool", "status"}, {"args", JsonObject()}},
                    call("symbol", "detail", "fqn", "zz.Js"),
                    call("file", "symbols", "path", "no/such.thing")});
  std::set<std::string> sources;
  for (const auto& [source, count] : explorer.followed) sources.insert(source);
  EXPECT_EQ(sources, (std::set<std::string>{"file", "file, near miss", "file, nothing near", "files",
                                            "search", "symbol, near miss", "symbol, nothing near"}));
  EXPECT_GT(explorer.followed["search"], 300);
}

}  // namespace
}  // namespace vantrex::tests
