// Indexes to look names up in.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "vantrex/models/repository.h"

namespace vantrex::tests {

inline models::InMemoryRepository small_index() {
  models::InMemoryRepository index("r1", "r2");
  index.add_symbol({.fqn = "pkg.b.run", .name = "run"});
  index.add_symbol({.fqn = "pkg.a.Run", .name = "Run", .kind = "function", .file = "pkg/a.py", .line = 3});
  index.add_symbol({.fqn = "pkg.caf\xe9", .name = "caf\xe9"});
  for (const char* path : {"lib/main.py", "src/app/main.py", "data/\xff.bin"}) index.add_path(path);
  return index;
}

// An index that shows what the small one holds, and then fails.
class FailingIndex final : public models::Repository {
 public:
  explicit FailingIndex(std::function<void()> fail) : fail_(std::move(fail)) {}
  void visit_symbols(const models::SymbolVisitor& visit) const override {
    small_index().visit_symbols(visit);
    fail_();
  }
  void visit_paths(const models::PathVisitor& visit) const override {
    small_index().visit_paths(visit);
    fail_();
  }
  std::string indexed_revision() const override { return "r1"; }
  std::string present_revision() const override {
    fail_();
    return "r2";
  }

 private:
  std::function<void()> fail_;
};

}  // namespace vantrex::tests
