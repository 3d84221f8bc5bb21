#include <utility>

#include "contender.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::bench {

namespace {

using tool_handlers::tool_result_text;
using tool_handlers::next_steps::finish_answer;
using values::JsonObject;

class Ours : public Contender {
 public:
  explicit Ours(const Request& request)
      : request_(request), copy_(tool_handlers::next_steps::without_null_fields(request.answer)) {}

  std::size_t finish() override {
    static_cast<void>(finished());
    return 0;
  }
  std::size_t finish_and_write() override { return tool_result_text(finished()).size(); }
  std::size_t copy() override {
    return tool_handlers::next_steps::without_null_fields(request_.answer).size();
  }
  std::size_t count() override {
    return values::compact_size(copy_) + tool_handlers::next_steps::_hint_size(copy_);
  }
  std::string finished_text() override { return tool_result_text(finished()); }

 private:
  JsonObject finished() const {
    return finish_answer(request_.answer, request_.tool,
                         {.action = request_.action, .arguments = &request_.arguments});
  }

  const Request& request_;
  const JsonObject copy_;
};

}  // namespace

std::unique_ptr<Contender> ours(const Request& request) {
  return std::make_unique<Ours>(request);
}

}  // namespace vantrex::bench
