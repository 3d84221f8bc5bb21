#include <cmath>
#include <cstdint>
#include <utility>

#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/tool_handlers/next_steps/limits.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Text;

namespace {

constexpr values::TextLiteral kFloor = "floor";
constexpr values::TextLiteral kShare = "share";

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

}  // namespace vantrex::tool_handlers::next_steps
