// Indexes for tests of name lookup.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/models/repository.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::tests {

inline models::InMemoryRepository small_index() {
  models::InMemoryRepository index("r1", "r2");
  index.add_symbol({.fqn = "pkg.b.run", .name = "run"});
  index.add_symbol({.fqn = "pkg.a.Run", .name = "Run", .kind = "function", .file = "pkg/a.py", .line = 1});
  index.add_symbol({.fqn = "pkg.caf\xe9", .name = "caf\xe9"});
  for (const char* path : {"lib/main.py", "src/app/main.py", "data/\xff.bin"}) index.add_path(path);
  return index;
}

// An index of `names`, as symbols and as paths.
inline models::InMemoryRepository index_of(const std::vector<std::string>& names) {
  models::InMemoryRepository index;
  for (const std::string& name : names) {
    index.add_symbol({.fqn = name});
    index.add_path(name);
  }
  return index;
}

inline std::vector<std::string> nearest_fqns(const models::Repository& index, std::string_view wanted) {
  std::vector<std::string> fqns;
  for (const auto& candidate : workers::nearest_symbols(index, wanted)) fqns.push_back(candidate.fqn);
  return fqns;
}

// An index that shows the first `shown` entries of small_index, then calls `fail`, which throws.
class FailingIndex final : public models::Repository {
 public:
  explicit FailingIndex(std::function<void()> fail, std::size_t shown = 3)
      : fail_(std::move(fail)), shown_(shown) {}
  void visit_symbols(const models::SymbolVisitor& visit) const override {
    small_index().visit_symbols(failing(visit));
    fail_();
  }
  void visit_paths(const models::PathVisitor& visit) const override {
    small_index().visit_paths(failing(visit));
    fail_();
  }
  std::string indexed_revision() const override { return "r1"; }
  std::string present_revision() const override {
    fail_();
    return "r2";
  }

 private:
  template <typename Visitor>
  Visitor failing(const Visitor& visit) const {
    return [this, &visit, left = shown_](const auto& each) mutable {
      if (left-- == 0) fail_();
      visit(each);
    };
  }

  std::function<void()> fail_;
  std::size_t shown_;
};

}  // namespace vantrex::tests
