#include "vantrex/names/folded_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "vantrex/names/ascii_case.h"
#include "vantrex/values/utf8.h"

namespace vantrex::names {

namespace {

enum class Class : std::uint8_t { lower, upper, separator, beyond_ascii };

struct Letter {
  Class cls;
  char folded;
};

constexpr std::array<Letter, 256> kLetters = [] {
  std::array<Letter, 256> letters{};
  for (std::size_t byte = 0; byte < letters.size(); ++byte) {
    const char c = static_cast<char>(byte);
    const char folded = lower(c);
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

// Of 32 numbers, one each for the ASCII letters, and five for other ASCII characters.
std::size_t hash_of(char32_t letter) noexcept {
  return letter < 'a' ? 27 + letter % 5 : letter % 32;
}

}  // namespace

void FoldedName::assign(std::string_view name) {
  letters_.resize(name.size());
  word_ends_.clear();
  std::size_t size = 0;
  std::uint64_t mask = 0;
  const auto end_word = [&] {
    if (size > (word_ends_.empty() ? 0 : word_ends_.back())) word_ends_.push_back(size);
  };
  for (std::size_t position = 0; position < name.size();) {
    const Letter letter = letter_of(name[position]);
    Decoded decoded{static_cast<char32_t>(letter.folded), 1};
    if (letter.cls == Class::beyond_ascii) decoded = decode(name.substr(position));
    const bool camel_word = letter.cls == Class::upper && starts_camel_word(name, position);
    if (letter.cls == Class::separator || camel_word) end_word();
    position += decoded.length;
    if (letter.cls == Class::separator) continue;
    letters_[size++] = decoded.code_point;
    const std::size_t hash = hash_of(decoded.code_point);
    const std::uint64_t again = (mask >> hash) & 1;
    mask |= std::uint64_t{1} << (hash + 32 * again);
  }
  end_word();
  letters_.resize(size);
  mask_ = mask;
}

bool FoldedName::has_words_of(const FoldedName& other) const {
  return letters_.size() == other.letters_.size() && mask_ == other.mask_ &&
         sorted_words() == other.sorted_words();
}

std::vector<std::u32string_view> FoldedName::sorted_words() const {
  std::vector<std::u32string_view> words;
  std::size_t start = 0;
  for (const std::size_t end : word_ends_) {
    words.push_back(std::u32string_view(letters_).substr(start, end - start));
    start = end;
  }
  std::sort(words.begin(), words.end());
  return words;
}

std::size_t lacking_letters(FoldedView wanted, FoldedView name) noexcept {
  std::array<std::size_t, 32> available{};
  for (const char32_t letter : name.letters) ++available[hash_of(letter)];
  std::size_t lacking = 0;
  for (const char32_t letter : wanted.letters) {
    std::size_t& left = available[hash_of(letter)];
    if (left == 0) ++lacking;
    if (left > 0) --left;
  }
  return lacking;
}

}  // namespace vantrex::names
