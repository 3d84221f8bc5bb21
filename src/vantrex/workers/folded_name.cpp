#include "vantrex/workers/folded_name.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#include "vantrex/models/ascii_case.h"
#include "vantrex/values/utf8.h"
#include "vantrex/workers/edit_distance.h"

namespace vantrex::workers {

namespace {

constexpr std::uint64_t kNoWord = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kMixer = 0xD6E8FEB86659FD93;

enum class Class : std::uint8_t { lower, upper, separator, beyond_ascii };

struct Letter {
  Class cls;
  char folded;
};

constexpr std::array<Letter, 256> kLetters = [] {
  std::array<Letter, 256> letters{};
  for (std::size_t byte = 0; byte < letters.size(); ++byte) {
    const char c = static_cast<char>(byte);
    const char folded = models::lower(c);
    const bool separates = c == '_' || c == '-' || c == ' ';
    const Class cls = byte >= 0x80  ? Class::beyond_ascii
                      : separates   ? Class::separator
                      : folded != c ? Class::upper
                                    : Class::lower;
    letters[byte] = {cls, folded};
  }
  return letters;
}();

constexpr Letter letter_of(char c) noexcept {
  return kLetters[static_cast<unsigned char>(c)];
}

// Whether the upper-case letter at `position` begins a word: it follows another kind of letter ("fileName"),
// or a lower-case letter follows it ("HTTPServer").
bool starts_camel_word(std::string_view name, std::size_t position) noexcept {
  if (position == 0) return false;
  if (letter_of(name[position - 1]).cls != Class::upper) return true;
  return position + 1 < name.size() && name[position + 1] >= 'a' && name[position + 1] <= 'z';
}

struct Decoded {
  char32_t code_point;
  std::size_t length;
};

// The code point beyond ASCII at the start of `bytes`, or a value above all code points for an ill-formed
// byte.
Decoded decode(std::string_view bytes) noexcept {
  const auto byte = [&](std::size_t position) { return static_cast<unsigned char>(bytes[position]); };
  const std::size_t length = values::utf8_sequence_length(bytes);
  if (length == 0) return {static_cast<char32_t>(0x110000U + byte(0)), 1};
  char32_t code_point = byte(0) & (0x7FU >> length);
  for (std::size_t position = 1; position < length; ++position) {
    code_point = (code_point << 6) | (byte(position) & 0x3FU);
  }
  return {code_point, length};
}

std::size_t bit_of(char32_t letter) noexcept {
  return letter % 64;
}

}  // namespace

void FoldedName::assign(std::string_view name) {
  letters.resize(name.size());
  char32_t* end = letters.data();
  std::uint64_t bits = 0;
  std::uint64_t sum_of_words = 0;
  std::uint64_t word = kNoWord;
  const auto end_word = [&] {
    if (word != kNoWord) sum_of_words += (word ^ (word >> 32)) * kMixer;
    word = kNoWord;
  };
  for (std::size_t position = 0; position < name.size();) {
    const Letter letter = letter_of(name[position]);
    Decoded decoded{static_cast<char32_t>(letter.folded), 1};
    if (letter.cls == Class::beyond_ascii) decoded = decode(name.substr(position));
    const bool camel_word = letter.cls == Class::upper && starts_camel_word(name, position);
    if (letter.cls == Class::separator || camel_word) end_word();
    position += decoded.length;
    if (letter.cls == Class::separator) continue;
    *end++ = decoded.code_point;
    bits |= std::uint64_t{1} << bit_of(decoded.code_point);
    word = (word ^ decoded.code_point) * kMixer;
    word ^= word >> 29;
  }
  end_word();
  letters.resize(static_cast<std::size_t>(end - letters.data()));
  letter_mask = bits;
  word_hash = sum_of_words;
}

std::size_t lacking_letters(const FoldedName& wanted, const FoldedName& name) noexcept {
  std::array<std::size_t, 64> available{};
  for (const char32_t letter : name.letters) ++available[bit_of(letter)];
  std::size_t lacking = 0;
  for (const char32_t letter : wanted.letters) {
    std::size_t& left = available[bit_of(letter)];
    if (left == 0) ++lacking;
    if (left > 0) --left;
  }
  return lacking;
}

std::size_t max_edits(const FoldedName& a, const FoldedName& b) noexcept {
  return std::min(std::max(a.letters.size(), b.letters.size()) / 3, kMaxEdits);
}

std::size_t min_edits(const FoldedName& a, const FoldedName& b) noexcept {
  const int missing =
      std::max(std::popcount(a.letter_mask & ~b.letter_mask), std::popcount(b.letter_mask & ~a.letter_mask));
  const std::size_t shorter = std::min(a.letters.size(), b.letters.size());
  return std::max(static_cast<std::size_t>(missing), std::max(a.letters.size(), b.letters.size()) - shorter);
}

}  // namespace vantrex::workers
