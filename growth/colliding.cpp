#include "colliding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string_view>

namespace vantrex::growth {

namespace {

// The hash of libstdc++ is MurmurHash64A with a fixed seed. For each word it multiplies the exclusive or of
// its state and the mixed word by an odd number. All of that is invertible, so for any first word there is a
// second one that leads to a chosen state.
constexpr std::uint64_t kMultiplier = 0xC6A4A7935BD1E995;
constexpr std::uint64_t kSeed = 0xC70F6907;
constexpr std::uint64_t kInverse = [] {
  std::uint64_t inverse = 1;
  for (int bits = 1; bits < 64; bits *= 2) inverse *= 2 - kMultiplier * inverse;
  return inverse;
}();
static_assert(kMultiplier * kInverse == 1);

using Word = std::uint64_t;
constexpr std::uint64_t kChosenState = 0;

constexpr std::uint64_t shifted(std::uint64_t bits) noexcept {
  return bits ^ (bits >> 47);  // its own inverse
}

Word second_word(Word first) noexcept {
  const std::uint64_t start = kSeed ^ (2 * sizeof(Word) * kMultiplier);
  const std::uint64_t state = (start ^ (shifted(first * kMultiplier) * kMultiplier)) * kMultiplier;
  return shifted((state ^ kChosenState) * kInverse) * kInverse;
}

using Letters = std::array<char, sizeof(Word)>;

bool is_plain(const Letters& letters) noexcept {
  return std::all_of(letters.begin(), letters.end(),
                     [](char c) { return c > ' ' && c <= '~' && c != '"' && c != '\\'; });
}

}  // namespace

std::vector<std::string> colliding_texts(std::size_t count) {
  constexpr std::hash<std::string_view> hash;
  std::vector<std::string> texts;
  for (std::uint32_t number = 0; texts.size() < count; ++number) {
    // The eight digits to the base 16, as letters from "a" on.
    Letters first;
    for (std::size_t place = 0; place < first.size(); ++place)
      first[place] = static_cast<char>('a' + ((number >> (4 * place)) & 0xF));
    const Letters second = std::bit_cast<Letters>(second_word(std::bit_cast<Word>(first)));
    if (!is_plain(second)) continue;
    texts.emplace_back(first.data(), first.size()).append(second.data(), second.size());
    if (hash(texts.back()) != hash(texts.front()))
      throw std::logic_error("the standard library's hash is not that of libstdc++");
  }
  return texts;
}

}  // namespace vantrex::growth
