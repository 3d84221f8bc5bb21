#include "vantrex/tool_handlers/next_steps/suggestions.h"

#include <exception>
#include <initializer_list>
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

std::string joined(std::initializer_list<std::string_view> texts) {
  std::string all;
  for (const std::string_view each : texts) all += each;
  return all;
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

// Sets the fields of a miss. Without a step, the answer has no "next_steps".
void mark_missed(JsonObject& response, JsonList candidates, std::optional<JsonObject> next) {
  response.set("found", false);
  response.set("did_you_mean", std::move(candidates));
  if (next) {
    response.set("next_steps", JsonList::of(*std::move(next)));
  } else {
    response.remove("next_steps");
  }
}

}  // namespace

JsonObject& suggest_symbols(JsonObject& response, const models::Repository& repository,
                            std::string_view wanted, std::string_view action, const Catalogue* catalogue) {
  const auto candidates =
      guarded(workers::nearest_symbols, "Looking for symbols near %r failed", repository, wanted);
  JsonList listed;
  for (const workers::SymbolCandidate& candidate : candidates) listed.push_back(candidate.to_dict());
  const MissCalls& calls = tables_of(catalogue).symbol_miss;
  std::optional<JsonObject> next;
  if (!candidates.empty() && calls.near != nullptr) {
    const std::string& best = candidates.front().fqn;
    next = miss_step(*calls.near, action, best,
                     joined({"The nearest indexed symbol to ", wanted, " is ", best}));
  } else if (candidates.empty() && calls.none != nullptr) {
    std::string query = workers::guessed_name(wanted);
    if (query.empty()) query = wanted;
    next = miss_step(*calls.none, action, query,
                     joined({"No indexed symbol is near ", wanted, ": search the names"}));
  }
  mark_missed(response, std::move(listed), std::move(next));
  return response;
}

JsonObject& suggest_paths(JsonObject& response, const models::Repository& repository, std::string_view wanted,
                          std::string_view action, const Catalogue* catalogue) {
  const auto candidates =
      guarded(workers::nearest_paths, "Looking for files near %r failed", repository, wanted);
  JsonList listed;
  for (const std::string& path : candidates) listed.push_back(Text::lossy(path));
  const MissCalls& calls = tables_of(catalogue).path_miss;
  std::optional<JsonObject> next;
  if (!candidates.empty() && calls.near != nullptr) {
    const std::string& best = candidates.front();
    next =
        miss_step(*calls.near, action, best, joined({"The nearest indexed file to ", wanted, " is ", best}));
  } else if (candidates.empty() && calls.none != nullptr) {
    next = miss_step(*calls.none, action, "", joined({"No indexed file is near ", wanted}));
  }
  mark_missed(response, std::move(listed), std::move(next));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps
