#include "vantrex/tool_handlers/next_steps/catalogue.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps/own_tables.h"
#include "vantrex/tool_handlers/next_steps/tables.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;

namespace {

JsonList keys_of(std::span<const KeyPath> paths) {
  JsonList keys;
  for (const KeyPath path : paths) keys.push_back(path[0]);
  return keys;
}

JsonList calls_of(const UsualRow& row) {
  JsonList calls;
  for (const Call& call : row.calls) calls.push_back(to_dict(call));
  return calls;
}

JsonObject signal_of(const Signal& signal) {
  JsonObject dict{{signal.condition.or_more ? "hits_at_least" : "hits", signal.condition.hits}};
  for (const auto& [key, value] : to_dict(signal.call)) dict.append(key, value);
  return dict;
}

JsonObject miss_of(const MissCalls& calls) {
  return {{"near", to_dict(*calls.near)}, {"none", to_dict(*calls.none)}};
}

// The module's tables. They have no kinds of argument of their own, and all paths are single keys.
JsonObject module_json() {
  const Tables& tables = module_tables();
  JsonObject usual;
  for (const UsualRow& row : tables.usual) usual.append(row.key, calls_of(row));
  JsonObject signals;
  for (const SignalRow& row : tables.signals) signals.append(row.key, signal_of(*row.signal));
  return {
      {"hit_lists", keys_of(tables.hit_lists)},
      {"counts", keys_of(tables.counts)},
      {"next_steps", std::move(usual)},
      {"signals", std::move(signals)},
      {"misses", JsonObject{{"symbol", miss_of(tables.symbol_miss)}, {"path", miss_of(tables.path_miss)}}}};
}

}  // namespace

Catalogue::Catalogue(const Catalogue& other) noexcept : own_(other.own_) {
  if (own_ != nullptr) own_->retain();
}

Catalogue::~Catalogue() {
  if (own_ != nullptr) own_->release();
}

Catalogue Catalogue::from_json(JsonObject json) {
  return Catalogue(new OwnTables(std::move(json)));
}

JsonObject Catalogue::to_json() const {
  return own_ == nullptr ? module_json() : own_->json();
}

const Tables& tables_of(const Catalogue* catalogue) noexcept {
  return catalogue == nullptr || catalogue->own_ == nullptr ? module_tables() : catalogue->own_->tables();
}

}  // namespace vantrex::tool_handlers::next_steps
