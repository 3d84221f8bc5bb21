#include "support/table.h"

#include <utility>

#include "vantrex/adapters/nlohmann_json.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tests {

values::JsonValue parse(std::string_view text) {
  return adapters::from_nlohmann(nlohmann::ordered_json::parse(text));
}
values::JsonObject parse_object(std::string_view text) {
  values::JsonValue value = parse(text);
  return std::move(*value.object());
}

std::string calls_of(const values::JsonObject& answer) {
  std::string calls;
  for (std::size_t place = 0; !answer["next_steps"][place].is_null(); ++place) {
    const values::JsonValue& step = answer["next_steps"][place];
    calls += (calls.empty() ? "" : " ") + std::string(*step["tool"].string()) + compact_text(step["args"]);
  }
  return calls.empty() ? "none" : calls;
}

std::string replaced(std::string text, std::string_view mark, std::string_view by) {
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += by.size())
    text.replace(at, mark.size(), by);
  return text;
}

}  // namespace vantrex::tests
