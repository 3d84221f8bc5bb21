#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/indexes.h"
#include "vantrex/logging/logger.h"
#include "vantrex/tool_handlers/freshness.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::JsonObject;

// Calls of all that takes memory, each with a text of what it gave and of what
// it was given.
std::vector<std::pair<std::string, std::function<std::string()>>> calls(const fuzz::Request& request,
                                                                        const models::Repository& index) {
  const auto given = [&request] { return tool_result_text(request.answer); };
  const auto answered = [](const auto& change) {
    JsonObject answer;
    change(answer);
    return tool_result_text(answer);
  };
  return {
      {"finish",
       [=, &request] {
         return tool_result_text(finish_answer(request.answer, request.tool, request.options())) + given();
       }},
      {"finish given up",
       [&request] {
         JsonObject answer = request.answer;
         return tool_result_text(finish_answer(std::move(answer), request.tool, request.options()));
       }},
      {"explain",
       [=, &request] {
         const Explanation told = explain_answer(request.answer, request.tool, request.options());
         return tool_result_text(told.to_dict()) + given();
       }},
      {"canonical text", [&request] { return values::canonical_text(request.answer); }},
      {"freshness",
       [=, &index] {
         return answered([&](auto& answer) { add_freshness(answer, freshness_block(index)); });
       }},
      {"symbol",
       [=, &index] {
         return answered([&](auto& a) { suggest_symbols(a, index, "a.wanted.name.that.is.run", "callers"); });
       }},
      {"path",
       [=, &index] {
         return answered([&](auto& a) { suggest_paths(a, index, "a/wanted/path/to/main.py", "imports"); });
       }},
      {"miss",
       [=] {
         return answered([](auto& a) { suggest_symbols(a, models::InMemoryRepository(), "a.long::b", "c"); });
       }},
      {"lookup", [&index] { return workers::nearest_symbols(index, "pkg.rnu").at(0).fqn; }},
      {"name", [] { return workers::guessed_name("a.a_name_of_more_than_14_bytes"); }},
  };
}

TEST(Memory, MayRunOutAtAnyPointOfEveryCall) {
  logging::set_sink([](const logging::Record& /*record*/) {});
  const models::InMemoryRepository index = tests::small_index();
  for (std::uint64_t seed = 0; seed < 30; ++seed) {
    const fuzz::Request request = fuzz::Random(seed).request();
    for (const auto& [name, call] : calls(request, index)) {
      if (seed > 0 && name == "freshness") break;  // what follows is the same for each request
      SCOPED_TRACE(testing::Message() << name << ", seed " << seed);
      const std::string expected = call();
      for (const bool once : {false, true}) {
        tests::fail_each_allocation(
            [&, &call = call, &name = name] {
              const std::string given = call();
              // A lookup that lacks memory is one that finds nothing, and goes on.
              if (given != expected && (name == "symbol" || name == "path")) throw std::bad_alloc();
              ASSERT_EQ(given, expected);
            },
            [&, &call = call] { ASSERT_EQ(call(), expected); }, once);
      }
    }
  }
  logging::set_sink({});
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps
