#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "vantrex/tool_handlers/next_steps/explanation_parts.h"
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

}  // namespace

void list_hint_fields(Explanation& explained, const JsonObject& answer) {
  std::vector<Numbered> hints;
  visit_hints(&answer, nullptr, [&](const JsonValue& hint, const auto& /*levels*/) {
    hints.push_back({values::compact_size(hint), hints.size()});
  });
  const std::size_t count = std::min(Explanation::kMaxHintFields, hints.size());
  std::partial_sort(hints.begin(), hints.begin() + static_cast<std::ptrdiff_t>(count), hints.end(),
                    [](const Numbered& a, const Numbered& b) {
                      return a.bytes != b.bytes ? a.bytes > b.bytes : a.number < b.number;
                    });
  explained.more_hint_fields = hints.size() - count;
  explained.hint_fields.resize(count);
  std::map<std::size_t, std::string*> paths;  // that are listed, by the number of their field
  for (std::size_t place = 0; place < count; ++place) {
    explained.hint_fields[place].bytes = hints[place].bytes;
    paths[hints[place].number] = &explained.hint_fields[place].path;
  }
  std::size_t number = 0;
  visit_hints(&answer, nullptr, [&](const JsonValue& /*hint*/, const auto& levels) {
    if (const auto listed = paths.find(number++); listed != paths.end()) *listed->second = path_text(levels);
  });
}

}  // namespace vantrex::tool_handlers::next_steps
