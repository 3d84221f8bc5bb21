// The C++ of docs/guide.md. The guide shows each part between two marks of the same
// name, in this order, and the output of the program.
#include <cmath>
#include <iostream>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/adapters/nlohmann_json.h"
#include "vantrex/logging/logger.h"
#include "vantrex/models/name_index.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace logging = vantrex::logging;
namespace models = vantrex::models;
namespace tool_handlers = vantrex::tool_handlers;
namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::values::ForeignValue, vantrex::values::InvalidUtf8, vantrex::values::JsonList;
using vantrex::values::JsonObject, vantrex::values::JsonValue, vantrex::values::Text;

namespace {

// [finishing]
JsonObject callers(const JsonObject& request, const models::Repository& index) {
  const JsonObject caller{{"fqn", "pkg.cli.main"}, {"file", "pkg/cli.py"}, {"doc", nullptr}};
  JsonObject answer{{"fqn", request["fqn"]}, {"callers", JsonList::of(caller)}, {"total_count", 12}};
  return next_steps::finish_answer(
      std::move(answer), "symbol",
      {.action = "callers", .arguments = &request, .freshness = tool_handlers::freshness_block(index)});
}
// [finishing]

// [serves]
JsonObject ready(const next_steps::ServedTools& served) {
  return next_steps::finish_answer({{"state", "ready"}}, "status", {.serves = &served});
}
// [serves]

// [own]
JsonObject explore(std::string_view query) {
  JsonObject answer{{"query", Text::lossy(query)}, {"route", JsonList::of("pkg.cli.main", "pkg.mod.parse")}};
  const JsonObject detail{{"action", "detail"}, {"fqn", "pkg.mod.parse"}};
  answer.set("next_steps", JsonList::of(next_steps::step("symbol", "Where the route ends", detail)));
  return next_steps::finish_answer(std::move(answer), "explore");
}
// [own]

// [misses]
JsonObject not_found(const JsonObject& request, const models::Repository& index) {
  JsonObject answer;
  next_steps::suggest_symbols(answer, index, request["fqn"].string().value_or(""), "detail");
  return next_steps::finish_answer(std::move(answer), "symbol", {.action = "detail", .arguments = &request});
}
// [misses]

// [index]
class OwnIndex : public models::Repository {
 public:
  void visit_symbols(const models::SymbolVisitor& visit) const override {
    if (is_locked) throw std::runtime_error("the index is locked");
    visit({.fqn = "pkg.mod.parse", .name = "parse", .kind = "function", .file = "pkg/mod.py", .line = 7});
  }
  void visit_paths(const models::PathVisitor& visit) const override { visit("pkg/mod.py"); }
  std::string indexed_revision() const override { return "4f1c2d9"; }
  std::string present_revision() const override { return "8a0be31"; }
  bool is_locked = false;
};
// [index]

// [names]
class LargeIndex final : public OwnIndex {
 public:
  void read_names() { names_ = std::make_shared<const models::NameIndex>(*this); }
  std::shared_ptr<const models::NameIndex> name_index() const override { return names_; }

 private:
  std::shared_ptr<const models::NameIndex> names_;
};
// [names]

// [catalogue]
constexpr const char* kTracker = R"({
  "hit_lists": ["issues"],
  "counts": [["page", "total"]],
  "arguments": {
    "number": {"answer": "number", "hit": "number"},
    "label": {"hit": ["label", "name"], "request": "label"}
  },
  "next_steps": {
    "issues": [
      {"tool": "issue", "args": {"view": "detail"}, "takes": "number", "reason": "The first issue in full"},
      {"tool": "issues", "takes": {"labels": ["label"]}, "reason": "All issues with its label"}
    ],
    "issue": [
      {"tool": "comments", "takes": {"issue_number": "number"}, "reason": "What was said about it"}
    ]
  },
  "signals": {
    "issues": {"hits_at_least": 50, "tool": "labels", "reason": "{hits} issues: choose a label"}
  },
  "misses": {
    "symbol": {
      "near": {"tool": "issues", "takes": {"labels": ["fqn"]}},
      "none": {"tool": "labels"}
    }
  }
}
)";
// [catalogue]

