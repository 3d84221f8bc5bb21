// How finishing grows: with the bytes of an answer, with shapes that invite
// quadratic work, and with a second thread.
//
// Names are growth/SIZE, linear/SHAPE/COUNT and threads/ANSWER/WHOSE, where two
// threads finish one answer that they share or a copy each.
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <benchmark/benchmark.h>

#include "growth_answers.h"
#include "measure.h"
#include "memory_settings.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::bench {

namespace {

// A request that is made when it is first needed.
class Lazy {
 public:
  template <typename Make>
  explicit Lazy(Make make) : make_(std::move(make)) {}

  const Request& get() {
    if (!request_) request_ = std::make_unique<Request>(make_());
    return *request_;
  }

 private:
  std::function<Request()> make_;
  std::unique_ptr<Request> request_;
};

std::size_t finish(const Request& request) {
  return tool_handlers::next_steps::finish_answer(request.answer, request.tool,
                                                  {.action = request.action, .arguments = &request.arguments})
      .size();
}

template <typename Make>
void register_one(const std::string& name, Make make, double items) {
  benchmark::RegisterBenchmark(
      name.c_str(), [lazy = std::make_shared<Lazy>(make), items](benchmark::State& state) {
        const Request& request = lazy->get();
        measure(state, [&] { return finish(request); });
        state.counters["items"] = items;
        state.counters["bytes"] = static_cast<double>(values::compact_size(request.answer));
      });
}

void register_growth() {
  struct Step {
    std::string_view name;
    std::size_t bytes;
  };
  constexpr std::array<Step, 4> kSteps = {
      {{"1 KB", 1'000}, {"100 KB", 100'000}, {"10 MB", 10'000'000}, {"100 MB", 100'000'000}}};
  for (const Step& step : kSteps) {
    register_one(
        "growth/" + std::string(step.name), [bytes = step.bytes] { return flat_request(bytes); },
        static_cast<double>(step.bytes));
  }
}

void register_linear() {
  struct Shape {
    std::string_view name;
    Request (*make)(std::size_t count);
    std::size_t most;
  };
  constexpr std::array<Shape, 3> kShapes = {{{"own steps", own_steps_request, 100'000},
                                             {"fields of one object", fields_request, 1'000'000},
                                             {"nulls in one list", nulls_request, 1'000'000}}};
  for (const Shape& shape : kShapes) {
    for (std::size_t count = shape.most / 100; count <= shape.most; count *= 10) {
      register_one(
          "linear/" + std::string(shape.name) + '/' + std::to_string(count),
          [make = shape.make, count] { return make(count); }, static_cast<double>(count));
    }
  }
}

void register_threads() {
  struct Answer {
    std::string_view name;
    Request (*make)();
  };
  constexpr std::array<Answer, 3> kAnswers = {{{"callers", callers_request},
                                               {"search", [] { return search_request(Floats::keep); }},
                                               {"long texts", long_texts_request}}};
  for (const Answer& answer : kAnswers) {
    for (const std::string_view whose : {"shared", "separate"}) {
      // Two requests made alike, of which two threads use one or both.
      auto requests = std::make_shared<std::array<Request, 2>>();
      *requests = {answer.make(), answer.make()};
      const std::string name = "threads/" + std::string(answer.name) + '/' + std::string(whose);
      benchmark::RegisterBenchmark(name.c_str(), [requests,
                                                  own = whose == "separate"](benchmark::State& state) {
        const Request& request = (*requests)[own ? static_cast<std::size_t>(state.thread_index()) : 0];
        for (auto _ : state) benchmark::DoNotOptimize(finish(request));
      })->Threads(2);
    }
  }
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  using namespace vantrex::bench;
  keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  register_growth();
  register_linear();
  register_threads();
  benchmark::RunSpecifiedBenchmarks();
}
