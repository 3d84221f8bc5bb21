#include "vantrex/tool_handlers/next_steps/signals.h"

#include <string>
#include <utility>

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::Text;
using values::TextLiteral;

namespace {

constexpr TextLiteral kSemantic = "semantic";
constexpr TextLiteral kImpact = "impact";
constexpr TextLiteral kRecommended = "recommended";

bool counts_no_hits(const JsonObject& known) {
  return stated_integer(known["hits"]) == 0;
}

bool found_nothing_for_query(const JsonObject& known) {
  return counts_no_hits(known) && !known["query"].is_empty();
}

}  // namespace

std::optional<JsonObject> _search_by_meaning(const JsonObject& known) {
  if (!found_nothing_for_query(known)) return std::nullopt;
  return step("search", "No hits: search by meaning", {{"action", kSemantic}, {"query", known["query"]}});
}

std::optional<JsonObject> _ask_explore(const JsonObject& known) {
  if (!found_nothing_for_query(known)) return std::nullopt;
  return step("explore", "No close match: ask explore", {{"query", known["query"]}});
}

std::optional<JsonObject> _blast_radius(const JsonObject& known) {
  const std::optional<Integer> hits = stated_integer(known["hits"]);
  if (!hits || *hits < FAN_IN_FOR_IMPACT || known["fqn"].is_empty()) return std::nullopt;
  std::string reason = hits->digits();
  reason += ' ';
  reason += known["what"].string().value_or("");
  reason += ": check the blast radius";
  return step("quality", reason, {{"action", kImpact}, {"fqn", known["fqn"]}});
}

std::optional<JsonObject> _untested(const JsonObject& known) {
  if (!counts_no_hits(known) || !known["path"].string()) return std::nullopt;
  return step("tests", "No test covers it: tests for a change of it",
              {{"action", kRecommended}, {"changed_files", JsonList::of(known["path"])}});
}

const SignalRow* signal_row(std::string_view tool, std::optional<std::string_view> action) noexcept {
  return detail::find_joined(_SIGNALS, tool, action);
}

JsonObject known_to_signals(const AnswerView& answer, std::optional<std::string_view> action) {
  return {{"hits", answer.hit_count()},
          {"query", answer.requested_or_answered("query")},
          {"fqn", answer.requested_or_answered("fqn")},
          {"path", answer.arguments["path"]},
          {"what", Text::lossy(action.value_or(""))}};
}

JsonList _signals(const AnswerView& answer, std::string_view tool, std::optional<std::string_view> action) {
  JsonList steps;
  const SignalRow* row = signal_row(tool, action);
  if (row == nullptr) return steps;
  if (auto found = row->signal(known_to_signals(answer, action))) steps.push_back(*std::move(found));
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps
