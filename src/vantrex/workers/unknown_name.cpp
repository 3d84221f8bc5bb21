#include "vantrex/workers/unknown_name.h"

#include <utility>

#include "vantrex/models/repository.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::workers {

std::string unknown_name(std::string_view what, std::string_view name,
                         std::span<const std::string_view> known) {
  std::string message = "unknown " + std::string(what) + ' ' + quoted(name) + "; ";
  if (const auto nearest = nearest_name(name, known))
    return message + "did you mean " + quoted(*nearest) + "?";
  message += "known are ";
  std::string_view separator;
  for (const std::string_view each : known) message.append(std::exchange(separator, ", ")).append(each);
  return message;
}

std::optional<std::string> nearest_name(std::string_view name, std::span<const std::string_view> known) {
  models::InMemoryRepository index;
  for (const std::string_view each : known) index.add_symbol({.fqn = each});
  auto nearest = nearest_symbols(index, name);
  if (nearest.empty()) return std::nullopt;
  return std::move(nearest.front().fqn);
}

std::string quoted(std::string_view text) {
  return values::compact_text(values::JsonValue(values::Text::lossy(text)));
}

}  // namespace vantrex::workers
