#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/explanation_parts.h"
#include "vantrex/tool_handlers/next_steps/limits.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;
using values::Text;

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
    std::string remark = "next_steps[" + std::to_string(position) + "]";
    if (const std::string lack = lack_of_step(own[position]); !lack.empty()) {
      remarks.push_back(remark.append(" is sent as it is, but is no step: it ").append(lack));
    } else if (!is_served(own[position], serves)) {
      remarks.push_back(remark.append(" calls what the server does not have"));
    }
  }
}

// The candidates with the decisions on them and their sizes. The first `kept` of those that were chosen stay
// in an answer of `bytes`.
std::vector<CandidateStep> measured_steps(const Candidates& candidates, const Decisions& decisions,
                                          std::size_t kept, const TableRows& rows, const AnswerBytes& bytes) {
  std::vector<CandidateStep> steps;
  std::size_t step_bytes = 0;
  std::size_t count = 0;  // of the chosen ones
  for (std::size_t place = 0; place < candidates.steps.size(); ++place) {
    const JsonValue& step = candidates.steps[place];
    const Source source = candidates.giver != Giver::tables ? Source::own
                          : place < candidates.signals      ? Source::signal
                                                            : Source::usual;
    const std::string row = source == Source::own ? "" : source == Source::signal ? rows.signal : rows.usual;
    CandidateStep& made =
        steps.emplace_back(CandidateStep{decisions[place], step, source, row, _encoded_size(step)});
    if (made.verdict != Verdict::kept) continue;
    step_bytes += made.bytes;
    made.over_room = bytes.over_room(added_bytes(step_bytes, ++count));
    if (count > kept) made.verdict = Verdict::over_room;
  }
  return steps;
}

// "over the room by 17 bytes"; the bytes are rounded up.
std::string over_room_text(double bytes) {
  const auto whole = static_cast<std::int64_t>(std::ceil(bytes));
  return "over the room by " + std::to_string(whole) + (whole == 1 ? " byte" : " bytes");
}

// `key`, or null if it is empty.
JsonValue row_key(const std::string& key) {
  return key.empty() ? JsonValue() : Text::lossy(key);
}

}  // namespace

Explanation explain_answer(JsonObject answer, std::string_view tool_name, FinishOptions options) {
  prepare(answer, std::move(options.freshness));
  Explanation explained;
  append_remarks(explained.remarks, answer["next_steps"], options.serves);
  const Candidates candidates = candidate_steps(answer, tool_name, options);
  Choice choice = choose_steps(candidates, options.serves);
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
  explained.candidates = measured_steps(candidates, choice.decisions, kept.size(), explained.rows, bytes);
  std::size_t kept_bytes = 0;
  for (const JsonValue& step : kept) kept_bytes += _encoded_size(step);
  explained.step_bytes = added_bytes(kept_bytes, kept.size());
  const HintRoom room(explained.bytes + explained.step_bytes);
  explained.room = room.bytes;
  explained.is_floor = room.is_floor;
  return explained;
}

std::string CandidateStep::from() const {
  if (source == Source::own) return "own";
  return (source == Source::signal ? "signal " : "usual ") + row;
}

std::string CandidateStep::why() const {
  switch (verdict) {
    case Verdict::not_served:
      return "the server does not have it";
    case Verdict::repeat:
      return "repeat of step " + std::to_string(repeated + 1);
    case Verdict::over_cap:
      return "over the cap of " + std::to_string(MAX_STEPS) + " steps";
    case Verdict::over_room:
      return over_room_text(over_room);
    case Verdict::kept:
      break;
  }
  if (over_room <= 0) return "fits the room";
  return over_room_text(over_room) + ", but " +
         (source == Source::signal ? "a signal always stays" : "the first step always stays");
}

std::string Explanation::room_text() const {
  const auto whole = [](double number) { return std::to_string(static_cast<std::int64_t>(number)); };
  const std::size_t all = bytes + step_bytes;
  const std::string share = std::to_string(std::lround(HINT_SHARE * 100)) + " % of " + std::to_string(all);
  if (!is_floor) return whole(room) + " bytes (" + share + ")";
  return whole(room) + " bytes (the floor; " + share + " is " + whole(HINT_SHARE * static_cast<double>(all)) +
         ")";
}

JsonObject Explanation::to_dict() const {
  JsonList fields;
  for (const HintField& field : hint_fields) {
    fields.push_back(JsonObject{{"path", Text::lossy(field.path)}, {"bytes", field.bytes}});
  }
  JsonList steps;
  for (const CandidateStep& each : candidates) {
    steps.push_back(JsonObject{{"step", each.step},
                               {"from", each.from()},
                               {"bytes", each.bytes},
                               {"kept", each.verdict == Verdict::kept},
                               {"why", each.why()}});
  }
  JsonList hints;
  for (const AbsentHint& each : absent) {
    hints.push_back(JsonObject{{"hint", each.hint}, {"why", each.why}});
  }
  JsonList signals;
  for (const SilentSignal& each : silent) {
    signals.push_back(JsonObject{{"signal", Text::lossy(each.row)}, {"why", each.why}});
  }
  return JsonObject{{"answer", JsonObject{{"bytes", bytes},
                                          {"hint_bytes", hint_bytes},
                                          {"hint_fields", std::move(fields)},
                                          {"more_hint_fields", more_hint_fields},
                                          {"step_bytes", step_bytes},
                                          {"room", room},
                                          {"room_from", std::string_view(is_floor ? "floor" : "share")},
                                          {"room_text", room_text()}}},
                    {"rows", JsonObject{{"usual", row_key(rows.usual)},
                                        {"usual_of_tool", rows.usual_of_tool},
                                        {"signal", row_key(rows.signal)}}},
                    {"candidates", std::move(steps)},
                    {"absent", std::move(hints)},
                    {"silent", std::move(signals)},
                    {"remarks", remarks}};
}

}  // namespace vantrex::tool_handlers::next_steps
