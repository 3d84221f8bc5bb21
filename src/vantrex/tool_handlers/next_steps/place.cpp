#include "vantrex/tool_handlers/next_steps/place.h"

#include <algorithm>

#include "vantrex/workers/unknown_name.h"

namespace vantrex::tool_handlers::next_steps {

namespace {

bool is_plain_name(std::string_view key) noexcept {
  const auto is_plain = [](unsigned char byte) {
    return byte == '_' || byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
  };
  return !key.empty() && std::all_of(key.begin(), key.end(), is_plain);
}

}  // namespace

void append_key(std::string& place, std::string_view key) {
  if (!is_plain_name(key)) {
    place += '[' + workers::quoted(key) + ']';
  } else {
    if (!place.empty()) place += '.';
    place += key;
  }
}

void append_position(std::string& place, std::size_t position) {
  place += '[' + std::to_string(position) + ']';
}

}  // namespace vantrex::tool_handlers::next_steps
