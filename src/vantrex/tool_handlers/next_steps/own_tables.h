// OwnTables: the tables of a server's own catalogue, read from JSON.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Owns all that its tables refer to. Not movable: the tables refer into it. Shared: made by new with one
// owner, destroyed by the last one.
class OwnTables {
 public:
  // Reads `catalogue`. Throws CatalogueError and std::bad_alloc.
  explicit OwnTables(values::JsonObject catalogue);
  OwnTables(const OwnTables&) = delete;
  OwnTables& operator=(const OwnTables&) = delete;

  void retain() const noexcept { owners_.fetch_add(1, std::memory_order_relaxed); }
  void release() const noexcept {
    if (owners_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }

  const values::JsonObject& json() const noexcept { return *json_.object(); }
  const Tables& tables() const noexcept { return tables_; }

  // Stores `items`. The result is valid as long as this object.
  template <typename Item>
  std::span<const Item> store(std::vector<Item> items) {
    const auto stored = std::make_shared<const std::vector<Item>>(std::move(items));
    stored_.push_back(stored);
    return *stored;
  }
  template <typename Item>
  const Item* store_one(Item item) {
    return store(std::vector<Item>{std::move(item)}).data();
  }

 private:
  ~OwnTables() = default;

  const values::JsonValue json_;  // the texts of the tables lie in it
  std::vector<std::shared_ptr<const void>> stored_;
  Tables tables_;
  mutable std::atomic<std::size_t> owners_ = 1;
};

}  // namespace vantrex::tool_handlers::next_steps
