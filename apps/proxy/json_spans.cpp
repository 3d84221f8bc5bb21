#include "proxy/json_spans.h"

#include <cstdint>
#include <cstring>

#include "proxy/names.h"
#include "requests/json_reader.h"

namespace next_steps_proxy {

namespace {

enum class Byte : std::uint8_t { other, separator, structure };

constexpr std::array<Byte, 256> kBytes = [] {
  std::array<Byte, 256> bytes{};
  for (const char each : {' ', '\t', '\r', '\n', ',', ':'})
    bytes[static_cast<unsigned char>(each)] = Byte::separator;
  for (const char each : {'"', '{', '}', '[', ']'}) bytes[static_cast<unsigned char>(each)] = Byte::structure;
  return bytes;
}();

// Walks over the values of one list or object.
class Walk {
 public:
  explicit Walk(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

  // Passes white space, and then `byte` if it is there; returns whether it was.
  bool pass(char byte) {
    pass_space();
    if (at_ == end_ || *at_ != byte) return false;
    ++at_;
    return true;
  }

  // Passes a value and returns its text, which is empty if there is none.
  std::string_view value() {
    pass_space();
    const char* const begin = at_;
    std::size_t depth = 0;
    do {
      if (at_ == end_) break;
      if (*at_ == '"') {
        pass_string();
      } else if (*at_ == '{' || *at_ == '[') {
        ++at_;
        ++depth;
      } else if (*at_ == '}' || *at_ == ']') {
        if (depth == 0) break;
        ++at_;
        --depth;
      } else {
        pass_up_to(depth == 0 ? Byte::separator : Byte::structure);
      }
    } while (depth > 0);
    return {begin, static_cast<std::size_t>(at_ - begin)};
  }

 private:
  void pass_space() {
    while (at_ != end_ && (*at_ == ' ' || *at_ == '\t' || *at_ == '\n' || *at_ == '\r')) ++at_;
  }
  void pass_up_to(Byte kind) {
    while (at_ != end_ && kBytes[static_cast<unsigned char>(*at_)] < kind) ++at_;
  }
  void pass_string() {
    const char* begin = ++at_;
    while (const void* found = std::memchr(begin, '"', static_cast<std::size_t>(end_ - begin))) {
      const char* const quote = static_cast<const char*>(found);
      const char* escapes = quote;
      while (escapes != begin && escapes[-1] == '\\') --escapes;
      begin = at_ = quote + 1;
      if ((quote - escapes) % 2 == 0) return;
    }
    at_ = end_;
  }

  const char* at_;
  const char* end_;
};

bool is_key(std::string_view text, std::string_view key) {
  if (text.find('\\') != std::string_view::npos) return requests::read_json(text) == key;
  return text.size() == key.size() + 2 && text.substr(1, key.size()) == key;
}

}  // namespace

void find_members(std::string_view text, std::span<const std::string_view> keys,
                  std::span<std::string_view> values) {
  Walk walk(text);
  if (!walk.pass('{')) return;
  do {
    const std::string_view key = walk.value();
    if (!walk.pass(':')) return;
    const std::string_view value = walk.value();
    for (std::size_t i = 0; i < keys.size(); ++i) {
      if (is_key(key, keys[i])) values[i] = value;
    }
  } while (walk.pass(','));
}

std::vector<std::string_view> items_of(std::string_view text) {
  std::vector<std::string_view> items;
  Walk walk(text);
  if (!walk.pass('[')) return items;
  do {
    const std::string_view item = walk.value();
    if (!item.empty()) items.push_back(item);
  } while (walk.pass(','));
  return items;
}

}  // namespace next_steps_proxy
