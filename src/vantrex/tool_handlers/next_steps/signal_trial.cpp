#include "vantrex/tool_handlers/next_steps/signal_trial.h"

#include <array>
#include <optional>

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonObject;
using values::JsonValue;

namespace {

constexpr std::array<std::string_view, 3> kFields = {"query", "fqn", "path"};

// "1 caller", "7 callers".
std::string counted(const Integer& count, std::string_view noun) {
  if (count == Integer(1)) noun.remove_suffix(1);
  return count.digits() + ' ' + std::string(noun);
}

}  // namespace

SignalTrial::SignalTrial(const SignalRow& row)
    : row_(row),
      made_up_{{"hits", nullptr},
               {"query", "QUERY"},
               {"fqn", "FQN"},
               {"path", "PATH"},
               {"what", row.key.substr(row.key.find(':') + 1)}} {
  constexpr std::int64_t kMaxHits = 1000;
  while (!fires_with("hits", hits_) && hits_ < kMaxHits) ++hits_;
  made_up_.set("hits", hits_);
}

bool SignalTrial::takes_more_hits() const {
  return fires_with("hits", hits_ + 1);
}

std::vector<std::string_view> SignalTrial::fields() const {
  std::vector<std::string_view> wanted;
  for (const std::string_view field : kFields) {
    if (!fires_with(field, nullptr)) wanted.push_back(field);
  }
  return wanted;
}

JsonObject SignalTrial::step() const {
  return row_.signal(made_up_).value();
}

std::string SignalTrial::lacks(const JsonObject& known) const {
  std::string text = fires_with("hits", known["hits"]) ? "" : lacking_hits(known);
  for (const std::string_view field : kFields) {
    if (fires_with(field, known[field])) continue;
    if (!text.empty()) text += ", ";
    text += "no " + std::string(field);
  }
  return text;
}

bool SignalTrial::fires_with(std::string_view field, const JsonValue& value) const {
  JsonObject changed = made_up_;
  changed.set(field, value);
  return row_.signal(changed).has_value();
}

std::string SignalTrial::lacking_hits(const JsonObject& known) const {
  const std::optional<Integer> count = known["hits"].integer();
  if (!count) return "no count of hits";
  const std::string wanted = std::to_string(hits_);
  if (!takes_more_hits()) return counted(*count, "hits") + ", not " + wanted;
  return counted(*count, known["what"].string().value_or("hits")) + ", " + wanted + " are needed";
}

}  // namespace vantrex::tool_handlers::next_steps
