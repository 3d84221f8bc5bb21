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

constexpr std::string_view kTool[] = {"tool"};
constexpr std::string_view kArgs[] = {"args"};
constexpr std::string_view kAction[] = {"args", "action"};

// Equal texts have equal sizes, so texts are made only when the sizes leave it open.
bool make_same_call(const JsonValue& a, const JsonValue& b) {
  const JsonValue& args_of_a = value_at(a, kArgs);
  const JsonValue& args_of_b = value_at(b, kArgs);
  return compact_size(args_of_a) == compact_size(args_of_b) &&
         canonical_text(value_at(a, kTool)) == canonical_text(value_at(b, kTool)) &&
         canonical_text(args_of_a) == canonical_text(args_of_b);
}

bool is_kept(const Candidate& candidate) noexcept {
  return candidate.verdict == Verdict::kept;
}

void append(Candidates& candidates, JsonList steps, Source source) {
  for (std::size_t position = 0; position < steps.size(); ++position) {
    candidates.push_back({std::move(steps.mutable_item(position)), source});
  }
}

// Removes the tool's own steps from its answer. Empty if it gave none.
JsonList take_own_steps(JsonObject& response) {
  std::optional<JsonValue> own = response.remove("next_steps");
  JsonList* steps = own ? own->list() : nullptr;
  return steps == nullptr ? JsonList() : std::move(*steps);
}

// Whether `response` is the answer to a miss, and it is known what the server has.
bool is_known_miss(const JsonObject& response, const FinishOptions& options) noexcept {
  return (options.serves != nullptr || options.catalogue != nullptr) &&
         response["found"].boolean() == false && response["did_you_mean"].list() != nullptr;
}

}  // namespace

Candidates _deduplicated(Candidates steps) {
  for (auto step = steps.begin(); step != steps.end(); ++step) {
    if (!is_kept(*step)) continue;
    const auto first = std::find_if(steps.begin(), step, [&](const Candidate& earlier) {
      return is_kept(earlier) && make_same_call(earlier.step, step->step);
    });
    if (first == step) continue;
    step->verdict = Verdict::repeat;
    step->repeated = static_cast<std::size_t>(first - steps.begin());
  }
  return steps;
}

bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept {
  return serves == nullptr || serves->contains(tool, action);
}

bool is_served(const JsonValue& step, const ServedTools* serves) noexcept {
  return is_served(value_at(step, kTool).string().value_or(""), value_at(step, kAction).string(), serves);
}

Keep choose_steps(Candidates& candidates, const ServedTools* serves) {
  if (candidates.empty() || candidates.front().source == Source::own) return Keep{1};
  std::size_t signals = 0;
  for (Candidate& each : candidates) {
    if (!is_served(each.step, serves)) each.verdict = Verdict::not_served;
    if (is_kept(each) && each.source == Source::signal) ++signals;
  }
  candidates = _deduplicated(std::move(candidates));
  std::size_t kept = 0;
  for (Candidate& each : candidates) {
    if (is_kept(each) && ++kept > MAX_STEPS) each.verdict = Verdict::over_cap;
  }
  return Keep{std::clamp(signals, std::size_t{1}, MAX_STEPS)};
}

JsonList kept_steps(Candidates candidates) {
  JsonList steps;
  steps.reserve(candidates.size());
  for (Candidate& each : candidates) {
    if (is_kept(each)) steps.push_back(std::move(each.step));
  }
  return steps;
}

void prepare(JsonObject& response, JsonValue freshness) {
  values::drop_null_fields(response);
  add_freshness(response, std::move(freshness));
}

bool asks_tables(const JsonObject& response, const FinishOptions& options) noexcept {
  const JsonList* own = response["next_steps"].list();
  return (own == nullptr || own->empty()) && !is_known_miss(response, options);
}

Candidates candidate_steps(JsonObject& response, std::string_view tool_name, const FinishOptions& options) {
  Candidates candidates;
  if (!asks_tables(response, options)) {
    const ServedTools* serves = is_known_miss(response, options) ? options.serves : nullptr;
    append(candidates, take_own_steps(response), Source::own);
    for (Candidate& each : candidates) {
      if (!is_served(each.step, serves)) each.verdict = Verdict::not_served;
    }
    return candidates;
  }
  response.remove("next_steps");
  const AnswerView answer(response, options.arguments, tables_of(options.catalogue));
  append(candidates, _signals(answer, tool_name, options.action), Source::signal);
  append(candidates, _usual(answer, tool_name, options.action), Source::usual);
  return candidates;
}

JsonObject& _add_next_steps(JsonObject& response, std::string_view tool_name, const FinishOptions& options) {
  Candidates candidates = candidate_steps(response, tool_name, options);
  const Keep keep = choose_steps(candidates, options.serves);
  JsonList steps = _within_share(response, kept_steps(std::move(candidates)), keep);
  if (!steps.empty()) response.append("next_steps", std::move(steps));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps
