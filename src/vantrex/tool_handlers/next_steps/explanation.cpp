#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/explanation_remarks.h"
#include "vantrex/tool_handlers/next_steps/hint_fields.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

std::vector<AbsentHint> absent_hints(const AnswerView& answer, const UsualRow& row,
                                     const ServedTools* serves) {
  std::vector<AbsentHint> absent;
  for (const Call& call : row.calls) {
    if (!is_served(call.tool.view(), action_of(call), serves)) continue;
    const auto outcome = follow_up_arguments(call, answer);
    if (const Lack* lack = std::get_if<Lack>(&outcome)) {
      absent.push_back({to_dict(call), lack_text(answer, *lack)});
    }
  }
  return absent;
}

std::vector<SilentSignal> silent_signals(const AnswerView& answer, const SignalRow& row,
                                         const ServedTools* serves) {
  const Signal* signal = row.signal;
  if (signal == nullptr || !is_served(signal->call.tool.view(), action_of(signal->call), serves)) return {};
  std::string why = lacking_hits(answer, signal->condition);
  const auto outcome = call_arguments(signal->call, answer);
  if (const Lack* lack = std::get_if<Lack>(&outcome)) {
    why += (why.empty() ? "" : ", ") + lack_text(answer, *lack);
  }
  if (why.empty()) return {};
  return {{std::string(row.key), std::move(why)}};
}

// Records the rows that apply to the answer, and the calls and signals that give no step.
void explain_tables(Explanation& explained, const AnswerView& answer, std::string_view tool,
                    const FinishOptions& options) {
  const std::optional<std::string_view> action = options.action;
  if (const UsualRow* usual = answer.tables().usual_row(tool, action)) {
    explained.rows.usual = usual->key;
    explained.rows.usual_of_tool = usual->key == tool && action;
    explained.absent = absent_hints(answer, *usual, options.serves);
  }
  if (const SignalRow* signal = answer.tables().signal_row(tool, action)) {
    explained.rows.signal = signal->key;
    explained.silent = silent_signals(answer, *signal, options.serves);
  }
  append_remarks_on_tables(explained.remarks, answer, tool, options);
}

// The candidates with the decisions on them and their sizes. The kept ones are judged by the budget in an
// answer of `bytes`.
std::vector<CandidateStep> measured_steps(const Candidates& candidates, const Decisions& decisions,
                                          const TableRows& rows, const AnswerBytes& bytes) {
  std::vector<CandidateStep> steps;
  AddedBytes added;
  for (std::size_t place = 0; place < candidates.steps.size(); ++place) {
    const JsonValue& step = candidates.steps[place];
    const Source source = candidates.giver != Giver::tables ? Source::own
                          : place < candidates.signals      ? Source::signal
                                                            : Source::usual;
    const std::string row = source == Source::own ? "" : source == Source::signal ? rows.signal : rows.usual;
    steps.push_back({decisions[place], step, source, row, _encoded_size(step)});
    if (decisions[place].verdict != Verdict::kept) continue;
    added.add(steps.back().bytes);
    steps.back().over_room = bytes.over_room(added.bytes());
  }
  return steps;
}

// Drops the kept steps after the first `count`.
void drop_over_room(std::vector<CandidateStep>& steps, std::size_t count) {
  std::size_t kept = 0;
  for (CandidateStep& each : steps) {
    if (each.verdict == Verdict::kept && ++kept > count) each.verdict = Verdict::over_room;
  }
}

}  // namespace

Explanation explain_answer(JsonObject answer, std::string_view tool_name, FinishOptions options) {
  prepare(answer, std::move(options.freshness));
  Explanation explained;
  append_remarks_on_own_steps(explained.remarks, answer, options);
  const Candidates candidates = candidate_steps(answer, tool_name, options);
  Decisions decisions;
  Choice choice = choose_steps(candidates, options.serves, &decisions);
  if (candidates.giver == Giver::tables) {
    explain_tables(explained, AnswerView(answer, options.arguments, tables_of(options.catalogue)), tool_name,
                   options);
  } else if (candidates.giver == Giver::miss && candidates.steps.empty()) {
    explained.remarks.emplace_back("a miss: the tables were not asked");
  }

  const AnswerBytes bytes{values::compact_size(answer), _hint_size(answer)};
  explained.bytes = bytes.all;
  explained.hint_bytes = bytes.hints;
  ListedHints hints = largest_hints(answer, Explanation::kMaxHintFields);
  explained.hint_fields = std::move(hints.largest);
  explained.more_hint_fields = hints.others;
  explained.candidates = measured_steps(candidates, decisions, explained.rows, bytes);
  const JsonList kept = _within_share(answer, std::move(choice.steps), choice.keep);
  drop_over_room(explained.candidates, kept.size());
  explained.step_bytes = AddedBytes(kept).bytes();
  const HintRoom room(explained.bytes + explained.step_bytes);
  explained.room = room.bytes;
  explained.is_floor = room.is_floor;
  return explained;
}

}  // namespace vantrex::tool_handlers::next_steps
