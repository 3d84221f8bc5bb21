#include "peers/steps.h"

#include <algorithm>
#include <cstring>

namespace vantrex::bench {

namespace {

constexpr Hint kCallers{"symbol", "callers", "fqn", "Who calls the best hit"};
constexpr Hint kReferences{"symbol", "references", "fqn", "Every use of it"};
constexpr std::array kOfSymbol = {kReferences, kCallers};
constexpr std::array kOfDetail = {kCallers, kReferences,
                                  Hint{"tests", "for_file", "path", "Its file's tests"}};
constexpr std::array kOfCallers = {Hint{"quality", "impact", "fqn", " callers: check the blast radius", true},
                                   kReferences};
constexpr std::array kOfSearch = {Hint{"symbol", "detail", "fqn", "Details of the best hit"}, kCallers};
constexpr std::array kOfFiles = {Hint{"file", "symbols", "path", "Symbols of the first file"}};

// Bytes that `byte` gains by being escaped.
constexpr std::array<std::uint8_t, 256> kEscapeGain = [] {
  std::array<std::uint8_t, 256> gain{};
  for (std::size_t byte = 0; byte < 0x20; ++byte) gain[byte] = 5;
  for (const char byte : {'"', '\\', '\b', '\f', '\n', '\r', '\t'})
    gain[static_cast<unsigned char>(byte)] = 1;
  return gain;
}();

constexpr std::uint64_t all(std::uint64_t byte) {
  return byte * 0x0101010101010101;
}

// Whether one of eight bytes may gain: exact for a word without such a byte.
bool may_gain(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, 8);
  const auto below = [](std::uint64_t eight, std::uint64_t bound) { return (eight - all(bound)) & ~eight; };
  const std::uint64_t found = below(word, 0x20) | below(word ^ all('"'), 1) | below(word ^ all('\\'), 1);
  return (found & all(0x80)) != 0;
}

std::size_t gain(const char* bytes, std::size_t count) {
  std::size_t sum = 0;
  for (std::size_t at = 0; at < count; ++at) sum += kEscapeGain[static_cast<unsigned char>(bytes[at])];
  return sum;
}

}  // namespace

std::span<const Hint> hints_of(const Subject& subject) {
  if (subject.tool == "search") return kOfSearch;
  if (subject.tool == "files") return kOfFiles;
  if (subject.action == "detail") return kOfDetail;
  if (subject.action == "callers") return kOfCallers;
  return kOfSymbol;
}

bool is_hint_key(std::string_view key) noexcept {
  constexpr std::array<std::string_view, 7> kKeys = {"hint",  "hints", "next_steps", "note",
                                                     "notes", "tip",   "tips"};
  return (key.starts_with('h') || key.starts_with('n') || key.starts_with('t')) &&
         std::find(kKeys.begin(), kKeys.end(), key) != kKeys.end();
}

// Only words of eight bytes in which one may gain are looked at byte by byte.
std::size_t string_size(std::string_view text) noexcept {
  const std::size_t size = text.size() + 2;
  if (text.size() < 8) return size + gain(text.data(), text.size());
  const char* const last_word = text.data() + text.size() - 8;
  std::size_t sum = 0;
  const char* at = text.data();
  for (; at < last_word; at += 8) {
    if (may_gain(at)) sum += gain(at, 8);
  }
  if (may_gain(last_word)) sum += gain(at, static_cast<std::size_t>(last_word + 8 - at));
  return size + sum;
}

std::size_t integer_size(std::int64_t number) noexcept {
  const auto bits = static_cast<std::uint64_t>(number);
  std::size_t size = number < 0 ? 2 : 1;
  for (std::uint64_t left = number < 0 ? 0 - bits : bits; left >= 10; left /= 10) ++size;
  return size;
}

void Steps::add(const Hint& hint, std::string_view value, std::int64_t hits) {
  std::string_view reason = hint.reason;
  if (hint.is_signal) reason = counted_reason_ = std::to_string(hits).append(hint.reason);
  constexpr std::size_t kFrame =
      std::string_view(R"({"tool":"","args":{"action":"","":},"reason":""})").size();
  const std::size_t bytes =
      kFrame + hint.tool.size() + hint.action.size() + hint.takes.size() + string_size(value) + reason.size();
  steps_[count_++] = {&hint, value, reason, bytes};
}

// The list with its brackets and commas, and the key before it.
std::size_t Steps::added() const noexcept {
  constexpr std::size_t kKeyBytes = std::string_view(R"(,"next_steps":)").size();
  std::size_t bytes = kKeyBytes + 1 + count_;
  for (const Step& step : *this) bytes += step.bytes;
  return bytes;
}

bool Steps::fits(std::size_t hints, std::size_t bytes) const noexcept {
  const double room = std::max(0.15 * static_cast<double>(bytes + added()), double{kFloor});
  return static_cast<double>(hints + added()) <= room;
}

}  // namespace vantrex::bench
