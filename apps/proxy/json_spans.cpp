#include "proxy/json_spans.h"

#include <algorithm>
#include <cstddef>

#include "proxy/names.h"
#include "requests/json_reader.h"

namespace next_steps_proxy {

namespace {

constexpr bool is_structure(char byte) {
  return byte == '"' || byte == '{' || byte == '}' || byte == '[' || byte == ']';
}
constexpr bool is_space(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\r';
}

// Takes items off the front of a text.
class Rest {
 public:
  explicit Rest(std::string_view text) : text_(text) {}

  // Takes `byte` if that comes next, and returns whether it does.
  bool take(char byte) {
    skip_space();
    const bool is_next = text_.starts_with(byte);
    text_.remove_prefix(is_next ? 1 : 0);
    return is_next;
  }

  // Takes a value; returns an empty span if none comes next.
  std::string_view take_value() {
    skip_space();
    std::size_t depth = 0;
    std::size_t at = 0;
    do {
      if (at == text_.size()) break;
      const char first = text_[at];
      if (first == '"') {
        at = string_end(at);
      } else if (first == '{' || first == '[') {
        ++depth;
        ++at;
      } else if (first == '}' || first == ']') {
        if (depth == 0) break;
        --depth;
        ++at;
      } else {
        const auto is_end = [depth](char byte) {
          return is_structure(byte) || (depth == 0 && (is_space(byte) || byte == ',' || byte == ':'));
        };
        while (at != text_.size() && !is_end(text_[at])) ++at;
      }
    } while (depth > 0);
    const std::string_view value = text_.substr(0, at);
    text_.remove_prefix(at);
    return value;
  }

 private:
  void skip_space() {
    while (!text_.empty() && is_space(text_[0])) text_.remove_prefix(1);
  }

  // The end of the string at `begin`.
  std::size_t string_end(std::size_t begin) const {
    while ((begin = text_.find('"', begin + 1)) != std::string_view::npos) {
      const std::size_t last = text_.find_last_not_of('\\', begin - 1);
      if ((begin - last) % 2 == 1) return begin + 1;
    }
    return text_.size();
  }

  std::string_view text_;
};

}  // namespace

std::string string_in(std::string_view span) {
  if (!span.starts_with('"')) return "";
  if (span.find('\\') == std::string_view::npos) return std::string(span.substr(1, span.size() - 2));
  const values::JsonValue text = requests::read_json(span);
  return std::string(text.string().value_or(""));
}

void find_members(std::string_view text, std::span<const std::string_view> keys,
                  std::span<std::string_view> found) {
  Rest rest(text);
  if (!rest.take('{')) return;
  do {
    const std::string key = string_in(rest.take_value());
    if (!rest.take(':')) return;
    const std::string_view value = rest.take_value();
    for (std::size_t i = 0; i < keys.size(); ++i) {
      if (key == keys[i]) found[i] = value;
    }
  } while (rest.take(','));
}

void visit_items(std::string_view text, const std::function<void(std::string_view item)>& visit) {
  Rest rest(text);
  if (!rest.take('[')) return;
  do {
    const std::string_view item = rest.take_value();
    if (!item.empty()) visit(item);
  } while (rest.take(','));
}

std::string spliced(std::string_view line, std::vector<NewValue> values) {
  const auto is_before = [](const NewValue& a, const NewValue& b) { return a.old.data() < b.old.data(); };
  std::sort(values.begin(), values.end(), is_before);
  std::string text;
  const char* at = line.data();
  for (const NewValue& value : values) {
    text.append(at, value.old.data()).append(value.text);
    at = value.old.data() + value.old.size();
  }
  return text.append(at, line.data() + line.size());
}

}  // namespace next_steps_proxy
