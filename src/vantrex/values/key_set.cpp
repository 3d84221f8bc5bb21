#include "vantrex/values/key_set.h"

#include <algorithm>

namespace vantrex::values {

bool KeySet::is_one(std::string_view name) const noexcept {
  return std::find(names_.begin(), names_.end(), name) != names_.end();
}

}  // namespace vantrex::values
