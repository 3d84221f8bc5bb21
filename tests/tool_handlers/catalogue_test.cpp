#include "vantrex/tool_handlers/next_steps/catalogue.h"

#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/indexes.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::JsonObject;

TEST(Catalogue, OfTheModuleGivenBackChangesNothing) {
  const Catalogue own = Catalogue::from_json(Catalogue().to_json());
  EXPECT_EQ(own.to_json(), Catalogue().to_json());
  const Catalogue unset;
  Catalogue assigned = Catalogue::from_json({});
  assigned = unset;
  EXPECT_EQ(finish_answer({}, "status", {.catalogue = &assigned}), finish_answer({}, "status"));
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    const fuzz::Request request = fuzz::Random(seed).request();
    FinishOptions with_own = request.options();
    with_own.catalogue = &own;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    ASSERT_EQ(finish_answer(request.answer, request.tool, with_own),
              finish_answer(request.answer, request.tool, request.options()));
    if (seed % 10 != 0) continue;
    ASSERT_EQ(explain_answer(request.answer, request.tool, with_own).to_dict(),
              explain_answer(request.answer, request.tool, request.options()).to_dict());
  }
  const models::InMemoryRepository index = tests::small_index();
  for (const char* wanted : {"pkg.rnu", "zzz", "src/man.py", ""}) {
    for (const auto suggest : {suggest_symbols, suggest_paths}) {
      JsonObject answer;
      JsonObject answer_with_own;
      EXPECT_EQ(suggest(answer, index, wanted, "callers", nullptr),
                suggest(answer_with_own, index, wanted, "callers", &own));
    }
  }
}

// What a catalogue says about an answer of another kind of server.
constexpr const char* kIssues = R"({
  "hit_lists": ["issues", ["data", "items"]],
  "counts": ["total", ["page", "total"]],
  "arguments": {
    "owner": {"request": "owner"},
    "issue": {"answer": "number", "hit": ["ref", "number"], "request": "issue_number"},
    "name": {"hit": []}
  },
  "next_steps": {
    "list": [
      {"tool": "issue", "args": {"view": 1, "action": "detail"}, "takes": {"owner": "owner", "n": "issue"}, "reason": "{hits}"},
      {"tool": "open", "takes": {"names": ["name"]}, "reason": "o"},
      {"tool": "again", "takes": {"q": "asked_query"}, "reason": "a"},
      {"tool": "who", "takes": "owner", "reason": "w"}
    ],
    "list:closed": []
  },
  "signals": {
    "list": {"hits_at_least": 2, "tool": "labels", "reason": "{hits} {action}{x}{hits}"},
    "list:none": null,
    "zero": {"hits": 0, "tool": "all", "args": {"action": "x"}, "takes": {"to": "asked_path"}, "reason": "r"}
  },
  "misses": {"symbol": {"near": {"tool": "get", "args": {"view": "{action}", "a": 1}, "takes": {"names": ["fqn"]}}}}
})";

TEST(Catalogue, OfAServerMakesItsSteps) {
  const Catalogue own = Catalogue::from_json(tests::parse_object(kIssues));
  for (const auto& row : tests::table(R"x(
# tool | action | arguments | answer | tool and arguments of each step
list | - | {"owner":"o"} | {"issues":[{"ref":1},{"ref":{"number":true}},{"ref":{"number":7}}],"total":1} | issue{"view":1,"action":"detail","owner":"o","n":7} who{"owner":"o"}
list | - | {"owner":7,"issue_number":"9"} | {"data":{"items":["a",3]},"page":{"total":true}} | issue{"view":1,"action":"detail","owner":7,"n":"9"} open{"names":["a"]} who{"owner":7}
list | - | {"query":"","issue_number":1,"owner":"o"} | {"number":"","issues":["x"],"total":0,"query":"q"} | again{"q":"q"} who{"owner":"o"}
list | closed | {"owner":"o"} | {"issues":[]} | none
list | open | {"owner":"o"} | {"total":12} | labels{} who{"owner":"o"}
list | none | {"owner":"o"} | {"total":12} | who{"owner":"o"}
zero | - | {"path":""} | {"total":0} | all{"action":"x","to":""}
zero | - | {} | {"total":0} | none
list:none | - | {} | {"total":12} | none
symbol | callers | {} | {"fqn":"f","callers":[]} | none
zero | - | {"path":"p"} | {"total":0,"found":false,"did_you_mean":[]} | none
zero | - | {"path":"p"} | {"total":0,"found":false} | all{"action":"x","to":"p"}
)x")) {
    const JsonObject request = tests::parse_object(row.at(2));
    FinishOptions options{.arguments = &request, .catalogue = &own};
    if (row.at(1) != "-") options.action = row.at(1);
    const JsonObject answer = finish_answer(tests::parse_object(row.at(3)), row.at(0), options);
    EXPECT_EQ(tests::calls_of(answer), row.at(4)) << row.at(0) << row.at(3);
  }
  const JsonObject many = finish_answer({{"total", 12}}, "list", {.action = "{hits}", .catalogue = &own});
  EXPECT_EQ(many["next_steps"][0]["reason"], "12 {hits}{x}12");

  JsonObject miss = {{"next_steps", 1}};
  const models::InMemoryRepository index = tests::small_index();
  suggest_symbols(miss, index, "pkg.rnu", "callers", &own);
  EXPECT_EQ(tests::calls_of(miss), R"(get{"view":"callers","a":1,"names":["pkg.a.Run"]})");
  EXPECT_FALSE(suggest_symbols(miss, index, "zzzzzz", "callers", &own).contains("next_steps"));
  EXPECT_FALSE(suggest_paths(miss, index, "main.py", "imports", &own).contains("next_steps"));
}

