// explain_answer: why an answer gets its steps.
//
// Purpose: for the authors of tool handlers. It runs the operations of finish_answer and records their input
// and output: the bytes of the hints, the room for steps, every candidate step with its verdict, and what the
// answer lacks for further ones.
//
// Ownership: as finish_answer. The tool's name and the arguments must not lie in the answer. An explanation
// owns its values. Threads: no state; safe for concurrent calls, also with the same lvalue.
//
// Cost: several times the cost of finish_answer. All sizes are bytes of the compact JSON text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/tool_handlers/next_steps/candidate.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

/// A hint field of the answer, other than its steps.
struct HintField {
  std::string path;   ///< "results[3].note"
  std::size_t bytes;  ///< of its value
};

/// A candidate step, the decision on it, and its size.
struct NEXT_STEPS_API CandidateStep : Decision {
  values::JsonValue step;  ///< {"tool", "args", "reason"}; an own step may be any value
  Source source;           ///< where it comes from
  std::string row;         ///< the key of its row; empty for an own step
  std::size_t bytes;       ///< of the step
  /// By how many bytes the hints up to and including this step exceed their room; 0 or less if they fit. 0
  /// for a step that is dropped before the budget applies.
  double over_room = 0;

  /// The source as text: "own", "signal symbol:callers" or "usual search".
  std::string from() const;
  /// The verdict as text: "fits the room", "repeat of step 1".
  std::string why() const;
};

/// A call of the usual row, to a tool that the server has, for which the answer lacks an argument.
struct AbsentHint {
  values::JsonObject hint;  ///< the call in the format of a catalogue: {"tool", "args", "takes", "reason"}
  std::string why;          ///< "no hits", "no files and no base branch"
};

/// A signal that gives no step.
struct SilentSignal {
  std::string row;  ///< the key of its row
  std::string why;  ///< "12 hits, not 0"
};

/// The keys of the table rows that apply to an answer; empty if there is none.
struct TableRows {
  std::string usual = {};      ///< "search"
  bool usual_of_tool = false;  ///< whether that is the row of the tool, because the action has none
  std::string signal = {};     ///< "search:symbols"
};

/// Everything that decides on the steps of one answer.
struct NEXT_STEPS_API Explanation {
  /// The bytes of the answer with its freshness block, before steps are added.
  std::size_t bytes = 0;
  std::size_t hint_bytes = 0;          ///< of the hints among them
  std::vector<HintField> hint_fields;  ///< the largest first, at most kMaxHintFields
  std::size_t more_hint_fields = 0;    ///< the number of the others

  static constexpr std::size_t kMaxHintFields = 100;  ///< the maximum number of listed hint fields

  /// The bytes that the kept steps add, with their key; 0 if there are none.
  std::size_t step_bytes = 0;
  /// The room for all hints, the steps included, in the finished answer.
  double room = 0;
  bool is_floor = false;  ///< whether HINT_FLOOR_BYTES decides, not HINT_SHARE

  std::vector<CandidateStep> candidates;  ///< in the order of the choice

  /// The rows that apply. This and the next two are empty if the tables were not asked.
  TableRows rows;
  std::vector<AbsentHint> absent;    ///< hints without an argument
  std::vector<SilentSignal> silent;  ///< signals without a step

  /// Likely mistakes of the tool's author, one sentence each.
  std::vector<std::string> remarks;

  /// The room as text: "320 bytes (the floor; 15 % of 537 is 80)", "417 bytes (15 % of 2786)".
  std::string room_text() const;

  /// The explanation as JSON:
  ///   {"answer": {"bytes", "hint_bytes", "hint_fields": [{"path", "bytes"}], "more_hint_fields",
  ///               "step_bytes", "room", "room_from", "room_text"},
  ///    "rows": {"usual", "usual_of_tool", "signal"},
  ///    "candidates": [{"step", "from", "bytes", "kept", "why"}],
  ///    "absent": [{"hint": {"tool", "args", "takes", "reason"}, "why"}],
  ///    "silent": [{"signal", "why"}],
  ///    "remarks": [string]}
  /// "room_from" is "share" or "floor". A missing row is null. A hint without constant or taken arguments has
  /// no "args" or "takes". Throws std::bad_alloc.
  values::JsonObject to_dict() const;
};

/// Explains the steps that finish_answer gives for the same arguments: the kept candidates. Throws
/// std::bad_alloc.
NEXT_STEPS_API Explanation explain_answer(values::JsonObject answer, std::string_view tool_name,
                                          FinishOptions options = {});
/// A null pointer is not the name of a tool.
Explanation explain_answer(values::JsonObject answer, std::nullptr_t, FinishOptions options = {}) = delete;

}  // namespace vantrex::tool_handlers::next_steps
