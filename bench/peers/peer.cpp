#include "peers/peer.h"

#include <algorithm>
#include <array>
#include <bit>

#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::bench::peers {

namespace {

constexpr std::array<std::uint64_t, 20> kPowersOfTen = [] {
  std::array<std::uint64_t, 20> powers{};
  std::uint64_t power = 1;
  for (std::uint64_t& entry : powers) {
    entry = power;
    power *= 10;
  }
  return powers;
}();

}  // namespace

std::string answer_text(const Request& request) {
  return values::compact_text(request.answer);
}

std::string copy_text(const Request& request) {
  return values::compact_text(tool_handlers::next_steps::without_null_fields(request.answer));
}

std::size_t integer_size(std::int64_t number) noexcept {
  const auto bits = static_cast<std::uint64_t>(number);
  const std::uint64_t magnitude = number < 0 ? 0 - bits : bits;
  // 1233 / 4096 is a little more than the decimal digits of one bit.
  const auto digits = static_cast<std::size_t>(std::bit_width(magnitude | 1) * 1233 >> 12);
  return digits + (magnitude >= kPowersOfTen[digits] || digits == 0) + (number < 0);
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
