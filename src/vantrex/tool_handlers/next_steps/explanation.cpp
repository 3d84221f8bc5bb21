#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <variant>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/explanation_remarks.h"
#include "vantrex/tool_handlers/next_steps/explanation_steps.h"
#include "vantrex/tool_handlers/next_steps/hint_fields.h"
#include "vantrex/tool_handlers/next_steps/signal_trial.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

constexpr values::TextLiteral kFloor = "floor";
constexpr values::TextLiteral kShare = "share";

std::string lack_text(const Hint& hint, Lack lack) {
  if (lack == Lack::hits) return "no hits";
  if (lack == Lack::scope) return "no files and no base branch";
  if (hint.takes == Takes::query) return "no query";
  return "no " + std::string(text(*hint.takes).view()) + " in any hit";
}

std::vector<AbsentHint> absent_hints(const AnswerView& answer, const FollowUps& row,
                                     const ServedTools* serves) {
  std::vector<AbsentHint> absent;
  for (const Hint* hint : row.hints()) {
    if (!is_served(hint->tool.view(), hint->action, serves)) continue;
    const auto outcome = hint_arguments(*hint, answer);
    if (const Lack* lack = std::get_if<Lack>(&outcome)) absent.push_back({hint, lack_text(*hint, *lack)});
  }
  return absent;
}

std::vector<SilentSignal> silent_signals(const AnswerView& answer, const SignalRow& row,
                                         const FinishOptions& options) {
  const SignalTrial trial(row);
  std::string lacks = trial.lacks(known_to_signals(answer, options.action));
  if (lacks.empty() || !is_served(trial.step(), options.serves)) return {};
  return {{row.key, std::move(lacks)}};
}

// Records the rows that apply to the answer, and the hints and signals that give no step.
void explain_tables(Explanation& explained, const AnswerView& answer, std::string_view tool,
                    const FinishOptions& options) {
  if (const FollowUps* usual = usual_row(tool, options.action)) {
    explained.rows.usual = usual->key;
    explained.rows.usual_of_tool = usual->key == tool && std::optional<std::string_view>(options.action);
    explained.absent = absent_hints(answer, *usual, options.serves);
  }
  if (const SignalRow* signal = signal_row(tool, options.action)) {
    explained.rows.signal = signal->key;
    explained.silent = silent_signals(answer, *signal, options);
  }
  for (std::string& each : remarks_on_tables(answer, tool, options.serves, explained.absent)) {
    explained.remarks.push_back(std::move(each));
  }
}

JsonList kept_steps(const std::vector<CandidateStep>& candidates) {
  JsonList kept;
  for (const CandidateStep& each : candidates) {
    if (each.verdict == Verdict::kept) kept.push_back(each.step);
  }
  return kept;
}

// "over the room by 17 bytes"; the bytes are rounded up.
std::string over_room_text(double bytes) {
  const auto whole = static_cast<std::int64_t>(std::ceil(bytes));
  return "over the room by " + std::to_string(whole) + (whole == 1 ? " byte" : " bytes");
}

// `key`, or null if it is empty.
JsonValue row_key(std::string_view key) {
  return key.empty() ? JsonValue() : JsonValue(key);
}

JsonObject hint_object(const Hint& hint) {
  JsonObject object{{"tool", hint.tool}, {"reason", hint.reason}};
  if (hint.action) object.set("action", *hint.action);
  if (hint.takes) object.set("takes", text(*hint.takes));
  return object;
}

}  // namespace

std::string CandidateStep::from() const {
  if (source == Source::own) return "own";
  return (source == Source::signal ? "signal " : "usual ") + std::string(row);
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
    fields.push_back(JsonObject{{"path", values::Text::lossy(field.path)}, {"bytes", field.bytes}});
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
    hints.push_back(JsonObject{{"hint", hint_object(*each.hint)}, {"why", each.why}});
  }
  JsonList signals;
  for (const SilentSignal& each : silent) {
    signals.push_back(JsonObject{{"signal", each.row}, {"why", each.why}});
  }
  return JsonObject{{"answer", JsonObject{{"bytes", bytes},
                                          {"hint_bytes", hint_bytes},
                                          {"hint_fields", std::move(fields)},
                                          {"more_hint_fields", more_hint_fields},
                                          {"step_bytes", step_bytes},
                                          {"room", room},
                                          {"room_from", is_floor ? kFloor : kShare},
                                          {"room_text", room_text()}}},
                    {"rows", JsonObject{{"usual", row_key(rows.usual)},
                                        {"usual_of_tool", rows.usual_of_tool},
                                        {"signal", row_key(rows.signal)}}},
                    {"candidates", std::move(steps)},
                    {"absent", std::move(hints)},
                    {"silent", std::move(signals)},
                    {"remarks", remarks}};
}

Explanation explain_answer(JsonObject answer, std::string_view tool_name, FinishOptions options) {
  prepare(answer, std::move(options.freshness));
  Explanation explained;
  explained.remarks = remarks_on_own_steps(answer["next_steps"]);
  const Candidates found = candidate_steps(answer, tool_name, options);
  if (found.own.empty()) {
    explain_tables(explained, AnswerView(answer, options.arguments), tool_name, options);
  }

  const AnswerBytes bytes{values::compact_size(answer), _hint_size(answer)};
  explained.bytes = bytes.all;
  explained.hint_bytes = bytes.hints;
  ListedHints hints = largest_hints(answer, Explanation::kMaxHintFields);
  explained.hint_fields = std::move(hints.largest);
  explained.more_hint_fields = hints.others;
  explained.candidates = judged_steps(answer, bytes, found, explained.rows, options.serves);
  explained.step_bytes = AddedBytes(kept_steps(explained.candidates)).bytes();
  const HintRoom room(explained.bytes + explained.step_bytes);
  explained.room = room.bytes;
  explained.is_floor = room.is_floor;
  return explained;
}

}  // namespace vantrex::tool_handlers::next_steps
