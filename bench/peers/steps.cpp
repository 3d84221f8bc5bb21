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

// The bytes that escaping adds to `text`.
std::size_t gain(std::string_view text) {
  std::size_t sum = 0;
  for (const char byte : text) {
    if (byte == '"' || byte == '\\' || (byte >= '\b' && byte <= '\r' && byte != '\v')) {
      ++sum;
    } else if (static_cast<unsigned char>(byte) < 0x20) {
      sum += 5;
    }
  }
  return sum;
}

// Whether one of the eight bytes may need escaping.
bool may_gain(const char* bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, 8);
  const auto below = [](std::uint64_t eight, std::uint64_t bound) {
    return (eight - kOnes * bound) & ~eight;
  };
  return ((below(word, 0x20) | below(word ^ kOnes * '"', 1) | below(word ^ kOnes * '\\', 1)) & kOnes << 7) !=
         0;
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

std::size_t string_size(std::string_view text) noexcept {
  std::size_t size = text.size() + 2;
  for (; text.size() >= 8; text.remove_prefix(8)) {
    if (may_gain(text.data())) size += gain(text.substr(0, 8));
  }
  return size + gain(text);
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

// The bytes of the field "next_steps", with its key and the comma before it.
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
