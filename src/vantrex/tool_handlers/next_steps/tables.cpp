#include "vantrex/tool_handlers/next_steps/tables.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/follow_ups.h"
#include "vantrex/tool_handlers/next_steps/signals.h"

namespace vantrex::tool_handlers::next_steps {

namespace {

// Whether all rows of a table have different keys.
template <typename Table>
constexpr bool has_unique_keys(const Table& table) noexcept {
  for (auto row = table.begin(); row != table.end(); ++row) {
    if (std::any_of(table.begin(), row, [&](const auto& other) { return other.key == row->key; }))
      return false;
  }
  return true;
}
static_assert(has_unique_keys(NEXT_STEPS) && has_unique_keys(_SIGNALS));

constexpr std::array<std::string_view, 2> kCounts = {"total_count", "total"};

// Each of `keys` as a path of one key.
template <std::size_t kCount>
constexpr std::array<KeyPath, kCount> paths_of(const std::array<std::string_view, kCount>& keys) {
  std::array<KeyPath, kCount> paths;
  for (std::size_t place = 0; place < kCount; ++place) paths[place] = {&keys[place], 1};
  return paths;
}
constexpr auto kHitListPaths = paths_of(_HIT_LISTS);
constexpr auto kCountPaths = paths_of(kCounts);

// The argument that a hint takes, indexed by Takes.
constexpr auto kHintArguments = [] {
  std::array<Argument, std::size_t{1} + static_cast<std::size_t>(Takes::changed_files)> arguments;
  for (std::size_t place = 0; place < arguments.size(); ++place) {
    arguments[place] = {text(static_cast<Takes>(place)), static_cast<ArgumentKind>(place)};
  }
  return arguments;
}();

constexpr Call call_of(const Hint* hint) {
  Call call{.tool = hint->tool, .reason = hint->reason, .action = hint->action};
  if (hint->takes) call.takes = {&kHintArguments[static_cast<std::size_t>(*hint->takes)], 1};
  return call;
}

// The calls of each row of NEXT_STEPS.
constexpr auto kCalls = [] {
  std::array<std::array<Call, FollowUps::kMaxHints>, FollowUpTable::kRows> calls;
  auto* next = calls.begin();
  for (const FollowUps& row : NEXT_STEPS) {
    std::transform(row.hints().begin(), row.hints().end(), (next++)->begin(), call_of);
  }
  return calls;
}();

constexpr auto kUsual = [] {
  std::array<UsualRow, FollowUpTable::kRows> rows;
  std::size_t place = 0;
  for (const FollowUps& row : NEXT_STEPS) {
    rows[place] = {row.key, {kCalls[place].data(), row.hints().size()}};
    ++place;
  }
  return rows;
}();

constexpr Argument kBestSymbol{"fqn", ArgumentKind::fqn};
constexpr Argument kBestPath{"path", ArgumentKind::path};
constexpr Argument kNameToSearch{"query", ArgumentKind::query};
constexpr Call kNearSymbol{
    .tool = "symbol", .action = values::TextLiteral("{action}"), .takes = {&kBestSymbol, 1}};
constexpr Call kNoSymbol{
    .tool = "search", .action = values::TextLiteral("symbols"), .takes = {&kNameToSearch, 1}};
constexpr Call kNearPath{.tool = "file", .action = values::TextLiteral("{action}"), .takes = {&kBestPath, 1}};
constexpr Call kNoPath{.tool = "files"};

constexpr Tables kModuleTables{.hit_lists = kHitListPaths,
                               .counts = kCountPaths,
                               .usual = kUsual,
                               .signals = _SIGNALS,
                               .symbol_miss = {&kNearSymbol, &kNoSymbol},
                               .path_miss = {&kNearPath, &kNoPath}};

}  // namespace

const Tables& module_tables() noexcept {
  return kModuleTables;
}

}  // namespace vantrex::tool_handlers::next_steps
