#include "vantrex/tool_handlers/next_steps/rules.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

constexpr std::array<std::string_view, 8> kKindNames = {
    "fqn", "path", "query", "component", "changed_files", "asked_fqn", "asked_query", "asked_path"};
static_assert(kKindNames.size() == static_cast<std::size_t>(ArgumentKind::own));

// Whether `key` equals `tool`, a colon and `action`, which may be any bytes.
bool is_joined_key(std::string_view key, std::string_view tool, std::string_view action) noexcept {
  return key.size() == tool.size() + 1 + action.size() && key.starts_with(tool) && key[tool.size()] == ':' &&
         key.ends_with(action);
}

// The row of `tool` and `action`, otherwise the row of `tool`, otherwise null.
template <typename Row>
const Row* row_of(std::span<const Row> rows, std::string_view tool,
                  std::optional<std::string_view> action) noexcept {
  const Row* row_of_tool = nullptr;
  for (const Row& row : rows) {
    if (action && is_joined_key(row.key, tool, *action)) return &row;
    if (row.key == tool) row_of_tool = &row;
  }
  return row_of_tool;
}

// Whether a call takes one kind under the name of the kind. The names of asked kinds do not serve for that.
bool is_plain(std::span<const Argument> takes) noexcept {
  return takes.size() == 1 && !takes[0].in_list && !is_asked(takes[0].kind) &&
         takes[0].name.view() == kind_name(takes[0]);
}

JsonValue taken_arguments(std::span<const Argument> takes) {
  if (is_plain(takes)) return kind_name(takes[0]);
  JsonObject arguments;
  for (const Argument& each : takes) {
    const JsonValue kind = kind_name(each);
    arguments.append(each.name, each.in_list ? JsonList::of(kind) : kind);
  }
  return arguments;
}

}  // namespace

std::span<const std::string_view> predefined_kinds() noexcept {
  return kKindNames;
}

std::string_view kind_name(const Argument& argument) noexcept {
  return argument.own != nullptr ? argument.own->name : kKindNames[static_cast<std::size_t>(argument.kind)];
}

bool takes_from_hits(const Argument& argument) noexcept {
  if (argument.own == nullptr) return argument.kind < ArgumentKind::changed_files;
  const auto& sources = argument.own->sources;
  return std::any_of(sources.begin(), sources.end(),
                     [](const ArgumentSource& each) { return each.in == ArgumentSource::In::hit; });
}

JsonObject constant_arguments(const Call& call) {
  const JsonObject& constants = call.args == nullptr ? kNoFields : *call.args;
  JsonObject args;
  args.reserve(constants.size() + 1 + call.takes.size());
  for (const auto& [key, value] : constants) args.append(key, value);
  if (call.action) args.append("action", *call.action);
  return args;
}

std::optional<std::string_view> action_of(const Call& call) noexcept {
  if (call.action) return call.action->view();
  return call.args == nullptr ? std::nullopt : (*call.args)["action"].string();
}

JsonObject to_dict(const Call& call) {
  JsonObject dict{{"tool", call.tool.text()}};
  if (JsonObject args = constant_arguments(call); !args.empty()) dict.append("args", std::move(args));
  if (!call.takes.empty()) dict.append("takes", taken_arguments(call.takes));
  if (!call.reason.view().empty()) dict.append("reason", call.reason.text());
  return dict;
}

const UsualRow* Tables::usual_row(std::string_view tool,
                                  std::optional<std::string_view> action) const noexcept {
  return row_of(usual, tool, action);
}

const SignalRow* Tables::signal_row(std::string_view tool,
                                    std::optional<std::string_view> action) const noexcept {
  const SignalRow* row = row_of(signals, tool, action);
  const bool is_ambiguous = row != nullptr && row->key == tool && tool.find(':') != std::string_view::npos;
  return is_ambiguous ? nullptr : row;
}

}  // namespace vantrex::tool_handlers::next_steps
