#include "vantrex/workers/unknown_name.h"

#include "vantrex/models/repository.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::workers {

namespace {

std::string quoted(std::string_view text) {
  return values::compact_text(values::JsonValue(values::Text::lossy(text)));
}

}  // namespace

std::string unknown_name(std::string_view what, std::string_view name,
                         std::span<const std::string_view> known) {
  models::InMemoryRepository index;
  for (const std::string_view each : known) index.add_symbol({.fqn = std::string(each)});
  const auto nearest = nearest_symbols(index, name);
  return "unknown " + std::string(what) + ' ' + quoted(name) + "; " +
         (nearest.empty() ? "known are " + listed(known)
                          : "did you mean " + quoted(nearest.front().fqn) + "?");
}

std::string listed(std::span<const std::string_view> names) {
  std::string list;
  for (const std::string_view each : names) {
    if (!list.empty()) list += ", ";
    list += each;
  }
  return list;
}

}  // namespace vantrex::workers
