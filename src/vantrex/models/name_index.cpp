#include "vantrex/models/name_index.h"

#include <algorithm>
#include <utility>

#include "vantrex/models/name_index_contents.h"
#include "vantrex/names/name_parts.h"

namespace vantrex::models {

using names::NameKind;

namespace {

std::shared_ptr<const SymbolTable> table_of(const Repository& repository) {
  auto table = std::make_shared<SymbolTable>();
  repository.visit_symbols([&table](const SymbolView& symbol) { table->add_symbol(symbol); });
  repository.visit_paths([&table](std::string_view path) { table->add_path(path); });
  return table;
}

std::string_view last_part(std::string_view fqn) noexcept {
  return names::split_last(NameKind::symbol, fqn).last;
}

}  // namespace

NameIndex::Contents::Contents(std::shared_ptr<const SymbolTable> symbols_and_paths)
    : table(std::move(symbols_and_paths)),
      symbols(NameKind::symbol, table->symbol_count(),
              [this](std::size_t number) { return table->symbol(number).fqn; }),
      paths(NameKind::path, table->path_count(), [this](std::size_t number) { return table->path(number); }) {
  for (std::size_t number = 0; number < table->symbol_count(); ++number) {
    const SymbolView symbol = table->symbol(number);
    if (symbol.name != last_part(symbol.fqn)) other_names.push_back(number);
  }
  std::sort(other_names.begin(), other_names.end(),
            [this](std::size_t a, std::size_t b) { return table->symbol(a).name < table->symbol(b).name; });
}

NameIndex::NameIndex(std::shared_ptr<const SymbolTable> table)
    : contents_(std::make_unique<const Contents>(std::move(table))) {}
NameIndex::NameIndex(const Repository& repository) : NameIndex(table_of(repository)) {}
NameIndex::~NameIndex() = default;

std::vector<SymbolView> NameIndex::symbols_named(std::string_view name) const {
  const SymbolTable& table = *contents_->table;
  std::vector<std::size_t> numbers;
  for (const std::string_view last : {name, last_part(name)}) {
    const auto same_letters = contents_->symbols.same_letters(last);
    numbers.insert(numbers.end(), same_letters.begin(), same_letters.end());
  }
  const auto& others = contents_->other_names;
  const auto is_before = [&table](std::size_t number, std::string_view text) {
    return table.symbol(number).name < text;
  };
  for (auto other = std::lower_bound(others.begin(), others.end(), name, is_before);
       other != others.end() && table.symbol(*other).name == name; ++other) {
    numbers.push_back(*other);
  }
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  std::vector<SymbolView> found;
  for (const std::size_t number : numbers) {
    const SymbolView symbol = table.symbol(number);
    if (symbol.fqn == name || symbol.name == name) found.push_back(symbol);
  }
  return found;
}

bool NameIndex::holds_path(std::string_view path) const {
  const auto numbers = contents_->paths.same_letters(names::pieces_of(NameKind::path, path).name);
  return std::any_of(numbers.begin(), numbers.end(),
                     [&](std::size_t number) { return contents_->table->path(number) == path; });
}

}  // namespace vantrex::models
