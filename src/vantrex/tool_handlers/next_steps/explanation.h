// Why an answer got the steps it got.
//
// Purpose: for the authors of tool handlers, who tune their answers and wonder
// why a step is there or gone. explain_answer runs the operations that finish
// an answer and records what went into each and what came out: where the bytes
// of hints are, how much room there was for steps, every step that was thought
// of and what became of it, and what the answer lacked for the others.
//
// Ownership: the answer is taken by value, as finish_answer does it; the tool's name and
// the arguments must not lie in it. An explanation owns its values and refers to
// constant tables only. Threads: no state is kept, so any
// number of threads may explain answers at once, also the same one.
//
// Cost: several times that of finish_answer, which pays nothing for it. All sizes
// are bytes of the compact JSON text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// A hint field of the answer beside its steps.
struct HintField {
  std::string path;   // "results[3].note"
  std::size_t bytes;  // of its value, which are its share of the hints
};

// Where a step came from: from the tool itself, or from a row of a table.
enum class Source : std::uint8_t { own, signal, usual };

// What became of a step.
enum class Verdict : std::uint8_t {
  kept,
  not_served,  // the server does not have the call
  repeat,      // makes the same call as a step before it
  over_cap,    // as many steps as an answer may have were before it
  over_room    // with it, the hints take more than their room
};

// A step that the answer could have got.
struct NEXT_STEPS_API CandidateStep {
  values::JsonValue step;    // {"tool", "args", "reason"}, or whatever the tool itself gave
  Source source;             // where it came from
  std::string_view row;      // the key of the table's row; empty for the tool's own
  std::size_t bytes;         // of the step
  Verdict verdict;           // what became of it
  std::size_t repeated = 0;  // for a repeat: the position of the step it repeats, from 0
  // By how many bytes the hints up to this step and with it are over the room,
  // 0 or less when they fit. For a step that the budget never saw it is 0.
  double over_room = 0;

  // "own", "signal symbol:callers" or "usual search".
  std::string from() const;
  // Why it was kept or dropped: "fits the room", "repeat of step 1".
  std::string why() const;
};

// A hint of the catalogue's row that the server has, and of which no step could be made.
struct AbsentHint {
  const Hint* hint;  // in a constant table, never null
  std::string why;   // "no hits", "no files and no base branch"
};

// A signal that looked at the answer and gave no step.
struct SilentSignal {
  std::string_view row;  // the key of the table's row
  std::string why;       // "12 hits, not 0"
};

// The keys of the tables' rows that an answer's steps come from, empty where there is
// none. They are the tool, or the tool and the action.
struct TableRows {
  std::string_view usual = {};   // "search"
  bool usual_of_tool = false;    // whether that is the tool's row, as the action has none
  std::string_view signal = {};  // "search:symbols"
};

// Everything that decided on the steps of one answer.
struct NEXT_STEPS_API Explanation {
  // Of the answer with its freshness block, before it got steps.
  std::size_t bytes = 0;
  std::size_t hint_bytes = 0;
  std::vector<HintField> hint_fields;  // the largest first

  // What the kept steps add, their key included; 0 when there are none.
  std::size_t step_bytes = 0;
  // The room for hints, steps included, in the finished answer, and whether
  // HINT_FLOOR_BYTES made it, not HINT_SHARE.
  double room = 0;
  bool is_floor = false;

  std::vector<CandidateStep> candidates;  // in the order in which they were considered

  // All empty when the tool gave steps of its own: the tables are not asked then.
  TableRows rows;
  std::vector<AbsentHint> absent;
  std::vector<SilentSignal> silent;

  // What looks like a mistake of the tool's author, a sentence each.
  std::vector<std::string> remarks;

  // "320 bytes (the floor; 15 % of 537 is 80)", "417 bytes (15 % of 2786)".
  std::string room_text() const;

  // {"answer": {"bytes", "hint_bytes", "hint_fields": [{"path", "bytes"}],
  //             "step_bytes", "room", "room_from", "room_text"},
  //  "rows": {"usual", "usual_of_tool", "signal"},
  //  "candidates": [{"step", "from", "bytes", "kept", "why"}],
  //  "absent": [{"hint": {"tool", "reason", "action", "takes"}, "why"}],
  //  "silent": [{"signal", "why"}],
  //  "remarks": [string]}
  // where "room_from" is "share" or "floor", a row that there is not is null, and a
  // hint has the fields that it has. Throws std::bad_alloc.
  values::JsonObject to_dict() const;
};

// Explains the steps that finish_answer gives for the same arguments: they are
// the kept candidates. Throws std::bad_alloc.
NEXT_STEPS_API Explanation explain_answer(values::JsonObject answer, std::string_view tool_name,
                                          FinishOptions options = {});
Explanation explain_answer(values::JsonObject answer, std::nullptr_t, FinishOptions options = {}) = delete;

}  // namespace vantrex::tool_handlers::next_steps
