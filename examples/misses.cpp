#include <iostream>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

#include "vantrex/logging/logger.h"
#include "vantrex/models/name_index.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace logging = vantrex::logging;
namespace models = vantrex::models;
namespace tool_handlers = vantrex::tool_handlers;
namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::values::JsonObject;

void print(const JsonObject& answer) {
  std::cout << tool_handlers::tool_result_text(answer) << '\n';
}

JsonObject not_found(const JsonObject& request, const models::Repository& index) {
  JsonObject answer;
  next_steps::suggest_symbols(answer, index, request["fqn"].string().value_or(""), "detail");
  return next_steps::finish_answer(std::move(answer), "symbol", {.action = "detail", .arguments = &request});
}

class OwnIndex : public models::Repository {
 public:
  void visit_symbols(const models::SymbolVisitor& visit) const override {
    if (is_locked) throw std::runtime_error("the index is locked");
    visit({.fqn = "pkg.mod.parse", .name = "parse", .kind = "function", .file = "pkg/mod.py", .line = 7});
  }
  void visit_paths(const models::PathVisitor& visit) const override { visit("pkg/mod.py"); }
  std::string indexed_revision() const override { return "4f1c2d9"; }
  std::string present_revision() const override { return "8a0be31"; }
  bool is_locked = false;
};

class LargeIndex final : public OwnIndex {
 public:
  void read_names() { names_ = std::make_shared<const models::NameIndex>(*this); }
  std::shared_ptr<const models::NameIndex> name_index() const override { return names_; }

 private:
  std::shared_ptr<const models::NameIndex> names_;
};

void log_to(std::ostream& out) {
  logging::set_sink([&out](const logging::Record& record) {
    static std::mutex one_at_a_time;
    const std::scoped_lock lock(one_at_a_time);
    out << record.logger << ": " << record.message << '\n';
  });
}

int main() {
  const JsonObject request{{"fqn", "pkg.parser"}};
  OwnIndex index;
  print(not_found(request, index));
  LargeIndex large;
  large.read_names();
  large.is_locked = true;
  print(not_found(request, large));
  log_to(std::cout);
  index.is_locked = true;
  print(not_found(request, index));
}
