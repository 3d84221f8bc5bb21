// How many bytes a string takes in JSON text: the peers' inner loop. None of
// their libraries keeps this beside a string, so every byte has to be read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vantrex::bench::peers {

namespace detail {

inline constexpr std::array<std::uint8_t, 256> kEscapeGain = [] {
  std::array<std::uint8_t, 256> gain{};
  for (std::size_t byte = 0; byte < 0x20; ++byte) gain[byte] = 5;
  for (const char byte : {'"', '\\', '\b', '\f', '\n', '\r', '\t'})
    gain[static_cast<unsigned char>(byte)] = 1;
  return gain;
}();

// Bytes that `text` gains by being escaped.
inline std::size_t gain_one_by_one(std::string_view text) noexcept {
  std::size_t gain = 0;
  for (const char byte : text) gain += kEscapeGain[static_cast<unsigned char>(byte)];
  return gain;
}

#ifdef __SSE2__
inline __m128i all(char byte) noexcept {
  return _mm_set1_epi8(byte);
}

inline __m128i at_most(__m128i bytes, char most) noexcept {
  return _mm_cmpeq_epi8(_mm_min_epu8(bytes, all(most)), bytes);
}

// The gain of each of 16 bytes.
inline __m128i gains(__m128i bytes) noexcept {
  const __m128i control = at_most(bytes, 0x1f);
  const __m128i near_tab = at_most(_mm_sub_epi8(bytes, all('\b')), '\r' - '\b');
  const __m128i is_short = _mm_andnot_si128(_mm_cmpeq_epi8(bytes, all('\v')), near_tab);
  const __m128i special = _mm_or_si128(_mm_cmpeq_epi8(bytes, all('"')), _mm_cmpeq_epi8(bytes, all('\\')));
  const __m128i five_or_one = _mm_sub_epi8(_mm_and_si128(control, all(5)), _mm_and_si128(is_short, all(4)));
  return _mm_add_epi8(five_or_one, _mm_and_si128(special, all(1)));
}

inline __m128i load(const char* bytes) noexcept {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

// Of 16 lanes the last `count`.
inline __m128i last_lanes(__m128i lanes, std::size_t count) noexcept {
  static constexpr std::array<char, 32> kMask = [] {
    std::array<char, 32> mask{};
    for (std::size_t at = 16; at < 32; ++at) mask[at] = -1;
    return mask;
  }();
  return _mm_and_si128(lanes, load(kMask.data() + count));
}

inline __m128i summed(__m128i lanes) noexcept {
  return _mm_sad_epu8(lanes, _mm_setzero_si128());
}

inline std::size_t total(__m128i sums) noexcept {
  return static_cast<std::size_t>(_mm_cvtsi128_si64(sums) +
                                  _mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
}

inline std::size_t long_gain(std::string_view text) noexcept {
  const char* at = text.data();
  const char* const last = at + text.size() - 16;
  __m128i sums = _mm_setzero_si128();
  for (; at < last; at += 16) sums = _mm_add_epi64(sums, summed(gains(load(at))));
  const auto left = static_cast<std::size_t>(last + 16 - at);
  return total(_mm_add_epi64(sums, summed(last_lanes(gains(load(last)), left))));
}

// The first and the last bytes of a text, which may overlap, fill 16 lanes.
template <typename Word>
__m128i both_ends(std::string_view text) noexcept {
  Word first;
  Word last;
  std::memcpy(&first, text.data(), sizeof(Word));
  std::memcpy(&last, text.data() + text.size() - sizeof(Word), sizeof(Word));
  if constexpr (sizeof(Word) == 8) {
    return _mm_set_epi64x(last, first);
  } else {
    return _mm_set_epi32(last, first, last, first);
  }
}

inline std::size_t escape_gain(std::string_view text) noexcept {
  if (text.size() >= 16) return long_gain(text);
  if (text.size() >= 8 && total(summed(gains(both_ends<std::int64_t>(text)))) == 0) return 0;
  if (text.size() >= 4 && text.size() < 8 && total(summed(gains(both_ends<std::int32_t>(text)))) == 0)
    return 0;
  return gain_one_by_one(text);
}
#else
inline std::size_t escape_gain(std::string_view text) noexcept {
  return gain_one_by_one(text);
}
#endif

}  // namespace detail

// Bytes of `text` in JSON, quotes included.
inline std::size_t string_size(std::string_view text) noexcept {
  return text.size() + 2 + detail::escape_gain(text);
}

}  // namespace vantrex::bench::peers
