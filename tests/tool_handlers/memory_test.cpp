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

using Call = std::function<std::string()>;
using Calls = std::vector<std::pair<std::string, Call>>;

// Each call with a text of what it gave and of what it was given.
Calls calls_for(const fuzz::Request& request) {
  const auto finish = [&request] {
    return tool_result_text(finish_answer(request.answer, request.tool, request.options()));
  };
  const auto explain = [&request] {
    return tool_result_text(explain_answer(request.answer, request.tool, request.options()).to_dict());
  };
  const auto given = [&request] { return tool_result_text(request.answer); };
  return {{"finish", [=] { return finish() + given(); }},
          {"explain", [=] { return explain() + given(); }},
          {"canonical text", [&request] { return values::canonical_text(request.answer); }}};
}

Calls calls_of(const models::Repository& index) {
  const auto answered = [](const auto& change) {
    return [=] {
      JsonObject answer;
      change(answer);
      return tool_result_text(answer);
    };
  };
  const models::InMemoryRepository none;
  return {{"freshness", answered([&](JsonObject& a) { add_freshness(a, freshness_block(index)); })},
          {"symbol",
           answered([&](JsonObject& a) { suggest_symbols(a, index, "a.wanted.name.that.is.run", "c"); })},
          {"path",
           answered([&](JsonObject& a) { suggest_paths(a, index, "a/wanted/path/to/main.py", "imports"); })},
          {"miss", answered([=](JsonObject& a) { suggest_symbols(a, none, "a.long::b", "c"); })},
          {"lookup", [&] { return workers::nearest_symbols(index, "pkg.rnu").at(0).fqn; }},
          {"name", [] { return workers::guessed_name("a.a_name_of_more_than_14_bytes"); }}};
}

// Whatever allocation of `call` fails: nothing leaks or changes.
void check(const std::string& name, const Call& call) {
  SCOPED_TRACE(name);
  const std::string expected = call();
  const auto again = [&] {
    const std::string given = call();
    // A lookup that lacks memory is one that finds nothing, and goes on.
    if (given != expected && (name == "symbol" || name == "path")) throw std::bad_alloc();
    ASSERT_EQ(given, expected);
  };
  for (const bool once : {false, true}) tests::fail_each_allocation(again, again, once);
}

TEST(Memory, MayRunOutAtAnyPointOfEveryCall) {
  logging::set_sink([](const logging::Record& /*record*/) {});
  for (std::uint64_t seed = 0; seed < 30; ++seed) {
    const fuzz::Request request = fuzz::Random(seed).request();
    for (const auto& [name, call] : calls_for(request)) check(name, call);
  }
  const models::InMemoryRepository index = tests::small_index();
  for (const auto& [name, call] : calls_of(index)) check(name, call);
  logging::set_sink({});
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps
