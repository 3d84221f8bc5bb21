#include "vantrex/tool_handlers/next_steps/hint_fields.h"

#include <algorithm>
#include <string>
#include <utility>

#include "vantrex/tool_handlers/next_steps/hint_walk.h"
#include "vantrex/tool_handlers/next_steps/place.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonField;
using values::JsonObject;
using values::JsonValue;

namespace {

// The path to the current field of a walk: "results[3].note".
template <typename Levels>
std::string path_text(const Levels& levels) {
  std::string path;
  const JsonValue* reached = nullptr;  // null for the root
  for (std::size_t depth = 0; depth < levels.size(); ++depth) {
    const auto& level = levels[depth];
    if (level.fields_end != nullptr) {
      const JsonField& field = *(level.field - 1);
      append_key(path, field.key.view());
      reached = &field.value;
    } else {
      const JsonValue* item = level.item - 1;
      // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the first level is an object.
      append_position(path, static_cast<std::size_t>(item - reached->list()->begin()));
      reached = item;
    }
  }
  return path;
}

// The bytes of a hint field, and its number in the order of the answer.
struct Numbered {
  std::size_t bytes;
  std::size_t number;
};

std::vector<Numbered> all_hints(const JsonObject& answer) {
  std::vector<Numbered> hints;
  HintWalk walk([&](const JsonValue& hint, const auto& /*levels*/) {
    hints.push_back({values::compact_size(hint), hints.size()});
  });
  walk.open(answer);
  walk.finish();
  return hints;
}

}  // namespace

ListedHints largest_hints(const JsonObject& answer, std::size_t max) {
  std::vector<Numbered> hints = all_hints(answer);
  const std::size_t others = hints.size() - std::min(max, hints.size());
  std::partial_sort(hints.begin(), hints.end() - static_cast<std::ptrdiff_t>(others), hints.end(),
                    [](const Numbered& a, const Numbered& b) {
                      return a.bytes != b.bytes ? a.bytes > b.bytes : a.number < b.number;
                    });
  hints.resize(hints.size() - others);

  ListedHints listed{{}, others};
  std::vector<std::pair<std::size_t, std::size_t>> places;  // the number of each, and its place in the list
  for (const Numbered& hint : hints) {
    places.emplace_back(hint.number, places.size());
    listed.largest.push_back({"", hint.bytes});
  }
  std::sort(places.begin(), places.end());
  auto next = places.begin();
  std::size_t number = 0;
  HintWalk walk([&](const JsonValue& /*hint*/, const auto& levels) {
    if (next == places.end() || next->first != number++) return;
    listed.largest[next++->second].path = path_text(levels);
  });
  walk.open(answer);
  walk.finish();
  return listed;
}

}  // namespace vantrex::tool_handlers::next_steps
