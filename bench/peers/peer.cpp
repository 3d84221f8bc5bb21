#include "peers/peer.h"

#include <algorithm>

namespace vantrex::bench::peers {

namespace {

constexpr std::array<std::uint8_t, 256> kEscapeGain = [] {
  std::array<std::uint8_t, 256> gain{};
  std::fill_n(gain.begin(), 0x20, std::uint8_t{5});
  for (const char byte : {'"', '\\', '\b', '\f', '\n', '\r', '\t'})
    gain[static_cast<unsigned char>(byte)] = 1;
  return gain;
}();

std::size_t escape_gain(const char* bytes, std::size_t count) noexcept {
  std::size_t gain = 0;
  for (std::size_t at = 0; at < count; ++at) gain += kEscapeGain[static_cast<unsigned char>(bytes[at])];
  return gain;
}

// Whether any of 16 bytes needs an escape, in a form that compilers vectorise.
bool any_escape(const char* bytes) noexcept {
  unsigned char any = 0;
  for (int at = 0; at < 16; ++at) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    any = static_cast<unsigned char>(any | (byte < 0x20) | (byte == '"') | (byte == '\\'));
  }
  return any != 0;
}

}  // namespace

std::size_t string_size(std::string_view text) noexcept {
  std::size_t size = text.size() + 2;
  while (text.size() >= 16) {
    if (any_escape(text.data())) size += escape_gain(text.data(), 16);
    text.remove_prefix(16);
  }
  return size + escape_gain(text.data(), text.size());
}

std::size_t integer_size(std::int64_t number) noexcept {
  std::size_t size = number < 0 ? 2 : 1;
  auto magnitude = static_cast<std::uint64_t>(number);
  if (number < 0) magnitude = 0 - magnitude;
  for (; magnitude >= 10000; magnitude /= 10000) size += 4;
  return size + (magnitude >= 10) + (magnitude >= 100) + (magnitude >= 1000);
}

std::size_t steps_that_fit(Size answer, std::size_t first, std::size_t second) noexcept {
  constexpr std::size_t kKeyBytes = 14;  // ,"next_steps":
  const std::size_t added = kKeyBytes + 3 + first + second;
  const double room = std::max(0.15 * static_cast<double>(answer.text + added), 320.0);
  return static_cast<double>(answer.hints + added) <= room ? 2 : 1;
}

std::string reason_of(const PlannedStep& step, std::int64_t total) {
  std::string reason = step.counted ? std::to_string(total) : std::string();
  reason += step.reason;
  return reason;
}

}  // namespace vantrex::bench::peers