TEST(Catalogue, NamesThePlaceOfAMistake) {
  for (const auto& row : tests::table(R"x(
# catalogue | error
{"next_step":{}} | unknown member "next_step"; did you mean "next_steps"?
{"hit_lists":{}} | hit_lists: must be a list
{"hit_lists":["a",["b",1]]} | hit_lists[1][1]: must be a string
{"counts":[[]]} | counts[0]: must have a key
{"counts":[1]} | counts[0]: must be a key or a list of keys
{"arguments":{"fqn":{"hit":"x"}}} | arguments.fqn: is predefined
{"arguments":{"a":{}}} | arguments.a: must have "answer", "hit" or "request"
{"arguments":{"a":{"hits":"x"}}} | arguments.a: unknown member "hits"; did you mean "hit"?
{"arguments":{"a":{"answer":[]}}} | arguments.a.answer: must have a key
{"next_steps":[]} | next_steps: must be an object
{"next_steps":{"a":{}}} | next_steps.a: must be a list
{"next_steps":{"a b":[{"tool":"t"}]}} | next_steps["a b"][0]: "reason" is missing
{"next_steps":{"a":[{"tool":"","reason":"r"}]}} | next_steps.a[0].tool: must not be empty
{"next_steps":{"a":[{"tool":"t","reason":1}]}} | next_steps.a[0].reason: must be a string
{"next_steps":{"a":[{"tool":"t","reason":"r","args":[]}]}} | next_steps.a[0].args: must be an object
{"next_steps":{"a":[{"tool":"t","reason":"r","hits":0}]}} | next_steps.a[0]: unknown member "hits"; known are tool, args, takes, reason
{"arguments":{"issue":{"hit":"n"}},"next_steps":{"issues:list":[{"tool":"t","reason":"r","takes":"isue"}]}} | next_steps["issues:list"][0].takes: unknown kind "isue"; did you mean "issue"?
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":1}]}} | next_steps.a[0].takes: must be a kind or an object of kinds
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":"asked_fqn"}]}} | next_steps.a[0].takes: needs the name of an argument: {ARGUMENT: "asked_fqn"}
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":{"x":["fqn","path"]}}]}} | next_steps.a[0].takes.x: must have one kind
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":{"x":["fq"]}}]}} | next_steps.a[0].takes.x[0]: unknown kind "fq"; did you mean "fqn"?
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":{"x":"changed_files"}}]}} | next_steps.a[0].takes.x: "changed_files" brings its own arguments: write "takes": "changed_files"
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":{"x":"fqn"},"args":{"x":1}}]}} | next_steps.a[0].takes: the argument "x" is in "args", too
{"next_steps":{"a":[{"tool":"t","reason":"r","takes":"changed_files","args":{"base_branch":1}}]}} | next_steps.a[0].takes: the argument "base_branch" is in "args", too
{"signals":{"a":null}} | signals.a: must be an object
{"signals":{"a":{"tool":"t","reason":"r"}}} | signals.a: must have either "hits" or "hits_at_least"
{"signals":{"a":{"hits":1,"hits_at_least":1,"tool":"t","reason":"r"}}} | signals.a: must have either "hits" or "hits_at_least"
{"signals":{"a":{"hits":true,"tool":"t","reason":"r"}}} | signals.a.hits: must be a number of hits
{"signals":{"a":{"hits_at_least":-1,"tool":"t","reason":"r"}}} | signals.a.hits_at_least: must be a number of hits
{"misses":{"symbol":{"near":{"tool":"t","reason":"r"}}}} | misses.symbol.near: unknown member "reason"; known are tool, args, takes
{"misses":{"symbol":{"near":{"tool":"t","takes":"path"}}}} | misses.symbol.near.takes: unknown kind "path"; known are fqn
{"misses":{"path":{"none":{"tool":"t","takes":"query"}}}} | misses.path.none.takes: this call takes nothing
)x")) {
    std::string error;
    try {
      Catalogue::from_json(tests::parse_object(row.at(0)));
    } catch (const CatalogueError& caught) {
      error = caught.what();
    }
    EXPECT_EQ(error, row.at(1)) << row.at(0);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps
