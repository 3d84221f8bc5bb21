#include "vantrex/tool_handlers/next_steps/usual.h"

#include <algorithm>
#include <utility>

#include "vantrex/tool_handlers/next_steps/step.h"
#include "vantrex/tool_handlers/next_steps/test_scope.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

constinit const JsonValue kNothing(nullptr);

// The first value that `take(item, strings)` finds in a hit, over all hit lists in order, or null. Only the
// items of a top-level list "files" may be plain paths.
template <typename Take>
const JsonValue* first_in_hits(const AnswerView& answer, Take take) {
  for (std::size_t place = 0; place < answer.hit_lists().size(); ++place) {
    const JsonList* list = answer.hit_lists()[place];
    if (list == nullptr) continue;
    const KeyPath path = answer.tables().hit_lists[place];
    const auto strings =
        path.size() == 1 && path[0] == "files" ? PlainStrings::are_paths : PlainStrings::ignored;
    for (const JsonValue& item : *list) {
      if (const JsonValue* value = take(item, strings)) return value;
    }
  }
  return nullptr;
}

// The value that `takes` finds in a hit, or null.
const JsonValue* taken_from_hit(const JsonValue& item, PlainStrings strings, Takes takes) {
  if (takes == Takes::path) return item_path(item, strings);
  if (takes == Takes::component) return if_string(item["name"]);
  return item.object() != nullptr && _is_code_hit(*item.object()) ? if_string(item["fqn"]) : nullptr;
}

const JsonValue* if_string_or_integer(const JsonValue& value) noexcept {
  return value.kind() == Kind::string || value.kind() == Kind::integer ? &value : nullptr;
}

// The value of an own kind in one of its sources, or null.
const JsonValue* own_value(const AnswerView& answer, const ArgumentSource& source) {
  if (source.in != ArgumentSource::In::hit) {
    const bool in_answer = source.in == ArgumentSource::In::answer;
    return if_string_or_integer(value_at(in_answer ? answer.response : answer.arguments, source.path));
  }
  return first_in_hits(answer, [&source](const JsonValue& item, PlainStrings) {
    return if_string_or_integer(value_at(item, source.path));
  });
}

const JsonValue* if_not_empty(const JsonValue& value) noexcept {
  return value.is_empty() ? nullptr : &value;
}

// The value of an argument that is not `changed_files`, or null.
const JsonValue* value_of(const Argument& argument, const AnswerView& answer) {
  switch (argument.kind) {
    case ArgumentKind::asked_fqn:
      return if_not_empty(answer.requested_or_answered("fqn"));
    case ArgumentKind::asked_query:
      return if_not_empty(answer.requested_or_answered("query"));
    case ArgumentKind::asked_path:
      return if_string(answer.arguments["path"]);
    case ArgumentKind::own:
      for (const ArgumentSource& source : argument.own->sources) {
        if (const JsonValue* value = own_value(answer, source)) return value;
      }
      return nullptr;
    default:
      const JsonValue& value = _taken(answer, static_cast<Takes>(argument.kind));
      return value.is_null() ? nullptr : &value;
  }
}

}  // namespace

const JsonValue& _taken(const AnswerView& answer, Takes takes) {
  if (takes == Takes::query) return answer.requested_or_answered("query");
  const bool is_path = takes == Takes::path;
  if (is_path || takes == Takes::fqn) {
    const JsonValue& own = answer.response[is_path ? "file" : "fqn"];
    if (own.text() != nullptr) return own;
  }
  const auto take = [takes](const JsonValue& item, PlainStrings strings) {
    return taken_from_hit(item, strings, takes);
  };
  if (const JsonValue* value = first_in_hits(answer, take)) return *value;
  if (is_path || takes == Takes::fqn) {
    const JsonValue& requested = answer.arguments[text(takes)];
    if (requested.text() != nullptr) return requested;
  }
  return kNothing;
}

std::variant<JsonObject, Lack> call_arguments(const Call& call, const AnswerView& answer) {
  JsonObject args = constant_arguments(call);
  for (const Argument& each : call.takes) {
    if (each.kind == ArgumentKind::changed_files) {
      const JsonObject scope = _tests_scope(answer.response, answer.arguments);
      if (scope.empty()) return Lack{&each};
      for (const auto& [key, value] : scope) args.append(key, value);
      continue;
    }
    const JsonValue* value = value_of(each, answer);
    if (value == nullptr) return Lack{&each};
    args.append(each.name, each.in_list ? JsonList::of(*value) : *value);
  }
  return args;
}

std::variant<JsonObject, Lack> follow_up_arguments(const Call& call, const AnswerView& answer) {
  if (answer.has_no_hits() && std::any_of(call.takes.begin(), call.takes.end(), takes_from_hits)) {
    return Lack{nullptr};
  }
  return call_arguments(call, answer);
}

JsonList _usual(const AnswerView& answer, std::string_view tool, std::optional<std::string_view> action) {
  JsonList steps;
  const UsualRow* row = answer.tables().usual_row(tool, action);
  if (row == nullptr) return steps;
  steps.reserve(row->calls.size());
  for (const Call& call : row->calls) {
    auto given = follow_up_arguments(call, answer);
    if (auto* args = std::get_if<JsonObject>(&given)) {
      steps.push_back(step(call.tool, call.reason, std::move(*args)));
    }
  }
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps
