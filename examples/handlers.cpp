#include <cmath>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/adapters/nlohmann_json.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace models = vantrex::models;
namespace tool_handlers = vantrex::tool_handlers;
namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::values::ForeignValue, vantrex::values::InvalidUtf8, vantrex::values::JsonList;
using vantrex::values::JsonObject, vantrex::values::JsonValue, vantrex::values::Text;

void print(const JsonObject& answer) {
  std::cout << tool_handlers::tool_result_text(answer) << '\n';
}

JsonObject callers(const JsonObject& request, const models::Repository& index) {
  const JsonObject caller{{"fqn", "pkg.cli.main"}, {"file", "pkg/cli.py"}, {"doc", nullptr}};
  JsonObject answer{{"fqn", request["fqn"]}, {"callers", JsonList::of(caller)}, {"total_count", 12}};
  return next_steps::finish_answer(
      std::move(answer), "symbol",
      {.action = "callers", .arguments = &request, .freshness = tool_handlers::freshness_block(index)});
}

JsonObject ready(const next_steps::ServedTools& served) {
  return next_steps::finish_answer({{"state", "ready"}}, "status", {.serves = &served});
}

JsonObject explore(std::string_view query) {
  JsonObject answer{{"query", Text::lossy(query)}, {"route", JsonList::of("pkg.cli.main", "pkg.mod.parse")}};
  const JsonObject detail{{"action", "detail"}, {"fqn", "pkg.mod.parse"}};
  answer.set("next_steps", JsonList::of(next_steps::step("symbol", "Where the route ends", detail)));
  return next_steps::finish_answer(std::move(answer), "explore");
}

JsonObject verdicts(const JsonObject& answer) {
  const auto explained = next_steps::explain_answer(answer, "symbol", {.action = "detail"});
  JsonList why;
  for (const next_steps::CandidateStep& each : explained.candidates) why.push_back(each.why());
  return {{"why", why}};
}

enum class Access { open, closed };

JsonValue to_json_value(Access access) {
  return access == Access::open ? "open" : "closed";
}

JsonObject row(const std::vector<std::string>& tags, const std::optional<Access>& access) {
  return {{"tags", tags}, {"access", access}, {"size", tags.size()}};
}

std::string tag(const JsonObject& row, unsigned position) {
  return std::string(row["tags"][position].string().value_or("none"));
}

JsonObject coverage(double covered, double lines) {
  const double share = covered / lines;
  return {{"lines", lines}, {"share", std::isfinite(share) ? JsonValue(share) : nullptr}};
}

struct Revision {
  int number;
};

JsonObject status(Revision revision) {
  return {{"revision", ForeignValue::of(revision, "r" + std::to_string(revision.number))}};
}

int carried(const JsonObject& answer) {
  return answer["revision"].foreign()->as<Revision>()->number;
}

nlohmann::ordered_json search(const nlohmann::ordered_json& answer, const nlohmann::ordered_json& request) {
  return vantrex::adapters::finish_answer(answer, "search", {.action = "symbols", .arguments = &request});
}

JsonObject named(const std::string& name) {
  try {
    return {{"name", name}};
  } catch (const InvalidUtf8& error) {
    return {{"name", Text::lossy(name)}, {"bad_byte", error.byte_offset()}};
  }
}

int main() {
  print(callers({{"fqn", "pkg.mod.parse"}}, models::InMemoryRepository("4f1c2d9", "8a0be31")));
  print(ready({{"status"}, {"architecture", "components"}}));
  print(ready({{"status"}, {"symbol", "detail"}}));
  print(explore("how is a file read?"));
  print(verdicts({{"fqn", "pkg.mod.parse"}, {"file", "pkg/mod.py"}, {"note", std::string(150, '.')}}));
  print({{"row", row({"io", "text"}, Access::open)}, {"second tag", tag(row({"io"}, std::nullopt), 1)}});
  print(coverage(0, 0));
  print({{"answer", status({42})}, {"carried", carried(status({42}))}});
  std::cout << search({{"results", nlohmann::ordered_json::array()}}, {{"query", "parse"}}) << '\n';
  print(named("caf\xE9"));
}
