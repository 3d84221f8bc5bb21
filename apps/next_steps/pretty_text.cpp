#include "next_steps/pretty_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using vantrex::values::compact_text;
using vantrex::values::JsonField;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

// Deeper levels are indented like this one; otherwise the size of the text would be
// quadratic in the depth.
constexpr std::size_t kDeepestIndent = 100;

class PrettyWriter {
 public:
  std::string write(const JsonValue& value) {
    begin(value);
    while (!open_.empty()) {
      Open& container = open_.back();
      if (container.next == size_of(container)) {
        end();
      } else {
        next_item(container);
      }
    }
    return std::move(text_);
  }

 private:
  // An open list or object.
  struct Open {
    const JsonList* list;
    const JsonObject* object;
    std::size_t next = 0;
  };

  static std::size_t size_of(const Open& container) {
    return container.list != nullptr ? container.list->size() : container.object->size();
  }

  void begin(const JsonValue& value) {
    const Open container{.list = value.list(), .object = value.object()};
    const bool nests = container.list != nullptr || container.object != nullptr;
    if (!nests || size_of(container) == 0) {
      text_ += compact_text(value);
      return;
    }
    text_ += container.list != nullptr ? '[' : '{';
    open_.push_back(container);
  }

  void next_item(Open& container) {
    const std::size_t position = container.next++;
    if (position > 0) text_ += ',';
    new_line();
    if (container.list != nullptr) return begin((*container.list)[position]);
    const JsonField& field = container.object->begin()[position];
    text_ += compact_text(JsonValue(field.key));
    text_ += ": ";
    begin(field.value);
  }

  void end() {
    const bool is_list = open_.back().list != nullptr;
    open_.pop_back();
    new_line();
    text_ += is_list ? ']' : '}';
  }

  void new_line() {
    text_ += '\n';
    text_.append(2 * std::min(open_.size(), kDeepestIndent), ' ');
  }

  std::string text_;
  std::vector<Open> open_;
};

}  // namespace

std::string pretty_text(const JsonValue& value) {
  return PrettyWriter().write(value);
}

}  // namespace next_steps_program
