#include "vantrex/tool_handlers/next_steps/suggestions.h"

#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "vantrex/forced_unwind.h"
#include "vantrex/logging/logger.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps/step.h"
#include "vantrex/tool_handlers/next_steps/tables.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Text;

namespace {

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

// The step of a miss: `call` with `action` for "{action}", and `value` for what it takes.
JsonObject miss_step(const Call& call, std::string_view action, const std::string& value,
                     const std::string& reason) {
  JsonObject args;
  for (const auto& [name, constant] : constant_arguments(call)) {
    args.append(name, constant.string() == "{action}" ? JsonValue(Text::lossy(action)) : constant);
  }
  for (const Argument& each : call.takes) {
    const JsonValue taken = Text::lossy(value);
    args.append(each.name, each.in_list ? JsonList::of(taken) : taken);
  }
  return step(call.tool, reason, std::move(args));
}

// Sets the fields of a miss. The step is `call`; for null, the answer has no "next_steps".
JsonObject& mark_missed(JsonObject& response, JsonList candidates, const Call* call, std::string_view action,
                        const std::string& value, const std::string& reason) {
  std::optional<JsonObject> next;
  if (call != nullptr) next = miss_step(*call, action, value, reason);
  response.set("found", false);
  response.set("did_you_mean", std::move(candidates));
  if (next) {
    response.set("next_steps", JsonList::of(*std::move(next)));
  } else {
    response.remove("next_steps");
  }
  return response;
}

}  // namespace

JsonObject& suggest_symbols(JsonObject& response, const models::Repository& repository,
                            std::string_view wanted, std::string_view action, const Catalogue* catalogue) {
  const auto candidates =
      guarded(workers::nearest_symbols, "Looking for symbols near %r failed", repository, wanted);
  const MissCalls& calls = tables_of(catalogue).symbol_miss;
  const std::string missed(wanted);
  if (candidates.empty()) {
    const std::string guessed = workers::guessed_name(wanted);
    return mark_missed(response, {}, calls.none, action, guessed.empty() ? missed : guessed,
                       "No indexed symbol is near " + missed + ": search the names");
  }
  JsonList listed;
  for (const workers::SymbolCandidate& candidate : candidates) listed.push_back(candidate.to_dict());
  const std::string& best = candidates.front().fqn;
  return mark_missed(response, std::move(listed), calls.near, action, best,
                     "The nearest indexed symbol to " + missed + " is " + best);
}

JsonObject& suggest_paths(JsonObject& response, const models::Repository& repository, std::string_view wanted,
                          std::string_view action, const Catalogue* catalogue) {
  const auto candidates =
      guarded(workers::nearest_paths, "Looking for files near %r failed", repository, wanted);
  const MissCalls& calls = tables_of(catalogue).path_miss;
  const std::string missed(wanted);
  if (candidates.empty()) {
    return mark_missed(response, {}, calls.none, action, "", "No indexed file is near " + missed);
  }
  JsonList listed;
  for (const std::string& path : candidates) listed.push_back(Text::lossy(path));
  const std::string& best = candidates.front();
  return mark_missed(response, std::move(listed), calls.near, action, best,
                     "The nearest indexed file to " + missed + " is " + best);
}

}  // namespace vantrex::tool_handlers::next_steps
