#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/explanation_tables.h"
#include "vantrex/tool_handlers/next_steps/hint_fields.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

// Why an entry of the tool's own list is no step; empty if it is one.
std::string lack_of_step(const JsonValue& entry) {
  if (entry.object() == nullptr) return "is no object";
  if (entry["tool"].kind() != Kind::string) return "has no \"tool\" that is a string";
  if (entry["args"].kind() != Kind::object) return "has no \"args\" that is an object";
  if (entry["reason"].kind() != Kind::string) return "has no \"reason\" that is a string";
  return "";
}

// Remarks on the tool's own list of steps.
void append_remarks(std::vector<std::string>& remarks, const JsonValue& own, const ServedTools* serves) {
  if (!own.is_null() && own.list() == nullptr) {
    remarks.emplace_back("\"next_steps\" is ignored: it is no list");
  }
  for (std::size_t position = 0; own.list() != nullptr && position < own.list()->size(); ++position) {
    const std::string step = "next_steps[" + std::to_string(position) + "]";
    if (const std::string lack = lack_of_step(own[position]); !lack.empty()) {
      remarks.push_back(step + " is sent as it is, but is no step: it " + lack);
    } else if (!is_served(own[position], serves)) {
      remarks.push_back(step + " calls what the server does not have");
    }
  }
}

// The candidates with the decisions on them and their sizes. The first `kept` of those that were chosen stay
// in an answer of `bytes`.
std::vector<CandidateStep> measured_steps(const Candidates& candidates, const Decisions& decisions,
                                          std::size_t kept, const TableRows& rows, const AnswerBytes& bytes) {
  std::vector<CandidateStep> steps;
  AddedBytes added;
  for (std::size_t place = 0; place < candidates.steps.size(); ++place) {
    const JsonValue& step = candidates.steps[place];
    const Source source = candidates.giver != Giver::tables ? Source::own
                          : place < candidates.signals      ? Source::signal
                                                            : Source::usual;
    const std::string row = source == Source::own ? "" : source == Source::signal ? rows.signal : rows.usual;
    CandidateStep& made =
        steps.emplace_back(CandidateStep{decisions[place], step, source, row, _encoded_size(step)});
    if (made.verdict != Verdict::kept) continue;
    added.add(made.bytes);
    made.over_room = bytes.over_room(added.bytes());
    if (kept == 0) made.verdict = Verdict::over_room;
    if (kept > 0) --kept;
  }
  return steps;
}

}  // namespace

Explanation explain_answer(JsonObject answer, std::string_view tool_name, FinishOptions options) {
  prepare(answer, std::move(options.freshness));
  Explanation explained;
  append_remarks(explained.remarks, answer["next_steps"], options.serves);
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
  list_hint_fields(explained, answer);
  const JsonList kept = _within_share(answer, std::move(choice.steps), choice.keep);
  explained.candidates = measured_steps(candidates, decisions, kept.size(), explained.rows, bytes);
  explained.step_bytes = AddedBytes(kept).bytes();
  const HintRoom room(explained.bytes + explained.step_bytes);
  explained.room = room.bytes;
  explained.is_floor = room.is_floor;
  return explained;
}

}  // namespace vantrex::tool_handlers::next_steps
