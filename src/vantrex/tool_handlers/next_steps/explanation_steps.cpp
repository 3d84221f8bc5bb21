#include "vantrex/tool_handlers/next_steps/explanation_steps.h"

#include "vantrex/tool_handlers/next_steps/budget.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// The candidates in order. `over_cap` is provisional: the choice and the budget set the verdict of each
// served candidate.
std::vector<CandidateStep> considered(const Candidates& found, const TableRows& rows,
                                      const ServedTools* serves) {
  std::vector<CandidateStep> candidates;
  const auto add = [&](const JsonList& steps, Source source, std::string_view row) {
    for (const JsonValue& step : steps) {
      const bool served = source == Source::own || is_served(step, serves);
      candidates.push_back(
          {step, source, row, _encoded_size(step), served ? Verdict::over_cap : Verdict::not_served});
    }
  };
  add(found.own, Source::own, "");
  add(found.signals, Source::signal, rows.signal);
  add(found.usual, Source::usual, rows.usual);
  return candidates;
}

// The position of the first candidate with the same call as the one at `position`.
std::size_t first_of_call(const std::vector<CandidateStep>& candidates, std::size_t position) {
  const auto call = [&](std::size_t at) { return call_text(candidates[at].step, at); };
  const std::string wanted = call(position);
  std::size_t before = 0;
  while (before < position && call(before) != wanted) ++before;
  return before;
}

// The chosen candidates in order; the budget decides on them. Sets the verdict of each other served
// candidate: it repeats a call, or comes after the last chosen one.
std::vector<CandidateStep*> sort_out(std::vector<CandidateStep>& candidates, const JsonList& chosen) {
  std::vector<CandidateStep*> judged;
  for (std::size_t position = 0; position < candidates.size(); ++position) {
    CandidateStep& candidate = candidates[position];
    if (candidate.verdict == Verdict::not_served) continue;
    if (judged.size() < chosen.size() && chosen[judged.size()] == candidate.step) {
      judged.push_back(&candidate);
      continue;
    }
    candidate.repeated = first_of_call(candidates, position);
    candidate.verdict = candidate.repeated < position ? Verdict::repeat : Verdict::over_cap;
  }
  return judged;
}

// Sets `over_room` of each of `steps`, in an answer of `bytes`.
void measure(const AnswerBytes& bytes, const std::vector<CandidateStep*>& steps) {
  AddedBytes added;
  for (CandidateStep* step : steps) {
    added.add(step->bytes);
    step->over_room = bytes.over_room(added.bytes());
  }
}

}  // namespace

std::vector<CandidateStep> judged_steps(const JsonObject& answer, const AnswerBytes& bytes,
                                        const Candidates& found, const TableRows& rows,
                                        const ServedTools* serves) {
  std::vector<CandidateStep> candidates = considered(found, rows, serves);
  const Choice choice = choose_steps(found, serves);
  const std::vector<CandidateStep*> chosen = sort_out(candidates, choice.steps);
  measure(bytes, chosen);
  const std::size_t kept = _within_share(answer, choice.steps, choice.keep).size();
  for (std::size_t position = 0; position < chosen.size(); ++position) {
    chosen[position]->verdict = position < kept ? Verdict::kept : Verdict::over_room;
  }
  return candidates;
}

}  // namespace vantrex::tool_handlers::next_steps
