// A small tool server over an index of Universal Ctags.
//
//   ctags --output-format=json --fields=+nl -R -f INDEX src
//   echo '{"tool": "search", "args": {"action": "symbols", "query": "Text"}}' | code_index INDEX --follow
//
// Calls come one a line, and each is answered by a line {"call": ..., "answer":
// ...}. With --follow the steps that an answer offers are called as well, and
// theirs in turn, each call once. The exit status is 1 when an offered step led to a
// miss.
#include <cstddef>
#include <deque>
#include <exception>
#include <iostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "next_steps/ctags_index.h"
#include "next_steps/json_reader.h"
#include "tools.h"
#include "vantrex/values/text_forms.h"

namespace {

using vantrex::models::Repository;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;

JsonObject answer_and_print(const Repository& index, const JsonObject& call) {
  JsonObject answer = code_index::answer(index, call);
  std::cout << compact_text(JsonObject{{"call", call}, {"answer", answer}}) << '\n';
  return answer;
}

// Calls the steps that answers offer, and those that their answers offer.
class Follower {
 public:
  explicit Follower(const Repository& index) : index_(index) {}

  void follow(const JsonObject& answer) {
    note_steps(answer);
    for (; !offered_.empty(); offered_.pop_front()) follow_step(offered_.front());
  }

  // Whether no step led to a miss.
  bool never_missed() const noexcept { return missed_ == 0; }

 private:
  void note_steps(const JsonObject& answer) {
    const JsonList* steps = answer["next_steps"].list();
    if (steps == nullptr) return;
    for (const auto& each : *steps) {
      const JsonObject& step = *each.object();
      const bool is_new = seen_.insert(canonical_text(JsonList::of(step["tool"], step["args"]))).second;
      if (is_new) offered_.push_back(step);
    }
  }

  void follow_step(const JsonObject& step) {
    const JsonObject answer = answer_and_print(index_, step);
    if (answer["found"] == false) {
      std::cerr << "led to a miss: " << compact_text(step) << '\n';
      ++missed_;
    }
    note_steps(answer);
  }

  const Repository& index_;
  std::deque<JsonObject> offered_;
  std::set<std::string> seen_;
  std::size_t missed_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const bool follows = argc == 3 && std::string_view(argv[2]) == "--follow";
  if (argc != 2 && !follows) {
    std::cerr << "usage: code_index INDEX [--follow]\n";
    return 2;
  }
  try {
    const auto index = next_steps_program::read_ctags_index(argv[1]);
    Follower follower(index);
    for (std::string line; std::getline(std::cin, line);) {
      const JsonObject answer = answer_and_print(index, next_steps_program::read_json_object(line, "a call"));
      if (follows) follower.follow(answer);
    }
    return follower.never_missed() ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "code_index: " << error.what() << '\n';
    return 1;
  }
}
