#include "next_steps/print_answer.h"

#include <utility>

#include "next_steps/names.h"
#include "next_steps/pretty_text.h"
#include "requests/output.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace next_steps_program {

void print_answer(values::JsonObject answer, bool pretty) {
  requests::Output output;
  output.write(pretty ? pretty_text(std::move(answer)) : vantrex::tool_handlers::tool_result_text(answer));
  output.write("\n");
  output.flush();
}

}  // namespace next_steps_program
