#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <algorithm>
#include <utility>

#include "vantrex/tool_handlers/freshness.h"
#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/limits.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/null_fields.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::canonical_text;
using values::compact_size;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// For steps as step() makes them: the tool is the first field, and the arguments are the second. Texts are
// made only when the tools and the sizes of the arguments leave it open.
bool make_same_call(const JsonValue& a, const JsonValue& b) {
  const values::JsonField* fields_of_a = a.object()->begin();
  const values::JsonField* fields_of_b = b.object()->begin();
  if (fields_of_a[0].value != fields_of_b[0].value) return false;
  const JsonValue& args_of_a = fields_of_a[1].value;
  const JsonValue& args_of_b = fields_of_b[1].value;
  return compact_size(args_of_a) == compact_size(args_of_b) &&
         canonical_text(args_of_a) == canonical_text(args_of_b);
}

// The next two decide on steps; remove_dropped then removes them.
void drop_unserved(const JsonList& steps, const ServedTools* serves, Decisions& decisions) {
  for (std::size_t place = 0; place < steps.size(); ++place) {
    if (!is_served(steps[place], serves)) decisions[place].verdict = Verdict::not_served;
  }
}

// Drops repeated calls, and all steps after the first `max` of the others. Takes time linear in the steps,
// times `max`.
void drop_repeats(const JsonList& steps, std::size_t max, Decisions& decisions) {
  std::vector<std::size_t> kept;
  kept.reserve(max);
  for (std::size_t place = 0; place < steps.size(); ++place) {
    if (decisions[place].verdict != Verdict::kept) continue;
    const auto same = std::find_if(kept.begin(), kept.end(), [&](std::size_t earlier) {
      return make_same_call(steps[earlier], steps[place]);
    });
    if (same != kept.end()) {
      decisions[place] = {Verdict::repeat, *same};
    } else if (kept.size() == max) {
      decisions[place].verdict = Verdict::over_cap;
    } else {
      kept.push_back(place);
    }
  }
}

void remove_dropped(JsonList& steps, const Decisions& decisions) {
  std::size_t kept = 0;
  for (std::size_t place = 0; place < steps.size(); ++place) {
    if (decisions[place].verdict != Verdict::kept) continue;
    if (kept < place) *steps.item(kept) = std::move(*steps.item(place));
    ++kept;
  }
  steps.truncate(kept);
}

// The number of signals that are served.
std::size_t served_signals(const Candidates& candidates, const ServedTools* serves) noexcept {
  const JsonValue* first = candidates.steps.begin();
  return static_cast<std::size_t>(std::count_if(
      first, first + candidates.signals, [&](const JsonValue& step) { return is_served(step, serves); }));
}

// Whether `response` is the answer to a miss, and it is known what the server has.
bool is_known_miss(const JsonObject& response, const FinishOptions& options) noexcept {
  const bool has_own_tables = &tables_of(options.catalogue) != &module_tables();
  return (options.serves != nullptr || has_own_tables) && response["found"].boolean() == false &&
         response["did_you_mean"].list() != nullptr;
}

// Removes the tool's own steps from its answer. Empty if it gave none.
JsonList take_own_steps(JsonObject& response) {
  std::optional<JsonValue> own = response.remove("next_steps");
  JsonList* steps = own ? own->list() : nullptr;
  return steps == nullptr ? JsonList() : std::move(*steps);
}

}  // namespace

JsonList _deduplicated(JsonList steps) {
  Decisions decisions(steps.size());
  drop_repeats(steps, steps.size(), decisions);
  remove_dropped(steps, decisions);
  return steps;
}

bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept {
  return serves == nullptr || serves->contains(tool, action);
}

bool is_served(const JsonValue& step, const ServedTools* serves) noexcept {
  return serves == nullptr ||
         serves->contains(step["tool"].string().value_or(""), step["args"]["action"].string());
}

Choice choose_steps(Candidates candidates, const ServedTools* serves) {
  const Keep keep{std::clamp(served_signals(candidates, serves), std::size_t{1}, MAX_STEPS)};
  JsonList& steps = candidates.steps;
  Decisions decisions(steps.size());
  if (candidates.giver != Giver::tool) drop_unserved(steps, serves, decisions);
  if (candidates.giver == Giver::tables) drop_repeats(steps, MAX_STEPS, decisions);
  remove_dropped(steps, decisions);
  return {std::move(steps), keep, std::move(decisions)};
}

void prepare(JsonObject& response, JsonValue freshness) {
  values::drop_null_fields(response);
  add_freshness(response, std::move(freshness));
}

Candidates candidate_steps(JsonObject& response, std::string_view tool_name, const FinishOptions& options) {
  Candidates candidates{.steps = take_own_steps(response)};
  if (is_known_miss(response, options)) {
    candidates.giver = Giver::miss;
  } else if (!candidates.steps.empty()) {
    candidates.giver = Giver::tool;
  } else {
    const AnswerView answer(response, options.arguments, tables_of(options.catalogue));
    candidates.steps = _signals(answer, tool_name, options.action);
    candidates.signals = candidates.steps.size();
    JsonList usual = _usual(answer, tool_name, options.action);
    if (candidates.signals == 0) std::swap(candidates.steps, usual);
    for (std::size_t position = 0; position < usual.size(); ++position) {
      candidates.steps.push_back(std::move(*usual.item(position)));
    }
  }
  return candidates;
}

JsonObject& _add_next_steps(JsonObject& response, std::string_view tool_name, const FinishOptions& options) {
  Choice choice = choose_steps(candidate_steps(response, tool_name, options), options.serves);
  JsonList steps = _within_share(response, std::move(choice.steps), choice.keep);
  if (!steps.empty()) response.append("next_steps", std::move(steps));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps
