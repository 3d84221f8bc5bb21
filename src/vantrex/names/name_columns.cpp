#include "vantrex/names/name_columns.h"

#include <algorithm>
#include <tuple>

namespace vantrex::names {

namespace {

// Letters as bytes, seven bits in each; the eighth says that more follow. Nearly all letters take one byte,
// and less memory is less to wait for.
constexpr unsigned kBits = 7;
constexpr std::uint32_t kMoreFollow = 1U << kBits;

void encode(std::u32string_view letters, std::string& bytes) {
  for (std::uint32_t rest : letters) {
    for (; rest >= kMoreFollow; rest >>= kBits) bytes += static_cast<char>(rest | kMoreFollow);
    bytes += static_cast<char>(rest);
  }
}

void decode(std::string_view bytes, std::size_t size, std::u32string& letters) {
  letters.assign(size, 0);
  if (bytes.size() == size) {
    std::copy(bytes.begin(), bytes.end(), letters.begin());
    return;
  }
  unsigned shift = 0;
  char32_t* letter = letters.data();
  for (const char c : bytes) {
    const std::uint32_t byte = static_cast<unsigned char>(c);
    *letter |= (byte & (kMoreFollow - 1)) << shift;
    shift = byte < kMoreFollow ? 0 : shift + kBits;
    if (shift == 0) ++letter;
  }
}

std::size_t hash_of(std::string_view letters) noexcept {
  return std::hash<std::string_view>()(letters);
}

// Consecutive texts whose names have the same letters.
struct Run {
  std::size_t size;  // in letters
  std::size_t hash;
  std::size_t start;  // of the bytes
  std::size_t end;
  std::uint64_t mask;
  std::size_t first_number;
  std::size_t count;
};

}  // namespace

// One search: what is looked for, and what the next candidates may cost.
struct NameColumns::Search {
  const Measure& measure;
  const Offer& offer;
  std::size_t max = kFar - 1;
  std::u32string letters = {};  // reused
};

NameColumns::NameColumns(NameKind kind, std::size_t count, const Texts& texts) {
  std::string bytes;
  std::vector<Run> runs;
  const auto letters_in = [&bytes](const Run& run) {
    return std::string_view(bytes).substr(run.start, run.end - run.start);
  };
  FoldedName name;
  for (std::size_t number = 0; number < count; ++number) {
    name.assign(pieces_of(kind, texts(number)).name);
    const auto [letters, mask] = name.view();
    const std::size_t start = bytes.size();
    encode(letters, bytes);
    Run run{letters.size(), 0, start, bytes.size(), mask, number, 1};
    if (!runs.empty() && letters_in(runs.back()) == letters_in(run)) {
      ++runs.back().count;
      bytes.resize(start);
    } else {
      run.hash = hash_of(letters_in(run));
      runs.push_back(run);
    }
  }
  std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) {
    return std::tie(a.size, a.hash, a.first_number) < std::tie(b.size, b.hash, b.first_number);
  });
  numbers_.reserve(count);
  for (const Run& run : runs) {
    if (lanes_.empty() || lanes_.back().size != run.size) lanes_.push_back({run.size, masks_.size()});
    if (masks_.empty() || letters_of(masks_.size() - 1) != letters_in(run)) {
      hashes_.push_back(run.hash);
      masks_.push_back(run.mask);
      letters_ += letters_in(run);
      letter_bounds_.push_back(letters_.size());
      number_bounds_.push_back(numbers_.size());
    }
    for (std::size_t each = 0; each < run.count; ++each) numbers_.push_back(run.first_number + each);
    number_bounds_.back() = numbers_.size();
  }
  lanes_.push_back({kFar, masks_.size()});
}

std::string_view NameColumns::letters_of(std::size_t group) const noexcept {
  const std::size_t start = letter_bounds_[group];
  return std::string_view(letters_).substr(start, letter_bounds_[group + 1] - start);
}

std::span<const std::size_t> NameColumns::numbers_of(std::size_t group) const noexcept {
  const std::size_t start = number_bounds_[group];
  return std::span(numbers_).subspan(start, number_bounds_[group + 1] - start);
}

std::size_t NameColumns::lane_from(std::size_t size) const noexcept {
  const auto is_less = [](const Lane& lane, std::size_t wanted) { return lane.size < wanted; };
  return static_cast<std::size_t>(std::lower_bound(lanes_.begin(), lanes_.end(), size, is_less) -
                                  lanes_.begin());
}

std::vector<std::size_t> NameColumns::same_letters(std::string_view name) const {
  const FoldedName folded(name);
  std::string letters;
  encode(folded.view().letters, letters);
  std::vector<std::size_t> numbers;
  const std::size_t lane = lane_from(folded.view().letters.size());
  if (lanes_[lane].size != folded.view().letters.size()) return numbers;
  const auto* const end = hashes_.data() + lanes_[lane + 1].first_group;
  const auto [first, last] =
      std::equal_range(hashes_.data() + lanes_[lane].first_group, end, hash_of(letters));
  for (const auto* hash = first; hash != last; ++hash) {
    const auto group = static_cast<std::size_t>(hash - hashes_.data());
    if (letters_of(group) != letters) continue;
    const auto found = numbers_of(group);
    numbers.insert(numbers.end(), found.begin(), found.end());
  }
  return numbers;
}

void NameColumns::offer_lane(std::size_t lane, Search& search) const {
  const std::size_t size = lanes_[lane].size;
  Reach reach = search.measure.reach(size, search.max);
  for (std::size_t group = lanes_[lane].first_group; group < lanes_[lane + 1].first_group; ++group) {
    if (!reach.has_near_name(masks_[group]) && !reach.has_longer_name(masks_[group])) continue;
    decode(letters_of(group), size, search.letters);
    if (search.measure.min_cost({search.letters, masks_[group]}, search.max) > search.max) continue;
    for (const std::size_t number : numbers_of(group)) search.max = search.offer(number);
    reach = search.measure.reach(size, search.max);
  }
}

void NameColumns::offer_near(const Measure& measure, const Offer& offer) const {
  Search search{measure, offer};
  const std::size_t wanted = measure.wanted_size();
  std::size_t start = 0;
  std::size_t end = lanes_.size() - 1;
  std::size_t below = lane_from(wanted);
  std::size_t above = below;
  while (start < below || above < end) {
    const bool goes_up =
        start == below || (above < end && lanes_[above].size - wanted <= wanted - lanes_[below - 1].size);
    const std::size_t lane = goes_up ? above++ : --below;
    if (!measure.reach(lanes_[lane].size, search.max).is_empty()) {
      offer_lane(lane, search);
    } else {
      // The lanes behind it are out of reach, too.
      (goes_up ? end : start) = lane;
    }
  }
}

}  // namespace vantrex::names