// [tracker]
next_steps::Catalogue catalogue_of(const char* json) {
  const JsonValue value = vantrex::adapters::from_nlohmann(nlohmann::ordered_json::parse(json));
  return next_steps::Catalogue::from_json(*value.object());
}

JsonObject issues(const JsonObject& request, const next_steps::Catalogue& catalogue) {
  const JsonObject first{{"number", 7}, {"label", JsonObject{{"name", "crash"}}}};
  JsonObject answer{{"issues", JsonList::of(first)}, {"page", JsonObject{{"total", 61}}}};
  return next_steps::finish_answer(std::move(answer), "issues",
                                   {.arguments = &request, .catalogue = &catalogue});
}

JsonObject unknown_label(std::string_view wanted, const models::Repository& labels,
                         const next_steps::Catalogue& catalogue) {
  JsonObject answer;
  next_steps::suggest_symbols(answer, labels, wanted, "", &catalogue);
  return next_steps::finish_answer(std::move(answer), "issues", {.catalogue = &catalogue});
}
// [tracker]

// [budget]
JsonList verdicts(const JsonObject& answer) {
  const auto explained = next_steps::explain_answer(answer, "symbol", {.action = "detail"});
  JsonList lines;
  for (const next_steps::CandidateStep& each : explained.candidates) lines.push_back(each.why());
  return lines;
}
// [budget]

// [values]
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
// [values]

// [foreign]
struct Revision {
  int number;
};

JsonObject status(Revision revision) {
  return {{"revision", ForeignValue::of(revision, "r" + std::to_string(revision.number))}};
}
// [foreign]

// [nlohmann]
nlohmann::ordered_json search(const nlohmann::ordered_json& answer, const nlohmann::ordered_json& request) {
  return vantrex::adapters::finish_answer(answer, "search", {.action = "symbols", .arguments = &request});
}
// [nlohmann]

// [finite]
JsonObject coverage(double covered, double lines) {
  const double share = covered / lines;
  return {{"lines", lines}, {"share", std::isfinite(share) ? JsonValue(share) : nullptr}};
}
// [finite]

// [logging]
void log_to(std::ostream& out) {
  logging::set_sink([&out](const logging::Record& record) {
    static std::mutex one_at_a_time;
    const std::scoped_lock lock(one_at_a_time);
    out << record.logger << ": " << record.message << '\n';
  });
}
// [logging]

// [thrown]
JsonObject named(const std::string& name) {
  try {
    return {{"name", name}};
  } catch (const InvalidUtf8& error) {
    return {{"name", Text::lossy(name)}, {"bad_byte", error.byte_offset()}};
  }
}
// [thrown]

}  // namespace

int main() {
  const auto print = [](const JsonObject& answer) {
    std::cout << tool_handlers::tool_result_text(answer) << '\n';
  };
  OwnIndex index;
  print(callers({{"fqn", "pkg.mod.parse"}}, index));
  print(ready({{"status"}, {"architecture", "components"}}));
  print(ready({{"status"}, {"symbol", "detail"}}));
  print(explore("how is a file read?"));
  print(not_found({{"fqn", "pkg.parser"}}, index));
  LargeIndex large;
  large.read_names();
  large.is_locked = true;
  print(not_found({{"fqn", "pkg.parser"}}, large));
  const next_steps::Catalogue tracker = catalogue_of(kTracker);
  print(issues({{"label", "crash"}}, tracker));
  models::InMemoryRepository labels;
  labels.add_symbol({.fqn = "crash", .name = "crash"});
  print(unknown_label("crush", labels, tracker));
  print({{"why",
          verdicts({{"fqn", "pkg.mod.parse"}, {"file", "pkg/mod.py"}, {"note", std::string(150, '.')}})}});
  print({{"row", row({"io", "text"}, Access::open)}, {"second tag", tag(row({"io"}, std::nullopt), 1)}});
  const JsonObject answer = status({42});
  print({{"answer", answer}, {"carried", answer["revision"].foreign()->as<Revision>()->number}});
  std::cout << search({{"results", nlohmann::ordered_json::array()}}, {{"query", "parse"}}) << '\n';
  print(coverage(0, 0));
  log_to(std::cout);
  index.is_locked = true;
  print(not_found({{"fqn", "pkg.parser"}}, index));
  print(named("caf\xE9"));
}
