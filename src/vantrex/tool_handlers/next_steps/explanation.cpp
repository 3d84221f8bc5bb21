#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <variant>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/explanation_steps.h"
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

std::vector<HintField> hint_fields(const JsonObject& answer) {
  std::vector<HintField> fields;
  visit_hints(answer, [&fields](const std::string& path, const JsonValue& value) {
    fields.push_back({path, _encoded_size(value)});
  });
  std::stable_sort(fields.begin(), fields.end(),
                   [](const HintField& a, const HintField& b) { return a.bytes > b.bytes; });
  return fields;
}

std::string lack_text(const Hint& hint, Lack lack) {
  if (lack == Lack::hits) return "no hits";
  if (lack == Lack::scope) return "no files and no base branch";
  if (hint.takes == Takes::query) return "no query";
  return "no " + std::string(text(*hint.takes).view()) + " in any hit";
}

std::vector<AbsentHint> absent_hints(const AnswerView& answer, const FollowUps& row) {
  std::vector<AbsentHint> absent;
  for (const Hint* hint : row.hints()) {
    const auto outcome = hint_arguments(*hint, answer);
    if (const Lack* lack = std::get_if<Lack>(&outcome)) absent.push_back({hint, lack_text(*hint, *lack)});
  }
  return absent;
}

JsonList kept_steps(const std::vector<CandidateStep>& candidates) {
  JsonList kept;
  for (const CandidateStep& each : candidates) {
    if (each.verdict == Verdict::kept) kept.push_back(each.step);
  }
  return kept;
}

// "over the room by 17 bytes", a part of a byte counting as one.
std::string over_room_text(double bytes) {
  const auto whole = static_cast<std::int64_t>(std::ceil(bytes));
  return "over the room by " + std::to_string(whole) + (whole == 1 ? " byte" : " bytes");
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
  return JsonObject{{"answer", JsonObject{{"bytes", bytes},
                                          {"hint_bytes", hint_bytes},
                                          {"hint_fields", std::move(fields)},
                                          {"step_bytes", step_bytes},
                                          {"room", room},
                                          {"room_from", is_floor ? kFloor : kShare}}},
                    {"candidates", std::move(steps)},
                    {"absent", std::move(hints)}};
}

Explanation explain_answer(JsonObject answer, std::string_view tool_name, FinishOptions options) {
  prepare(answer, std::move(options.freshness));
  const Candidates found = candidate_steps(answer, tool_name, options);
  const SignalRow* signal = signal_row(tool_name, options.action);
  const FollowUps* usual = usual_row(tool_name, options.action);

  Explanation explained;
  const AnswerBytes bytes{values::compact_size(answer), _hint_size(answer)};
  explained.bytes = bytes.all;
  explained.hint_bytes = bytes.hints;
  explained.hint_fields = hint_fields(answer);
  explained.candidates = judged_steps(answer, bytes, found, signal == nullptr ? "" : signal->key,
                                      usual == nullptr ? "" : usual->key);
  if (found.own.empty() && usual != nullptr) {
    explained.absent = absent_hints(AnswerView(answer, options.arguments), *usual);
  }
  explained.step_bytes = AddedBytes(kept_steps(explained.candidates)).bytes();
  const HintRoom room(explained.bytes + explained.step_bytes);
  explained.room = room.bytes;
  explained.is_floor = room.is_floor;
  return explained;
}

}  // namespace vantrex::tool_handlers::next_steps
