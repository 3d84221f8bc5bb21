#include "vantrex/tool_handlers/next_steps/signals.h"

#include <string>
#include <utility>

#include "vantrex/tool_handlers/next_steps/usual.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Text;
using values::TextLiteral;

namespace {

bool counts_no_hits(const JsonObject& known) {
  return known["hits"].integer() == Integer(0);
}

bool found_nothing_for_query(const JsonObject& known) {
  return counts_no_hits(known) && !known["query"].is_empty();
}

// What the request says under `key` when it says something, else the answer.
const JsonValue& requested_or_answered(const JsonObject& arguments, const JsonObject& response,
                                       std::string_view key) {
  const JsonValue& requested = arguments[key];
  return requested.is_empty() ? response[key] : requested;
}

}  // namespace

std::optional<JsonObject> _search_by_meaning(const JsonObject& known) {
  if (!found_nothing_for_query(known)) return std::nullopt;
  return step(TextLiteral("search"), TextLiteral("No hits: search by meaning"),
              {{TextLiteral("action"), TextLiteral("semantic")}, {TextLiteral("query"), known["query"]}});
}

std::optional<JsonObject> _ask_explore(const JsonObject& known) {
  if (!found_nothing_for_query(known)) return std::nullopt;
  return step(TextLiteral("explore"), TextLiteral("No close match: ask explore"),
              {{TextLiteral("query"), known["query"]}});
}

std::optional<JsonObject> _blast_radius(const JsonObject& known) {
  const std::optional<Integer> hits = known["hits"].integer();
  if (!hits || *hits < Integer(FAN_IN_FOR_IMPACT) || known["fqn"].is_empty()) return std::nullopt;
  std::string reason = hits->digits();
  reason += ' ';
  reason += known["what"].string().value_or("");
  reason += ": check the blast radius";
  return step(TextLiteral("quality"), Text(reason),
              {{TextLiteral("action"), TextLiteral("impact")}, {TextLiteral("fqn"), known["fqn"]}});
}

std::optional<JsonObject> _untested(const JsonObject& known) {
  if (!counts_no_hits(known) || !known["path"].string()) return std::nullopt;
  return step(TextLiteral("tests"), TextLiteral("No test covers it: tests for a change of it"),
              {{TextLiteral("action"), TextLiteral("recommended")},
               {TextLiteral("changed_files"), JsonList::of(known["path"])}});
}

const SignalRow* signal_row(std::string_view tool, std::optional<std::string_view> action) noexcept {
  return detail::find_joined(_SIGNALS, tool, action);
}

JsonList _signals(const JsonObject& response, std::string_view tool, std::optional<std::string_view> action,
                  const JsonObject& arguments) {
  JsonList steps;
  const SignalRow* row = signal_row(tool, action);
  if (row == nullptr) return steps;
  JsonObject known;
  known.reserve(5);
  known.append(TextLiteral("hits"), _hit_count(response));
  known.append(TextLiteral("query"), requested_or_answered(arguments, response, "query"));
  known.append(TextLiteral("fqn"), requested_or_answered(arguments, response, "fqn"));
  known.append(TextLiteral("path"), arguments["path"]);
  known.append(TextLiteral("what"), Text::lossy(action.value_or("")));
  if (auto found = row->signal(known)) steps.push_back(*std::move(found));
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps
