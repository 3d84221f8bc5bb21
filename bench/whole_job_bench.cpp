// Finishing answers, side by side with the same job on general JSON libraries.
//
// Every way to do the job is checked first. On answers whose floats are replaced
// by whole numbers (libraries write floats in different forms) each must come to
// the text that next_steps writes, byte for byte, and to the same counts; on the
// answers as they are, to the same steps. Names are STAGE/ANSWER/LIBRARY, where the stages are
//   finish  the whole job
//   write   the whole job and the finished answer's text
//   copy    the deep copy without null fields, and its destruction
//   count   the bytes of the compact text and of the hint fields
#include <deque>
#include <exception>
#include <iostream>
#include <memory>
#include <regex>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "answers.h"
#include "contender.h"
#include "measure.h"
#include "memory_settings.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::bench {

namespace {

using Work = std::size_t (Contender::*)();

struct Stage {
  std::string_view name;
  Work work;
};
constexpr std::array<Stage, 4> kStages = {{{"finish", &Contender::finish},
                                           {"write", &Contender::finish_and_write},
                                           {"copy", &Contender::copy},
                                           {"count", &Contender::count}}};

void require(bool holds, std::string_view library, const Request& request, std::string_view what) {
  if (holds) return;
  throw std::runtime_error(
      std::string(library).append(" on ").append(request.name).append(": other ").append(what));
}

// The end of a finished answer's text from its steps on.
std::string steps_of(const std::string& text) {
  return text.substr(text.rfind(",\"next_steps\":"));
}

// Everything, on an answer without floats.
void check_whole(const NamedContender& contender, const Request& request, const std::string& expected) {
  const std::unique_ptr<Contender> way = contender.make(request);
  const std::size_t bytes =
      values::compact_size(tool_handlers::next_steps::without_null_fields(request.answer));
  require(way->finished_text() == expected, contender.name, request, "text than next_steps writes");
  require(way->finish_and_write() == expected.size(), contender.name, request, "bytes written");
  require(way->finish() == (contender.make == ours ? 0 : bytes), contender.name, request,
          "bytes counted while finishing");
  require(way->count() == ours(request)->count(), contender.name, request, "bytes counted");
  require(way->copy() == ours(request)->copy(), contender.name, request, "fields copied");
}

// What is measured must stay where it is.
struct Subjects {
  std::deque<Request> requests;
  std::deque<std::unique_ptr<Contender>> contenders;
};

std::string name_of(const Stage& stage, const NamedRequest& request, const NamedContender& contender) {
  return std::string(stage.name).append("/").append(request.name).append("/").append(contender.name);
}

// Whether --benchmark_filter may ask for `request`; making the large ones takes
// seconds.
bool is_wanted(const NamedRequest& request) {
  const std::string filter = benchmark::GetBenchmarkFilter();
  if (filter.empty() || filter == "all" || filter.front() == '-') return true;
  const std::regex wanted(filter, std::regex::extended);
  for (const Stage& stage : kStages) {
    for (const NamedContender& contender : kContenders) {
      if (std::regex_search(name_of(stage, request, contender), wanted)) return true;
    }
  }
  return false;
}

void check(const NamedRequest& named) {
  const Request request = named.make(Floats::round);
  const std::string expected = ours(request)->finished_text();
  for (const NamedContender& contender : kContenders) check_whole(contender, request, expected);
}

void add(Subjects& subjects, const NamedRequest& named) {
  const Request& request = subjects.requests.emplace_back(named.make(Floats::keep));
  const std::string steps = steps_of(ours(request)->finished_text());
  for (const NamedContender& contender : kContenders) {
    Contender* way = subjects.contenders.emplace_back(contender.make(request)).get();
    require(steps_of(way->finished_text()) == steps, contender.name, request, "steps");
    for (const Stage& stage : kStages) {
      benchmark::RegisterBenchmark(name_of(stage, named, contender).c_str(),
                                   [way, work = stage.work](benchmark::State& state) {
                                     measure(state, [&] { return (way->*work)(); });
                                   });
    }
  }
}

int run(int argc, char** argv) {
  keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  Subjects subjects;
  for (const NamedRequest& request : kRequests) {
    if (!is_wanted(request)) continue;
    check(request);
    add(subjects, request);
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  try {
    return vantrex::bench::run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "benchmark stopped: " << error.what() << '\n';
    return 1;
  }
}
