#include "vantrex/models/symbol_table.h"

#include <algorithm>
#include <functional>

namespace vantrex::models {

namespace {

constexpr std::size_t kMinRecent = 16;
constexpr std::size_t kMaxRecent = 65536;

constexpr unsigned kSizeBits = 7;  // of a size in one byte; the eighth bit says that more follow
constexpr std::size_t kMoreFollow = std::size_t{1} << kSizeBits;

}  // namespace

void SymbolTable::add_symbol(const SymbolView& symbol) {
  symbols_.push_back({position_of(symbol.fqn), position_of(symbol.name), position_of(symbol.kind),
                      position_of(symbol.file), symbol.line});
}

void SymbolTable::add_path(std::string_view path) {
  paths_.push_back(position_of(path));
}

SymbolView SymbolTable::symbol(std::size_t number) const noexcept {
  const Row& row = symbols_[number];
  return {text_at(row.fqn), text_at(row.name), text_at(row.kind), text_at(row.file), row.line};
}

// A text has one place among the recent ones, so no texts can be chosen to make the search slow: of those
// with equal hashes only the last one is found, and the others are stored again.
std::size_t SymbolTable::position_of(std::string_view text) {
  if (stored_ >= recent_.size() && recent_.size() < kMaxRecent) {
    recent_.assign(std::max(kMinRecent, 2 * recent_.size()), {});
  }
  const std::size_t hash = std::hash<std::string_view>()(text);
  Recent& recent = recent_[hash % recent_.size()];
  if (recent.hash == hash && text_at(recent.position) == text) return recent.position;
  const std::size_t position = texts_.size();
  std::size_t size = text.size();
  for (; size >= kMoreFollow; size >>= kSizeBits) texts_ += static_cast<char>(size | kMoreFollow);
  texts_ += static_cast<char>(size);
  texts_ += text;
  ++stored_;
  recent = {hash, position};
  return position;
}

std::string_view SymbolTable::text_at(std::size_t position) const noexcept {
  std::size_t size = 0;
  for (unsigned bits = 0;; bits += kSizeBits) {
    const auto byte = static_cast<unsigned char>(texts_[position++]);
    size |= (byte & (kMoreFollow - 1)) << bits;
    if (byte < kMoreFollow) return std::string_view(texts_).substr(position, size);
  }
}

}  // namespace vantrex::models
