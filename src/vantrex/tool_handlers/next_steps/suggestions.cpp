#include "vantrex/tool_handlers/next_steps/suggestions.h"

#include <exception>
#include <initializer_list>
#include <string>
#include <utility>

#include "vantrex/forced_unwind.h"
#include "vantrex/logging/logger.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::Text;

namespace {

constexpr values::TextLiteral kSymbols = "symbols";

constexpr logging::Logger logger("vantrex.tool_handlers.next_steps");

// The result of `lookup`. If it throws, logs a warning and returns nothing.
template <typename Lookup>
auto guarded(Lookup lookup, std::string_view warning, const models::Repository& repository,
             std::string_view wanted) -> decltype(lookup(repository, wanted)) {
  std::exception_ptr failure;
  try {
    return lookup(repository, wanted);
  } catch (const ForcedUnwind&) {
    throw;
  } catch (...) {
    failure = std::current_exception();
  }
  // Outside the handler: a cancellation of the thread could not leave it.
  logger.warning(warning, wanted, std::move(failure));
  return {};
}

std::string joined(std::initializer_list<std::string_view> texts) {
  std::string all;
  for (const std::string_view each : texts) all += each;
  return all;
}

void mark_missed(JsonObject& response, JsonList candidates, JsonObject next) {
  response.set("found", false);
  response.set("did_you_mean", std::move(candidates));
  response.set("next_steps", JsonList::of(std::move(next)));
}

}  // namespace

JsonObject& suggest_symbols(JsonObject& response, const models::Repository& repository,
                            std::string_view wanted, std::string_view action) {
  const auto candidates =
      guarded(workers::nearest_symbols, "Looking for symbols near %r failed", repository, wanted);
  JsonList listed;
  for (const workers::SymbolCandidate& candidate : candidates) listed.push_back(candidate.to_dict());
  if (!candidates.empty()) {
    const std::string& best = candidates.front().fqn;
    mark_missed(response, std::move(listed),
                step("symbol", joined({"The nearest indexed symbol to ", wanted, " is ", best}),
                     {{"action", Text::lossy(action)}, {"fqn", Text::lossy(best)}}));
    return response;
  }
  std::string query = workers::guessed_name(wanted);
  if (query.empty()) query = wanted;
  mark_missed(response, std::move(listed),
              step("search", joined({"No indexed symbol is near ", wanted, ": search the names"}),
                   {{"action", kSymbols}, {"query", Text::lossy(query)}}));
  return response;
}

JsonObject& suggest_paths(JsonObject& response, const models::Repository& repository, std::string_view wanted,
                          std::string_view action) {
  const auto candidates =
      guarded(workers::nearest_paths, "Looking for files near %r failed", repository, wanted);
  JsonList listed;
  for (const std::string& path : candidates) listed.push_back(Text::lossy(path));
  if (!candidates.empty()) {
    const std::string& best = candidates.front();
    mark_missed(response, std::move(listed),
                step("file", joined({"The nearest indexed file to ", wanted, " is ", best}),
                     {{"action", Text::lossy(action)}, {"path", Text::lossy(best)}}));
    return response;
  }
  mark_missed(response, std::move(listed), step("files", joined({"No indexed file is near ", wanted})));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps
