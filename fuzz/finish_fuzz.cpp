// Finishing gives what a naive second reading of the rules gives, and leaves
// the answer it was given as it was.
#include <cstddef>
#include <cstdint>

#include "fuzz/support/byte_choices.h"
#include "fuzz/support/check.h"
#include "fuzz/support/naive.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/values/text_forms.h"

namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto request = vantrex::fuzz::byte_choices(data, size, vantrex::fuzz::Domain::any).request();
  const std::string before = compact_text(request.answer);
  const auto finished =
      next_steps::finish_answer(request.answer, request.tool,
                                {.action = request.action,
                                 .arguments = request.arguments ? &*request.arguments : nullptr,
                                 .freshness = request.freshness});
  check(
      compact_text(finished) == vantrex::fuzz::naive::json_text(vantrex::fuzz::naive::finish(request).answer),
      "both readings of the rules agree");
  check(compact_text(request.answer) == before, "finishing leaves its input alone");
  return 0;
}
