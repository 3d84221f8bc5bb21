// The answers that the benchmarks finish.
//
// Purpose: answers as the tools of a server give them, made by a generator with
// a fixed seed, so that every run measures the same bytes. They are built field
// by field, the way a tool builds an answer, never copied from a finished one.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::bench {

// One of the two steps that a request comes to, as the peers of the benchmark
// build it. Its one argument beside the action is taken from the answer: its own
// field of that name, or that of the first row of `list` when that is given.
struct PlannedStep {
  std::string_view tool;
  std::string_view action;
  std::string_view argument;
  std::string_view list;
  std::string_view reason;
  bool counted = false;  // the reason begins with the answer's "total_count"
};

// What finish_answer is called with, and the steps it must come to.
struct Request {
  std::string name;
  values::JsonObject answer;
  std::string tool;
  std::optional<std::string> action;
  values::JsonObject arguments;
  std::array<PlannedStep, 2> plan{};
};

// Whether floats are left as they are or replaced by whole numbers, for
// comparisons with libraries that write floats otherwise.
enum class Floats { keep, round };

// The sizes are those of the compact text. Every one of them gets two steps.
Request detail_request();               // 1 KB: one symbol, with nulls and a doc
Request callers_request();              // 3 KB: 12 callers
Request search_request(Floats floats);  // 30 KB: 50 hits with snippets and scores
Request files_request();                // 2 MB: 20,000 file rows
Request huge_request();                 // 30 MB: modules, classes, methods; a tenth of the fields null
Request floats_request(Floats floats);  // 100,000 scores

struct NamedRequest {
  std::string_view name;
  Request (*make)(Floats floats);
};
inline constexpr std::array<NamedRequest, 6> kRequests = {
    {{"detail", [](Floats) { return detail_request(); }},
     {"callers", [](Floats) { return callers_request(); }},
     {"search", search_request},
     {"files", [](Floats) { return files_request(); }},
     {"huge", [](Floats) { return huge_request(); }},
     {"floats", floats_request}}};

// What they are made with: an answer about one symbol, and one of `count` file
// rows.
Request symbol_request(std::string name, values::JsonObject answer);
Request rows_request(std::string name, std::size_t count);

}  // namespace vantrex::bench
