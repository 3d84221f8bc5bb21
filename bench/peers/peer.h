// What the peers have in common: the job, and the arithmetic that does not
// depend on how a library holds a value.
//
// The job is that of finish_answer: a deep copy without null fields that needs
// nothing of the original, the bytes of its compact text and of its hint
// fields, two steps built and fitted to the budget, "next_steps" attached as
// the last field, and the finished answer destroyed. The peers know beforehand
// which steps a request comes to and only take the arguments from the answer;
// they look neither for signals nor for repeats.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "answers.h"
#include "peers/string_size.h"

namespace vantrex::bench {

// One way to do the job, on one request. Everything that a library lets one
// keep between two answers is kept.
class Contender {
 public:
  Contender() = default;
  Contender(const Contender&) = delete;
  Contender& operator=(const Contender&) = delete;
  virtual ~Contender() = default;

  // The whole job. Returns the bytes of the copy's compact text.
  virtual std::size_t finish() = 0;
  // The whole job, and the finished answer's text. Returns its bytes.
  virtual std::size_t finish_and_write() = 0;
  // The deep copy without null fields, destroyed again. Returns its fields.
  virtual std::size_t copy() = 0;
  // The bytes of the copy's compact text and of its hint fields, added up.
  virtual std::size_t count() = 0;
  // The text of the finished answer.
  virtual std::string finished_text() = 0;
};

std::unique_ptr<Contender> ours(const Request& request);
std::unique_ptr<Contender> rapidjson_peer(const Request& request);
std::unique_ptr<Contender> boost_json_peer(const Request& request);
std::unique_ptr<Contender> nlohmann_peer(const Request& request);

struct NamedContender {
  std::string_view name;
  std::unique_ptr<Contender> (*make)(const Request& request);
};
inline constexpr std::array<NamedContender, 4> kContenders = {{{"next_steps", ours},
                                                               {"RapidJSON", rapidjson_peer},
                                                               {"Boost.JSON", boost_json_peer},
                                                               {"nlohmann", nlohmann_peer}}};

namespace peers {

// The text of the answer, for a peer to read, and that of its copy without null
// fields.
std::string answer_text(const Request& request);
std::string copy_text(const Request& request);

// Bytes of a value's compact text, and those of the hint fields in it.
struct Size {
  std::size_t text = 0;
  std::size_t hints = 0;
};

inline bool is_hint_key(std::string_view key) noexcept {
  if (key.size() < 3 || key.size() > 10) return false;
  switch (key.front()) {
    case 'h':
      return key == "hint" || key == "hints";
    case 'n':
      return key == "note" || key == "notes" || key == "next_steps";
    case 't':
      return key == "tip" || key == "tips";
    default:
      return false;
  }
}

// Bytes of an integer.
std::size_t integer_size(std::int64_t number) noexcept;

// How many of two steps stay beside an answer of `answer` bytes; the first
// always does.
std::size_t steps_that_fit(Size answer, std::size_t first, std::size_t second) noexcept;

// The reason of `step` in an answer that counts `total` hits.
std::string reason_of(const PlannedStep& step, std::int64_t total);

}  // namespace peers
}  // namespace vantrex::bench
