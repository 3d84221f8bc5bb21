// finish_answer gives the same answer as the naive implementation.
#include <cstddef>
#include <cstdint>

#include "fuzz/support/byte_choices.h"
#include "fuzz/support/check.h"
#include "fuzz/support/naive.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/values/text_forms.h"

namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto request = vantrex::fuzz::byte_choices(data, size, vantrex::fuzz::Domain::any).request();
  const auto finished = next_steps::finish_answer(request.answer, request.tool, request.options());
  const auto expected = vantrex::fuzz::naive::finish(request).answer;
  check(compact_text(finished) == vantrex::fuzz::naive::json_text(expected),
        "finish_answer equals the naive implementation");
  return 0;
}
