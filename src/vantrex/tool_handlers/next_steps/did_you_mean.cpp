#include "vantrex/tool_handlers/next_steps/did_you_mean.h"

#include <utility>

#include "vantrex/models/repository.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::tool_handlers::next_steps {

std::string quoted(std::string_view text) {
  return values::compact_text(values::Text::lossy(text));
}

std::string listed(std::span<const std::string_view> names) {
  std::string list;
  for (const std::string_view each : names) {
    if (!list.empty()) list += ", ";
    list += each;
  }
  return list;
}

std::optional<std::string> nearest_name(std::string_view name, std::span<const std::string_view> known) {
  models::InMemoryRepository names;
  for (const std::string_view each : known) names.add_symbol({.fqn = std::string(each)});
  auto nearest = workers::nearest_symbols(names, name);
  if (nearest.empty()) return std::nullopt;
  return std::move(nearest.front().fqn);
}

std::string unknown_name(std::string_view what, std::string_view name,
                         std::span<const std::string_view> known) {
  const auto nearest = nearest_name(name, known);
  return "unknown " + std::string(what) + ' ' + quoted(name) + "; " +
         (nearest ? "did you mean " + quoted(*nearest) + "?" : "known are " + listed(known));
}

}  // namespace vantrex::tool_handlers::next_steps
